#include <algorithm>
#include <utility>

#include "exchange/ToolRecordExchange.h"

namespace orxdb {
namespace {

/// Characters that are escaped, and the letters that stand for them behind a backslash.
constexpr std::pair<char, char> kEscapes[] = {{'\\', '\\'}, {'"', '"'},  {'\n', 'n'},
                                              {'\r', 'r'},  {'\t', 't'}, {'\v', 'v'}};

}  // namespace

std::string ToolRecordExchange::EscapeField(std::string_view text) {
  std::string field = "\"";
  for (const char character : text) {
    const auto* const escape =
        std::ranges::find(kEscapes, character, &std::pair<char, char>::first);
    if (escape == std::end(kEscapes)) {
      field += character;
    } else {
      field += '\\';
      field += escape->second;
    }
  }
  return field += '"';
}

std::string ToolRecordExchange::UnescapeField(std::string_view text) {
  if (text.ends_with('"')) text.remove_suffix(1);
  if (text.starts_with('"')) text.remove_prefix(1);
  std::string unescaped;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '\\' || i + 1 == text.size()) {
      unescaped += text[i];
      continue;
    }
    const auto* const escape =
        std::ranges::find(kEscapes, text[++i], &std::pair<char, char>::second);
    if (escape != std::end(kEscapes)) unescaped += escape->first;
  }
  return unescaped;
}

std::size_t ToolRecordExchange::SplitFields(std::string_view line,
                                            std::vector<std::string>& fields) {
  fields.clear();
  std::size_t end = 0;
  for (;;) {
    const std::size_t begin = line.find('"', end);
    if (begin == line.npos) break;
    end = line.find('"', begin + 1);
    if (end == line.npos) break;
    ++end;
    fields.push_back(UnescapeField(line.substr(begin, end - begin)));
  }
  return fields.size();
}

}  // namespace orxdb
