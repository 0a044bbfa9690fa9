// Properties of tools and their fields. Not available yet.
#include "component/OrxDbObj.h"

HRESULT OrxDbObj::GetToolProps(BSTR, LONG, VARIANT*, VARIANT*) {
  return NotAvailable();
}
HRESULT OrxDbObj::GetPropsTypes(BSTR, VARIANT*, VARIANT*) {
  return NotAvailable();
}
HRESULT OrxDbObj::GetFieldType(BSTR, BSTR, USHORT*) {
  return NotAvailable();
}
HRESULT OrxDbObj::GetSearchParamNames(BSTR, VARIANT*) {
  return NotAvailable();
}
HRESULT OrxDbObj::IsHiddenProperty(BSTR, VARIANT_BOOL*) {
  return NotAvailable();
}
HRESULT OrxDbObj::FindPropByNameInArray(BSTR, VARIANT*, VARIANT*, VARIANT*, LONG*) {
  return NotAvailable();
}
HRESULT OrxDbObj::GetDefPropsValues(BSTR, VARIANT*, VARIANT*) {
  return NotAvailable();
}
