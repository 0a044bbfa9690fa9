// Properties of tools and their fields.
#include "browse/FieldVariantTypes.h"
#include "browse/PropertyArrays.h"
#include "browse/ToolProperties.h"
#include "component/MethodFrame.h"
#include "component/OrxDbObj.h"
#include "database/ToolRules.h"

using orxdb::FindToolTable;
using orxdb::Guard;
using orxdb::IfLacking;
using orxdb::IsEmpty;
using orxdb::NarrowBstr;
using orxdb::RunMethod;
using orxdb::RunOnData;
using orxdb::RunOnTable;
using orxdb::Variant;

HRESULT OrxDbObj::GetToolProps(BSTR bstrToolTable, LONG lDbId, VARIANT* pPropNames,
                               VARIANT* pProps) {
  const bool arguments = bstrToolTable && IsEmpty(pPropNames) && IsEmpty(pProps);
  return RunOnTable<Guard::Framework>(bstrToolTable, arguments, [&](CToolTableInfo& table) {
    orxdb::FindToolProperties(table, lDbId).HandOut(pPropNames, pProps);
  });
}

HRESULT OrxDbObj::GetPropsTypes(BSTR bstrToolTable, VARIANT* pPropNames, VARIANT* pTypes) {
  // A failure is reported, but hosts never see it in the result.
  RunMethod<Guard::Framework>(pPropNames && pTypes, [&] {
    const CToolTableInfo* table = FindToolTable(bstrToolTable);
    if (!table || !table->m_pToolSet) return;
    Variant names = orxdb::FieldNames(*table->m_pToolSet);
    Variant types = orxdb::FieldVariantTypes(*table->m_pToolSet, bstrToolTable, *this);
    *pPropNames = names.detach();
    *pTypes = types.detach();
  });
  return S_OK;
}

HRESULT OrxDbObj::GetFieldType(BSTR bstrTolTable, BSTR bstrParamName, USHORT* vtType) {
  return RunOnData<Guard::None>(vtType, [&](CToolDbData& data) {
    return orxdb::GetFieldVariantType(data, NarrowBstr(bstrTolTable), NarrowBstr(bstrParamName),
                                      *vtType);
  });
}

HRESULT OrxDbObj::GetSearchParamNames(BSTR bstrToolTable, VARIANT* pNames) {
  return RunOnTable<Guard::None>(bstrToolTable, pNames, [&](CToolTableInfo& table) {
    Variant names = orxdb::SearchParamNames(table);
    if (!names.empty()) *pNames = names.detach();
  });
}

HRESULT OrxDbObj::IsHiddenProperty(BSTR bstrPropName, VARIANT_BOOL* bHidden) {
  return RunOnData<Guard::None>(bstrPropName && bHidden, [&](CToolDbData&) {
    const bool hidden = orxdb::IsHiddenProperty(NarrowBstr(bstrPropName));
    *bHidden = hidden ? VARIANT_TRUE : VARIANT_FALSE;
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
  return RunOnTable<Guard::Framework, IfLacking::SkipUnknownTable>(
      bstrToolTable, ready, [&](CToolTableInfo& table) {
        if (!table.m_pToolSet) return;
        orxdb::ReadDefaultProperties(table, bstrToolTable, pPropNames, pProps, *this);
      });
}
