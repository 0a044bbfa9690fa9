// The component's own text files, read more kindly than an import by the component does: a field
// ends with a quote before a tab, so that quotes inside a value do no harm.
#include "host/library/HostError.h"
#include "host/transfer/ExchangeFile.h"
#include "host/transfer/FileReader.h"
#include "interface/ExchangeFormat.h"
#include "platform/automation/Ascii.h"

namespace orxdb {
namespace {

constexpr std::string_view kBlanks = " \t\n\v\f\r";

/// The fields of a line; tabs inside of values are escaped.
std::vector<std::string> FieldsOf(std::string_view line) {
  constexpr std::string_view kEnd = "\"\t";
  std::vector<std::string> fields;
  for (line = Trim(line, " \v\f\r"); !Trim(line, kBlanks).empty();) {
    const std::size_t end = line.starts_with(kEnd) ? line.find(kEnd, 1) : line.find(kEnd);
    if (end == line.npos) {
      fields.push_back(UnescapeField(line));
      break;
    }
    fields.push_back(UnescapeField(line.substr(0, end + 1)));
    line.remove_prefix(end + kEnd.size());
  }
  return fields;
}

class ExchangeDrafts : public FileReader {
 public:
  ExchangeDrafts(TextSource source, const ReadOptions& options)
      : FileReader(std::move(source), options) {
    ExchangeHeader header;
    TextSource::Line line;
    for (int i = 0; i < 3 && m_source.ReadLine(line, kLongest); ++i) header.Take(i, line.text);
    CheckImported(m_source.Name(), header);
    m_table = header.table;
    if (m_source.ReadLine(line, kLongest)) m_names = FieldsOf(line.text);
    if (m_names.empty()) {
      throw HostError(m_source.Name() + " names no fields in its fourth line.");
    }
  }

 private:
  std::optional<ToolDraft> Read() override {
    TextSource::Line line;
    do {
      if (!m_source.ReadLine(line, kLongest)) return std::nullopt;
    } while (Trim(std::string_view(line.text), kBlanks).empty());
    ToolDraft draft = Draft(line.number);
    draft.table = m_table;
    if (line.tooLong) {
      draft.problem = kTooLong;
      return draft;
    }
    std::vector<std::string> fields = FieldsOf(line.text);
    if (fields.size() != m_names.size()) {
      draft.problem = "It has " + std::to_string(fields.size()) + " fields, but there are " +
                      std::to_string(m_names.size()) + " names.";
      return draft;
    }
    for (std::size_t i = 0; i < fields.size(); ++i) {
      // The format writes no text and no value alike.
      const bool absent = fields[i].empty();
      draft.values.push_back({m_names[i], std::move(fields[i]), absent});
    }
    return draft;
  }

  std::string m_table;
  std::vector<std::string> m_names;
};

}  // namespace

std::unique_ptr<DraftReader> MakeExchangeReader(TextSource source, const ReadOptions& options) {
  return std::make_unique<ExchangeDrafts>(std::move(source), options);
}

}  // namespace orxdb
