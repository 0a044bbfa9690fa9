#pragma once

#include <deque>
#include <vector>

#include "database/dialect/SyntaxTree.h"

namespace orxdb {

/// Puts into a tree what its names mean: the fields, the kinds of all expressions, and the rows of
/// the table of operations. Raises `Syntax` for names that mean nothing or more than one thing.
class NameResolution {
 public:
  explicit NameResolution(SourceColumns& sources) : m_sources(sources) {}

  void Resolve(Expression& condition, const NameScope& scope);
  void Resolve(Select& select);

 private:
  using Scopes = std::vector<const NameScope*>;

  void Resolve(Expression& expression);
  void Resolve(Call& call, ValueKind& kind);
  void Resolve(FieldName& field, ValueKind& kind) const;
  void Resolve(Query& query);
  void Resolve(std::vector<Source>& sources);
  void Resolve(SelectItem& item, std::vector<ScopeColumn>& columns);
  void ResolveOrder(Select& select);

  SourceColumns& m_sources;
  std::deque<NameScope> m_made;  ///< of the sources in SELECTs
  std::vector<Scopes> m_scopes;  ///< of the SELECTs being resolved, outermost first
  int m_computed = 0;            ///< items of the SELECT so far that are no fields
  bool m_aggregates = false;     ///< whether the SELECT calls a function over all rows
};

}  // namespace orxdb
