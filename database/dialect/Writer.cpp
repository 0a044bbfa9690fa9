#include "database/dialect/Writer.h"

#include <algorithm>
#include <utility>

#include "database/dialect/Lexer.h"
#include "database/dialect/TextRanges.h"

namespace orxdb {
namespace {

/// Some patterns use an operand twice, so that nesting them doubles the SQL at every level.
constexpr std::size_t kLongestSql = 1'000'000;

constexpr const Operation& kFlagField = OperationNamed("flag field");
constexpr const Operation& kDateField = OperationNamed("date field");
constexpr const Operation& kMoneyField = OperationNamed("money field");
constexpr const Operation& kConditionAsValue = OperationNamed("condition as value");
constexpr const Operation& kValueAsCondition = OperationNamed("value as condition");
constexpr const Operation& kAsText = OperationNamed("as text");
constexpr const Operation& kAsCompared = OperationNamed("as compared");
constexpr const Operation& kAsComparedPlainly = OperationNamed("as compared with plain letters");
constexpr const Operation& kRowsOfSelect = OperationNamed("rows of select");

bool IsText(const Expression& expression) {
  return expression.kind == ValueKind::Text;
}

/// Whether the first operand is compared with plain literals alone, or is one.
bool ComparesPlainly(const std::vector<Expression>& operands) {
  return IsPlainLiteral(operands.front()) ||
         std::all_of(operands.begin() + 1, operands.end(), IsPlainLiteral);
}

}  // namespace

SqlText Writer::Take() {
  m_taken += m_sql.text.size();
  return std::exchange(m_sql, {});
}

void Writer::Append(std::string_view text) {
  m_sql.Append(text);
  if (m_taken + m_sql.text.size() > kLongestSql) RaiseSyntax("The text asks for too much at once");
}

/// The operation's SQL with what `print` writes as its operand.
template <typename Print>
void Writer::Wrap(const Operation& operation, Print print) {
  const std::string_view pattern = operation.*m_flavour;
  const std::size_t operand = pattern.find("$1");
  Append(pattern.substr(0, operand));
  print();
  Append(pattern.substr(operand + 2));
}

// --- Expressions

void Writer::Condition(const Expression& expression) {
  if (expression.kind == ValueKind::Condition) {
    Plain(expression);
  } else {
    Wrap(kValueAsCondition, [&] { Plain(expression); });
  }
}

void Writer::OrderTerm(const Expression& expression) {
  const auto* literal = std::get_if<SqlValue>(&expression.node);
  const auto* place = literal == nullptr ? nullptr : std::get_if<std::int64_t>(literal);
  if (place != nullptr) {  // of a column that may hold texts
    Wrap(kAsCompared, [&] { Append(std::to_string(*place)); });
  } else if (IsText(expression)) {
    Wrap(kAsCompared, [&] { Value(expression); });
  } else {
    Value(expression);
  }
}

void Writer::PlainOrderTerm(const Expression& expression) {
  Wrap(kAsComparedPlainly, [&] { Value(expression); });
}

void Writer::Value(const Expression& expression) {
  if (expression.kind != ValueKind::Condition) {
    Plain(expression);
  } else {
    Wrap(kConditionAsValue, [&] { Plain(expression); });
  }
}

/// The expression as it stands, be it a condition or a value.
void Writer::Plain(const Expression& expression) {
  if (const auto* value = std::get_if<SqlValue>(&expression.node)) {
    Literal(*value);
  } else if (const auto* field = std::get_if<FieldName>(&expression.node)) {
    switch (expression.kind) {
      case ValueKind::Flag:
        return Wrap(kFlagField, [&] { Field(*field); });
      case ValueKind::Date:
        return Wrap(kDateField, [&] { Field(*field); });
      case ValueKind::Money:
        return Wrap(kMoneyField, [&] { Field(*field); });
      default:
        return Field(*field);
    }
  } else if (const auto* call = std::get_if<Call>(&expression.node)) {
    Fill(call->operation->*m_flavour, call->operands);
  } else {
    Append("(");
    Whole(*std::get<std::unique_ptr<Select>>(expression.node), true);
    Append(")");
  }
}

void Writer::Literal(const SqlValue& value) {
  if (std::holds_alternative<std::monostate>(value)) return Append("NULL");
  Append("?");
  m_sql.values.push_back(value);
}

void Writer::Field(const FieldName& field) {
  if (!field.qualifier.empty()) Append(Quoted(field.qualifier) + ".");
  Append(Quoted(field.name));
}

/// The pattern with operands in place of its marks; `$*` is the operand of that index.
void Writer::Fill(std::string_view pattern, const std::vector<Expression>& operands,
                  std::size_t repeated) {
  std::size_t named = 0;
  while (!pattern.empty()) {
    const std::size_t mark = std::min(pattern.find_first_of("${"), pattern.size());
    Append(pattern.substr(0, mark));
    pattern.remove_prefix(mark);
    if (pattern.empty()) return;
    if (pattern.front() == '{') {
      const std::size_t end = pattern.find('}');
      for (std::size_t i = named; i < operands.size(); ++i) {
        Fill(pattern.substr(1, end - 1), operands, i);
      }
      pattern.remove_prefix(end + 1);
      continue;
    }
    const char role = pattern[1] >= 'a' ? pattern[1] : 'v';
    const char place = pattern[role == 'v' ? 1 : 2];
    pattern.remove_prefix(role == 'v' ? 2 : 3);
    if (place != '*') named = static_cast<std::size_t>(place - '0');
    Operand(role, operands[place == '*' ? repeated : named - 1], operands);
  }
}

void Writer::Operand(char role, const Expression& operand, const std::vector<Expression>& all) {
  if (role == 'c') {
    Condition(operand);
  } else if (role == 't' && !IsText(operand)) {
    Wrap(kAsText, [&] { Value(operand); });
  } else if (role == 'k' && std::any_of(all.begin(), all.end(), IsText)) {
    Wrap(ComparesPlainly(all) ? kAsComparedPlainly : kAsCompared, [&] { Value(operand); });
  } else {
    Value(operand);
  }
}

// --- SELECT

/// With its ordering and limit, in parentheses elsewhere.
void Writer::Whole(const Select& select, bool asValues) {
  Rows(select, asValues);
  const char* separator = " ORDER BY ";
  for (const OrderItem& item : select.order) {
    Append(std::exchange(separator, ", "));
    OrderTerm(item.value);
    if (item.descending) Append(" DESC");
  }
  if (const auto top = select.parts.front().top) Append(" LIMIT " + std::to_string(*top));
}

/// `asValues`: fields as they are compared, not as they are stored.
void Writer::Rows(const Select& select, bool asValues) {
  for (const Query& part : select.parts) {
    if (&part != &select.parts.front()) Append(part.unionAll ? " UNION ALL " : " UNION ");
    Part(part, asValues);
  }
}

void Writer::Part(const Query& query, bool asValues) {
  const char* separator = query.distinct ? "SELECT DISTINCT " : "SELECT ";
  for (const SelectItem& item : query.items) {
    Append(std::exchange(separator, ", "));
    Item(item, asValues);
  }
  Append(" FROM ");
  Sources(query.sources);
  if (query.where) {
    Append(" WHERE ");
    Condition(*query.where);
  }
  separator = " GROUP BY ";
  for (const Expression& group : query.groups) {
    Append(std::exchange(separator, ", "));
    Value(group);
  }
  if (query.having) {
    Append(" HAVING ");
    Condition(*query.having);
  }
}

void Writer::Item(const SelectItem& item, bool asValue) {
  if (!item.value) return Append(item.name.empty() ? "*" : Quoted(item.name) + ".*");
  const auto* field = std::get_if<FieldName>(&item.value->node);
  if (field != nullptr && !asValue) {
    Field(*field);
  } else {
    Value(*item.value);
  }
  Append(" AS " + Quoted(item.name));
}

void Writer::Sources(const std::vector<Source>& sources) {
  for (const Source& source : sources) {
    if (&source != &sources.front()) {
      switch (source.join) {
        case Source::Join::Comma:
          Append(", ");
          break;
        case Source::Join::Inner:
          Append(" JOIN ");
          break;
        case Source::Join::Left:
          Append(" LEFT JOIN ");
          break;
        case Source::Join::Right:
          Append(" RIGHT JOIN ");
          break;
      }
    }
    OneSource(source);
    if (source.condition) {
      Append(" ON ");
      Condition(*source.condition);
    }
  }
}

void Writer::OneSource(const Source& source) {
  if (source.rows) {
    Wrap(kRowsOfSelect, [&] { Whole(*source.rows, false); });
  } else if (!source.group.empty()) {
    Append("(");
    Sources(source.group);
    Append(")");
    return;
  } else {
    Append(Quoted(source.name));
    if (source.alias == source.name) return;
  }
  Append(" AS " + Quoted(source.alias));
}

}  // namespace orxdb
