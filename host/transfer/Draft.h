// Tools as a source has them: names and values as written, before they are understood.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace orxdb {

/// A value and the name that its source gives it.
struct DraftValue {
  std::string name;
  /// As written, in UTF-8: numbers keep all their digits, their unit and their decimal sign. A
  /// full stop is the decimal sign of sources that have only one way to write numbers.
  std::string text;
  bool absent = false;  ///< the source says that there is no value; not the same as an empty text

  bool operator==(const DraftValue&) const = default;
};

/// One record of a source.
struct ToolDraft {
  std::string source;  ///< the file, as the person named it, or "-"
  /// Where in it: "line 7", "record 3", or empty when the file holds one tool.
  std::string place;
  std::string table;               ///< kind of tool by its table's name; empty when it is not told
  std::string unit;                ///< of lengths without one of their own: "mm", "in" or empty
  std::vector<DraftValue> values;  ///< in the order of the source
  std::string problem;             ///< why it cannot be read, a sentence; it is then refused
};

/// Reads one source from its beginning to its end, a record at a time: memory does not grow with
/// the source. Constructors throw HostError for what is no source of that format.
class DraftReader {
 public:
  DraftReader() = default;
  DraftReader(const DraftReader&) = delete;
  DraftReader& operator=(const DraftReader&) = delete;
  virtual ~DraftReader() = default;

  /// The next record; nothing at the end. A record that cannot be understood comes with its
  /// problem, and reading goes on behind it. Throws HostError when the source cannot be read on.
  virtual std::optional<ToolDraft> Next() = 0;
  /// The part of the source that has been read, from 0 to 1; less than 0 when it is not known, as
  /// with a pipe.
  virtual double Done() const = 0;

  /// What is to be said about the source as a whole, in sentences, such as its encoding. Complete
  /// at the end.
  const std::vector<std::string>& Remarks() const noexcept { return m_remarks; }

 protected:
  std::vector<std::string> m_remarks;
};

}  // namespace orxdb
