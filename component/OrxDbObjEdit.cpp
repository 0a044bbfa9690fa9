// Adding, changing and deleting tools, and their names.
#include "component/MethodFrame.h"
#include "component/OrxDbObj.h"
#include "database/ToolRules.h"
#include "edit/DefaultName.h"
#include "edit/ToolNames.h"
#include "edit/ToolRecords.h"
#include "platform/framework/Text.h"

using orxdb::Guard;
using orxdb::NarrowBstr;
using orxdb::RunMethod;
using orxdb::Variant;

namespace {

/// Whether the caller's arrays have exactly the types of property arrays; references to them do
/// not count.
bool ArePropertyArrays(const VARIANT* names, const VARIANT* values) {
  return names && values && names->vt == (VT_ARRAY | VT_BSTR) &&
         values->vt == (VT_ARRAY | VT_VARIANT);
}

}  // namespace

HRESULT OrxDbObj::AddNewRecord(BSTR bstrToolTable, VARIANT* pPropNames, VARIANT* pProps,
                               LONG* pDbId) {
  const bool ready = g_pToolDbData && ArePropertyArrays(pPropNames, pProps) && pDbId;
  return RunMethod<Guard::Framework>(ready, [&] {
    CToolTableInfo* table = FindToolTable(bstrToolTable);
    if (!table) return E_FAIL;
    return orxdb::AddTool(g_pToolDbData->Database(), *table, *pPropNames, *pProps, *pDbId, *this);
  });
}

HRESULT OrxDbObj::SetToolProps(BSTR bstrToolTable, LONG lDbId, VARIANT* pPropNames,
                               VARIANT* pProps) {
  const bool ready = g_pToolDbData && ArePropertyArrays(pPropNames, pProps);
  return RunMethod<Guard::Framework>(ready, [&] {
    CToolTableInfo* table = FindToolTable(bstrToolTable);
    if (!table) return E_FAIL;
    return orxdb::ChangeTool(g_pToolDbData->Database(), *table, lDbId, *pPropNames, *pProps);
  });
}

HRESULT OrxDbObj::DeleteTool(BSTR bstrToolTable, LONG lDbId) {
  return RunMethod<Guard::Framework>(g_pToolDbData && bstrToolTable, [&] {
    if (CToolTableInfo* table = FindToolTable(bstrToolTable)) {
      orxdb::DeleteTool(*table, lDbId);
    }
    return E_FAIL;  // whether or not a tool was deleted; hosts look at the table
  });
}

HRESULT OrxDbObj::IsToolNameUnique(BSTR bstrToolTable, BSTR bstrToolName, VARIANT_BOOL* bUnique) {
  const bool ready = g_pToolDbData && bstrToolTable && bstrToolName && bUnique;
  return RunMethod<Guard::Framework>(ready, [&] {
    const CToolTableInfo* table = FindToolTable(bstrToolTable);
    if (!table) return E_FAIL;
    const bool unique = orxdb::IsToolNameUnique(*table, NarrowBstr(bstrToolName));
    *bUnique = unique ? VARIANT_TRUE : VARIANT_FALSE;
    return S_OK;
  });
}

HRESULT OrxDbObj::GenerateDefToolName(BSTR bstrToolTable, LONG lId, BSTR* bstrName) {
  return RunMethod<Guard::None>(true, [&] {
    if (!g_pToolDbData || !bstrToolTable || !bstrName) return S_OK;
    const CToolTableInfo* table = FindToolTable(bstrToolTable);
    if (!table) return S_OK;
    Variant names;
    Variant values;
    GetToolProps(bstrToolTable, lId, names.ptr(), values.ptr());
    const std::string name = orxdb::BuildDefaultToolName(
        orxdb::NameFormat(*table), NarrowBstr(bstrToolTable), names.ptr(), values.ptr(), *this);
    *bstrName = orxdb::WidenToBstr(name).detach();
    return S_OK;
  });
}

HRESULT OrxDbObj::GenerateDefToolName2(BSTR bstrToolTable, VARIANT* pPropNames, VARIANT* pProps,
                                       BSTR* bstrName) {
  return RunMethod<Guard::None>(true, [&] {
    if (!g_pToolDbData || !bstrToolTable || !pPropNames || !pProps || !bstrName) return S_OK;
    const CToolTableInfo* table = FindToolTable(bstrToolTable);
    if (!table) return S_OK;
    std::string name = orxdb::BuildDefaultToolName(orxdb::NameFormat(*table), table->m_strTableName,
                                                   pPropNames, pProps, *this);
    if (table->m_strTableName == orxdb::kTappingHeadTable) {
      name = orxdb::UniqueToolName(bstrToolTable, name, *this);
    }
    *bstrName = orxdb::WidenToBstr(name).detach();
    return S_OK;
  });
}
