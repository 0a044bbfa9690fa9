#pragma once

#include <string>
#include <string_view>

#include "database/operations/DaoFieldInfo.h"
#include "database/operations/SqlValue.h"
#include "platform/automation/Types.h"

namespace orxdb {

/// One field of a query's result.
struct Field {
  CDaoFieldInfo info;
  /// A computed column has no declared type: `info.m_nType` is 0 and each value tells its own.
  bool IsComputed() const noexcept { return info.m_nType == 0; }
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
