#pragma once

#include <cstddef>
#include <deque>
#include <string>
#include <string_view>
#include <vector>

#include "database/dialect/Lexer.h"
#include "database/dialect/SyntaxTree.h"

namespace orxdb {

/// Whether a word never is a name unless bracketed.
bool IsReserved(const Token& token) noexcept;

/// Reads the tokens of one text by recursive descent. Its functions read what they are named after
/// and stand behind it then.
class Parser {
 public:
  explicit Parser(std::string_view text) : m_lexer(text, LexicalRules::Dialect) {}

  Expression Condition();
  Select Selection();
  void End(const char* what) {
    if (Next().kind != Token::Kind::End) RaiseSyntax(what);
  }
  bool Skip(std::string_view symbolOrWord);

 private:
  /// Keeps hostile nesting from using up the stack.
  class Nesting {
   public:
    explicit Nesting(int& depth);
    ~Nesting() { --m_depth; }
    Nesting(const Nesting&) = delete;
    Nesting& operator=(const Nesting&) = delete;

   private:
    int& m_depth;
  };

  // Tokens
  const Token& Next(std::size_t ahead = 0);
  Token Take();
  void Expect(std::string_view symbolOrWord);
  std::string ExpectName();

  // Expressions
  Expression Term(int weakest);
  Expression Prefixed(int weakest);
  bool Comparison(Expression& left);
  Expression Between(Expression left);
  Expression In(Expression left);
  Expression Primary();
  Expression Rows();
  Expression Function();
  Expression Field();

  // SELECT
  Query OneQuery();
  SelectItem Item();
  std::vector<Source> Sources();
  void AddJoined(std::vector<Source>& sources);
  Source OneSource();

  Lexer m_lexer;
  std::deque<Token> m_tokens;  ///< looked at, not taken
  int m_nesting = 0;
  int m_sources = 0;
  int m_deepest = 0;  ///< of the expressions of the SELECT that is being read
};

}  // namespace orxdb
