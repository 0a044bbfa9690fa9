// Exchange files as the component reads them. It tells nothing of what it finds there, so the host
// reads them a second time, by the same rules.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/HostError.h"
#include "platform/framework/TextFile.h"

namespace orxdb {

/// One line behind the names of the fields.
struct ExchangeLine {
  enum class Kind {
    Record,
    WrongFields,  ///< another number of fields than the file has names
    TooLong,
  };

  long long number = 0;  ///< from 1, as editors count
  Kind kind = Kind::Record;
  bool torn = false;                ///< a double quote inside a value has cut it in two
  std::vector<std::string> fields;  ///< of a record
};

/// An exchange file being read.
class ExchangeFile {
 public:
  /// Reads as far as the names of the fields. Throws HostError for what is no exchange file or of
  /// a kind that is not imported.
  explicit ExchangeFile(const std::string& path);

  const std::string& Table() const noexcept { return m_table; }
  const std::vector<std::string>& Names() const noexcept { return m_names; }

  /// The next line that holds anything; nothing at the end of the file.
  std::optional<ExchangeLine> Next();

 private:
  bool ReadPiece();
  bool IsTooLong() const noexcept;
  /// What counts of the piece: a zero ends it.
  std::string_view Text() const noexcept { return m_piece.c_str(); }
  void ReadHeader(const std::string& path);
  /// The value of a header line with that key; nothing when the line is another one.
  std::optional<std::string> HeaderValue(std::string_view key) const;

  TextFile m_file;
  std::string m_piece;  ///< what of a line fits the component's buffer
  long long m_number = 0;
  bool m_lineEnded = true;
  std::string m_table;
  std::vector<std::string> m_names;
};

}  // namespace orxdb
