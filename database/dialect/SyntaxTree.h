#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "database/dialect/Dialect.h"

namespace orxdb {

// What a text in the hosts' dialect says. The grammar builds the tree, name resolution puts in what
// its names mean and which operations they call for, the writer prints it as SQL.

struct Expression;
struct Operation;
struct Select;

/// A field as the text names it; once resolved, as the SQL does.
struct FieldName {
  std::string qualifier;
  std::string name;
  const ScopeColumn* column = nullptr;  ///< once resolved
};

/// An operator or a function.
struct Call {
  std::string name;  ///< as the table of operations has it
  std::vector<Expression> operands;
  const Operation* operation = nullptr;  ///< once resolved
};

/// A literal (null included), a field, an operation, or a SELECT in parentheses.
struct Expression {
  std::variant<SqlValue, FieldName, Call, std::unique_ptr<Select>> node;
  ValueKind kind = ValueKind::Unknown;  ///< of a literal; of others once resolved
  int depth = 1;                        ///< levels of operations
};

/// `expression AS name`, or all fields: `*` or `name.*`.
struct SelectItem {
  std::optional<Expression> value;  ///< nothing for all fields
  std::string name;
};

/// A table or stored query by name, a SELECT, or joined sources in parentheses.
struct Source {
  enum class Join { Comma, Inner, Left, Right };

  Join join = Join::Comma;  ///< to the sources before it
  std::string name;
  std::unique_ptr<Select> rows;
  std::vector<Source> group;
  std::string alias;  ///< empty for a group
  std::optional<Expression> condition;
};

/// SELECT … FROM …, without what stands behind a union of such.
struct Query {
  bool distinct = false;
  bool unionAll = false;  ///< how it is joined to the one before it
  std::optional<std::int64_t> top;
  std::vector<SelectItem> items;
  std::vector<Source> sources;
  std::optional<Expression> where;
  std::vector<Expression> groups;
  std::optional<Expression> having;
  bool aggregates = false;           ///< once resolved: it calls a function over all rows
  std::vector<ScopeColumn> columns;  ///< once resolved: what its rows hold
};

struct OrderItem {
  Expression value;  ///< a whole number as literal is the place of a column
  bool descending = false;
};

struct Select {
  std::vector<Query> parts;  ///< more than one: a union
  std::vector<OrderItem> order;
};

}  // namespace orxdb
