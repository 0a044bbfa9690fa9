// Kinds of tools, and the cursor of each tool table.
#include "browse/PropertyArrays.h"
#include "browse/ToolCursor.h"
#include "browse/ToolTypes.h"
#include "component/MethodFrame.h"
#include "component/OrxDbObj.h"
#include "edit/DefaultName.h"
#include "platform/framework/Text.h"

using orxdb::Guard;
using orxdb::IsEmpty;
using orxdb::RunMethod;
using orxdb::Variant;

HRESULT OrxDbObj::GetToolTypes(VARIANT* Types) {
  return RunMethod<Guard::None>(g_pToolDbData && IsEmpty(Types), [&] {
    *Types = orxdb::CatalogueToolTypes(*g_pToolDbData).detach();
    return S_OK;
  });
}

HRESULT OrxDbObj::GetToolTypesByStoredQuery(BSTR bstrQueryName, VARIANT* pTypes) {
  return RunMethod<Guard::Framework>(g_pToolDbData && bstrQueryName && pTypes, [&] {
    Variant types = orxdb::StoredQueryToolTypes(*g_pToolDbData, orxdb::NarrowBstr(bstrQueryName));
    if (!types.empty()) *pTypes = types.detach();
    return S_OK;
  });
}

HRESULT OrxDbObj::SetTabFilter(BSTR bstrToolTable, BSTR bstrWhereStr, BSTR bstrOrderStr) {
  return RunMethod<Guard::Framework>(g_pToolDbData, [&] {
    CToolTableInfo* table = FindToolTable(bstrToolTable);
    if (!table) return E_FAIL;
    orxdb::SetTabFilter(*table, orxdb::NarrowBstr(bstrWhereStr), orxdb::NarrowBstr(bstrOrderStr));
    return S_OK;
  });
}

HRESULT OrxDbObj::GetFirstTool(BSTR bstrToolTable, VARIANT* pPropNames, VARIANT* pProps) {
  return RunMethod<Guard::Framework>(g_pToolDbData && IsEmpty(pPropNames) && IsEmpty(pProps), [&] {
    CToolTableInfo* table = FindToolTable(bstrToolTable);
    if (!table) return E_FAIL;
    Variant values = orxdb::FirstTool(*table);
    if (values.empty()) return S_OK;
    Variant names = orxdb::FieldNames(table->ToolSet());
    *pPropNames = names.detach();
    *pProps = values.detach();
    // The first tool of a walk gets a name if it has none; those that follow do not.
    orxdb::BuildDefaultToolName(table->m_strDefNameFormat, table->m_strTableName, pPropNames,
                                pProps, *this);
    return S_OK;
  });
}

HRESULT OrxDbObj::GetNextTool(BSTR bstrToolTable, VARIANT* pProps) {
  return RunMethod<Guard::Framework>(g_pToolDbData && IsEmpty(pProps), [&] {
    CToolTableInfo* table = FindToolTable(bstrToolTable);
    if (!table) return E_FAIL;
    *pProps = orxdb::NextTool(*table).detach();
    return S_OK;
  });
}

HRESULT OrxDbObj::GetSelectedRecordCount(BSTR bstrToolTable, LONG* lRecCount) {
  return RunMethod<Guard::Framework>(lRecCount, [&] {
    *lRecCount = -1;
    if (!g_pToolDbData || !bstrToolTable) return S_OK;
    if (CToolTableInfo* table = FindToolTable(bstrToolTable)) {
      *lRecCount = orxdb::CountSelectedRecords(*table);
    }
    return S_OK;
  });
}

HRESULT OrxDbObj::GetToolTableBookmark(BSTR bstrToolTable, VARIANT* pvarBookmark) {
  return RunMethod<Guard::Framework>(g_pToolDbData && bstrToolTable && pvarBookmark, [&] {
    CToolTableInfo* table = FindToolTable(bstrToolTable);
    if (!table) return S_OK;
    Variant bookmark = orxdb::GetToolBookmark(*table);
    if (bookmark.empty()) return S_OK;
    if (FAILED(VariantClear(pvarBookmark))) return E_FAIL;
    *pvarBookmark = bookmark.detach();
    return S_OK;
  });
}

HRESULT OrxDbObj::SetToolTableBookmark(BSTR bstrToolTable, VARIANT varBookmark) {
  return RunMethod<Guard::Framework>(g_pToolDbData && bstrToolTable, [&] {
    if (CToolTableInfo* table = FindToolTable(bstrToolTable)) {
      orxdb::SetToolBookmark(*table, varBookmark);
    }
    return S_OK;
  });
}

// Reserved places of the interface: nothing to do, whatever the arguments.
HRESULT OrxDbObj::GenFirstTool(BSTR, VARIANT*, VARIANT*, VARIANT*, VARIANT*) {
  return RunMethod<Guard::None>(true, [] { return S_OK; });
}
HRESULT OrxDbObj::GenNextTool(BSTR, VARIANT*) {
  return RunMethod<Guard::None>(true, [] { return S_OK; });
}
