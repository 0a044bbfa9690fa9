#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "database/dialect/SqlText.h"
#include "values/FieldTypes.h"

namespace orxdb {

/// A column that a text may name.
struct ScopeColumn {
  std::string name;
  ValueKind kind = ValueKind::Unknown;
  std::string sourceTable;  ///< where the column comes from; empty for a computed one
  std::string sourceField;
};

/// The columns of one table, stored query or recordset, and the name they may be qualified with.
struct NameScope {
  std::string name;   ///< as texts say it
  std::string alias;  ///< as the SQL says it, unquoted
  std::vector<ScopeColumn> columns;
};

/// Tells the columns of the tables and stored queries that a SELECT names.
class SourceColumns {
 public:
  virtual ~SourceColumns() = default;
  /// Raises `NotFound` when there is no such table or stored query.
  virtual std::vector<ScopeColumn> ColumnsOf(const std::string& source) = 0;
};

/// One term of an ORDER BY.
struct OrderTerm {
  SqlText expression;
  bool descending = false;
  std::string nulls;  ///< "", "FIRST" or "LAST"
  /// Of a text field of the whole source: its name, and the term by the engine's own rule for
  /// texts, in whose order an index may be. Without letters beyond A to Z it is the same order.
  std::string field;
  SqlText plain;

  /// The term as SQL, or the term that gives the opposite order.
  SqlText Sql(bool reversed) const;
};

/// A SELECT taken apart as far as walking its rows needs.
struct SelectText {
  SqlText body;                  ///< without its outermost ORDER BY and LIMIT
  std::vector<OrderTerm> order;  ///< the outermost ORDER BY
  std::string limit;             ///< " LIMIT n", or empty
  std::string source;            ///< the first table or stored query named in it
  bool wholeSource = false;      ///< it is SELECT * FROM source, perhaps ordered
  bool distinctRows = false;     ///< DISTINCT, grouped, compound: a row is not a row of a table
  bool selective = false;        ///< a condition or an inner join may leave rows out

  /// The whole SELECT, its rows in order; `lastTerm` is one more order term behind the others.
  SqlText Ordered(bool reversed = false, const std::string& lastTerm = {}) const;
};

/// Translates a condition in the hosts' dialect (no WHERE) over the columns of one recordset.
/// Literals become values, so that conditions of one shape give one text. Raises `Syntax` for
/// anything that is not exactly one condition, and for unknown or ambiguous names.
SqlText TranslateCriteria(std::string_view text, const NameScope& scope, SourceColumns& sources);

/// Translates a SELECT in the hosts' dialect.
SelectText TranslateSelect(std::string_view text, SourceColumns& sources);

/// Takes a stored query's SELECT, which is SQLite's own SQL, apart.
SelectText AnalyseStoredSelect(std::string_view text);

}  // namespace orxdb
