// Tool tables of LinuxCNC: words of a letter and a number with the comment behind a semicolon, or
// the older layout of columns below a heading, the comment being the last.
#include "host/transfer/LinuxCncTable.h"

#include <algorithm>
#include <span>

#include "host/library/HostError.h"
#include "host/transfer/FileReader.h"
#include "host/transfer/ToolWords.h"
#include "platform/automation/Ascii.h"

namespace orxdb {
namespace {

constexpr std::string_view kBlanks = " \t\r\n";

struct Column {
  std::string_view written;
  std::string_view name;
};
constexpr Column kWords[] = {{"T", "Tool number"},   {"P", "Pocket"},     {"D", "Diameter"},
                             {"Z", "Length offset"}, {"X", "X offset"},   {"Y", "Y offset"},
                             {"A", "A offset"},      {"B", "B offset"},   {"C", "C offset"},
                             {"U", "U offset"},      {"V", "V offset"},   {"W", "W offset"},
                             {"I", "Front angle"},   {"J", "Back angle"}, {"Q", "Orientation"}};
constexpr Column kHeadings[] = {{"POC", "Pocket"},
                                {"POCKET", "Pocket"},
                                {"FMS", "Tool number"},
                                {"TOOL", "Tool number"},
                                {"LEN", "Length offset"},
                                {"TLO", "Length offset"},
                                {"ZOFFSET", "Length offset"},
                                {"XOFFSET", "X offset"},
                                {"DIAM", "Diameter"},
                                {"DIAMETER", "Diameter"},
                                {"FRONTANGLE", "Front angle"},
                                {"BACKANGLE", "Back angle"},
                                {"ORIENTATION", "Orientation"}};
constexpr std::string_view kCommentHeading = "COMMENT";
constexpr std::string_view kCommentName = "Name";

/// The name of a word or heading; empty when it is none.
std::string NameOf(std::span<const Column> columns, std::string_view written) {
  const auto column = std::ranges::find_if(
      columns, [&](const Column& known) { return EqualNoCase(known.written, written); });
  return column == columns.end() ? std::string() : std::string(column->name);
}

std::string_view TakeWord(std::string_view& line) {
  line = Trim(line, kBlanks);
  const std::string_view word = line.substr(0, line.find_first_of(kBlanks));
  line.remove_prefix(word.size());
  return word;
}

/// The names of the columns that a heading has; none when the line is no heading.
std::vector<std::string> HeadingOf(std::string_view line) {
  std::vector<std::string> names;
  while (!Trim(line, kBlanks).empty()) {
    const std::string_view word = TakeWord(line);
    std::string name =
        EqualNoCase(word, kCommentHeading) ? std::string(kCommentName) : NameOf(kHeadings, word);
    if (name.empty()) return {};
    names.push_back(std::move(name));
  }
  return std::ranges::find(names, "Tool number") == names.end() ? std::vector<std::string>()
                                                                : names;
}

/// A line of words, T first.
bool IsLineOfWords(std::string_view line) {
  const std::string_view word = TakeWord(line);
  return word.size() > 1 && LowerAscii(word[0]) == 't' &&
         std::ranges::all_of(word.substr(1), [](char c) { return c >= '0' && c <= '9'; }) &&
         (line.empty() || Trim(line, kBlanks).empty() || Trim(line, kBlanks)[0] == ';' ||
          !NameOf(kWords, Trim(line, kBlanks).substr(0, 1)).empty());
}

/// The unit that a remark of the file names; empty when it names none, or both.
std::string UnitIn(std::string_view remark) {
  constexpr std::string_view kMillimetres[] = {"mm",          "metric",     "millimeters",
                                               "millimetres", "millimeter", "millimetre"};
  constexpr std::string_view kInches[] = {"inch", "inches", "imperial"};
  bool metric = false;
  bool inches = false;
  std::string folded = Folded(remark);
  std::ranges::replace_if(
      folded, [](char c) { return c < 'a' || c > 'z'; }, ' ');
  for (std::string_view rest = folded; !(rest = Trim(rest, kBlanks)).empty();) {
    const std::string_view word = TakeWord(rest);
    metric |= std::ranges::find(kMillimetres, word) != std::end(kMillimetres);
    inches |= std::ranges::find(kInches, word) != std::end(kInches);
  }
  if (metric == inches) return {};
  return metric ? "mm" : "in";
}

class LinuxCncReader : public FileReader {
 public:
  using FileReader::FileReader;

 private:
  std::optional<ToolDraft> Read() override {
    TextSource::Line line;
    while (m_source.ReadLine(line, kLongest)) {
      std::string_view text = Trim(std::string_view(line.text), kBlanks);
      if (text.starts_with(';')) {
        if (const std::string unit = UnitIn(text); !unit.empty()) m_unit = unit;
      } else if (std::vector<std::string> heading = HeadingOf(text); !heading.empty()) {
        m_columns = std::move(heading);
      } else if (!text.empty()) {
        ToolDraft draft = Draft(line.number);
        if (!m_unit.empty()) draft.unit = m_unit;
        if (line.tooLong) {
          draft.problem = kTooLong;
        } else if (m_columns.empty()) {
          ReadWords(text, draft);
        } else {
          ReadColumns(text, draft);
        }
        if (!draft.problem.empty()) draft.values.clear();
        return draft;
      }
    }
    return std::nullopt;
  }

  static void AddComment(std::string_view comment, ToolDraft& draft) {
    comment = Trim(comment, kBlanks);
    if (comment.empty()) return;
    draft.values.push_back({std::string(kCommentName), std::string(comment)});
    draft.table = TableOfWords(comment);
  }

  static void ReadWords(std::string_view text, ToolDraft& draft) {
    const std::size_t sign = std::min(text.find(';'), text.size());
    std::string_view words = text.substr(0, sign);
    while (!Trim(words, kBlanks).empty()) {
      const std::string_view word = TakeWord(words);
      std::string name = NameOf(kWords, word.substr(0, 1));
      if (name.empty() || word.size() == 1) {
        draft.problem = Cited(std::string(word)) + " is no word of a tool table.";
        return;
      }
      if (std::ranges::find(draft.values, name, &DraftValue::name) != draft.values.end()) {
        draft.problem = "It has two words " + Cited(std::string(word.substr(0, 1))) + '.';
        return;
      }
      draft.values.push_back({std::move(name), std::string(word.substr(1))});
    }
    if (sign < text.size()) AddComment(text.substr(sign + 1), draft);
  }

  void ReadColumns(std::string_view text, ToolDraft& draft) const {
    for (const std::string& name : m_columns) {
      if (name == kCommentName) return AddComment(text, draft);
      const std::string_view word = TakeWord(text);
      if (word.empty()) {
        draft.problem = "It has no " + name + '.';
        return;
      }
      draft.values.push_back({name, std::string(word)});
    }
    if (!Trim(text, kBlanks).empty()) draft.problem = "It has more fields than the heading.";
  }

  std::string m_unit;
  std::vector<std::string> m_columns;  ///< of the older layout
};

}  // namespace

bool IsLinuxCncTable(std::string_view text) {
  while (!(text = Trim(text, kBlanks)).empty()) {
    const std::string_view line = text.substr(0, text.find_first_of("\r\n"));
    if (!line.starts_with(';')) return IsLineOfWords(line) || !HeadingOf(line).empty();
    text.remove_prefix(line.size());
  }
  return false;
}

std::unique_ptr<DraftReader> MakeLinuxCncReader(TextSource source, const ReadOptions& options) {
  return std::make_unique<LinuxCncReader>(std::move(source), options);
}

}  // namespace orxdb
