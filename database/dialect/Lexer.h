#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "database/dialect/SqlText.h"

namespace orxdb {

/// Whose lexical rules a text follows.
enum class LexicalRules {
  Dialect,  ///< the hosts' dialect: text in either quotes, #dates#, no comments, no parameters
  Sqlite,   ///< a stored query's text: names in double quotes, comments are passed over
};

struct Token {
  enum class Kind { Word, Name, Text, Number, Date, Symbol, End };

  Kind kind = Kind::End;
  std::string text;       ///< word, symbol, unquoted name or text; a date as 'YYYY-MM-DD HH:MM:SS'
  SqlValue number;        ///< of `Kind::Number`: an integer or a real
  std::size_t begin = 0;  ///< place in the source text
  std::size_t end = 0;

  bool IsSymbol(std::string_view symbol) const noexcept {
    return kind == Kind::Symbol && text == symbol;
  }
  /// A keyword, compared without regard to case; never a quoted name.
  bool IsWord(std::string_view word) const noexcept {
    return kind == Kind::Word && SameName(text, word);
  }
  bool IsName() const noexcept { return kind == Kind::Word || kind == Kind::Name; }
};

/// Refuses the text that is being read.
[[noreturn]] void RaiseSyntax(const std::string& what);

/// Reads a text token by token; raises `Syntax` on what belongs to no token: an unclosed quote, a
/// bad date, a comment or parameter in a host's text.
class Lexer {
 public:
  /// The text must outlive the lexer.
  Lexer(std::string_view text, LexicalRules rules);

  /// The next token; `End` behind the last one, as often as asked.
  Token Next();

 private:
  char At(std::size_t ahead = 0) const {
    return m_at + ahead < m_text.size() ? m_text[m_at + ahead] : '\0';
  }
  void SkipBlanks();
  void Read(Token& token);
  std::string ReadQuoted(char close);
  void ReadNumber(Token& token);
  void ReadSymbol(Token& token);

  std::string_view m_text;
  bool m_dialect;
  std::size_t m_at = 0;
};

/// All tokens of a text, the last of which is `End`.
std::vector<Token> Tokenize(std::string_view text, LexicalRules rules);

}  // namespace orxdb
