#pragma once

#include <string_view>
#include <vector>

#include "database/dialect/Operations.h"
#include "database/dialect/SyntaxTree.h"

namespace orxdb {

/// Prints resolved trees as SQL: names quoted, literals as values. Raises `Syntax` when the SQL
/// grows out of all proportion.
class Writer {
 public:
  explicit Writer(Flavour flavour) : m_flavour(flavour) {}

  void Condition(const Expression& expression);
  /// A SELECT without its outermost ordering and limit.
  void Rows(const Select& select) { Rows(select, false); }
  void OrderTerm(const Expression& expression);
  /// The term of a text by the engine's own rule.
  void PlainOrderTerm(const Expression& expression);

  /// What has been written since it was taken last.
  SqlText Take();

 private:
  void Append(std::string_view text);
  template <typename Print>
  void Wrap(const Operation& operation, Print print);
  void Fill(std::string_view pattern, const std::vector<Expression>& operands,
            std::size_t repeated = 0);
  void Operand(char role, const Expression& operand, const std::vector<Expression>& all);

  void Plain(const Expression& expression);
  void Value(const Expression& expression);
  void Field(const FieldName& field);
  void Literal(const SqlValue& value);

  void Whole(const Select& select, bool asValues);
  void Rows(const Select& select, bool asValues);
  void Part(const Query& query, bool asValues);
  void Item(const SelectItem& item, bool asValue);
  void Sources(const std::vector<Source>& sources);
  void OneSource(const Source& source);

  Flavour m_flavour;
  SqlText m_sql;
  std::size_t m_taken = 0;
};

}  // namespace orxdb
