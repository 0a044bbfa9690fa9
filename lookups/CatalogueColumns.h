// Columns of the catalogue that are read when they are asked for. Each look-up leaves the
// catalogue's recordset on the row of the tool table.
#pragma once

#include <string>

#include "browse/PropertyArrays.h"

namespace orxdb {

/// The primary machining operation of a tool table, a new string in `operation`, empty when the
/// catalogue names none. S_OK with nothing written for a table that the catalogue lacks; E_FAIL
/// when the operation is no text.
HRESULT PrimaryOperation(CDaoRecordset& catalogue, const std::string& table, BSTR* operation);

/// The preview picture of a tool table as the catalogue holds it; empty without one.
Variant PreviewPicture(CDaoRecordset& catalogue, const std::string& table);

}  // namespace orxdb
