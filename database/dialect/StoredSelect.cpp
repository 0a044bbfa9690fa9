#include <algorithm>

#include "database/dialect/Dialect.h"
#include "database/dialect/Lexer.h"

namespace orxdb {
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

/// Whether a function is called over all rows: min or max with one argument. (The engine tells of
/// the others, but not how many arguments there are.)
bool IsLeastOrMost(std::vector<Token>::const_iterator token) {
  if (!token->IsName() || !token[1].IsSymbol("(")) return false;
  if (!SameName(token->text, "min") && !SameName(token->text, "max")) return false;
  int depth = 0;
  for (++token; token->kind != Token::Kind::End; ++token) {
    if (token->IsSymbol("(")) ++depth;
    if (token->IsSymbol(")") && --depth == 0) break;
    if (token->IsSymbol(",") && depth == 1) return false;
  }
  return true;
}

}  // namespace

SelectText AnalyseStoredSelect(std::string_view text) {
  const std::vector<Token> tokens = Tokenize(text, LexicalRules::Sqlite);
  SelectText select;
  auto order = tokens.end();
  auto limit = tokens.end() - 1;
  // Parts of the text end with their last token, lest a comment behind it swallows what follows.
  const auto part = [&](auto first, auto last) {
    return first == last ? "" : text.substr(first->begin, (last - 1)->end - first->begin);
  };
  bool inFrom = false;
  int depth = 0;
  for (auto token = tokens.begin(); token != tokens.end(); ++token) {
    if (token->IsSymbol("(")) ++depth;
    if (token->IsSymbol(")")) --depth;
    if (token->IsSymbol(";")) limit = std::min(limit, token);
    for (const char* word :
         {"DISTINCT", "GROUP", "HAVING", "UNION", "EXCEPT", "INTERSECT", "WITH", "VALUES"}) {
      select.distinctRows = select.distinctRows || token->IsWord(word);
    }
    select.distinctRows = select.distinctRows || IsLeastOrMost(token);
    if (token->IsWord("OVER") && token != tokens.begin() && token[-1].IsSymbol(")")) {
      select.distinctRows = true;
    } else if (token->IsWord("WHERE")) {
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
  const auto bodyEnd = std::min(order, limit);
  select.body.text = part(tokens.begin(), bodyEnd);
  if (order != tokens.end()) select.order = SplitOrder(text, order + 2, limit);
  if (limit->IsWord("LIMIT")) {
    const auto end = tokens.end() - ((tokens.end() - 2)->IsSymbol(";") ? 2 : 1);
    select.limit = ' ';
    select.limit += part(limit, end);
  }
  return select;
}

}  // namespace orxdb
