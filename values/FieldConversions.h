// How the values of each type of fields are read from the file and stored there: the functions that
// the list of field types names. All raise `BadValue` for what the type cannot express.
#pragma once

#include <cmath>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <utility>

#include "platform/automation/Variant.h"
#include "values/FieldTypes.h"

namespace orxdb::conversion {

[[noreturn]] void Refuse(const Field& field, std::string_view why);
[[noreturn]] void RefuseCell(const Field& field);

// From a cell, which is not null.

/// The cell as a number; text counts when all of it is one.
double NumberOf(const Field& field, const CellView& cell);

template <typename Whole>
Whole WholeOf(const Field& field, const CellView& cell) {
  if (cell.kind == CellView::Kind::Integer && std::in_range<Whole>(cell.integer)) {
    return static_cast<Whole>(cell.integer);
  }
  const double number = std::nearbyint(NumberOf(field, cell));
  // The bounds are powers of two, which a double holds exactly.
  constexpr Whole kHalf = std::numeric_limits<Whole>::max() / 2 + 1;
  constexpr double kEnd = 2.0 * static_cast<double>(kHalf);
  if (!(number >= static_cast<double>(std::numeric_limits<Whole>::min()) && number < kEnd)) {
    RefuseCell(field);
  }
  return static_cast<Whole>(number);
}

VARIANT_BOOL FlagOf(const Field& field, const CellView& cell);
float SingleOf(const Field& field, const CellView& cell);
CY CurrencyOf(const Field& field, const CellView& cell);
/// ISO text; a number counts as days.
DATE DateOf(const Field& field, const CellView& cell);
/// A byte-length string, which the caller owns.
BSTR TextOf(const Field& field, const CellView& cell);
/// An array of bytes, which the caller owns.
SAFEARRAY* BytesOf(const Field& field, const CellView& cell);

/// Reads a cell by `payloadOf`, one of these, into that member of a variant of that type.
template <VARTYPE type, auto member, auto payloadOf>
void Read(const Field& field, const CellView& cell, VARIANT& value) {
  value.*member = payloadOf(field, cell);
  value.vt = type;
}

// To what is stored.

/// The given value as the wanted variant type, text read as a number first where need be.
Variant Converted(const Field& field, const VARIANT& value, VARTYPE type);

inline SqlValue WholeToStore(const Field&, std::int64_t number) {
  return number;
}
SqlValue FlagToStore(const Field& field, VARIANT_BOOL flag);
SqlValue SingleToStore(const Field& field, float number);
SqlValue DoubleToStore(const Field& field, double number);
SqlValue CurrencyToStore(const Field& field, CY amount);
SqlValue DateToStore(const Field& field, DATE date);

/// Stores the member of the value, converted to that type, by `toStore`, one of these.
template <VARTYPE type, auto member, auto toStore>
SqlValue Store(const Field& field, const VARIANT& value) {
  return toStore(field, Converted(field, value, type).get().*member);
}

SqlValue StoreText(const Field& field, const VARIANT& value);
SqlValue StoreBytes(const Field& field, const VARIANT& value);

}  // namespace orxdb::conversion
