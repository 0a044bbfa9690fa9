// Adding, changing and deleting tools, and their names.
#include "component/MethodFrame.h"
#include "component/OrxDbObj.h"
#include "database/ToolRules.h"
#include "edit/DefaultName.h"
#include "edit/ToolNames.h"
#include "edit/ToolRecords.h"

using orxdb::Guard;
using orxdb::IfLacking;
using orxdb::NarrowBstr;
using orxdb::RunOnTable;
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
  const bool arguments = ArePropertyArrays(pPropNames, pProps) && pDbId;
  return RunOnTable<Guard::Framework>(bstrToolTable, arguments, [&](CToolTableInfo& table) {
    return orxdb::AddTool(g_pToolDbData->Database(), table, *pPropNames, *pProps, *pDbId, *this);
  });
}

HRESULT OrxDbObj::SetToolProps(BSTR bstrToolTable, LONG lDbId, VARIANT* pPropNames,
                               VARIANT* pProps) {
  const bool arguments = ArePropertyArrays(pPropNames, pProps);
  return RunOnTable<Guard::Framework>(bstrToolTable, arguments, [&](CToolTableInfo& table) {
    return orxdb::ChangeTool(g_pToolDbData->Database(), table, lDbId, *pPropNames, *pProps);
  });
}

HRESULT OrxDbObj::DeleteTool(BSTR bstrToolTable, LONG lDbId) {
  return RunOnTable<Guard::Framework>(bstrToolTable, bstrToolTable, [&](CToolTableInfo& table) {
    orxdb::DeleteTool(table, lDbId);
    return E_FAIL;  // whether or not a tool was deleted; hosts look at the table
  });
}

HRESULT OrxDbObj::IsToolNameUnique(BSTR bstrToolTable, BSTR bstrToolName, VARIANT_BOOL* bUnique) {
  const bool arguments = bstrToolTable && bstrToolName && bUnique;
  return RunOnTable<Guard::Framework>(bstrToolTable, arguments, [&](CToolTableInfo& table) {
    const bool unique = orxdb::IsToolNameUnique(table, NarrowBstr(bstrToolName));
    *bUnique = unique ? VARIANT_TRUE : VARIANT_FALSE;
  });
}

HRESULT OrxDbObj::GenerateDefToolName(BSTR bstrToolTable, LONG lId, BSTR* bstrName) {
  const bool arguments = bstrToolTable && bstrName;
  return RunOnTable<Guard::None, IfLacking::Skip>(
      bstrToolTable, arguments, [&](CToolTableInfo& table) {
        Variant names;
        Variant values;
        GetToolProps(bstrToolTable, lId, names.ptr(), values.ptr());
        const std::string name = orxdb::BuildDefaultToolName(
            orxdb::NameFormat(table), NarrowBstr(bstrToolTable), names.ptr(), values.ptr(), *this);
        *bstrName = orxdb::WidenToBstr(name).detach();
      });
}

HRESULT OrxDbObj::GenerateDefToolName2(BSTR bstrToolTable, VARIANT* pPropNames, VARIANT* pProps,
                                       BSTR* bstrName) {
  const bool arguments = bstrToolTable && pPropNames && pProps && bstrName;
  return RunOnTable<Guard::None, IfLacking::Skip>(
      bstrToolTable, arguments, [&](CToolTableInfo& table) {
        std::string name = orxdb::BuildDefaultToolName(
            orxdb::NameFormat(table), table.m_strTableName, pPropNames, pProps, *this);
        if (table.m_strTableName == orxdb::kTappingHeadTable) {
          name = orxdb::UniqueToolName(bstrToolTable, name, *this);
        }
        *bstrName = orxdb::WidenToBstr(name).detach();
      });
}
