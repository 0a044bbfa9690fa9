#include "database/operations/Dialect.h"

#include "database/operations/ExpressionTranslator.h"
#include "database/operations/Lexer.h"

namespace orxdb {

ValueKind KindOf(short fieldType) noexcept {
  switch (fieldType) {
    case dbText:
    case dbMemo:
      return ValueKind::Text;
    case dbBoolean:
      return ValueKind::Flag;
    case dbDate:
      return ValueKind::Date;
    case dbByte:
    case dbInteger:
    case dbLong:
    case dbCurrency:
    case dbSingle:
    case dbDouble:
    case dbBigInt:
      return ValueKind::Number;
    default:
      return ValueKind::Unknown;
  }
}

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
  ExpressionTranslator translator(Tokenize(text, LexicalRules::Dialect), sources);
  return translator.Criteria(scope);
}

SelectText TranslateSelect(std::string_view text, SourceColumns& sources) {
  ExpressionTranslator translator(Tokenize(text, LexicalRules::Dialect), sources);
  return translator.WholeSelect();
}

namespace {

/// Splits the tokens of an ORDER BY (without these words) into terms.
std::vector<OrderTerm> SplitOrder(std::string_view text, std::vector<Token>::const_iterator first,
                                  std::vector<Token>::const_iterator last) {
  std::vector<OrderTerm> terms;
  while (first != last) {
    int depth = 0;
    auto end = first;
    for (; end != last && (depth > 0 || !end->IsSymbol(",")); ++end) {
      if (end->IsSymbol("(")) ++depth;
      if (end->IsSymbol(")")) --depth;
    }
    OrderTerm term;
    auto tail = end;
    if (tail - first > 2 && (tail - 2)->IsWord("NULLS")) {
      term.nulls = (tail - 1)->IsWord("FIRST") ? "FIRST" : "LAST";
      tail -= 2;
    }
    if (tail - first > 1 && ((tail - 1)->IsWord("DESC") || (tail - 1)->IsWord("ASC"))) {
      term.descending = (tail - 1)->IsWord("DESC");
      --tail;
    }
    if (tail != first) {
      term.expression.text = text.substr(first->begin, (tail - 1)->end - first->begin);
      terms.push_back(std::move(term));
    }
    first = end == last ? last : end + 1;
  }
  return terms;
}

}  // namespace

SelectText AnalyseStoredSelect(std::string_view text) {
  const std::vector<Token> tokens = Tokenize(text, LexicalRules::Sqlite);
  SelectText select;
  auto order = tokens.end();
  auto limit = tokens.end() - 1;
  bool inFrom = false;
  int depth = 0;
  for (auto token = tokens.begin(); token != tokens.end(); ++token) {
    if (token->IsSymbol("(")) ++depth;
    if (token->IsSymbol(")")) --depth;
    if (token->IsSymbol(";")) limit = std::min(limit, token);
    for (const char* word : {"DISTINCT", "GROUP", "HAVING", "UNION", "EXCEPT", "INTERSECT", "WITH",
                             "OVER", "VALUES"}) {
      select.distinctRows = select.distinctRows || token->IsWord(word);
    }
    if (token->IsWord("WHERE")) {
      select.selective = true;
      inFrom = false;
    } else if (token->IsWord("JOIN")) {
      const auto kind = token[-1].IsWord("OUTER") ? token - 2 : token - 1;
      select.selective = select.selective || !kind->IsWord("LEFT");
    } else if (token->IsWord("FROM")) {
      inFrom = true;
      if (select.source.empty() && token[1].IsName()) select.source = token[1].text;
    } else if (token->IsSymbol(",") && inFrom && depth == 0) {
      select.selective = true;
    } else if (depth == 0 && token->IsWord("ORDER")) {
      order = token;
      inFrom = false;
    } else if (depth == 0 && token->IsWord("LIMIT")) {
      limit = std::min(limit, token);
      select.distinctRows = true;
    }
  }
  const std::size_t bodyEnd = order == tokens.end() ? limit->begin : order->begin;
  select.body.text = text.substr(0, bodyEnd);
  if (order != tokens.end()) select.order = SplitOrder(text, order + 2, limit);
  if (limit->IsWord("LIMIT")) {
    select.limit = ' ';
    select.limit += text.substr(limit->begin, tokens.back().begin - limit->begin);
  }
  return select;
}

}  // namespace orxdb
