#include "database/engine/EngineFunctions.h"

#include <algorithm>
#include <array>

#include "database/engine/DialectFunctions.h"

namespace orxdb {
namespace {

/// SQLite's functions that only compute. What is left out loads code, looks at memory, tells about
/// the program instead of the data, or takes time with the square of its arguments.
constexpr auto kPerRow = std::to_array<std::string_view>({"->",
                                                          "->>",
                                                          "abs",
                                                          "acos",
                                                          "acosh",
                                                          "asin",
                                                          "asinh",
                                                          "atan",
                                                          "atan2",
                                                          "atanh",
                                                          "ceil",
                                                          "ceiling",
                                                          "changes",
                                                          "char",
                                                          "coalesce",
                                                          "concat",
                                                          "concat_ws",
                                                          "cos",
                                                          "cosh",
                                                          "current_date",
                                                          "current_time",
                                                          "current_timestamp",
                                                          "date",
                                                          "datetime",
                                                          "degrees",
                                                          "exp",
                                                          "floor",
                                                          "format",
                                                          "glob",
                                                          "hex",
                                                          "if",
                                                          "ifnull",
                                                          "iif",
                                                          "instr",
                                                          "json",
                                                          "json_array",
                                                          "json_array_length",
                                                          "json_extract",
                                                          "json_insert",
                                                          "json_object",
                                                          "json_quote",
                                                          "json_remove",
                                                          "json_replace",
                                                          "json_set",
                                                          "json_type",
                                                          "json_valid",
                                                          "julianday",
                                                          "last_insert_rowid",
                                                          "length",
                                                          "like",
                                                          "likelihood",
                                                          "likely",
                                                          "ln",
                                                          "log",
                                                          "log10",
                                                          "log2",
                                                          "lower",
                                                          "ltrim",
                                                          "max",
                                                          "min",
                                                          "mod",
                                                          "nullif",
                                                          "octet_length",
                                                          "pi",
                                                          "pow",
                                                          "power",
                                                          "printf",
                                                          "quote",
                                                          "radians",
                                                          "random",
                                                          "randomblob",
                                                          "replace",
                                                          "round",
                                                          "rtrim",
                                                          "sign",
                                                          "sin",
                                                          "sinh",
                                                          "soundex",
                                                          "sqlite_version",
                                                          "sqrt",
                                                          "strftime",
                                                          "substr",
                                                          "substring",
                                                          "tan",
                                                          "tanh",
                                                          "time",
                                                          "timediff",
                                                          "total_changes",
                                                          "trim",
                                                          "trunc",
                                                          "typeof",
                                                          "unicode",
                                                          "unixepoch",
                                                          "unlikely",
                                                          "upper",
                                                          "zeroblob"});

/// Not those of one argument and several: min and max, of which the text tells more.
constexpr auto kOverRows = std::to_array<std::string_view>(
    {"avg", "count", "cume_dist", "dense_rank", "first_value", "group_concat", "json_group_array",
     "json_group_object", "lag", "last_value", "lead", "nth_value", "ntile", "percent_rank", "rank",
     "row_number", "string_agg", "sum", "total"});

}  // namespace

FunctionUse UseOfFunction(std::string_view foldedName) noexcept {
  const auto isIn = [&](const auto& names) {
    return std::find(names.begin(), names.end(), foldedName) != names.end();
  };
  if (isIn(kOverRows)) return FunctionUse::OverRows;
  return isIn(kPerRow) || IsDialectFunction(foldedName) ? FunctionUse::PerRow
                                                        : FunctionUse::Refused;
}

}  // namespace orxdb
