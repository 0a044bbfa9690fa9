#include <memory>
#include <utility>

#include "database/dialect/Grammar.h"
#include "database/dialect/Parser.h"

namespace orxdb {
namespace {

/// Each brings all its fields along.
constexpr int kMostSources = 500;

}  // namespace

Select Parser::Selection() {
  const Nesting nesting(m_nesting);
  Select select;
  select.parts.push_back(OneQuery());
  while (Skip("UNION")) {
    const bool all = Skip("ALL");
    select.parts.push_back(OneQuery());
    select.parts.back().unionAll = all;
    if (select.parts.front().top || select.parts.back().top)
      RaiseSyntax("TOP cannot stand in a UNION");
  }
  if (!Skip("ORDER")) return select;
  Expect("BY");
  do {
    OrderItem item{Condition()};
    item.descending = Skip("DESC");
    if (!item.descending) Skip("ASC");
    select.order.push_back(std::move(item));
  } while (Skip(","));
  return select;
}

Query Parser::OneQuery() {
  Query query;
  Expect("SELECT");
  query.distinct = Skip("DISTINCT") || Skip("DISTINCTROW");
  if (Skip("TOP")) {
    const auto* const count = std::get_if<std::int64_t>(&Next().number);
    if (count == nullptr) RaiseSyntax("Expected a number behind TOP");
    query.top = *count;
    Take();
  }
  do {
    query.items.push_back(Item());
  } while (Skip(","));
  Expect("FROM");
  query.sources = Sources();
  if (Skip("WHERE")) query.where = Condition();
  if (!Skip("GROUP")) return query;
  Expect("BY");
  do {
    query.groups.push_back(Condition());
  } while (Skip(","));
  if (Skip("HAVING")) query.having = Condition();
  return query;
}

SelectItem Parser::Item() {
  SelectItem item;
  if (Skip("*")) return item;
  if (Next().IsName() && Next(1).IsSymbol(".") && Next(2).IsSymbol("*")) {
    item.name = ExpectName();
    Take();
    Take();
    return item;
  }
  item.value = Condition();
  if (Skip("AS")) item.name = ExpectName();
  return item;
}

std::vector<Source> Parser::Sources() {
  std::vector<Source> sources;
  do {
    sources.push_back(OneSource());
    AddJoined(sources);
  } while (Skip(","));
  return sources;
}

void Parser::AddJoined(std::vector<Source>& sources) {
  for (;;) {
    Source::Join join = Source::Join::Inner;
    if (Skip("LEFT")) {
      join = Source::Join::Left;
    } else if (Skip("RIGHT")) {
      join = Source::Join::Right;
    } else if (!Skip("INNER") && !Next().IsWord("JOIN")) {
      return;
    }
    if (join != Source::Join::Inner) Skip("OUTER");
    Expect("JOIN");
    sources.push_back(OneSource());
    sources.back().join = join;
    Expect("ON");
    sources.back().condition = Condition();
  }
}

/// A table or stored query, a SELECT or a join in parentheses.
Source Parser::OneSource() {
  const Nesting nesting(m_nesting);
  if (++m_sources > kMostSources) RaiseSyntax("The text names too many tables");
  Source source;
  if (Skip("(")) {
    if (Next().IsWord("SELECT")) {
      source.rows = std::make_unique<Select>(Selection());
    } else {
      source.group.push_back(OneSource());
      AddJoined(source.group);
    }
    Expect(")");
    if (!source.rows) return source;
    Skip("AS");
    source.alias = ExpectName();
    return source;
  }
  source.name = ExpectName();
  const bool named = Skip("AS") || (Next().IsName() && !IsReserved(Next()));
  source.alias = named ? ExpectName() : source.name;
  return source;
}

Select ReadSelect(std::string_view text) {
  Parser parser(text);
  Select select = parser.Selection();
  parser.Skip(";");
  parser.End("The query ends before its text does");
  return select;
}

}  // namespace orxdb
