// Properties of tools and their fields. Only the test for hidden ones is available yet.
#include "component/MethodFrame.h"
#include "component/OrxDbObj.h"
#include "platform/framework/Text.h"

using orxdb::Guard;
using orxdb::RunMethod;

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
HRESULT OrxDbObj::IsHiddenProperty(BSTR bstrPropName, VARIANT_BOOL* bHidden) {
  return RunMethod<Guard::None>(g_pToolDbData && bstrPropName && bHidden, [&] {
    const bool hidden = CToolDbData::IsHiddenProperty(orxdb::NarrowBstr(bstrPropName));
    *bHidden = hidden ? VARIANT_TRUE : VARIANT_FALSE;
    return S_OK;
  });
}
HRESULT OrxDbObj::FindPropByNameInArray(BSTR, VARIANT*, VARIANT*, VARIANT*, LONG*) {
  return NotAvailable();
}
HRESULT OrxDbObj::GetDefPropsValues(BSTR, VARIANT*, VARIANT*) {
  return NotAvailable();
}
