// The SELECT side of the dialect.
#include <utility>

#include "database/operations/DaoException.h"
#include "database/operations/ExpressionTranslator.h"

namespace orxdb {

SelectText ExpressionTranslator::WholeSelect() {
  SelectText select = Select();
  Skip(";");
  if (Next().kind != Token::Kind::End) Fail("The query ends before its text does");
  return select;
}

SelectText ExpressionTranslator::Select() {
  const Nesting nesting(m_depth);
  m_scopes.emplace_back();
  SelectText select = SimpleSelect();
  while (Skip("UNION")) {
    select.distinctRows = true;
    select.body.Append(Skip("ALL") ? " UNION ALL " : " UNION ");
    m_scopes.back().clear();
    const SelectText part = SimpleSelect();
    if (!select.limit.empty() || !part.limit.empty()) Fail("TOP cannot stand in a UNION");
    select.body.Append(part.body);
  }
  if (Skip("ORDER")) {
    Expect("BY");
    select.order = OrderTerms();
  }
  m_scopes.pop_back();
  return select;
}

SelectText ExpressionTranslator::SimpleSelect() {
  SelectText select;
  Expect("SELECT");
  const bool distinct = Skip("DISTINCT") || Skip("DISTINCTROW");
  if (Skip("TOP")) {
    const auto* count = std::get_if<std::int64_t>(&Next().number);
    if (count == nullptr) Fail("Expected a number behind TOP");
    select.limit = " LIMIT " + std::to_string(*count);
    ++m_at;
  }
  // What the list names is known once the sources are.
  const std::size_t listBegin = m_at;
  const std::size_t from = FindFrom();
  m_at = from + 1;
  const SqlText sources = Sources(select);
  const std::size_t behindSources = std::exchange(m_at, listBegin);
  std::vector<ScopeColumn> computed;
  select.body.Append(distinct ? "SELECT DISTINCT " : "SELECT ");
  select.body.Append(SelectList(computed));
  if (m_at != from) Fail("Expected FROM before '" + Next().text + "'");
  const bool allFields = from == listBegin + 1 && m_tokens[listBegin].IsSymbol("*");
  m_at = behindSources;

  select.body.Append(" FROM ");
  select.body.Append(sources);
  select.distinctRows = distinct || !select.limit.empty();
  if (Skip("WHERE")) {
    select.selective = true;
    select.body.Append(" WHERE ");
    select.body.Append(Condition().sql);
  }
  if (Skip("GROUP")) {
    Expect("BY");
    select.distinctRows = true;
    const char* separator = " GROUP BY ";
    do {
      select.body.Append(std::exchange(separator, ", "));
      select.body.Append(Condition().sql);
    } while (Skip(","));
    if (Skip("HAVING")) {
      select.body.Append(" HAVING ");
      select.body.Append(Condition().sql);
    }
  }
  const Scopes& scopes = m_scopes.back();
  select.wholeSource = allFields && !select.selective && !select.distinctRows &&
                       scopes.size() == 1 && scopes[0].name == select.source;
  if (!computed.empty()) m_scopes.back().push_back({"", "", std::move(computed)});
  return select;
}

std::size_t ExpressionTranslator::FindFrom() const {
  int depth = 0;
  for (std::size_t at = m_at; at < m_tokens.size(); ++at) {
    if (m_tokens[at].IsSymbol("(")) ++depth;
    if (m_tokens[at].IsSymbol(")")) --depth;
    if (depth == 0 && m_tokens[at].IsWord("FROM")) return at;
  }
  Fail("Expected FROM");
}

/// `*`, `source.*` or expressions, each named as the desktop dialect names them; the names of
/// computed ones are told besides, since the ordering may use them.
SqlText ExpressionTranslator::SelectList(std::vector<ScopeColumn>& computed) {
  SqlText list;
  do {
    if (!list.text.empty()) list.Append(", ");
    if (Skip("*")) {
      list.Append("*");
    } else if (Next().IsName() && Next(1).IsSymbol(".") && Next(2).IsSymbol("*")) {
      list.Append(Quoted(ExpectName()) + ".*");
      m_at += 2;
    } else {
      Expression item = Condition();
      std::string name = item.column ? item.name : "";
      if (Skip("AS")) name = ExpectName();
      if (name.empty()) name = "Expr" + std::to_string(1000 + computed.size());
      if (!item.column) computed.push_back({name, item.kind, "", ""});
      list.Append(item.column ? SqlText{item.columnSql, {}} : AsValue(item));
      list.Append(" AS " + Quoted(name));
    }
  } while (Skip(","));
  return list;
}

SqlText ExpressionTranslator::Sources(SelectText& select) {
  SqlText sources = JoinedSources(select);
  while (Skip(",")) {
    select.selective = true;
    sources.Append(", ");
    sources.Append(JoinedSources(select));
  }
  return sources;
}

SqlText ExpressionTranslator::JoinedSources(SelectText& select) {
  SqlText joined = Source(select);
  for (;;) {
    const char* join = Next().IsWord("LEFT")    ? " LEFT JOIN "
                       : Next().IsWord("RIGHT") ? " RIGHT JOIN "
                       : Next().IsWord("INNER") ? " JOIN "
                       : Next().IsWord("JOIN")  ? " JOIN "
                                                : nullptr;
    if (join == nullptr) return joined;
    const bool left = Next().IsWord("LEFT");
    select.selective = select.selective || !left;
    if (!Next().IsWord("JOIN")) ++m_at;
    Skip("OUTER");
    Expect("JOIN");
    joined.Append(join);
    joined.Append(Source(select));
    Expect("ON");
    joined.Append(" ON ");
    joined.Append(Condition().sql);
  }
}

/// A table or stored query, a SELECT or a join in parentheses.
SqlText ExpressionTranslator::Source(SelectText& select) {
  const Nesting nesting(m_depth);
  CountOperation();
  if (Skip("(")) {
    const bool rows = Next().IsWord("SELECT");
    // Without the word MATERIALIZED SQLite puts the inner expressions into the outer ones, as often
    // as these name them: a few levels would be enough to use up all memory.
    SqlText inner{rows ? "(WITH orx_rows AS MATERIALIZED (" : "(", {}};
    inner.Append(rows ? Select().Ordered() : JoinedSources(select));
    inner.Append(rows ? ") SELECT * FROM orx_rows)" : ")");
    Expect(")");
    if (rows) {
      Skip("AS");
      const std::string alias = ExpectName();
      inner.Append(" AS " + Quoted(alias));
      m_scopes.back().push_back({alias, alias, {}, true});
      select.distinctRows = true;
    }
    return inner;
  }
  const std::string name = ExpectName();
  if (select.source.empty()) select.source = name;
  std::string alias = name;
  const bool named = Skip("AS");
  const bool clause =
      Next().kind != Token::Kind::Name && (Next().kind != Token::Kind::Word || IsReserved(Next()));
  if (named || !clause) alias = ExpectName();
  m_scopes.back().push_back({alias, alias, m_sources.ColumnsOf(name), false});
  return {Quoted(name) + (alias == name ? "" : " AS " + Quoted(alias)), {}};
}

std::vector<OrderTerm> ExpressionTranslator::OrderTerms() {
  std::vector<OrderTerm> terms;
  do {
    OrderTerm term;
    if (const auto* position = std::get_if<std::int64_t>(&Next().number)) {
      term.expression.text = std::to_string(*position) + " COLLATE NOCASE";  // no matter to numbers
      ++m_at;
    } else {
      const Expression expression = Condition();
      term.expression = expression.column ? SqlText{expression.columnSql, {}} : AsValue(expression);
      if (expression.kind == ValueKind::Text) term.expression.Append(" COLLATE NOCASE");
    }
    term.descending = Skip("DESC");
    if (!term.descending) Skip("ASC");
    terms.push_back(std::move(term));
  } while (Skip(","));
  return terms;
}

}  // namespace orxdb
