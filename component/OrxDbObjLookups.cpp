// Stock materials, machining data, permissible values, tapping heads, pictures.
#include "component/MethodFrame.h"
#include "component/OrxDbObj.h"
#include "database/ToolRules.h"
#include "lookups/FeedTables.h"
#include "lookups/PermissibleValues.h"
#include "lookups/StockMaterials.h"
#include "lookups/TappingHeads.h"
#include "lookups/ToolKinds.h"
#include "platform/framework/Text.h"

using orxdb::Guard;
using orxdb::IsEmpty;
using orxdb::NarrowBstr;
using orxdb::RunMethod;
using orxdb::Variant;

namespace {

bool HasStockMaterials() {
  return g_pToolDbData && g_pToolDbData->StockMaterialSet().IsOpen();
}

bool HasCatalogue() {
  return g_pToolDbData && g_pToolDbData->ToolTypesSet().IsOpen();
}

/// The recordset of a machining-data table; null for an unknown one, and without a data object.
CDaoRecordset* FindDataTable(const std::string& name) {
  return g_pToolDbData ? g_pToolDbData->FindDataTable(name) : nullptr;
}

}  // namespace

HRESULT OrxDbObj::GetFirstStockMaterial(VARIANT* pPropNames, VARIANT* pProps) {
  const bool ready = HasStockMaterials() && IsEmpty(pPropNames) && IsEmpty(pProps);
  return RunMethod<Guard::Framework>(ready, [&] {
    orxdb::FirstStockMaterial(g_pToolDbData->StockMaterialSet()).HandOut(pPropNames, pProps);
    return S_OK;
  });
}

HRESULT OrxDbObj::GetNextStockMaterial(VARIANT* pProps) {
  // A list that is not open fails where it is used, below.
  return RunMethod<Guard::Framework>(g_pToolDbData && IsEmpty(pProps), [&] {
    *pProps = orxdb::NextStockMaterial(g_pToolDbData->StockMaterialSet()).detach();
    return S_OK;
  });
}

HRESULT OrxDbObj::GetStockMaterialByName(BSTR bstrName, VARIANT* pPropNames, VARIANT* pProps) {
  const bool ready = HasStockMaterials() && IsEmpty(pPropNames) && IsEmpty(pProps);
  return RunMethod<Guard::Framework>(ready, [&] {
    orxdb::FindStockMaterial(g_pToolDbData->StockMaterialSet(), bstrName, *this)
        .HandOut(pPropNames, pProps);
    return S_OK;
  });
}

HRESULT OrxDbObj::GetRowByMaterialHardness(BSTR bstrTabName, BSTR bstrMatName, DOUBLE fHardness,
                                           VARIANT* pPropNames, VARIANT* pProps) {
  return RunMethod<Guard::Framework>(pPropNames && pProps, [&] {
    if (CDaoRecordset* table = FindDataTable(NarrowBstr(bstrTabName))) {
      orxdb::HardnessRow(*table, NarrowBstr(bstrMatName), fHardness).HandOut(pPropNames, pProps);
    }
    return S_OK;
  });
}

HRESULT OrxDbObj::GetChosenDrillFeed(DOUBLE fDiameter, VARIANT* pPropNames, VARIANT* pProps) {
  return RunMethod<Guard::Framework>(pPropNames && pProps, [&] {
    if (CDaoRecordset* table = FindDataTable("DRILL_FEED")) {
      orxdb::DrillFeedRow(*table, fDiameter).HandOut(pPropNames, pProps);
    }
    return S_OK;
  });
}

HRESULT OrxDbObj::GetFactorByTable(BSTR bstrTabName, DOUBLE fSearchValue, VARIANT* pPropNames,
                                   VARIANT* pProps1, VARIANT* pProps2) {
  // The only method that leaves the host's module state in place.
  return orxdb::RunReported<Guard::Framework>(pPropNames && pProps1 && pProps2, [&] {
    CDaoRecordset* table = FindDataTable(NarrowBstr(bstrTabName));
    if (!table) return S_OK;
    orxdb::FactorRows rows = orxdb::FactorNeighbours(*table, fSearchValue);
    *pPropNames = rows.names.detach();
    *pProps1 = rows.lower.detach();
    *pProps2 = rows.upper.detach();
    return S_OK;
  });
}

HRESULT OrxDbObj::GetPrimaryOpByTable(BSTR bstrToolTable, BSTR* bstrPrimaryOp) {
  return RunMethod<Guard::Framework>(bstrPrimaryOp, [&] {
    if (!HasCatalogue() || !bstrToolTable) return S_OK;
    return orxdb::PrimaryOperation(g_pToolDbData->ToolTypesSet(), NarrowBstr(bstrToolTable),
                                   bstrPrimaryOp);
  });
}

HRESULT OrxDbObj::GetPermissibleValues(BSTR bstrToolTable, BSTR bstrParamName,
                                       DOUBLE fMetricTapDiameter, VARIANT* pArrVal) {
  return RunMethod<Guard::Framework>(g_pToolDbData && IsEmpty(pArrVal), [&] {
    const CToolTableInfo* table = FindToolTable(bstrToolTable);
    if (!table) return E_FAIL;
    *pArrVal = orxdb::PermissibleValues(g_pToolDbData->Database(), *table,
                                        NarrowBstr(bstrParamName), fMetricTapDiameter)
                   .detach();
    return S_OK;
  });
}

HRESULT OrxDbObj::GetPermissibleValues2(BSTR bstrToolTable, VARIANT*, VARIANT*, BSTR bstrParamName,
                                        VARIANT* pArrVal, VARIANT* pArrDispVal) {
  const bool ready = g_pToolDbData && IsEmpty(pArrVal) && bstrParamName && pArrDispVal;
  return RunMethod<Guard::Framework>(ready, [&] {
    auto diameters = orxdb::StandardDiameters(g_pToolDbData->Database(), NarrowBstr(bstrToolTable),
                                              NarrowBstr(bstrParamName));
    if (diameters.values.empty()) return S_OK;
    *pArrVal = diameters.values.detach();
    *pArrDispVal = diameters.texts.detach();
    return S_OK;
  });
}

HRESULT OrxDbObj::GetToolSubtypePreview(BSTR bstrToolTable, VARIANT* pPreView) {
  return RunMethod<Guard::Framework>(true, [&] {
    if (!HasCatalogue() || !bstrToolTable || !IsEmpty(pPreView)) return S_OK;
    *pPreView =
        orxdb::PreviewPicture(g_pToolDbData->ToolTypesSet(), NarrowBstr(bstrToolTable)).detach();
    return S_OK;
  });
}

HRESULT OrxDbObj::GetTappingHeadsForTap(BSTR bstrUnit, DOUBLE fTapDiam, VARIANT* pNames,
                                        VARIANT* pIDs) {
  const bool ready = g_pToolDbData && bstrUnit && IsEmpty(pNames) && IsEmpty(pIDs) &&
                     g_pToolDbData->FindToolTable(orxdb::kTappingHeadTable);
  return RunMethod<Guard::Framework>(ready, [&] {
    const double metric = NarrowBstr(bstrUnit) == "mm" ? fTapDiam : fTapDiam * 25.4;
    auto heads = orxdb::HeadsForTap(metric, *this);
    *pNames = heads.names.detach();
    *pIDs = heads.ids.detach();
    return S_OK;
  });
}
