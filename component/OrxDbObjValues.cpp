// Values as text.
#include "component/MethodFrame.h"
#include "component/OrxDbObj.h"
#include "platform/framework/Text.h"
#include "values/ValueText.h"

using orxdb::Guard;
using orxdb::RunMethod;

HRESULT OrxDbObj::VariantToSQLString(VARIANT* pvarValue, BSTR* bstrValue) {
  return RunMethod<Guard::None>(true,
                                [&] { return orxdb::FormatVariantText(pvarValue, bstrValue); });
}

HRESULT OrxDbObj::VariantToUIString(VARIANT* pvarValue, BSTR* bstrValue, LONG iPrecision) {
  return RunMethod<Guard::None>(pvarValue && bstrValue, [&] {
    const auto text =
        orxdb::VariantDisplayText(*pvarValue, iPrecision, {.yes = m_strYes, .no = m_strNo});
    if (!text) return E_FAIL;
    *bstrValue = orxdb::WidenToBstr(*text).detach();
    return S_OK;
  });
}

HRESULT OrxDbObj::FilterStrValueForQuery(BSTR bstrSrc, BSTR* bstrRes) {
  return RunMethod<Guard::None>(bstrRes, [&] {
    *bstrRes = orxdb::WidenToBstr(orxdb::FilterPatternText(orxdb::NarrowBstr(bstrSrc))).detach();
    return S_OK;
  });
}
