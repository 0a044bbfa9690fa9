// Types of fields as hosts see them.
#pragma once

#include <string>

#include "database/ToolDbData.h"
#include "interface/IOrxDbObj.h"

namespace orxdb {

/// The variant type of a field of a tool table. S_OK with `type` untouched for an unknown table;
/// E_FAIL with VT_NULL for a database type that has none, and with `type` untouched when the field
/// cannot be asked for. Raises nothing and sets no error information.
HRESULT GetFieldVariantType(CToolDbData& data, const std::string& table, const std::string& field,
                            VARTYPE& type);

/// The variant types of all fields in their order, VT_ARRAY | VT_I2, each asked for by GetFieldType
/// of the component. A field of a type without a variant type counts as VT_NULL.
Variant FieldVariantTypes(const CDaoRecordset& tools, BSTR table, IOrxDbObj& own);

}  // namespace orxdb
