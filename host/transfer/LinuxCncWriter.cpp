// Tool tables of LinuxCNC. A table has one unit for all of its tools: that of the first one.
#include <charconv>
#include <optional>
#include <set>

#include "host/transfer/PropertyWriters.h"
#include "host/transfer/ToolWords.h"

namespace orxdb {
namespace {

class LinuxCncWriter : public ToolWriter {
 public:
  LinuxCncWriter(std::string table, FileSink sink)
      : ToolWriter(std::move(sink)), m_table(std::move(table)) {}

  void Header(const std::vector<std::string>& properties) override { m_properties = properties; }

  void Tool(const std::vector<Cell>& cells) override {
    NamedValues values(m_properties, cells);
    const std::string unit = values.Take("Unit");
    if (!m_unit) {
      m_unit = unit;
      if (!unit.empty()) Put("; Unit: " + (unit == "in" ? std::string("inch") : unit) + '\n');
    }
    if (unit != *m_unit) return LoseTool("their unit is not that of the first tool");
    const std::optional<int> number = Number(values.Take("Tool_Number"));
    if (!number) return LoseTool("their number is taken, or none");

    std::string pocket = values.Take("Pocket");
    if (!IsWord(pocket) || pocket == "0") pocket = std::to_string(*number);
    std::string line = 'T' + std::to_string(*number) + " P" + pocket;
    if (const std::string diameter = values.Take("Diameter"); IsWord(diameter)) {
      line += " D" + diameter;
    }
    if (const std::string offset = values.Take("Length_Offset"); IsWord(offset)) {
      line += " Z" + offset;
    }
    const std::string name = values.Take("Name");
    Put(line + " ;" + OneLine(name) + '\n');

    if (OneLine(name) != name) LoseValue("Name");
    if (TableOfWords(name) != m_table) LoseValue("the kind");
    values.ForEachLeft([this](const std::string& property) { LoseValue(property); });
  }

 private:
  /// Whether the text can stand behind a letter.
  static bool IsWord(std::string_view text) {
    return !text.empty() && text.find_first_not_of("+-.0123456789") == text.npos;
  }
  static std::string OneLine(std::string text) {
    for (char& c : text) {
      if (static_cast<unsigned char>(c) < 0x20) c = ' ';
    }
    text.erase(0, text.find_first_not_of(' '));
    return text.erase(text.find_last_not_of(' ') + 1);
  }
  /// The number that a tool has, or the next free one for 0, which means no tool; nothing for one
  /// that another has.
  std::optional<int> Number(const std::string& text) {
    int number = 0;
    if (text.empty() || text == "0") {
      while (m_used.contains(++m_last)) continue;
      number = m_last;
    } else if (std::from_chars(text.data(), text.data() + text.size(), number).ptr !=
               text.data() + text.size()) {
      return std::nullopt;
    }
    if (!m_used.insert(number).second) return std::nullopt;
    return number;
  }

  std::string m_table;
  std::vector<std::string> m_properties;
  std::optional<std::string> m_unit;
  std::set<int> m_used;
  int m_last = 0;
};

}  // namespace

std::unique_ptr<ToolWriter> MakeLinuxCncWriter(const std::string& table, FileSink sink) {
  return std::make_unique<LinuxCncWriter>(table, std::move(sink));
}

}  // namespace orxdb
