// The materials of workpieces. The current row of their recordset is the only position: finding one
// by name moves it, too.
#pragma once

#include "browse/PropertyArrays.h"
#include "interface/IOrxDbObj.h"

namespace orxdb {

/// Moves to the first row and reads it; empty arrays when there is none.
PropertyArrays FirstStockMaterial(CDaoRecordset& materials);

/// Moves to the next row and reads its values; empty at the end. Raises behind the end.
Variant NextStockMaterial(CDaoRecordset& materials);

/// Moves to the first row whose display type matches the name as a pattern, punctuation standing
/// for any one character (FilterStrValueForQuery of the component), and reads it. Empty arrays, and
/// the position unchanged, without a match.
PropertyArrays FindStockMaterial(CDaoRecordset& materials, BSTR name, IOrxDbObj& own);

}  // namespace orxdb
