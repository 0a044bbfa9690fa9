#pragma once

#include <cstdint>
#include <string>

#include "component/DualObject.h"
#include "database/Glossary.h"
#include "database/ToolDbData.h"
#include "interface/IOrxDbObj.h"

/// The tool database as an automation object; may be part of an aggregate. All state of the
/// database is in the shared data object, so every object of the process sees the same tools.
///
/// Lifetimes are deliberately simple: there is one slot for the data object. A new object fills it
/// with a new, closed one and abandons the one that was there; the release of any object destroys
/// what is in the slot and shuts the database engine down for all.
class OrxDbObj final : public orxdb::DualObject<IOrxDbObj, orxdb::kOrxDbObj> {
 public:
  /// A new object, handed out as the interface asked for; `outer` is the aggregate's controlling
  /// object or null. E_OUTOFMEMORY for the object itself; without memory for the data object an
  /// exception leaves the call.
  static HRESULT Create(IUnknown* outer, REFIID riid, void** ppvObject);

  HRESULT STDMETHODCALLTYPE SetMdbFile(BSTR bstrFileName) override;
  HRESULT STDMETHODCALLTYPE GetToolTypes(VARIANT* Types) override;
  HRESULT STDMETHODCALLTYPE GetFirstTool(BSTR bstrToolTable, VARIANT* pPropNames,
                                         VARIANT* pProps) override;
  HRESULT STDMETHODCALLTYPE GetNextTool(BSTR bstrToolTable, VARIANT* pProps) override;
  HRESULT STDMETHODCALLTYPE SetTabFilter(BSTR bstrToolTable, BSTR bstrWhereStr,
                                         BSTR bstrOrderStr) override;
  HRESULT STDMETHODCALLTYPE AddNewRecord(BSTR bstrToolTable, VARIANT* pPropNames, VARIANT* pProps,
                                         LONG* pDbId) override;
  HRESULT STDMETHODCALLTYPE SetToolProps(BSTR bstrToolTable, LONG lDbId, VARIANT* pPropNames,
                                         VARIANT* pProps) override;
  HRESULT STDMETHODCALLTYPE GetPermissibleValues(BSTR bstrToolTable, BSTR bstrParamName,
                                                 DOUBLE fMetricTapDiameter,
                                                 VARIANT* pArrVal) override;
  HRESULT STDMETHODCALLTYPE VariantToSQLString(VARIANT* pvarValue, BSTR* bstrValue) override;
  HRESULT STDMETHODCALLTYPE VariantToUIString(VARIANT* pvarValue, BSTR* bstrValue,
                                              LONG iPrecision) override;
  HRESULT STDMETHODCALLTYPE GetSearchParamNames(BSTR bstrToolTable, VARIANT* pNames) override;
  HRESULT STDMETHODCALLTYPE GetFieldType(BSTR bstrTolTable, BSTR bstrParamName,
                                         USHORT* vtType) override;
  HRESULT STDMETHODCALLTYPE DeleteTool(BSTR bstrToolTable, LONG lDbId) override;
  HRESULT STDMETHODCALLTYPE GetToolProps(BSTR bstrToolTable, LONG lDbId, VARIANT* pPropNames,
                                         VARIANT* pProps) override;
  HRESULT STDMETHODCALLTYPE IsToolNameUnique(BSTR bstrToolTable, BSTR bstrToolName,
                                             VARIANT_BOOL* bUnique) override;
  HRESULT STDMETHODCALLTYPE GetFirstStockMaterial(VARIANT* pPropNames, VARIANT* pProps) override;
  HRESULT STDMETHODCALLTYPE GetNextStockMaterial(VARIANT* pProps) override;
  HRESULT STDMETHODCALLTYPE GetRowByMaterialHardness(BSTR bstrTabName, BSTR bstrMatName,
                                                     DOUBLE fHardness, VARIANT* pPropNames,
                                                     VARIANT* pProps) override;
  HRESULT STDMETHODCALLTYPE GetChosenDrillFeed(DOUBLE fDiameter, VARIANT* pPropNames,
                                               VARIANT* pProps) override;
  HRESULT STDMETHODCALLTYPE GetFactorByTable(BSTR bstrTabName, DOUBLE fSearchValue,
                                             VARIANT* pPropNames, VARIANT* pProps1,
                                             VARIANT* pProps2) override;
  HRESULT STDMETHODCALLTYPE OpenDefaultDataBase() override;
  HRESULT STDMETHODCALLTYPE GetPropsTypes(BSTR bstrToolTable, VARIANT* pPropNames,
                                          VARIANT* pTypes) override;
  HRESULT STDMETHODCALLTYPE FilterStrValueForQuery(BSTR bstrSrc, BSTR* bstrRes) override;
  HRESULT STDMETHODCALLTYPE GetStockMaterialByName(BSTR bstrName, VARIANT* pPropNames,
                                                   VARIANT* pProps) override;
  HRESULT STDMETHODCALLTYPE GetPrimaryOpByTable(BSTR bstrToolTable, BSTR* bstrPrimaryOp) override;
  HRESULT STDMETHODCALLTYPE GetDefPropsValues(BSTR bstrToolTable, VARIANT* pPropNames,
                                              VARIANT* pProps) override;
  HRESULT STDMETHODCALLTYPE ExportToolRecordsToFile(BSTR bstrToolTable, BSTR bstrFileName,
                                                    LONG lFlags) override;
  HRESULT STDMETHODCALLTYPE ImportToolRecordsFromFile(BSTR bstrFileName, LONG lFlags) override;
  HRESULT STDMETHODCALLTYPE GenerateDefToolName(BSTR bstrToolTable, LONG lId,
                                                BSTR* bstrName) override;
  HRESULT STDMETHODCALLTYPE FindPropByNameInArray(BSTR bstrPropName, VARIANT* pPropNames,
                                                  VARIANT* pProps, VARIANT* pProp,
                                                  LONG* lArrInd) override;
  HRESULT STDMETHODCALLTYPE GetToolSubtypePreview(BSTR bstrToolTable, VARIANT* pPreView) override;
  HRESULT STDMETHODCALLTYPE GetTappingHeadsForTap(BSTR bstrUnit, DOUBLE fTapDiam, VARIANT* pNames,
                                                  VARIANT* pIDs) override;
  HRESULT STDMETHODCALLTYPE IsHiddenProperty(BSTR bstrPropName, VARIANT_BOOL* bHidden) override;
  HRESULT STDMETHODCALLTYPE GetSelectedRecordCount(BSTR bstrToolTable, LONG* lRecCount) override;
  HRESULT STDMETHODCALLTYPE SetToolTableBookmark(BSTR bstrToolTable, VARIANT varBookmark) override;
  HRESULT STDMETHODCALLTYPE GetToolTableBookmark(BSTR bstrToolTable,
                                                 VARIANT* pvarBookmark) override;
  HRESULT STDMETHODCALLTYPE GetPermissibleValues2(BSTR bstrToolTable, VARIANT* pPropNames,
                                                  VARIANT* pProps, BSTR bstrParamName,
                                                  VARIANT* pArrVal, VARIANT* pArrDispVal) override;
  HRESULT STDMETHODCALLTYPE GenFirstTool(BSTR bstrToolTable, VARIANT* pNames, VARIANT* pProps,
                                         VARIANT* pGenNames, VARIANT* pGenProps) override;
  HRESULT STDMETHODCALLTYPE GenNextTool(BSTR bstrToolTable, VARIANT* pGenProps) override;
  HRESULT STDMETHODCALLTYPE GenerateDefToolName2(BSTR bstrToolTable, VARIANT* pPropNames,
                                                 VARIANT* pProps, BSTR* bstrName) override;
  HRESULT STDMETHODCALLTYPE GetToolTypesByStoredQuery(BSTR bstrQueryName, VARIANT* pTypes) override;

 private:
  explicit OrxDbObj(IUnknown* outer);
  ~OrxDbObj() override;

  std::string m_strYes;
  std::string m_strNo;
  std::uint32_t m_nSetMdbFileCalls = 0;
  CGlossary m_glossary;
};
