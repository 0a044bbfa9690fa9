#include "database/ListParser.h"

#include <utility>

namespace orxdb {

bool ParseList(std::string_view text, std::vector<std::string>& tokens) {
  tokens.clear();
  if (text.empty()) return false;
  std::string token;
  for (const char c : text) {
    const bool brace = c == '{' || c == '}';
    if (!brace && c != '^' && c != ';') {
      token += c;
      continue;
    }
    tokens.push_back(std::exchange(token, {}));
    if (brace) tokens.emplace_back(1, c);
  }
  if (!token.empty()) tokens.push_back(std::move(token));
  return true;
}

std::vector<std::string> ParseSearchParams(std::string_view text) {
  std::vector<std::string> names;
  std::vector<std::string> tokens;
  const auto addFirstToken = [&](std::string_view line) {
    if (ParseList(line, tokens)) names.push_back(std::move(tokens.front()));
  };
  std::size_t start = 0;
  for (std::size_t end = text.find('\n'); end != text.npos; end = text.find('\n', start)) {
    addFirstToken(text.substr(start, end > start ? end - start - 1 : 0));
    start = end + 1;
  }
  addFirstToken(text.substr(start));
  return names;
}

}  // namespace orxdb
