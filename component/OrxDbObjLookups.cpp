// Stock materials, machining data, permissible values, tapping heads, pictures.
#include "component/MethodFrame.h"
#include "component/OrxDbObj.h"
#include "database/ToolRules.h"
#include "lookups/CatalogueColumns.h"
#include "lookups/FeedTables.h"
#include "lookups/PermissibleValues.h"
#include "lookups/StockMaterials.h"
#include "lookups/TappingHeads.h"

using orxdb::Guard;
using orxdb::IfLacking;
using orxdb::IsEmpty;
using orxdb::NarrowBstr;
using orxdb::RunMethod;
using orxdb::RunOnData;
using orxdb::RunOnTable;

namespace {

bool HasStockMaterials() {
  return g_pToolDbData && g_pToolDbData->StockMaterialSet().IsOpen();
}

bool HasCatalogue() {
  return g_pToolDbData && g_pToolDbData->ToolTypesSet().IsOpen();
}

/// The recordset of a machining-data table; null for an unknown one, and without a data object.
CDaoRecordset* FindDataTable(std::string_view name) {
  return g_pToolDbData ? g_pToolDbData->FindDataTable(name) : nullptr;
}

}  // namespace

HRESULT OrxDbObj::GetFirstStockMaterial(VARIANT* pPropNames, VARIANT* pProps) {
  const bool ready = HasStockMaterials() && IsEmpty(pPropNames) && IsEmpty(pProps);
  return RunOnData<Guard::Framework>(ready, [&](CToolDbData& data) {
    orxdb::FirstStockMaterial(data.StockMaterialSet()).HandOut(pPropNames, pProps);
  });
}

HRESULT OrxDbObj::GetNextStockMaterial(VARIANT* pProps) {
  // A list that is not open fails where it is used, below.
  return RunOnData<Guard::Framework>(IsEmpty(pProps), [&](CToolDbData& data) {
    *pProps = orxdb::NextStockMaterial(data.StockMaterialSet()).detach();
  });
}

HRESULT OrxDbObj::GetStockMaterialByName(BSTR bstrName, VARIANT* pPropNames, VARIANT* pProps) {
  const bool ready = HasStockMaterials() && IsEmpty(pPropNames) && IsEmpty(pProps);
  return RunOnData<Guard::Framework>(ready, [&](CToolDbData& data) {
    orxdb::FindStockMaterial(data.StockMaterialSet(), bstrName, *this).HandOut(pPropNames, pProps);
  });
}

HRESULT OrxDbObj::GetRowByMaterialHardness(BSTR bstrTabName, BSTR bstrMatName, DOUBLE fHardness,
                                           VARIANT* pPropNames, VARIANT* pProps) {
  return RunMethod<Guard::Framework>(pPropNames && pProps, [&] {
    if (CDaoRecordset* table = FindDataTable(NarrowBstr(bstrTabName))) {
      orxdb::HardnessRow(*table, NarrowBstr(bstrMatName), fHardness).HandOut(pPropNames, pProps);
    }
  });
}

HRESULT OrxDbObj::GetChosenDrillFeed(DOUBLE fDiameter, VARIANT* pPropNames, VARIANT* pProps) {
  return RunMethod<Guard::Framework>(pPropNames && pProps, [&] {
    if (CDaoRecordset* table = FindDataTable(orxdb::kDrillFeedTable)) {
      orxdb::DrillFeedRow(*table, fDiameter).HandOut(pPropNames, pProps);
    }
  });
}

HRESULT OrxDbObj::GetFactorByTable(BSTR bstrTabName, DOUBLE fSearchValue, VARIANT* pPropNames,
                                   VARIANT* pProps1, VARIANT* pProps2) {
  // The only method that leaves the host's module state in place.
  return orxdb::RunReported<Guard::Framework>(
      orxdb::kOrxDbObj, pPropNames && pProps1 && pProps2, [&] {
        CDaoRecordset* table = FindDataTable(NarrowBstr(bstrTabName));
        if (!table) return;
        orxdb::FactorRows rows = orxdb::FactorNeighbours(*table, fSearchValue);
        *pPropNames = rows.names.detach();
        *pProps1 = rows.lower.detach();
        *pProps2 = rows.upper.detach();
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
  return RunOnTable<Guard::Framework>(bstrToolTable, IsEmpty(pArrVal), [&](CToolTableInfo& table) {
    *pArrVal = orxdb::PermissibleValues(g_pToolDbData->Database(), table, NarrowBstr(bstrParamName),
                                        fMetricTapDiameter)
                   .detach();
  });
}

HRESULT OrxDbObj::GetPermissibleValues2(BSTR bstrToolTable, VARIANT*, VARIANT*, BSTR bstrParamName,
                                        VARIANT* pArrVal, VARIANT* pArrDispVal) {
  const bool arguments = IsEmpty(pArrVal) && bstrParamName && pArrDispVal;
  return RunOnData<Guard::Framework>(arguments, [&](CToolDbData& data) {
    auto diameters = orxdb::StandardDiameters(data.Database(), NarrowBstr(bstrToolTable),
                                              NarrowBstr(bstrParamName));
    if (diameters.values.empty()) return;
    *pArrVal = diameters.values.detach();
    *pArrDispVal = diameters.texts.detach();
  });
}

HRESULT OrxDbObj::GetToolSubtypePreview(BSTR bstrToolTable, VARIANT* pPreView) {
  const bool ready = HasCatalogue() && bstrToolTable && IsEmpty(pPreView);
  return RunOnData<Guard::Framework, IfLacking::Skip>(ready, [&](CToolDbData& data) {
    *pPreView = orxdb::PreviewPicture(data.ToolTypesSet(), NarrowBstr(bstrToolTable)).detach();
  });
}

HRESULT OrxDbObj::GetTappingHeadsForTap(BSTR bstrUnit, DOUBLE fTapDiam, VARIANT* pNames,
                                        VARIANT* pIDs) {
  const bool arguments = bstrUnit && IsEmpty(pNames) && IsEmpty(pIDs);
  return RunOnData<Guard::Framework>(arguments, [&](CToolDbData& data) {
    if (!data.FindToolTable(orxdb::kTappingHeadTable)) return E_FAIL;
    const double metric = orxdb::Millimetres(fTapDiam, NarrowBstr(bstrUnit));
    auto heads = orxdb::HeadsForTap(metric, *this);
    *pNames = heads.names.detach();
    *pIDs = heads.ids.detach();
    return S_OK;
  });
}
