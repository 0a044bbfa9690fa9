// Stock materials, machining data, permissible values, tapping heads, pictures. Not available yet.
#include "component/OrxDbObj.h"

HRESULT OrxDbObj::GetFirstStockMaterial(VARIANT*, VARIANT*) {
  return NotAvailable();
}
HRESULT OrxDbObj::GetNextStockMaterial(VARIANT*) {
  return NotAvailable();
}
HRESULT OrxDbObj::GetStockMaterialByName(BSTR, VARIANT*, VARIANT*) {
  return NotAvailable();
}
HRESULT OrxDbObj::GetRowByMaterialHardness(BSTR, BSTR, DOUBLE, VARIANT*, VARIANT*) {
  return NotAvailable();
}
HRESULT OrxDbObj::GetChosenDrillFeed(DOUBLE, VARIANT*, VARIANT*) {
  return NotAvailable();
}
HRESULT OrxDbObj::GetFactorByTable(BSTR, DOUBLE, VARIANT*, VARIANT*, VARIANT*) {
  return NotAvailable();
}
HRESULT OrxDbObj::GetPrimaryOpByTable(BSTR, BSTR*) {
  return NotAvailable();
}
HRESULT OrxDbObj::GetPermissibleValues(BSTR, BSTR, DOUBLE, VARIANT*) {
  return NotAvailable();
}
HRESULT OrxDbObj::GetPermissibleValues2(BSTR, VARIANT*, VARIANT*, BSTR, VARIANT*, VARIANT*) {
  return NotAvailable();
}
HRESULT OrxDbObj::GetToolSubtypePreview(BSTR, VARIANT*) {
  return NotAvailable();
}
HRESULT OrxDbObj::GetTappingHeadsForTap(BSTR, DOUBLE, VARIANT*, VARIANT*) {
  return NotAvailable();
}
