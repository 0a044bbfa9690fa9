#include "host/transfer/Writers.h"

#include "host/library/HostError.h"
#include "host/output/RowWriter.h"
#include "host/transfer/PropertyWriters.h"
#include "host/transfer/SpreadsheetGuard.h"

namespace orxdb {
namespace {

/// Formats of rows.
class RowsWriter : public ToolWriter {
 public:
  RowsWriter(const WriteOptions& options, const FileSink& sink)
      : ToolWriter(sink),
        m_guards(options.excel &&
                 (options.format == ToolFormat::Csv || options.format == ToolFormat::Tsv)),
        m_rows(RowsOf(options.format, [sink](std::string_view text) { sink({}, text); })) {}

  void Header(const std::vector<std::string>& properties) override {
    if (!m_guards) return m_rows->Header(properties);
    Put("\xEF\xBB\xBF");
    std::vector<std::string> names;
    names.reserve(properties.size());
    for (const std::string& property : properties) names.push_back(Guarded(property));
    m_rows->Header(names);
  }
  void Tool(const std::vector<Cell>& values) override {
    std::vector<Cell> cells = values;
    for (Cell& cell : cells) {
      if (m_guards && cell.kind == Cell::Kind::Text) cell.text = Guarded(cell.text);
    }
    m_rows->Row(std::move(cells));
  }
  void End() override { m_rows->End(); }

 private:
  static std::unique_ptr<RowWriter> RowsOf(ToolFormat format, Sink sink) {
    if (format == ToolFormat::Json) return MakeRowWriter(Format::Json, std::move(sink));
    if (format == ToolFormat::Jsonl) return MakeJsonLinesWriter(std::move(sink));
    return MakeCsvWriter(std::move(sink), format == ToolFormat::Tsv ? '\t' : ',');
  }

  bool m_guards;
  std::unique_ptr<RowWriter> m_rows;
};

std::string Counted(long long count, const char* what) {
  return std::to_string(count) + ' ' + what + (count == 1 ? "" : "s");
}

}  // namespace

std::vector<std::string> ToolWriter::Losses() const {
  std::vector<std::string> losses;
  for (const auto& [reason, count] : m_lostTools) {
    losses.push_back(Counted(count, "tool") + (count == 1 ? " is" : " are") +
                     " not written: " + reason + '.');
  }
  for (const auto& [property, count] : m_lostValues) {
    losses.push_back("The format does not carry " + property + " of " + Counted(count, "tool") +
                     '.');
  }
  return losses;
}

std::unique_ptr<ToolWriter> MakeToolWriter(const WriteOptions& options, FileSink sink) {
  switch (options.format) {
    case ToolFormat::Csv:
    case ToolFormat::Tsv:
    case ToolFormat::Json:
    case ToolFormat::Jsonl:
      return std::make_unique<RowsWriter>(options, sink);
    case ToolFormat::FreeCad:
      return MakeFreeCadWriter(options.table, std::move(sink));
    case ToolFormat::LinuxCnc:
      return MakeLinuxCncWriter(options.table, std::move(sink));
    case ToolFormat::Exchange:
    case ToolFormat::Auto:
      break;
  }
  throw HostError("This format is not one of csv, tsv, json, jsonl, freecad and linuxcnc.");
}

}  // namespace orxdb
