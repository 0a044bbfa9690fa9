#include "database/dialect/Grammar.h"

#include <algorithm>
#include <array>
#include <utility>

#include "database/dialect/Parser.h"
#include "platform/framework/LetterCase.h"

namespace orxdb {
namespace {

constexpr int kDeepestNesting = 100;
/// Of a tree, nested or not; what walks it needs some stack for each level.
constexpr int kDeepestTree = 500;

/// Words that never are a name unless bracketed.
constexpr std::array kReservedWords = {
    "AND",    "AS", "ASC",   "BETWEEN", "BY",     "DESC", "DISTINCT", "EXISTS", "FROM", "GROUP",
    "HAVING", "IN", "INNER", "IS",      "JOIN",   "LEFT", "LIKE",     "MOD",    "NOT",  "NULL",
    "ON",     "OR", "ORDER", "RIGHT",   "SELECT", "TOP",  "UNION",    "WHERE",  "WITH", "XOR"};

enum Strength {
  kXor,
  kOr,
  kAnd,
  kNot,
  kComparison,
  kJoin,
  kSum,
  kModulus,
  kWhole,
  kProduct,
  kSign,
  kPower
};

struct Infix {
  const char* sign;
  int strength;
  bool chain = false;  ///< a op b op c is one operation
};

constexpr auto kInfixes = std::to_array<Infix>({{"XOR", kXor},
                                                {"OR", kOr, true},
                                                {"AND", kAnd, true},
                                                {"=", kComparison},
                                                {"<>", kComparison},
                                                {"<", kComparison},
                                                {">", kComparison},
                                                {"<=", kComparison},
                                                {">=", kComparison},
                                                {"&", kJoin, true},
                                                {"+", kSum},
                                                {"-", kSum},
                                                {"MOD", kModulus},
                                                {"\\", kWhole},
                                                {"*", kProduct},
                                                {"/", kProduct},
                                                {"^", kPower}});

Expression Literal(SqlValue value, ValueKind kind) {
  return {std::move(value), kind};
}

Expression Made(std::string name, std::vector<Expression> operands) {
  int depth = 0;
  for (const Expression& operand : operands) depth = std::max(depth, operand.depth);
  if (depth >= kDeepestTree) RaiseSyntax("The text has too many operators");
  return {Call{std::move(name), std::move(operands)}, ValueKind::Unknown, depth + 1};
}

template <typename... Operands>
Expression Made(std::string name, Expression first, Operands... others) {
  std::vector<Expression> operands;
  operands.reserve(1 + sizeof...(others));
  operands.push_back(std::move(first));
  (operands.push_back(std::move(others)), ...);
  return Made(std::move(name), std::move(operands));
}

/// left op right; where operations of the name make chains, right becomes one more operand.
Expression Joined(const Infix& infix, Expression left, Expression right) {
  auto* call = std::get_if<Call>(&left.node);
  if (!infix.chain || call == nullptr || call->name != infix.sign) {
    return Made(infix.sign, std::move(left), std::move(right));
  }
  left.depth = std::max(left.depth, right.depth + 1);
  if (left.depth > kDeepestTree) RaiseSyntax("The text has too many operators");
  call->operands.push_back(std::move(right));
  return left;
}

Expression Negative(Expression operand) {
  if (auto* value = std::get_if<SqlValue>(&operand.node)) {
    if (auto* integer = std::get_if<std::int64_t>(value)) {
      *integer = -*integer;
      return operand;
    }
    if (auto* real = std::get_if<double>(value)) {
      *real = -*real;
      return operand;
    }
  }
  return Made("NEGATIVE", std::move(operand));
}

/// Whether one literal stands behind another in the database's order; only known for literals of
/// one type.
bool StandsBehind(const SqlValue& a, const SqlValue& b) {
  const CellView x = CellOf(a);
  const CellView y = CellOf(b);
  if (x.kind == CellView::Kind::Text && y.kind == x.kind) {
    return CompareLetters(x.text, y.text) > 0;
  }
  const auto number = [](const CellView& cell) {
    return cell.kind == CellView::Kind::Integer ? static_cast<double>(cell.integer) : cell.real;
  };
  return x.kind != CellView::Kind::Text && y.kind != CellView::Kind::Text && number(x) > number(y);
}

}  // namespace

bool IsReserved(const Token& token) noexcept {
  return std::any_of(kReservedWords.begin(), kReservedWords.end(),
                     [&](const char* word) { return token.IsWord(word); });
}

Parser::Nesting::Nesting(int& depth) : m_depth(depth) {
  if (m_depth >= kDeepestNesting) RaiseSyntax("The text is nested too deeply");
  ++m_depth;
}

const Token& Parser::Next(std::size_t ahead) {
  while (m_tokens.size() <= ahead) m_tokens.push_back(m_lexer.Next());
  return m_tokens[ahead];
}

Token Parser::Take() {
  Next();
  Token token = std::move(m_tokens.front());
  m_tokens.pop_front();
  return token;
}

bool Parser::Skip(std::string_view symbolOrWord) {
  if (!Next().IsSymbol(symbolOrWord) && !Next().IsWord(symbolOrWord)) return false;
  Take();
  return true;
}

void Parser::Expect(std::string_view symbolOrWord) {
  if (!Skip(symbolOrWord)) {
    RaiseSyntax("Expected " + std::string(symbolOrWord) + " before '" + Next().text + "'");
  }
}

std::string Parser::ExpectName() {
  if (!Next().IsName() || IsReserved(Next())) {
    RaiseSyntax("Expected a name before '" + Next().text + "'");
  }
  return Take().text;
}

// --- Expressions

Expression Parser::Condition() {
  Expression expression = Term(kXor);
  m_deepest = std::max(m_deepest, expression.depth);
  return expression;
}

/// An expression of operators that bind at least as strongly.
Expression Parser::Term(int weakest) {
  Expression left = Prefixed(weakest);
  for (;;) {
    const auto* const infix = std::find_if(
        kInfixes.begin(), kInfixes.end(),
        [&](const Infix& each) { return Next().IsSymbol(each.sign) || Next().IsWord(each.sign); });
    if (infix != kInfixes.end()) {
      if (infix->strength < weakest) return left;
      Take();
      left = Joined(*infix, std::move(left), Term(infix->strength + 1));
    } else if (weakest > kComparison || !Comparison(left)) {
      return left;
    }
  }
}

Expression Parser::Prefixed(int weakest) {
  if (weakest <= kNot && Skip("NOT")) {
    const Nesting nesting(m_nesting);
    return Made("NOT", Term(kNot));
  }
  while (Skip("+")) {
  }
  if (!Skip("-")) return Primary();
  const Nesting nesting(m_nesting);
  return Negative(Term(std::max<int>(weakest, kSign)));
}

/// Reads on where IS, LIKE, BETWEEN or IN follow.
bool Parser::Comparison(Expression& left) {
  if (Skip("IS")) {
    const bool negated = Skip("NOT");
    Expect("NULL");
    left = Made(negated ? "IS NOT NULL" : "IS NULL", std::move(left));
    return true;
  }
  const bool negated = Next().IsWord("NOT") && Next(1).kind == Token::Kind::Word;
  if (negated) Take();
  if (Skip("LIKE")) {
    left = Made("LIKE", std::move(left), Term(kComparison + 1));
  } else if (Skip("BETWEEN")) {
    left = Between(std::move(left));
  } else if (Skip("IN")) {
    left = In(std::move(left));
  } else {
    if (negated) RaiseSyntax("NOT stands where a comparison was expected");
    return false;
  }
  if (negated) left = Made("NOT", std::move(left));
  return true;
}

Expression Parser::Between(Expression left) {
  Expression low = Term(kComparison + 1);
  Expect("AND");
  Expression high = Term(kComparison + 1);
  const char* name = "BETWEEN EITHER";
  if (low.kind != ValueKind::Unknown && high.kind != ValueKind::Unknown) {
    name = "BETWEEN";
    if (StandsBehind(std::get<SqlValue>(low.node), std::get<SqlValue>(high.node))) {
      std::swap(low, high);
    }
  }
  return Made(name, std::move(left), std::move(low), std::move(high));
}

Expression Parser::In(Expression left) {
  const Nesting nesting(m_nesting);
  Expect("(");
  if (Next().IsWord("SELECT")) return Made("IN SELECT", std::move(left), Rows());
  std::vector<Expression> operands;
  operands.push_back(std::move(left));
  do {
    operands.push_back(Term(kComparison + 1));
  } while (Skip(","));
  Expect(")");
  return Made("IN", std::move(operands));
}

Expression Parser::Primary() {
  const Nesting nesting(m_nesting);
  if (Skip("(")) {
    if (Next().IsWord("SELECT")) return Rows();
    Expression inner = Condition();
    Expect(")");
    return inner;
  }
  switch (Next().kind) {
    case Token::Kind::Number:
      return Literal(Take().number, ValueKind::Number);
    case Token::Kind::Text:
      return Literal(Take().text, ValueKind::Text);
    case Token::Kind::Date:
      return Literal(Take().text, ValueKind::Date);
    case Token::Kind::Word:
      break;
    default:
      return Field();
  }
  if (Skip("NULL")) return Literal({}, ValueKind::Unknown);
  if (Next(1).IsSymbol("(")) return Function();
  for (const auto& [word, value] : {std::pair{"TRUE", -1}, {"YES", -1}, {"FALSE", 0}, {"NO", 0}}) {
    if (Skip(word)) return Literal(std::int64_t{value}, ValueKind::Number);
  }
  return Field();
}

/// A SELECT behind its opening parenthesis, to the closing one.
Expression Parser::Rows() {
  const int outer = std::exchange(m_deepest, 0);
  auto select = std::make_unique<Select>(Selection());
  Expect(")");
  const int depth = std::exchange(m_deepest, outer) + 1;
  if (depth > kDeepestTree) RaiseSyntax("The text has too many operators");
  return {std::move(select), ValueKind::Unknown, depth};
}

Expression Parser::Function() {
  std::string name = FoldedName(Take().text);
  Expect("(");
  if (name == "exists") return Made("EXISTS", Rows());
  std::vector<Expression> operands;
  if (name == "count" && Skip("*")) {
    name = "count(*)";
  } else if (!Next().IsSymbol(")")) {
    do {
      operands.push_back(Condition());
    } while (Skip(","));
  }
  Expect(")");
  return Made(std::move(name), std::move(operands));
}

Expression Parser::Field() {
  FieldName field{{}, ExpectName()};
  if ((Next().IsSymbol(".") || Next().IsSymbol("!")) && Next(1).IsName()) {
    Take();
    field.qualifier = std::exchange(field.name, Take().text);
  }
  return {std::move(field)};
}

Expression ReadCondition(std::string_view text) {
  Parser parser(text);
  Expression condition = parser.Condition();
  parser.End("The condition ends before its text does");
  return condition;
}

}  // namespace orxdb
