#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace orxdb {

using Blob = std::vector<unsigned char>;

/// An owned value as SQLite stores it: null, integer, real, text or bytes.
using SqlValue = std::variant<std::monostate, std::int64_t, double, std::string, Blob>;

/// SQL text and the values of its question marks, in order of appearance.
struct SqlText {
  std::string text;
  std::vector<SqlValue> values;

  void Append(std::string_view more) { text += more; }
  void Append(const SqlText& more) {
    text += more.text;
    values.insert(values.end(), more.values.begin(), more.values.end());
  }
};

/// A value of a row, seen in place; text and bytes live as long as the row.
struct CellView {
  enum class Kind : unsigned char { Null, Integer, Real, Text, Bytes };

  Kind kind = Kind::Null;
  std::int64_t integer = 0;
  double real = 0;
  std::string_view text;  ///< also the bytes of `Kind::Bytes`
};

CellView CellOf(const SqlValue& value);

/// A name as SQL text: in double quotes, a double quote inside doubled.
std::string Quoted(std::string_view name);

/// Equal without regard to the case of the letters A to Z, as the database compares names.
bool SameName(std::string_view a, std::string_view b) noexcept;

/// The text with the letters A to Z in lower case: a key under which equal names meet.
std::string FoldedName(std::string_view name);

}  // namespace orxdb
