#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace orxdb {

using Blob = std::vector<unsigned char>;

/// An owned value as a database stores it: null, integer, real, text or bytes.
using SqlValue = std::variant<std::monostate, std::int64_t, double, std::string, Blob>;

/// A value of a row, seen in place; text and bytes live as long as the row.
struct CellView {
  enum class Kind : unsigned char { Null, Integer, Real, Text, Bytes };

  Kind kind = Kind::Null;
  std::int64_t integer = 0;
  double real = 0;
  std::string_view text;  ///< also the bytes of `Kind::Bytes`
};

CellView CellOf(const SqlValue& value);

}  // namespace orxdb
