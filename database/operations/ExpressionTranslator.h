#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "database/operations/Dialect.h"
#include "database/operations/Lexer.h"

namespace orxdb {

/// A translated expression.
struct Expression {
  SqlText sql;
  ValueKind kind = ValueKind::Unknown;
  bool column = false;    ///< just a column; `name` is the column's
  std::string name;       ///< of a column
  std::string columnSql;  ///< a column without the wrapping that its kind needs in comparisons
  bool constant = false;  ///< one literal, the only element of `sql.values`
};

/// The expression as a value: a condition is -1 or 0.
SqlText AsValue(const Expression& expression);

/// Whether a word never is a name unless bracketed.
bool IsReserved(const Token& token) noexcept;

/// Reads the tokens of one text in the hosts' dialect and writes SQLite's SQL. Whatever the
/// grammar does not know is refused, so nothing of a host's text reaches SQLite as it stands but
/// names (quoted) and numbers of ORDER BY columns.
///
/// Binding strength, weakest first: XOR; OR; AND; NOT; comparisons; &; + -; MOD; \; * /; sign; ^.
class ExpressionTranslator {
 public:
  ExpressionTranslator(std::vector<Token> tokens, SourceColumns& sources)
      : m_tokens(std::move(tokens)), m_sources(sources) {}

  /// One condition over the columns of `scope`, and nothing behind it.
  SqlText Criteria(const NameScope& scope);
  /// One SELECT, a semicolon behind it if wanted, and nothing else.
  SelectText WholeSelect();

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
  using Scopes = std::vector<NameScope>;
  using Level = Expression (ExpressionTranslator::*)();

  // Tokens
  const Token& Next(std::size_t ahead = 0) const;
  bool Skip(std::string_view symbolOrWord);
  void Expect(std::string_view symbolOrWord);
  std::string ExpectName();
  void CountOperation();
  [[noreturn]] static void Fail(const std::string& what);

  // Expressions, by binding strength
  Expression Condition();
  Expression Disjunction();
  Expression Conjunction();
  Expression Negation();
  Expression Comparison();
  Expression Concatenation();
  Expression Sum();
  Expression Modulus();
  Expression WholeQuotient();
  Expression Product();
  Expression Sign();
  Expression Power();
  Expression Primary();

  Expression LogicalChain(Level operand, std::string_view word);
  Expression FunctionChain(Level operand, std::string_view symbolOrWord, const char* function);
  Expression Compared(const Expression& left, std::string_view comparison, const Expression& right);
  Expression Like(const Expression& left);
  Expression Between(const Expression& left);
  Expression In(const Expression& left);
  Expression Call(const std::string& function);
  Expression NamedColumn();
  Expression ResolveColumn(const std::string& qualifier, const std::string& name) const;

  // SELECT
  SelectText Select();
  SelectText SimpleSelect();
  std::size_t FindFrom() const;
  SqlText SelectList(std::vector<ScopeColumn>& computed);
  SqlText Sources(SelectText& select);
  SqlText JoinedSources(SelectText& select);
  SqlText Source(SelectText& select);
  std::vector<OrderTerm> OrderTerms();

  std::vector<Token> m_tokens;
  std::size_t m_at = 0;
  int m_depth = 0;
  int m_operations = 0;
  SourceColumns& m_sources;
  std::vector<Scopes> m_scopes;  ///< of the SELECTs being read, outermost first
};

}  // namespace orxdb
