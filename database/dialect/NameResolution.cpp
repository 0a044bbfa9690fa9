#include "database/dialect/NameResolution.h"

#include <algorithm>
#include <tuple>
#include <utility>

#include "database/dialect/Lexer.h"
#include "database/dialect/Operations.h"
#include "database/dialect/TextRanges.h"

namespace orxdb {
namespace {

struct Match {
  const NameScope* scope;
  const ScopeColumn* column;
};

/// Every column of the scopes that a test accepts.
template <typename Test>
std::vector<Match> Matches(const std::vector<const NameScope*>& scopes, Test test) {
  std::vector<Match> matches;
  for (const NameScope* scope : scopes) {
    for (const ScopeColumn& column : scope->columns) {
      if (test(*scope, column)) matches.push_back({scope, &column});
    }
  }
  return matches;
}

/// The columns that a name may mean, by the first rule that gives any: the column of that name
/// (of the qualifying source), the column whose very name is "qualifier.name", the columns that
/// come from that base table field.
std::vector<Match> Candidates(const std::vector<const NameScope*>& scopes,
                              const std::string& qualifier, const std::string& name) {
  auto matches = Matches(scopes, [&](const NameScope& scope, const ScopeColumn& column) {
    return SameName(column.name, name) && (qualifier.empty() || SameName(scope.name, qualifier));
  });
  if (!matches.empty()) return matches;
  const std::size_t dot = name.find('.');
  if (qualifier.empty() && dot != std::string::npos) {
    return Candidates(scopes, name.substr(0, dot), name.substr(dot + 1));
  }
  matches = Matches(scopes, [&](const NameScope&, const ScopeColumn& column) {
    return !qualifier.empty() && SameName(column.name, qualifier + "." + name);
  });
  if (!matches.empty()) return matches;
  return Matches(scopes, [&](const NameScope&, const ScopeColumn& column) {
    return SameName(column.sourceField, name) &&
           (qualifier.empty() || SameName(column.sourceTable, qualifier));
  });
}

bool Takes(const Operation& operation, const std::vector<Expression>& operands) {
  if (operands.size() < operation.fewest) return false;
  if (operands.size() > operation.fewest && !operation.TakesMore()) return false;
  for (std::size_t i = 0; i < operation.operands.size(); ++i) {
    const ValueKind wanted = operation.operands[i];
    if (wanted != ValueKind::Unknown && operands[i].kind != wanted) return false;
  }
  return true;
}

/// The kind of a value that is handed on; a condition becomes a number.
ValueKind KindOfValue(ValueKind kind) {
  return kind == ValueKind::Condition ? ValueKind::Number : kind;
}

}  // namespace

void NameResolution::Resolve(Expression& condition, const NameScope& scope) {
  m_scopes.push_back({&scope});
  Resolve(condition);
  m_scopes.pop_back();
}

void NameResolution::Resolve(Expression& expression) {
  if (auto* field = std::get_if<FieldName>(&expression.node)) {
    Resolve(*field, expression.kind);
  } else if (auto* call = std::get_if<Call>(&expression.node)) {
    Resolve(*call, expression.kind);
    AddTextRanges(expression);
  } else if (auto* rows = std::get_if<std::unique_ptr<Select>>(&expression.node)) {
    Resolve(**rows);
    const auto& columns = (*rows)->parts.front().columns;
    if (!columns.empty()) expression.kind = columns.front().kind;
  }
}

void NameResolution::Resolve(Call& call, ValueKind& kind) {
  for (Expression& operand : call.operands) Resolve(operand);
  const auto* const found = std::find_if(
      kOperations.begin(), kOperations.end(),
      [&](const Operation& each) { return each.name == call.name && Takes(each, call.operands); });
  if (found == kOperations.end()) {
    RaiseSyntax("There is no function " + call.name + " with that many arguments");
  }
  call.operation = found;
  m_aggregates = m_aggregates || found->aggregate;
  const std::size_t operand = found->result.operand;
  kind = operand == 0 ? found->result.kind : KindOfValue(call.operands[operand - 1].kind);
}

void NameResolution::Resolve(FieldName& field, ValueKind& kind) const {
  for (auto scopes = m_scopes.rbegin(); scopes != m_scopes.rend(); ++scopes) {
    const std::vector<Match> matches = Candidates(*scopes, field.qualifier, field.name);
    if (matches.empty()) continue;
    const Match& first = matches.front();
    for (const Match& each : matches) {
      // One base table field shown twice is no ambiguity; two sources or fields are.
      if (each.scope != first.scope ||
          std::tie(each.column->sourceTable, each.column->sourceField) !=
              std::tie(first.column->sourceTable, first.column->sourceField)) {
        RaiseSyntax("The name " + field.name + " could mean more than one field");
      }
    }
    field = {first.scope->alias, first.column->name, first.column};
    kind = first.column->kind;
    return;
  }
  const std::string qualifier = field.qualifier.empty() ? "" : field.qualifier + ".";
  RaiseSyntax("There is no field " + qualifier + field.name);
}

// --- SELECT

void NameResolution::Resolve(Select& select) {
  m_scopes.emplace_back();
  for (Query& part : select.parts) {
    m_scopes.back().clear();
    Resolve(part);
  }
  ResolveOrder(select);
  m_scopes.pop_back();
}

void NameResolution::Resolve(Query& query) {
  const bool outerAggregates = std::exchange(m_aggregates, false);
  const int outerComputed = std::exchange(m_computed, 0);
  Resolve(query.sources);
  for (SelectItem& item : query.items) Resolve(item, query.columns);
  if (query.where) Resolve(*query.where);
  for (Expression& group : query.groups) Resolve(group);
  if (query.having) Resolve(*query.having);
  m_computed = outerComputed;
  query.aggregates = std::exchange(m_aggregates, outerAggregates);
}

/// Fields may be named from the source on that brings them.
void NameResolution::Resolve(std::vector<Source>& sources) {
  for (Source& source : sources) {
    Resolve(source.group);
    if (source.rows) Resolve(*source.rows);
    if (!source.alias.empty()) {
      m_made.push_back(
          {source.alias, source.alias,
           source.rows ? source.rows->parts.front().columns : m_sources.ColumnsOf(source.name)});
      m_scopes.back().push_back(&m_made.back());
    }
    if (source.condition) Resolve(*source.condition);
  }
}

/// Resolves an item, names it as the desktop dialect does, and adds the columns that it gives.
void NameResolution::Resolve(SelectItem& item, std::vector<ScopeColumn>& columns) {
  if (!item.value) {
    bool known = item.name.empty();
    for (const NameScope* scope : m_scopes.back()) {
      if (!item.name.empty() && !SameName(scope->name, item.name)) continue;
      columns.insert(columns.end(), scope->columns.begin(), scope->columns.end());
      known = true;
    }
    if (!known) RaiseSyntax("There is no table " + item.name + " in the query");
    return;
  }
  Resolve(*item.value);
  ScopeColumn column{"", KindOfValue(item.value->kind), "", ""};
  if (const auto* field = std::get_if<FieldName>(&item.value->node)) {
    column = *field->column;
  } else {
    column.name = "Expr" + std::to_string(1000 + m_computed++);
  }
  if (item.name.empty()) item.name = column.name;
  column.name = item.name;
  columns.push_back(std::move(column));
}

/// An ordering may use the names that the items were given; that of a union only the columns.
void NameResolution::ResolveOrder(Select& select) {
  const Query& query = select.parts.front();
  NameScope given;
  if (select.parts.size() > 1) {
    m_scopes.back().clear();
    given.columns = query.columns;
    for (ScopeColumn& column : given.columns) {
      if (column.kind != ValueKind::Text) column.kind = ValueKind::Unknown;  // the column itself
    }
  } else {
    for (const SelectItem& item : query.items) {
      if (!item.value) continue;
      const auto* field = std::get_if<FieldName>(&item.value->node);
      if (field != nullptr && field->name == item.name) continue;
      given.columns.push_back({item.name, KindOfValue(item.value->kind), "", ""});
    }
  }
  m_scopes.push_back({&given});
  for (OrderItem& item : select.order) Resolve(item.value);
  m_scopes.pop_back();
}

}  // namespace orxdb
