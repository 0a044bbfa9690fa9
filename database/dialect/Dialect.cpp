#include "database/dialect/Dialect.h"

#include "database/dialect/Grammar.h"
#include "database/dialect/NameResolution.h"
#include "database/dialect/Writer.h"

namespace orxdb {

SqlText OrderTerm::Sql(bool reversed) const {
  SqlText sql = expression;
  if (descending != reversed) sql.Append(" DESC");
  if (!nulls.empty()) sql.Append((nulls == "FIRST") != reversed ? " NULLS FIRST" : " NULLS LAST");
  return sql;
}

SqlText SelectText::Ordered(bool reversed, const std::string& lastTerm) const {
  SqlText sql = body;
  const char* separator = " ORDER BY ";
  for (const OrderTerm& term : order) {
    sql.Append(separator);
    sql.Append(term.Sql(reversed));
    separator = ", ";
  }
  if (!lastTerm.empty()) {
    sql.Append(separator);
    sql.Append(lastTerm + (reversed ? " DESC" : ""));
  }
  sql.Append(limit);
  return sql;
}

SqlText TranslateCriteria(std::string_view text, const NameScope& scope, SourceColumns& sources) {
  Expression condition = ReadCondition(text);
  NameResolution(sources).Resolve(condition, scope);
  Writer writer(kSqlite);
  writer.Condition(condition);
  return writer.Take();
}

namespace {

/// The first table or stored query named, and whether sources may leave rows out.
void Describe(const std::vector<Source>& sources, SelectText& select) {
  for (const Source& source : sources) {
    if (select.source.empty()) select.source = source.name;
    const bool joined = &source != &sources.front();
    select.selective = select.selective || (joined && source.join != Source::Join::Left);
    select.distinctRows = select.distinctRows || source.rows;
    Describe(source.group, select);
  }
}

}  // namespace

SelectText TranslateSelect(std::string_view text, SourceColumns& sources) {
  Select tree = ReadSelect(text);
  NameResolution(sources).Resolve(tree);
  SelectText select;
  const Query& query = tree.parts.front();
  Describe(query.sources, select);
  select.selective = select.selective || query.where;
  select.distinctRows = select.distinctRows || query.distinct || query.top || query.aggregates ||
                        !query.groups.empty() || tree.parts.size() > 1;
  select.wholeSource = query.items.size() == 1 && !query.items.front().value && !select.selective &&
                       !select.distinctRows && query.sources.size() == 1 &&
                       query.sources.front().alias == select.source;
  Writer writer(kSqlite);
  writer.Rows(tree);
  select.body = writer.Take();
  for (const OrderItem& item : tree.order) {
    writer.OrderTerm(item.value);
    OrderTerm& term = select.order.emplace_back();
    term.expression = writer.Take();
    term.descending = item.descending;
    const auto* const field = std::get_if<FieldName>(&item.value.node);
    if (!select.wholeSource || field == nullptr || item.value.kind != ValueKind::Text) continue;
    term.field = field->name;
    writer.PlainOrderTerm(item.value);
    term.plain = writer.Take();
  }
  if (query.top) select.limit = " LIMIT " + std::to_string(*query.top);
  return select;
}

}  // namespace orxdb
