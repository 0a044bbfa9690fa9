// Lists of objects, an object a tool, and lines of objects.
#include "host/transfer/FileReader.h"
#include "host/transfer/JsonText.h"
#include "platform/automation/Ascii.h"

namespace orxdb {
namespace {

constexpr std::string_view kBlanks = " \t\r\n";

/// Gives the draft what an object says.
void Fill(ToolDraft& draft, std::string_view text) {
  if (!text.starts_with('{')) {
    draft.problem = "It is no object.";
    return;
  }
  JsonLeaves leaves;
  draft.problem = ReadJson(text, leaves);
  if (!draft.problem.empty()) return;
  for (JsonLeaf& leaf : leaves) {
    const bool nested = leaf.path.size() > 1 || leaf.kind == JsonLeaf::Kind::Structure;
    if (leaf.path.empty()) continue;  // an object without members
    if (nested) {
      draft.problem = leaf.path.front() + " is a list or an object, not a value.";
      draft.values.clear();
      return;
    }
    draft.values.push_back(
        {std::move(leaf.path.front()), std::move(leaf.text), leaf.kind == JsonLeaf::Kind::Null});
  }
}

class LinesReader : public FileReader {
 public:
  using FileReader::FileReader;

 private:
  std::optional<ToolDraft> Read() override {
    TextSource::Line line;
    while (m_source.ReadLine(line, kLongest)) {
      const std::string_view text = Trim(std::string_view(line.text), kBlanks);
      if (text.empty()) continue;
      ToolDraft draft = Draft(line.number);
      if (line.tooLong) {
        draft.problem = kTooLong;
      } else {
        Fill(draft, text);
      }
      return draft;
    }
    return std::nullopt;
  }
};

class ListReader : public FileReader {
 public:
  using FileReader::FileReader;

 private:
  std::optional<ToolDraft> Read() override {
    for (int next; (next = m_source.Peek()) != TextSource::kEnd;) {
      const char character = static_cast<char>(next);
      if (character == '[' && !m_inList) {
        m_inList = true;
      } else if (character == ']' && m_inList) {
        m_inList = false;
      } else if (character != ',' && kBlanks.find(character) == kBlanks.npos) {
        return Element();
      }
      m_source.Get();
    }
    if (!std::exchange(m_inList, false)) return std::nullopt;
    ToolDraft draft = Draft(m_source.LineNumber());
    draft.problem = "The text ends before its list.";
    return draft;
  }

  ToolDraft Element() {
    ToolDraft draft = Draft("record " + std::to_string(++m_records));
    const std::string text = ElementText();
    if (text.size() > kLongest) {
      draft.problem = kTooLong;
    } else {
      Fill(draft, Trim(std::string_view(text), kBlanks));
    }
    return draft;
  }

  /// The text as far as the comma or the bracket behind it, or its own closing one. Of a text that
  /// is too long comes no more than makes it so.
  std::string ElementText() {
    std::string text;
    int depth = 0;
    bool quoted = false;
    bool escaped = false;
    for (int next; (next = m_source.Peek()) != TextSource::kEnd;) {
      const char character = static_cast<char>(next);
      const bool closes = !quoted && (character == ']' || character == '}');
      if (depth == 0 && !quoted && (character == ',' || (closes && !text.empty()))) break;
      if (text.size() <= kLongest) text += character;
      m_source.Get();
      if (quoted) {
        quoted = escaped || character != '"';
        escaped = character == '\\' && !escaped;
      } else if (character == '"') {
        quoted = true;
      } else if (character == '[' || character == '{') {
        ++depth;
      } else if (closes && --depth <= 0) {
        break;
      }
    }
    return text;
  }

  bool m_inList = false;
  long long m_records = 0;
};

}  // namespace

std::unique_ptr<DraftReader> MakeJsonReader(TextSource source, const ReadOptions& options) {
  if (options.format == ToolFormat::Jsonl) {
    return std::make_unique<LinesReader>(std::move(source), options);
  }
  return std::make_unique<ListReader>(std::move(source), options);
}

}  // namespace orxdb
