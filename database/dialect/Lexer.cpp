#include "database/dialect/Lexer.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdio>
#include <utility>

#include "platform/framework/DaoException.h"

namespace orxdb {
namespace {

/// SQLite takes no longer statements either.
constexpr std::size_t kLongestText = 1'000'000;

constexpr bool IsDigit(char c) noexcept {
  return c >= '0' && c <= '9';
}
constexpr bool IsBlank(char c) noexcept {
  return c == ' ' || c == '\t' || c == '\r' || c == '\n' || c == '\f' || c == '\v';
}
constexpr bool IsWordStart(char c) noexcept {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' ||
         static_cast<unsigned char>(c) >= 0x80;
}

/// The whole numbers of a date text such as 3/1/2024 13:45, the text between them dropped.
std::vector<int> NumbersIn(std::string_view text) {
  std::vector<int> numbers;
  for (std::size_t i = 0; i < text.size();) {
    if (!IsDigit(text[i])) {
      ++i;
      continue;
    }
    int number = 0;
    const auto result = std::from_chars(text.data() + i, text.data() + text.size(), number);
    if (result.ec != std::errc()) RaiseSyntax("A date in the text cannot be read");
    numbers.push_back(number);
    i = static_cast<std::size_t>(result.ptr - text.data());
  }
  return numbers;
}

/// month/day/year or year-month-day, a time of day behind it if wanted, as ISO text.
std::string IsoDate(std::string_view text) {
  const std::vector<int> numbers = NumbersIn(text);
  if (numbers.size() < 3 || numbers.size() > 6) RaiseSyntax("A date in the text cannot be read");
  std::array<int, 6> parts{};
  std::copy(numbers.begin(), numbers.end(), parts.begin());
  auto& [year, month, day, hour, minute, second] = parts;
  if (text.find('/') != std::string_view::npos) {
    std::rotate(parts.begin(), parts.begin() + 2, parts.begin() + 3);
  }
  if (year < 100) year += year < 30 ? 2000 : 1900;  // as the dialect reads two digits
  const std::string folded = FoldedName(text);
  if (folded.find("pm") != std::string::npos && hour < 12) hour += 12;
  if (folded.find("am") != std::string::npos && hour == 12) hour = 0;
  constexpr std::array kDays = {31, 29, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  const bool leap = (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
  if (year > 9999 || month < 1 || month > 12 || day < 1 ||
      day > kDays[static_cast<std::size_t>(month - 1)] || (month == 2 && day == 29 && !leap) ||
      hour > 23 || minute > 59 || second > 59) {
    RaiseSyntax("A date in the text does not exist");
  }
  std::array<char, 80> iso{};
  std::snprintf(iso.data(), iso.size(), "%04d-%02d-%02d %02d:%02d:%02d", year, month, day, hour,
                minute, second);
  return iso.data();
}

}  // namespace

void RaiseSyntax(const std::string& what) {
  throw CDaoException(DaoError::Syntax, what);
}

Lexer::Lexer(std::string_view text, LexicalRules rules)
    : m_text(text), m_dialect(rules == LexicalRules::Dialect) {
  if (m_dialect && m_text.size() > kLongestText) RaiseSyntax("The text is too long");
}

Token Lexer::Next() {
  SkipBlanks();
  Token token;
  token.begin = m_at;
  if (m_at < m_text.size()) Read(token);
  token.end = m_at;
  return token;
}

void Lexer::SkipBlanks() {
  while (m_at < m_text.size()) {
    const bool lineComment = At() == '-' && At(1) == '-';
    const bool blockComment = At() == '/' && At(1) == '*';
    if (IsBlank(At())) {
      ++m_at;
    } else if (!lineComment && !blockComment) {
      return;
    } else if (m_dialect) {
      RaiseSyntax("A comment is not allowed here");
    } else {
      const std::size_t end = m_text.find(lineComment ? "\n" : "*/", m_at + 2);
      m_at = end == std::string_view::npos ? m_text.size() : end + (lineComment ? 1 : 2);
    }
  }
}

void Lexer::Read(Token& token) {
  const char c = At();
  if (IsWordStart(c)) {
    while (IsWordStart(At()) || IsDigit(At()) || At() == '$') token.text += m_text[m_at++];
    token.kind = Token::Kind::Word;
  } else if (IsDigit(c) || (c == '.' && IsDigit(At(1)))) {
    ReadNumber(token);
  } else if (c == '\'' || (c == '"' && m_dialect)) {
    token.kind = Token::Kind::Text;
    token.text = ReadQuoted(c);
  } else if (c == '[' || c == '`' || c == '"') {
    token.kind = Token::Kind::Name;
    token.text = ReadQuoted(c == '[' ? ']' : c);
  } else if (c == '#' && m_dialect) {
    const std::size_t end = m_text.find('#', m_at + 1);
    if (end == std::string_view::npos) RaiseSyntax("A date is not closed");
    token.kind = Token::Kind::Date;
    token.text = IsoDate(m_text.substr(m_at + 1, end - m_at - 1));
    m_at = end + 1;
  } else {
    ReadSymbol(token);
  }
}

/// From the opening quote to the closing one, which is doubled to stand inside.
std::string Lexer::ReadQuoted(char close) {
  std::string text;
  for (++m_at; m_at < m_text.size(); ++m_at) {
    if (At() == close) {
      if (At(1) != close) {
        ++m_at;
        return text;
      }
      ++m_at;
    }
    text += At();
  }
  RaiseSyntax("A quote or bracket is not closed");
}

void Lexer::ReadNumber(Token& token) {
  const std::size_t begin = m_at;
  const auto digits = [&] {
    while (IsDigit(At())) ++m_at;
  };
  digits();
  bool whole = true;
  if (At() == '.') {
    whole = false;
    ++m_at;
    digits();
  }
  const std::size_t sign = At(1) == '+' || At(1) == '-' ? 2 : 1;
  if ((At() == 'e' || At() == 'E') && IsDigit(At(sign))) {
    whole = false;
    m_at += sign;
    digits();
  }
  token.kind = Token::Kind::Number;
  token.text = m_text.substr(begin, m_at - begin);
  const char* first = token.text.data();
  const char* last = first + token.text.size();
  std::int64_t integer = 0;
  if (whole && std::from_chars(first, last, integer).ec == std::errc()) {
    token.number = integer;
    return;
  }
  double real = 0;
  if (std::from_chars(first, last, real).ec != std::errc()) RaiseSyntax("A number is out of range");
  token.number = real;
}

void Lexer::ReadSymbol(Token& token) {
  constexpr std::array<std::string_view, 6> kPairs = {"<>", "<=", ">=", "!=", "==", "||"};
  constexpr std::string_view kDialectSymbols = "()+-*/\\^&=<>,.;!";
  token.kind = Token::Kind::Symbol;
  const std::string_view pair = m_text.substr(m_at, 2);
  for (const std::string_view each : kPairs) {
    if (pair == each && (!m_dialect || each[0] == '<' || each[0] == '>')) {
      token.text = pair;
      m_at += 2;
      return;
    }
  }
  if (m_dialect && (At() == '\0' || kDialectSymbols.find(At()) == std::string_view::npos)) {
    RaiseSyntax("A character in the text has no meaning here");
  }
  token.text = m_text[m_at++];
}

std::vector<Token> Tokenize(std::string_view text, LexicalRules rules) {
  Lexer lexer(text, rules);
  std::vector<Token> tokens;
  do {
    tokens.push_back(lexer.Next());
  } while (tokens.back().kind != Token::Kind::End);
  return tokens;
}

}  // namespace orxdb
