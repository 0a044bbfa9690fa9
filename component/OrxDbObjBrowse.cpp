// Kinds of tools, and the cursor of each tool table.
#include "browse/PropertyArrays.h"
#include "browse/ToolCursor.h"
#include "browse/ToolTypes.h"
#include "component/MethodFrame.h"
#include "component/OrxDbObj.h"
#include "edit/DefaultName.h"

using orxdb::FindToolTable;
using orxdb::Guard;
using orxdb::IfLacking;
using orxdb::IsEmpty;
using orxdb::NarrowBstr;
using orxdb::RunMethod;
using orxdb::RunOnData;
using orxdb::RunOnTable;
using orxdb::Variant;

HRESULT OrxDbObj::GetToolTypes(VARIANT* Types) {
  return RunOnData<Guard::None>(IsEmpty(Types), [&](CToolDbData& data) {
    *Types = orxdb::CatalogueToolTypes(data).detach();
  });
}

HRESULT OrxDbObj::GetToolTypesByStoredQuery(BSTR bstrQueryName, VARIANT* pTypes) {
  const bool arguments = bstrQueryName && pTypes;
  return RunOnData<Guard::Framework>(arguments, [&](CToolDbData& data) {
    Variant types = orxdb::StoredQueryToolTypes(data, NarrowBstr(bstrQueryName));
    if (!types.empty()) *pTypes = types.detach();
  });
}

HRESULT OrxDbObj::SetTabFilter(BSTR bstrToolTable, BSTR bstrWhereStr, BSTR bstrOrderStr) {
  return RunOnTable<Guard::Framework>(bstrToolTable, true, [&](CToolTableInfo& table) {
    orxdb::SetTabFilter(table, NarrowBstr(bstrWhereStr), NarrowBstr(bstrOrderStr));
  });
}

HRESULT OrxDbObj::GetFirstTool(BSTR bstrToolTable, VARIANT* pPropNames, VARIANT* pProps) {
  const bool arguments = IsEmpty(pPropNames) && IsEmpty(pProps);
  return RunOnTable<Guard::Framework>(bstrToolTable, arguments, [&](CToolTableInfo& table) {
    Variant values = orxdb::FirstTool(table);
    if (values.empty()) return;
    Variant names = orxdb::FieldNames(table.ToolSet());
    *pPropNames = names.detach();
    *pProps = values.detach();
    // The first tool of a walk gets a name if it has none; those that follow do not.
    orxdb::BuildDefaultToolName(table.m_strDefNameFormat, table.m_strTableName, pPropNames, pProps,
                                *this);
  });
}

HRESULT OrxDbObj::GetNextTool(BSTR bstrToolTable, VARIANT* pProps) {
  return RunOnTable<Guard::Framework>(bstrToolTable, IsEmpty(pProps), [&](CToolTableInfo& table) {
    *pProps = orxdb::NextTool(table).detach();
  });
}

HRESULT OrxDbObj::GetSelectedRecordCount(BSTR bstrToolTable, LONG* lRecCount) {
  return RunMethod<Guard::Framework>(lRecCount, [&] {
    *lRecCount = -1;
    CToolTableInfo* table = bstrToolTable ? FindToolTable(bstrToolTable) : nullptr;
    if (table) *lRecCount = orxdb::CountSelectedRecords(*table);
  });
}

HRESULT OrxDbObj::GetToolTableBookmark(BSTR bstrToolTable, VARIANT* pvarBookmark) {
  const bool arguments = bstrToolTable && pvarBookmark;
  return RunOnTable<Guard::Framework, IfLacking::SkipUnknownTable>(
      bstrToolTable, arguments, [&](CToolTableInfo& table) {
        Variant bookmark = orxdb::GetToolBookmark(table);
        if (bookmark.empty()) return S_OK;
        if (FAILED(VariantClear(pvarBookmark))) return E_FAIL;
        *pvarBookmark = bookmark.detach();
        return S_OK;
      });
}

HRESULT OrxDbObj::SetToolTableBookmark(BSTR bstrToolTable, VARIANT varBookmark) {
  return RunOnTable<Guard::Framework, IfLacking::SkipUnknownTable>(
      bstrToolTable, bstrToolTable,
      [&](CToolTableInfo& table) { orxdb::SetToolBookmark(table, varBookmark); });
}

// Reserved places of the interface: nothing to do, whatever the arguments.
HRESULT OrxDbObj::GenFirstTool(BSTR, VARIANT*, VARIANT*, VARIANT*, VARIANT*) {
  return RunMethod<Guard::None>(true, [] {});
}
HRESULT OrxDbObj::GenNextTool(BSTR, VARIANT*) {
  return RunMethod<Guard::None>(true, [] {});
}
