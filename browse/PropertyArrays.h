// Records as property arrays, the form in which every reader hands them out.
#pragma once

#include "database/operations/DaoRecordset.h"
#include "platform/automation/SafeArray.h"
#include "platform/automation/Variant.h"

namespace orxdb {

/// A vector of `count` empty elements from index 0. Raises CMemoryException without memory.
SafeArray NewResultVector(VARTYPE elementType, std::size_t count);

/// The names of all fields in their order, VT_ARRAY | VT_BSTR.
Variant FieldNames(const CDaoRecordset& records);

/// The values of all fields of the current record in their order, text wide, null fields as
/// VT_NULL: VT_ARRAY | VT_VARIANT.
Variant FieldValues(const CDaoRecordset& records);

}  // namespace orxdb
