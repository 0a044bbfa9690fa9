#include "database/operations/ExpressionTranslator.h"

#include <algorithm>
#include <array>
#include <utility>

#include "database/operations/DaoException.h"

namespace orxdb {
namespace {

constexpr int kDeepestNesting = 100;
/// Each operator copies what stands before it, so that endless chains of them would take for ever.
constexpr int kMostOperations = 5000;
/// Some patterns use an argument twice, so that nesting them doubles the SQL at every level.
constexpr std::size_t kLongestSql = 1'000'000;

/// Words that never are a name unless bracketed.
constexpr std::array kReservedWords = {
    "AND",    "AS", "ASC",   "BETWEEN", "BY",     "DESC", "DISTINCT", "EXISTS", "FROM", "GROUP",
    "HAVING", "IN", "INNER", "IS",      "JOIN",   "LEFT", "LIKE",     "MOD",    "NOT",  "NULL",
    "ON",     "OR", "ORDER", "RIGHT",   "SELECT", "TOP",  "UNION",    "WHERE",  "WITH", "XOR"};

/// A function of the dialect: `$1` to `$3` of the pattern are the arguments.
struct Function {
  const char* name = "";
  std::size_t fewest = 0;
  std::size_t most = 0;
  const char* pattern = "";
  ValueKind kind = ValueKind::Unknown;
  const char* lastArgument = "";  ///< put in when the optional last argument is missing
};

/// Kinds that follow from an argument instead: of IIf and Nz.
constexpr ValueKind kOfArgument = ValueKind::Unknown;

constexpr std::array kFunctions = {
    Function{"iif", 3, 3, "iif($1, $2, $3)", kOfArgument},
    Function{"nz", 1, 2, "ifnull($1, $2)", kOfArgument, "''"},
    Function{"isnull", 1, 1, "($1 IS NULL)", ValueKind::Condition},
    Function{"len", 1, 1, "length($1)", ValueKind::Number},
    Function{"left", 2, 2, "substr($1, 1, max($2, 0))", ValueKind::Text},
    Function{"right", 2, 2, "iif($2 > 0, substr($1, -($2)), '')", ValueKind::Text},
    Function{"mid", 2, 3, "substr($1, $2, $3)", ValueKind::Text, "2147483647"},
    Function{"ucase", 1, 1, "upper($1)", ValueKind::Text},
    Function{"lcase", 1, 1, "lower($1)", ValueKind::Text},
    Function{"trim", 1, 1, "trim($1)", ValueKind::Text},
    Function{"ltrim", 1, 1, "ltrim($1)", ValueKind::Text},
    Function{"rtrim", 1, 1, "rtrim($1)", ValueKind::Text},
    Function{"instr", 2, 2, "orx_instr(1, $1, $2)", ValueKind::Number},
    Function{"instr", 3, 3, "orx_instr($1, $2, $3)", ValueKind::Number},
    Function{"val", 1, 1, "orx_val($1)", ValueKind::Number},
    Function{"cint", 1, 1, "CAST(orx_round($1, 0) AS INTEGER)", ValueKind::Number},
    Function{"clng", 1, 1, "CAST(orx_round($1, 0) AS INTEGER)", ValueKind::Number},
    Function{"cdbl", 1, 1, "CAST($1 AS REAL)", ValueKind::Number},
    Function{"cstr", 1, 1, "orx_text($1)", ValueKind::Text},
    Function{"abs", 1, 1, "abs($1)", ValueKind::Number},
    Function{"int", 1, 1, "orx_floor($1)", ValueKind::Number},
    Function{"fix", 1, 1, "orx_fix($1)", ValueKind::Number},
    Function{"round", 1, 2, "orx_round($1, $2)", ValueKind::Number, "0"},
    Function{"sgn", 1, 1, "(($1 > 0) - ($1 < 0))", ValueKind::Number},
    Function{"year", 1, 1, "CAST(strftime('%Y', $1) AS INTEGER)", ValueKind::Number},
    Function{"month", 1, 1, "CAST(strftime('%m', $1) AS INTEGER)", ValueKind::Number},
    Function{"day", 1, 1, "CAST(strftime('%d', $1) AS INTEGER)", ValueKind::Number},
    Function{"date", 0, 0, "datetime(date('now', 'localtime'))", ValueKind::Date},
    Function{"now", 0, 0, "datetime('now', 'localtime')", ValueKind::Date},
    Function{"dateserial", 3, 3,
             "datetime(format('%04d-01-01', $1), format('%+d months', $2 - 1), "
             "format('%+d days', $3 - 1))",
             ValueKind::Date},
    Function{"count", 1, 1, "count($1)", ValueKind::Number},
    Function{"sum", 1, 1, "sum($1)", ValueKind::Number},
    Function{"avg", 1, 1, "avg($1)", ValueKind::Number},
    Function{"min", 1, 1, "min($1)", kOfArgument},
    Function{"max", 1, 1, "max($1)", kOfArgument}};

Expression Made(SqlText sql, ValueKind kind) {
  Expression expression;
  expression.sql = std::move(sql);
  expression.kind = kind;
  return expression;
}

Expression Constant(SqlValue value, ValueKind kind) {
  Expression expression = Made({"?", {std::move(value)}}, kind);
  expression.constant = true;
  return expression;
}

/// The pattern with `$n` replaced by the n-th part.
SqlText Fill(std::string_view pattern, const std::vector<SqlText>& parts) {
  SqlText sql;
  for (std::size_t i = 0; i < pattern.size(); ++i) {
    if (pattern[i] == '$') {
      sql.Append(parts[static_cast<std::size_t>(pattern[++i] - '1')]);
    } else {
      sql.text += pattern[i];
    }
  }
  if (sql.text.size() > kLongestSql) {
    throw CDaoException(DaoError::Syntax, "The text asks for too much at once");
  }
  return sql;
}

/// Any value as text, null as empty.
SqlText AsJoinedText(const Expression& expression) {
  return Fill(expression.kind == ValueKind::Text ? "ifnull($1, '')" : "ifnull(orx_text($1), '')",
              {AsValue(expression)});
}

SqlText Collated(const SqlText& sql, bool text) {
  return text ? Fill("$1 COLLATE NOCASE", {sql}) : sql;
}

/// Whether one literal stands behind another in the database's order; only known for literals of
/// one type.
bool StandsBehind(const SqlValue& a, const SqlValue& b) {
  const CellView x = CellOf(a);
  const CellView y = CellOf(b);
  if (x.kind == CellView::Kind::Text && y.kind == x.kind) {
    return FoldedName(x.text) > FoldedName(y.text);
  }
  const auto number = [](const CellView& cell) {
    return cell.kind == CellView::Kind::Integer ? static_cast<double>(cell.integer) : cell.real;
  };
  return x.kind != CellView::Kind::Text && y.kind != CellView::Kind::Text && number(x) > number(y);
}

}  // namespace

SqlText AsValue(const Expression& expression) {
  return expression.kind == ValueKind::Condition ? Fill("-($1)", {expression.sql}) : expression.sql;
}

bool IsReserved(const Token& token) noexcept {
  return std::any_of(kReservedWords.begin(), kReservedWords.end(),
                     [&](const char* word) { return token.IsWord(word); });
}

ExpressionTranslator::Nesting::Nesting(int& depth) : m_depth(depth) {
  if (m_depth >= kDeepestNesting) Fail("The text is nested too deeply");
  ++m_depth;
}

SqlText ExpressionTranslator::Criteria(const NameScope& scope) {
  m_scopes.push_back({scope});
  Expression condition = Condition();
  if (Next().kind != Token::Kind::End) Fail("The condition ends before its text does");
  return std::move(condition.sql);
}

const Token& ExpressionTranslator::Next(std::size_t ahead) const {
  return m_tokens[std::min(m_at + ahead, m_tokens.size() - 1)];
}

bool ExpressionTranslator::Skip(std::string_view symbolOrWord) {
  if (!Next().IsSymbol(symbolOrWord) && !Next().IsWord(symbolOrWord)) return false;
  ++m_at;
  return true;
}

void ExpressionTranslator::Expect(std::string_view symbolOrWord) {
  if (!Skip(symbolOrWord)) {
    Fail("Expected " + std::string(symbolOrWord) + " before '" + Next().text + "'");
  }
}

std::string ExpressionTranslator::ExpectName() {
  const Token& token = Next();
  if (!token.IsName() || IsReserved(token)) Fail("Expected a name before '" + token.text + "'");
  ++m_at;
  return token.text;
}

void ExpressionTranslator::CountOperation() {
  if (++m_operations > kMostOperations) Fail("The text has too many operators");
}

void ExpressionTranslator::Fail(const std::string& what) {
  throw CDaoException(DaoError::Syntax, what);
}

// --- Logic

Expression ExpressionTranslator::Condition() {
  Expression left = Disjunction();
  while (Skip("XOR")) {
    CountOperation();
    const Expression right = Disjunction();
    left = Made(Fill("((($1) <> 0) <> (($2) <> 0))", {left.sql, right.sql}), ValueKind::Condition);
  }
  return left;
}

Expression ExpressionTranslator::Disjunction() {
  return LogicalChain(&ExpressionTranslator::Conjunction, "OR");
}

Expression ExpressionTranslator::Conjunction() {
  return LogicalChain(&ExpressionTranslator::Negation, "AND");
}

Expression ExpressionTranslator::LogicalChain(Level operand, std::string_view word) {
  Expression left = (this->*operand)();
  if (!Next().IsWord(word)) return left;
  SqlText chain = Fill("($1", {left.sql});
  while (Skip(word)) {
    chain.Append(" " + std::string(word) + " ");
    chain.Append((this->*operand)().sql);
  }
  chain.Append(")");
  return Made(std::move(chain), ValueKind::Condition);
}

Expression ExpressionTranslator::Negation() {
  if (!Skip("NOT")) return Comparison();
  const Nesting nesting(m_depth);
  return Made(Fill("(NOT $1)", {Negation().sql}), ValueKind::Condition);
}

// --- Comparisons

Expression ExpressionTranslator::Comparison() {
  Expression left = Concatenation();
  for (;; CountOperation()) {
    const Token& token = Next();
    if (token.kind == Token::Kind::Symbol &&
        (token.text == "=" || token.text == "<>" || token.text == "<" || token.text == ">" ||
         token.text == "<=" || token.text == ">=")) {
      ++m_at;
      left = Compared(left, token.text, Concatenation());
    } else if (Skip("IS")) {
      const bool negated = Skip("NOT");
      Expect("NULL");
      left = Made(Fill(negated ? "($1 IS NOT NULL)" : "($1 IS NULL)", {AsValue(left)}),
                  ValueKind::Condition);
    } else {
      const bool negated = token.IsWord("NOT") && Next(1).kind == Token::Kind::Word;
      if (negated) ++m_at;
      if (Skip("LIKE")) {
        left = Like(left);
      } else if (Skip("BETWEEN")) {
        left = Between(left);
      } else if (Skip("IN")) {
        left = In(left);
      } else if (negated) {
        Fail("NOT stands where a comparison was expected");
      } else {
        return left;
      }
      if (negated) left = Made(Fill("(NOT $1)", {left.sql}), ValueKind::Condition);
    }
  }
}

Expression ExpressionTranslator::Compared(const Expression& left, std::string_view comparison,
                                          const Expression& right) {
  const bool text = left.kind == ValueKind::Text || right.kind == ValueKind::Text;
  SqlText sql = Fill("($1 ", {AsValue(left)});
  sql.Append(comparison);
  sql.Append(" ");
  sql.Append(Collated(AsValue(right), text));
  sql.Append(")");
  return Made(std::move(sql), ValueKind::Condition);
}

Expression ExpressionTranslator::Like(const Expression& left) {
  const Expression pattern = Concatenation();
  // Numbers are compared as people write them: 6, not 6.0.
  const char* const form =
      left.kind == ValueKind::Text ? "orx_like($1, $2)" : "orx_like($1, orx_text($2))";
  return Made(Fill(form, {AsValue(pattern), AsValue(left)}), ValueKind::Condition);
}

Expression ExpressionTranslator::Between(const Expression& left) {
  Expression low = Concatenation();
  Expect("AND");
  Expression high = Concatenation();
  const bool text = left.kind == ValueKind::Text;
  const SqlText subject = Collated(AsValue(left), text);
  if (low.constant && high.constant) {
    if (StandsBehind(low.sql.values.front(), high.sql.values.front())) std::swap(low, high);
    return Made(Fill("($1 BETWEEN $2 AND $3)", {subject, low.sql, high.sql}), ValueKind::Condition);
  }
  return Made(Fill("($1 BETWEEN $2 AND $3 OR $1 BETWEEN $3 AND $2)",
                   {subject, AsValue(low), AsValue(high)}),
              ValueKind::Condition);
}

Expression ExpressionTranslator::In(const Expression& left) {
  const Nesting nesting(m_depth);
  Expect("(");
  SqlText members;
  bool text = left.kind == ValueKind::Text;
  if (Next().IsWord("SELECT")) {
    members = Select().Ordered();
  } else {
    do {
      const Expression member = Concatenation();
      text = text || member.kind == ValueKind::Text;
      if (!members.text.empty()) members.Append(", ");
      members.Append(AsValue(member));
    } while (Skip(","));
  }
  Expect(")");
  return Made(Fill("($1 IN ($2))", {Collated(AsValue(left), text), members}), ValueKind::Condition);
}

// --- Text and arithmetic

Expression ExpressionTranslator::Concatenation() {
  Expression left = Sum();
  if (!Next().IsSymbol("&")) return left;
  SqlText chain = Fill("($1", {AsJoinedText(left)});
  while (Skip("&")) chain.Append(Fill(" || $1", {AsJoinedText(Sum())}));
  chain.Append(")");
  return Made(std::move(chain), ValueKind::Text);
}

Expression ExpressionTranslator::Sum() {
  Expression left = Modulus();
  while (Next().IsSymbol("+") || Next().IsSymbol("-")) {
    CountOperation();
    const bool plus = Next().text == "+";
    ++m_at;
    const Expression right = Modulus();
    const std::vector<SqlText> parts = {AsValue(left), AsValue(right)};
    if (plus && left.kind == ValueKind::Text && right.kind == ValueKind::Text) {
      left = Made(Fill("($1 || $2)", parts), ValueKind::Text);
    } else if (left.kind == ValueKind::Date && right.kind != ValueKind::Date) {
      left = Made(
          Fill(plus ? "datetime($1, ($2) || ' days')" : "datetime($1, -($2) || ' days')", parts),
          ValueKind::Date);
    } else if (!plus && left.kind == ValueKind::Date) {
      left = Made(Fill("(julianday($1) - julianday($2))", parts), ValueKind::Number);
    } else {
      left = Made(Fill(plus ? "($1 + $2)" : "($1 - $2)", parts), ValueKind::Number);
    }
  }
  return left;
}

Expression ExpressionTranslator::Modulus() {
  return FunctionChain(&ExpressionTranslator::WholeQuotient, "MOD", "orx_remainder($1, $2)");
}

Expression ExpressionTranslator::WholeQuotient() {
  return FunctionChain(&ExpressionTranslator::Product, "\\", "orx_divide($1, $2)");
}

Expression ExpressionTranslator::FunctionChain(Level operand, std::string_view symbolOrWord,
                                               const char* function) {
  Expression left = (this->*operand)();
  while (Skip(symbolOrWord)) {
    CountOperation();
    const Expression right = (this->*operand)();
    left = Made(Fill(function, {AsValue(left), AsValue(right)}), ValueKind::Number);
  }
  return left;
}

Expression ExpressionTranslator::Product() {
  Expression left = Sign();
  while (Next().IsSymbol("*") || Next().IsSymbol("/")) {
    CountOperation();
    const char* pattern = Next().text == "*" ? "($1 * $2)" : "($1 * 1.0 / $2)";
    ++m_at;
    const Expression right = Sign();
    left = Made(Fill(pattern, {AsValue(left), AsValue(right)}), ValueKind::Number);
  }
  return left;
}

Expression ExpressionTranslator::Sign() {
  while (Skip("+")) {
  }
  if (!Skip("-")) return Power();
  const Nesting nesting(m_depth);
  Expression operand = Sign();
  if (operand.constant && operand.kind == ValueKind::Number) {
    SqlValue& value = operand.sql.values.front();
    if (auto* integer = std::get_if<std::int64_t>(&value)) *integer = -*integer;
    if (auto* real = std::get_if<double>(&value)) *real = -*real;
    return operand;
  }
  return Made(Fill("(- $1)", {AsValue(operand)}), ValueKind::Number);
}

Expression ExpressionTranslator::Power() {
  return FunctionChain(&ExpressionTranslator::Primary, "^", "orx_power($1, $2)");
}

Expression ExpressionTranslator::Primary() {
  const Nesting nesting(m_depth);
  const Token token = Next();
  switch (token.kind) {
    case Token::Kind::Number:
      ++m_at;
      return Constant(token.number, ValueKind::Number);
    case Token::Kind::Text:
      ++m_at;
      return Constant(token.text, ValueKind::Text);
    case Token::Kind::Date:
      ++m_at;
      return Constant(token.text, ValueKind::Date);
    case Token::Kind::Name:
      return NamedColumn();
    default:
      break;
  }
  if (Skip("(")) {
    Expression inner = Next().IsWord("SELECT")
                           ? Made(Fill("($1)", {Select().Ordered()}), ValueKind::Unknown)
                           : Condition();
    Expect(")");
    return inner;
  }
  if (Skip("NULL")) return Made({"NULL", {}}, ValueKind::Unknown);
  if (token.kind == Token::Kind::Word && Next(1).IsSymbol("(")) {
    m_at += 2;
    return Call(FoldedName(token.text));
  }
  for (const auto& [word, value] : {std::pair{"TRUE", -1}, {"YES", -1}, {"FALSE", 0}, {"NO", 0}}) {
    if (Skip(word)) return Constant(std::int64_t{value}, ValueKind::Number);
  }
  return NamedColumn();
}

Expression ExpressionTranslator::Call(const std::string& function) {
  if (function == "exists") {
    const SqlText rows = Select().Ordered();
    Expect(")");
    return Made(Fill("EXISTS ($1)", {rows}), ValueKind::Condition);
  }
  std::vector<SqlText> arguments;
  std::vector<ValueKind> kinds;
  if (function == "count" && Skip("*")) {
    arguments.push_back({"*", {}});
    kinds.push_back(ValueKind::Unknown);
    Expect(")");
  } else if (!Skip(")")) {
    do {
      const Expression argument = Condition();
      arguments.push_back(AsValue(argument));
      kinds.push_back(argument.kind == ValueKind::Condition ? ValueKind::Number : argument.kind);
    } while (Skip(","));
    Expect(")");
  }
  for (const Function& each : kFunctions) {
    if (function != each.name || arguments.size() < each.fewest || arguments.size() > each.most) {
      continue;
    }
    if (arguments.size() < each.most) {
      const bool zero = function == "nz" && kinds.front() == ValueKind::Number;
      arguments.push_back({zero ? "0" : each.lastArgument, {}});
    }
    ValueKind kind = each.kind;
    if (kind == kOfArgument) kind = kinds[function == "iif" ? 1 : 0];
    return Made(Fill(each.pattern, arguments), kind);
  }
  Fail("There is no function " + function + " with that many arguments");
}

}  // namespace orxdb
