// The types that fields have: one list, and all that depends on a type comes from its row.
#pragma once

#include <array>
#include <optional>
#include <string_view>

#include "platform/automation/Types.h"
#include "values/DaoFieldInfo.h"
#include "values/StoredValue.h"

namespace orxdb {

/// What a value is to comparisons. No field is a condition; an expression may be.
enum class ValueKind { Unknown, Text, Number, Money, Flag, Date, Condition };

struct Field;

/// The bounds of a type's numbers.
struct NumberRange {
  double lowest;
  double highest;
};

/// One type of fields.
struct FieldType {
  short code = 0;  ///< a `DaoFieldType`; 0 for computed columns, whose values tell their own
  VARTYPE variantType = VT_NULL;  ///< as hosts are told; VT_NULL for types unknown to them
  ValueKind kind = ValueKind::Unknown;
  std::string_view name = {};                     ///< in declarations; empty where there is none
  std::array<std::string_view, 5> synonyms = {};  ///< other names, in small letters
  long size = 0;                                  ///< bytes of a value; 0 where they vary
  std::optional<NumberRange> range = {};          ///< nothing where no real number comes near
  bool comparable = true;  ///< whether an import compares such fields with the tools already there

  /// Turns a stored value, not null, into the automation value and puts it into `value`, which must
  /// be empty. Text keeps its narrow bytes.
  void (*read)(const Field& field, const CellView& cell, VARIANT& value) = nullptr;
  /// Turns a given value, neither empty nor null nor a reference, into what is stored.
  SqlValue (*store)(const Field& field, const VARIANT& value) = nullptr;
};

/// The row of a type; that of computed columns for a code that no type has.
const FieldType& FieldTypeOf(short code) noexcept;

/// The type of a computed column, going by one of its values.
const FieldType& ComputedType(const CellView& value) noexcept;

inline ValueKind KindOf(short code) noexcept {
  return FieldTypeOf(code).kind;
}

/// One field of a query's result.
struct Field {
  CDaoFieldInfo info;

  const FieldType& Type() const noexcept { return FieldTypeOf(info.m_nType); }
};

/// A declared column type as a field type and a size: bytes, or characters of a text, 0 for no
/// limit. Usual synonyms are known; an unknown word is text.
struct DeclaredType {
  short type = 0;
  long size = 0;
};
DeclaredType ParseDeclaredType(std::string_view declared);

/// Turns a stored value into the automation value of the field's type and puts it into `value`,
/// which must be empty. Text keeps its narrow bytes. Raises `BadValue` when the file holds
/// something that the type cannot express.
void ReadValue(const Field& field, const CellView& cell, VARIANT& value);

/// Checks a value given for a field and turns it into what is stored. Text is given as narrow
/// bytes. Raises `BadValue` for a wrong type, an overflow or a text that is too long.
SqlValue StoreValue(const Field& field, const VARIANT& value);

}  // namespace orxdb
