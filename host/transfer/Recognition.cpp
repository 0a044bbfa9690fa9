#include "host/transfer/Recognition.h"

#include <algorithm>
#include <filesystem>

#include "host/transfer/CsvRecord.h"
#include "host/transfer/JsonText.h"
#include "host/transfer/LinuxCncTable.h"
#include "platform/automation/Ascii.h"

namespace orxdb {
namespace {

constexpr std::string_view kBlanks = " \t\r\n";

struct Extension {
  std::string_view name;
  ToolFormat format;
};
constexpr Extension kExtensions[] = {
    {".csv", ToolFormat::Csv},      {".tsv", ToolFormat::Tsv},      {".tab", ToolFormat::Tsv},
    {".json", ToolFormat::Json},    {".jsonl", ToolFormat::Jsonl},  {".ndjson", ToolFormat::Jsonl},
    {".fctb", ToolFormat::FreeCad}, {".fctl", ToolFormat::FreeCad}, {".tbl", ToolFormat::LinuxCnc}};

ToolFormat FormatOfName(const std::string& name) {
  const std::string extension = std::filesystem::path(name).extension().string();
  const auto* const known = std::ranges::find_if(
      kExtensions, [&](const Extension& one) { return EqualNoCase(one.name, extension); });
  return known == std::end(kExtensions) ? ToolFormat::Auto : known->format;
}

std::string_view FirstLine(std::string_view text) {
  return text.substr(0, text.find_first_of("\r\n"));
}

/// An object, or several of them.
ToolFormat KindOfObjects(std::string_view text, ToolFormat named) {
  if (named == ToolFormat::FreeCad) return named;
  const auto holds = [text](std::string_view key) { return text.find(key) != text.npos; };
  if (holds("\"parameter\"") && (holds("\"shape") || holds("\"ToolType\""))) {
    return ToolFormat::FreeCad;
  }
  if (holds("\"tools\"") && holds("\"path\"")) return ToolFormat::FreeCad;
  JsonLeaves leaves;
  const bool oneLine = ReadJson(FirstLine(text), leaves).empty();
  return oneLine || named == ToolFormat::Jsonl ? ToolFormat::Jsonl : ToolFormat::Json;
}

}  // namespace

ToolFormat Recognise(std::string_view beginning, const std::string& name) {
  const ToolFormat named = FormatOfName(name);
  if (beginning.find('\0') != beginning.npos) return ToolFormat::Auto;
  const std::string_view text = Trim(beginning, kBlanks);
  if (text.empty()) return named;
  if (text.starts_with("ORX_tool_table_version")) return ToolFormat::Exchange;
  if (text.front() == '{') return KindOfObjects(text, named);
  if (text.front() == '[') {
    const std::string_view rest = Trim(text.substr(1), kBlanks);
    if (rest.empty() || rest.front() == '{' || rest.front() == ']') return ToolFormat::Json;
  }
  if (IsLinuxCncTable(text)) return ToolFormat::LinuxCnc;
  if (named != ToolFormat::Auto) return named;
  return LooksSeparated(text) ? ToolFormat::Csv : ToolFormat::Auto;
}

}  // namespace orxdb
