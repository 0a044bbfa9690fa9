// Lines of fields between commas, semicolons or tabs, below a line of column names.
#include <algorithm>
#include <deque>

#include "host/library/HostError.h"
#include "host/transfer/CsvRecord.h"
#include "host/transfer/DecimalComma.h"
#include "host/transfer/FileReader.h"
#include "host/transfer/SpreadsheetGuard.h"
#include "platform/automation/Ascii.h"

namespace orxdb {
namespace {

constexpr std::string_view kBlanks = " \t";

class CsvReader : public FileReader {
 public:
  CsvReader(TextSource source, const ReadOptions& options)
      : FileReader(std::move(source), options),
        m_separator(options.format == ToolFormat::Tsv ? '\t' : '\0') {
    ReadNames();
    DecimalCommaEvidence decimalComma;
    std::size_t size = 0;
    while (m_records.size() < 1000 && size < TextSource::kBlock) {
      auto record = ReadRecord();
      if (!record) break;
      for (const CsvField& field : record->fields) {
        size += field.text.size();
        decimalComma.Add(field.text);
      }
      m_records.push_back(std::move(*record));
    }
    m_decimalComma = decimalComma.Shown();
    if (m_decimalComma) {
      m_remarks.push_back(m_source.Name() +
                          " writes decimals with a comma: they are read with a full stop.");
    }
  }

 private:
  struct Record {
    long long line = 0;
    std::vector<CsvField> fields;
    std::string problem;

    bool IsEmpty() const {
      return problem.empty() && std::ranges::all_of(fields, [](const CsvField& field) {
               return field.text.empty() && !field.quoted;
             });
    }
  };
  struct Line : TextSource::Line {
    bool again = false;  ///< it did not end the quoted field of a line before it
  };

  std::optional<ToolDraft> Read() override {
    std::optional<Record> record;
    do {
      if (m_records.empty()) {
        record = ReadRecord();
      } else {
        record = std::move(m_records.front());
        m_records.pop_front();
      }
      if (!record) return std::nullopt;
    } while (record->IsEmpty());

    ToolDraft draft = Draft(record->line);
    draft.problem = std::move(record->problem);
    if (draft.problem.empty()) draft.problem = Misfit(record->fields);
    if (draft.problem.empty()) {
      for (std::size_t i = 0; i < m_names.size(); ++i) {
        draft.values.push_back(Value(m_names[i], record->fields[i], draft.problem));
      }
    }
    return draft;
  }

  DraftValue Value(const std::string& name, CsvField& field, std::string& problem) const {
    if (m_decimalComma && IsPlainNumber(field.text, ',')) {
      std::ranges::replace(field.text, ',', '.');
    } else if (m_decimalComma && IsPlainNumber(field.text, '.')) {
      problem = name + ": " + Cited(field.text) +
                " has a full stop, but the file writes decimals with a comma.";
    }
    const bool absent = field.text.empty() && !field.quoted;
    // What writes for spreadsheets begins with a mark.
    return {name, m_source.HadMark() ? Unguarded(field.text) : std::move(field.text), absent};
  }

  /// Why the fields do not suit the names. Empty fields behind them do no harm.
  std::string Misfit(std::vector<CsvField>& fields) const {
    std::size_t count = fields.size();
    while (count > m_names.size() && fields[count - 1].text.empty()) --count;
    if (count == m_names.size()) return {};
    return "It has " + std::to_string(count) + " fields, but there are " +
           std::to_string(m_names.size()) + " columns.";
  }

  void ReadNames() {
    Line line;
    do {
      if (!NextLine(line)) throw HostError(m_source.Name() + " has no line of column names.");
      if (line.text.size() == 5 && EqualNoCase(line.text.substr(0, 4), "sep=")) {
        m_separator = line.text.back();
        line.text.clear();
      }
    } while (line.text.empty());
    if (m_separator == '\0') m_separator = SeparatorOf(line.text);
    m_pending.push_back(std::move(line));
    const std::optional<Record> names = ReadRecord();
    if (!names->problem.empty()) {
      throw HostError(m_source.Name() + " has no usable column names: " + names->problem);
    }
    for (const CsvField& field : names->fields) {
      std::string name(Trim(std::string_view(field.text), kBlanks));
      if (m_source.HadMark()) name = Unguarded(name);
      if (name.empty()) name = "Column " + std::to_string(m_names.size() + 1);
      m_names.push_back(std::move(name));
    }
  }

  bool NextLine(Line& line) {
    if (m_pending.empty()) {
      line.again = false;
      return m_source.ReadLine(line, kLongest);
    }
    line = std::move(m_pending.front());
    m_pending.pop_front();
    return true;
  }

  /// The next line, or lines as far as a quoted field goes. When that does not end, or ends before
  /// other text, the first line alone is wrong and the others are read again, each for itself.
  std::optional<Record> ReadRecord() {
    Line line;
    if (!NextLine(line)) return std::nullopt;
    Record record;
    record.line = line.number;
    if (line.tooLong) {
      record.problem = kTooLong;
      return record;
    }
    CsvRecord parts(m_separator);
    std::deque<Line> more;
    std::size_t size = line.text.size();
    CsvRecord::State state = parts.Add(line.text);
    while (state == CsvRecord::State::Open && !line.again && size <= kLongest) {
      parts.AddLineEnd(line.end);
      if (!NextLine(line)) break;
      size += line.text.size() + line.end.size();
      state = line.tooLong ? CsvRecord::State::Wrong : parts.Add(line.text);
      more.push_back(line);
      more.back().again = true;
    }
    if (state == CsvRecord::State::Whole) {
      record.fields = std::move(parts.Fields());
      return record;
    }
    record.problem = state == CsvRecord::State::Wrong
                         ? "Text stands behind the closing quote of a field."
                         : "A quote that begins a field is not closed.";
    std::ranges::move(more, std::back_inserter(m_pending));
    return record;
  }

  char m_separator;  ///< zero while it is not known
  std::vector<std::string> m_names;
  bool m_decimalComma = false;
  std::deque<Line> m_pending;
  std::deque<Record> m_records;  ///< read ahead
};

}  // namespace

std::unique_ptr<DraftReader> MakeCsvReader(TextSource source, const ReadOptions& options) {
  return std::make_unique<CsvReader>(std::move(source), options);
}

}  // namespace orxdb
