#pragma once

#include <algorithm>
#include <array>
#include <string_view>

#include "database/dialect/Dialect.h"

namespace orxdb {

/// The kind of what an operation gives: always the same, or that of an operand (from 1).
struct ResultKind {
  constexpr ResultKind(ValueKind always) : kind(always) {}
  constexpr explicit ResultKind(std::size_t ofOperand) : operand(ofOperand) {}

  ValueKind kind = ValueKind::Unknown;
  std::size_t operand = 0;
};

/// An operation of the dialect and what it is called in SQL.
///
/// In the SQL `$1` to `$3` stand for the operands as values, `$c1` for one as a condition, `$t1`
/// as a text, `$k1` as it is compared (texts without regard to case when any operand is a text).
/// What stands in braces is repeated for each operand behind the last one named before, as `$*`.
struct Operation {
  std::string_view name;  ///< of a function in small letters; nothing else is
  std::size_t fewest = 0;
  ResultKind result = ValueKind::Unknown;
  std::string_view sqlite;
  std::array<ValueKind, 2> operands = {};  ///< kinds that its first operands must have, if any
  bool aggregate = false;

  constexpr bool TakesMore() const { return sqlite.find('{') != std::string_view::npos; }
};

/// Whose SQL is printed: a column of the table.
using Flavour = std::string_view Operation::*;
inline constexpr Flavour kSqlite = &Operation::sqlite;

/// Everything that the dialect can do. Of several rows of one name the first that takes the
/// operands holds.
inline constexpr auto kOperations = [] {
  using enum ValueKind;
  constexpr ResultKind kOfFirst(std::size_t{1});
  return std::to_array<Operation>({
      // Logic
      {"XOR", 2, Condition, "(($c1 <> 0) <> ($c2 <> 0))"},
      {"OR", 2, Condition, "($c1{ OR $c*})"},
      {"AND", 2, Condition, "($c1{ AND $c*})"},
      {"NOT", 1, Condition, "(NOT $c1)"},
      // Comparisons
      {"=", 2, Condition, "($1 = $k2)"},
      {"<>", 2, Condition, "($1 <> $k2)"},
      {"<", 2, Condition, "($1 < $k2)"},
      {">", 2, Condition, "($1 > $k2)"},
      {"<=", 2, Condition, "($1 <= $k2)"},
      {">=", 2, Condition, "($1 >= $k2)"},
      {"IN RANGE FROM", 2, Condition, "($1 COLLATE NOCASE >= $2)"},
      {"IN RANGE BELOW", 2, Condition, "($1 COLLATE NOCASE < $2)"},
      {"IS NULL", 1, Condition, "($1 IS NULL)"},
      {"IS NOT NULL", 1, Condition, "($1 IS NOT NULL)"},
      {"LIKE", 2, Condition, "orx_like($2, $t1)"},
      {"BETWEEN", 3, Condition, "($k1 BETWEEN $2 AND $3)"},
      {"BETWEEN EITHER", 3, Condition, "($k1 BETWEEN $2 AND $3 OR $k1 BETWEEN $3 AND $2)"},
      {"IN", 2, Condition, "($k1 IN ($2{, $*}))"},
      {"IN SELECT", 2, Condition, "($k1 IN $2)"},
      {"EXISTS", 1, Condition, "EXISTS $1"},
      // Text and arithmetic
      {"&", 2, Text, "(ifnull($t1, ''){ || ifnull($t*, '')})"},
      {"+", 2, Text, "($1 || $2)", {Text, Text}},
      {"+", 2, Number, "($1 + $2)", {Date, Date}},
      {"+", 2, Date, "datetime($1, ($2) || ' days')", {Date}},
      {"+", 2, Number, "($1 + $2)"},
      {"-", 2, Number, "(julianday($1) - julianday($2))", {Date, Date}},
      {"-", 2, Date, "datetime($1, -($2) || ' days')", {Date}},
      {"-", 2, Number, "($1 - $2)"},
      {"MOD", 2, Number, "orx_remainder($1, $2)"},
      {"\\", 2, Number, "orx_divide($1, $2)"},
      {"*", 2, Number, "($1 * $2)"},
      {"/", 2, Number, "($1 * 1.0 / $2)"},
      {"NEGATIVE", 1, Number, "(- $1)"},
      {"^", 2, Number, "orx_power($1, $2)"},
      // Functions of values
      {"iif", 3, ResultKind(std::size_t{2}), "iif($c1, $2, $3)"},
      {"nz", 1, kOfFirst, "ifnull($1, 0)", {Number}},
      {"nz", 1, kOfFirst, "ifnull($1, 0)", {Money}},
      {"nz", 1, kOfFirst, "ifnull($1, '')"},
      {"nz", 2, kOfFirst, "ifnull($1, $2)"},
      {"isnull", 1, Condition, "($1 IS NULL)"},
      // Functions of texts
      {"len", 1, Number, "length($1)"},
      {"left", 2, Text, "iif($2 > 0, substr($1, 1, $2), '')"},
      {"right", 2, Text, "iif($2 > 0, substr($1, -($2)), '')"},
      {"mid", 2, Text, "substr($1, $2, 2147483647)"},
      {"mid", 3, Text, "substr($1, $2, $3)"},
      {"ucase", 1, Text, "upper($1)"},
      {"lcase", 1, Text, "lower($1)"},
      {"trim", 1, Text, "trim($1)"},
      {"ltrim", 1, Text, "ltrim($1)"},
      {"rtrim", 1, Text, "rtrim($1)"},
      {"instr", 2, Number, "orx_instr(1, $1, $2)"},
      {"instr", 3, Number, "orx_instr($1, $2, $3)"},
      // Functions of numbers
      {"val", 1, Number, "orx_val($1)"},
      {"cint", 1, Number, "CAST(orx_round($1, 0) AS INTEGER)"},
      {"clng", 1, Number, "CAST(orx_round($1, 0) AS INTEGER)"},
      {"cdbl", 1, Number, "CAST($1 AS REAL)"},
      {"cstr", 1, Text, "orx_text($1)"},
      {"abs", 1, Number, "abs($1)"},
      {"int", 1, Number, "orx_floor($1)"},
      {"fix", 1, Number, "orx_fix($1)"},
      {"round", 1, Number, "orx_round($1, 0)"},
      {"round", 2, Number, "orx_round($1, $2)"},
      {"sgn", 1, Number, "(($1 > 0) - ($1 < 0))"},
      // Functions of dates
      {"year", 1, Number, "CAST(strftime('%Y', $1) AS INTEGER)"},
      {"month", 1, Number, "CAST(strftime('%m', $1) AS INTEGER)"},
      {"day", 1, Number, "CAST(strftime('%d', $1) AS INTEGER)"},
      {"date", 0, Date, "datetime(date('now', 'localtime'))"},
      {"now", 0, Date, "datetime('now', 'localtime')"},
      {"dateserial", 3, Date,
       "datetime(format('%04d-01-01', $1), format('%+d months', $2 - 1), "
       "format('%+d days', $3 - 1))"},
      // Functions of many rows
      {"count(*)", 0, Number, "count(*)", {}, true},
      {"count", 1, Number, "count($1)", {}, true},
      {"sum", 1, Number, "sum($1)", {}, true},
      {"avg", 1, Number, "avg($1)", {}, true},
      {"min", 1, kOfFirst, "min($1)", {}, true},
      {"max", 1, kOfFirst, "max($1)", {}, true},
      // What the dialect does without a sign. Files may hold a true flag as any number but 0, and
      // dates with or without a time of day; money is found by the four decimals it is shown with.
      {"flag field", 1, Flag, "-($1 <> 0)"},
      {"date field", 1, Date, "datetime($1)"},
      {"money field", 1, Money, "orx_round($1, 4)"},
      {"condition as value", 1, Number, "-($1)"},
      {"value as condition", 1, Condition, "$1"},
      {"as text", 1, Text, "orx_text($1)"},
      // Where a text of letters A to Z and signs is compared, letters of other alphabets do not
      // matter: then the engine's own rule gives the same, and has its index in the file.
      {"as compared", 1, Text, "$1 COLLATE orx_letters"},
      {"as compared with plain letters", 1, Text, "$1 COLLATE NOCASE"},
      // Without the word MATERIALIZED SQLite puts the inner expressions into the outer ones, as
      // often as these name them: a few levels would be enough to use up all memory.
      {"rows of select", 1, Unknown, "(WITH orx_rows AS MATERIALIZED ($1) SELECT * FROM orx_rows)"},
  });
}();

/// The operation of that name that the layer itself counts on.
constexpr const Operation& OperationNamed(std::string_view name) {
  return *std::find_if(kOperations.begin(), kOperations.end(),
                       [&](const Operation& each) { return each.name == name; });
}

}  // namespace orxdb
