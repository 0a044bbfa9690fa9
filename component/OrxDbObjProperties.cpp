// Properties of tools and their fields.
#include "browse/FieldVariantTypes.h"
#include "browse/PropertyArrays.h"
#include "browse/ToolProperties.h"
#include "component/MethodFrame.h"
#include "component/OrxDbObj.h"
#include "platform/framework/Text.h"

using orxdb::Guard;
using orxdb::IsEmpty;
using orxdb::NarrowBstr;
using orxdb::RunMethod;
using orxdb::Variant;

HRESULT OrxDbObj::GetToolProps(BSTR bstrToolTable, LONG lDbId, VARIANT* pPropNames,
                               VARIANT* pProps) {
  const bool ready = g_pToolDbData && bstrToolTable && IsEmpty(pPropNames) && IsEmpty(pProps);
  return RunMethod<Guard::Framework>(ready, [&] {
    const CToolTableInfo* table = FindToolTable(bstrToolTable);
    if (!table) return E_FAIL;
    orxdb::FindToolProperties(*table, lDbId).HandOut(pPropNames, pProps);
    return S_OK;
  });
}

HRESULT OrxDbObj::GetPropsTypes(BSTR bstrToolTable, VARIANT* pPropNames, VARIANT* pTypes) {
  // A failure is reported, but hosts never see it in the result.
  RunMethod<Guard::Framework>(pPropNames && pTypes, [&] {
    const CToolTableInfo* table = g_pToolDbData ? FindToolTable(bstrToolTable) : nullptr;
    if (!table || !table->m_pToolSet) return S_OK;
    Variant names = orxdb::FieldNames(*table->m_pToolSet);
    Variant types = orxdb::FieldVariantTypes(*table->m_pToolSet, bstrToolTable, *this);
    *pPropNames = names.detach();
    *pTypes = types.detach();
    return S_OK;
  });
  return S_OK;
}

HRESULT OrxDbObj::GetFieldType(BSTR bstrTolTable, BSTR bstrParamName, USHORT* vtType) {
  return RunMethod<Guard::None>(g_pToolDbData && vtType, [&] {
    return orxdb::GetFieldVariantType(*g_pToolDbData, NarrowBstr(bstrTolTable),
                                      NarrowBstr(bstrParamName), *vtType);
  });
}

HRESULT OrxDbObj::GetSearchParamNames(BSTR bstrToolTable, VARIANT* pNames) {
  return RunMethod<Guard::None>(g_pToolDbData && pNames, [&] {
    const CToolTableInfo* table = FindToolTable(bstrToolTable);
    if (!table) return E_FAIL;
    Variant names = orxdb::SearchParamNames(*table);
    if (!names.empty()) *pNames = names.detach();
    return S_OK;
  });
}

HRESULT OrxDbObj::IsHiddenProperty(BSTR bstrPropName, VARIANT_BOOL* bHidden) {
  return RunMethod<Guard::None>(g_pToolDbData && bstrPropName && bHidden, [&] {
    const bool hidden = CToolDbData::IsHiddenProperty(NarrowBstr(bstrPropName));
    *bHidden = hidden ? VARIANT_TRUE : VARIANT_FALSE;
    return S_OK;
  });
}

HRESULT OrxDbObj::FindPropByNameInArray(BSTR bstrPropName, VARIANT* pPropNames, VARIANT* pProps,
                                        VARIANT* pProp, LONG* lArrInd) {
  return RunMethod<Guard::None>(true, [&] {
    if (!bstrPropName || !pPropNames || !pProps || !IsEmpty(pProp) || !lArrInd) return S_OK;
    return orxdb::FindProperty(NarrowBstr(bstrPropName), *pPropNames, *pProps, pProp, lArrInd);
  });
}

HRESULT OrxDbObj::GetDefPropsValues(BSTR bstrToolTable, VARIANT* pPropNames, VARIANT* pProps) {
  const bool ready = g_pToolDbData && g_pToolDbData->CanTransact() && bstrToolTable &&
                     IsEmpty(pPropNames) && IsEmpty(pProps);
  return RunMethod<Guard::Framework>(ready, [&] {
    const CToolTableInfo* table = FindToolTable(bstrToolTable);
    if (!table || !table->m_pToolSet) return S_OK;
    orxdb::ReadDefaultProperties(*table->m_pToolSet, bstrToolTable, pPropNames, pProps, *this);
    return S_OK;
  });
}
