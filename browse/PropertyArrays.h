// Records as property arrays, the form in which every reader hands them out.
#pragma once

#include <string_view>

#include "database/records/DaoRecordset.h"
#include "platform/automation/Vectors.h"

namespace orxdb {

/// The names of all fields in their order, VT_ARRAY | VT_BSTR.
Variant FieldNames(const CDaoRecordset& records);

/// The values of all fields of the current record in their order, text wide, null fields as
/// VT_NULL: VT_ARRAY | VT_VARIANT.
Variant FieldValues(const CDaoRecordset& records);

/// A pair of property arrays; both empty for no record.
struct PropertyArrays {
  Variant names;
  Variant values;

  /// Hands the arrays to a caller's out-parameters, whose old content is not released. Without a
  /// record they stay as they are.
  void HandOut(VARIANT* outNames, VARIANT* outValues) &&;
};

/// Whether there is a current record.
bool HasCurrentRecord(const CDaoRecordset& records);

/// The property arrays of the current record.
PropertyArrays ReadRecord(const CDaoRecordset& records);

/// The array that a caller's value carries, itself or by reference; null when it carries none, or
/// one with elements of another type.
SAFEARRAY* CarriedArray(const VARIANT& value, VARTYPE elementType);

/// Looks a property up in a caller's pair of property arrays. The first element of that name
/// decides: `index` becomes its index in the name array, `property` (empty before) a copy of the
/// value at the same index, whatever the bounds of the value array; it stays empty where the
/// values end before. S_OK with both untouched when there is no such name or no pair of
/// one-dimensional arrays; else the status of the copy.
HRESULT FindProperty(std::string_view name, const VARIANT& names, const VARIANT& values,
                     VARIANT* property, LONG* index);

}  // namespace orxdb
