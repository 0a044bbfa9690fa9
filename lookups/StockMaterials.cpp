#include "lookups/StockMaterials.h"

#include "platform/framework/Text.h"

namespace orxdb {

PropertyArrays FirstStockMaterial(CDaoRecordset& materials) {
  materials.MoveFirst();
  return HasCurrentRecord(materials) ? ReadRecord(materials) : PropertyArrays();
}

Variant NextStockMaterial(CDaoRecordset& materials) {
  materials.MoveNext();
  return HasCurrentRecord(materials) ? FieldValues(materials) : Variant();
}

PropertyArrays FindStockMaterial(CDaoRecordset& materials, BSTR name, IOrxDbObj& own) {
  Bstr pattern;
  own.FilterStrValueForQuery(name, pattern.put());
  const bool found = materials.FindFirst("[DispType] LIKE '" + NarrowBstr(pattern.get()) + "'");
  return found ? ReadRecord(materials) : PropertyArrays();
}

}  // namespace orxdb
