// What the names in a host's text mean.
#include <algorithm>
#include <tuple>

#include "database/operations/DaoException.h"
#include "database/operations/ExpressionTranslator.h"

namespace orxdb {

Expression ExpressionTranslator::NamedColumn() {
  std::string qualifier;
  std::string name = ExpectName();
  if ((Next().IsSymbol(".") || Next().IsSymbol("!")) && Next(1).IsName()) {
    ++m_at;
    qualifier = std::move(name);
    name = Next().text;
    ++m_at;
  }
  return ResolveColumn(qualifier, name);
}

namespace {

struct Match {
  const NameScope* scope;
  const ScopeColumn* column;
};

/// Every column of the scopes that a test accepts.
template <typename Test>
std::vector<Match> Matches(const std::vector<NameScope>& scopes, Test test) {
  std::vector<Match> matches;
  for (const NameScope& scope : scopes) {
    for (const ScopeColumn& column : scope.columns) {
      if (test(scope, column)) matches.push_back({&scope, &column});
    }
  }
  return matches;
}

/// The columns that a name may mean, by the first rule that gives any: the column of that name
/// (of the qualifying source), the column whose very name is "qualifier.name", the columns that
/// come from that base table field.
std::vector<Match> Candidates(const std::vector<NameScope>& scopes, const std::string& qualifier,
                              const std::string& name) {
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

}  // namespace

Expression ExpressionTranslator::ResolveColumn(const std::string& qualifier,
                                               const std::string& name) const {
  for (auto scopes = m_scopes.rbegin(); scopes != m_scopes.rend(); ++scopes) {
    const std::vector<Match> matches = Candidates(*scopes, qualifier, name);
    for (const Match& each : matches) {
      // One base table field shown twice is no ambiguity; two sources or fields are.
      const Match& first = matches.front();
      if (each.scope != first.scope ||
          std::tie(each.column->sourceTable, each.column->sourceField) !=
              std::tie(first.column->sourceTable, first.column->sourceField)) {
        Fail("The name " + name + " could mean more than one field");
      }
    }
    Expression column;
    column.column = true;
    if (!matches.empty()) {
      const Match& match = matches.front();
      column.name = match.column->name;
      column.kind = match.column->kind;
      column.columnSql = Quoted(match.column->name);
      if (!match.scope->alias.empty()) {
        column.columnSql = Quoted(match.scope->alias) + "." + column.columnSql;
      }
    } else {
      const auto open = std::find_if(scopes->begin(), scopes->end(), [&](const NameScope& scope) {
        return scope.open && (qualifier.empty() || SameName(scope.name, qualifier));
      });
      if (open == scopes->end()) continue;
      column.name = name;
      column.columnSql = Quoted(open->alias) + "." + Quoted(name);
    }
    column.sql.text = column.columnSql;
    // Files may hold a true flag as any number but 0, and dates with or without a time of day.
    if (column.kind == ValueKind::Flag) column.sql.text = "-(" + column.columnSql + " <> 0)";
    if (column.kind == ValueKind::Date) column.sql.text = "datetime(" + column.columnSql + ")";
    return column;
  }
  Fail("There is no field " + (qualifier.empty() ? name : qualifier + "." + name));
}

}  // namespace orxdb
