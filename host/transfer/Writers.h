// Tools as text of foreign formats.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "host/library/Cell.h"
#include "host/transfer/ReadOptions.h"

namespace orxdb {

struct WriteOptions {
  ToolFormat format = ToolFormat::Csv;
  std::string table = {};  ///< of the tools
  /// For csv and tsv: a byte-order mark, and texts that a spreadsheet would run are made harmless.
  /// Reading such a file gives the texts back.
  bool excel = false;
};

/// Takes text for a file as it comes, a piece behind the other. The name is empty for formats that
/// make one file; else it is a path inside a folder, "Bit/End mill 6.fctb".
using FileSink = std::function<void(const std::string& name, std::string_view text)>;

/// Writes the names of the properties, then tools with as many values, then the end. Csv, tsv,
/// json and jsonl carry everything; csv and tsv write an empty text as "" and no value as nothing.
class ToolWriter {
 public:
  explicit ToolWriter(FileSink sink) : m_sink(std::move(sink)) {}
  ToolWriter(const ToolWriter&) = delete;
  ToolWriter& operator=(const ToolWriter&) = delete;
  virtual ~ToolWriter() = default;

  virtual void Header(const std::vector<std::string>& properties) = 0;
  virtual void Tool(const std::vector<Cell>& values) = 0;
  virtual void End() {}

  /// What the format did not carry, sentences with counts; none when it carried all.
  std::vector<std::string> Losses() const;

 protected:
  void Put(std::string_view text, const std::string& file = {}) { m_sink(file, text); }
  /// A value of the property is not carried.
  void LoseValue(const std::string& property) { ++m_lostValues[property]; }
  /// A tool is not written, for a reason that completes "3 tools are not written: ".
  void LoseTool(const std::string& reason) { ++m_lostTools[reason]; }

 private:
  FileSink m_sink;
  std::map<std::string, long long> m_lostValues;
  std::map<std::string, long long> m_lostTools;
};

/// Throws HostError for a kind of tools that the format does not know, and for the exchange format,
/// which the component writes.
std::unique_ptr<ToolWriter> MakeToolWriter(const WriteOptions& options, FileSink sink);

}  // namespace orxdb
