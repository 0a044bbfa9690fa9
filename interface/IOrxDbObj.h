// The interface of the tool database component: include this to host it.
#pragma once

#include "platform/automation/Unknown.h"

/// Class identifier of `OrxDbObj`.
inline constexpr CLSID CLSID_OrxDbObj = {
    0x5cfec078, 0x5a02, 0x4476, {0xbd, 0x65, 0xed, 0xde, 0x95, 0xdc, 0x12, 0x4c}};
/// Interface identifier of `IOrxDbObj`.
inline constexpr IID IID_IOrxDbObj = {
    0xa813cf19, 0x57d3, 0x4a92, {0xbf, 0x7d, 0x4c, 0xe9, 0xca, 0x08, 0x6e, 0x42}};
/// Identifier of the type library `ORXDBLib`, version 1.0.
inline constexpr GUID LIBID_ORXDBLib = {
    0x7da8adae, 0x5a17, 0x44b3, {0xaf, 0x41, 0xc9, 0xc4, 0xf1, 0xb2, 0x60, 0x29}};

inline constexpr const OLECHAR* kOrxDbProgId = OLESTR("ORXDB.OrxDbObj.1");
inline constexpr const OLECHAR* kOrxDbVersionIndependentProgId = OLESTR("ORXDB.OrxDbObj");

struct IOrxDbObj : public IDispatch {
  static constexpr const IID& iid = IID_IOrxDbObj;

  virtual HRESULT STDMETHODCALLTYPE SetMdbFile(BSTR bstrFileName) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetToolTypes(VARIANT* Types) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetFirstTool(BSTR bstrToolTable, VARIANT* pPropNames,
                                                 VARIANT* pProps) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetNextTool(BSTR bstrToolTable, VARIANT* pProps) = 0;
  virtual HRESULT STDMETHODCALLTYPE SetTabFilter(BSTR bstrToolTable, BSTR bstrWhereStr,
                                                 BSTR bstrOrderStr) = 0;
  virtual HRESULT STDMETHODCALLTYPE AddNewRecord(BSTR bstrToolTable, VARIANT* pPropNames,
                                                 VARIANT* pProps, LONG* pDbId) = 0;
  virtual HRESULT STDMETHODCALLTYPE SetToolProps(BSTR bstrToolTable, LONG lDbId,
                                                 VARIANT* pPropNames, VARIANT* pProps) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetPermissibleValues(BSTR bstrToolTable, BSTR bstrParamName,
                                                         DOUBLE fMetricTapDiameter,
                                                         VARIANT* pArrVal) = 0;
  virtual HRESULT STDMETHODCALLTYPE VariantToSQLString(VARIANT* pvarValue, BSTR* bstrValue) = 0;
  virtual HRESULT STDMETHODCALLTYPE VariantToUIString(VARIANT* pvarValue, BSTR* bstrValue,
                                                      LONG iPrecision) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetSearchParamNames(BSTR bstrToolTable, VARIANT* pNames) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetFieldType(BSTR bstrTolTable, BSTR bstrParamName,
                                                 USHORT* vtType) = 0;
  virtual HRESULT STDMETHODCALLTYPE DeleteTool(BSTR bstrToolTable, LONG lDbId) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetToolProps(BSTR bstrToolTable, LONG lDbId,
                                                 VARIANT* pPropNames, VARIANT* pProps) = 0;
  virtual HRESULT STDMETHODCALLTYPE IsToolNameUnique(BSTR bstrToolTable, BSTR bstrToolName,
                                                     VARIANT_BOOL* bUnique) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetFirstStockMaterial(VARIANT* pPropNames, VARIANT* pProps) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetNextStockMaterial(VARIANT* pProps) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetRowByMaterialHardness(BSTR bstrTabName, BSTR bstrMatName,
                                                             DOUBLE fHardness, VARIANT* pPropNames,
                                                             VARIANT* pProps) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetChosenDrillFeed(DOUBLE fDiameter, VARIANT* pPropNames,
                                                       VARIANT* pProps) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetFactorByTable(BSTR bstrTabName, DOUBLE fSearchValue,
                                                     VARIANT* pPropNames, VARIANT* pProps1,
                                                     VARIANT* pProps2) = 0;
  virtual HRESULT STDMETHODCALLTYPE OpenDefaultDataBase() = 0;
  virtual HRESULT STDMETHODCALLTYPE GetPropsTypes(BSTR bstrToolTable, VARIANT* pPropNames,
                                                  VARIANT* pTypes) = 0;
  virtual HRESULT STDMETHODCALLTYPE FilterStrValueForQuery(BSTR bstrSrc, BSTR* bstrRes) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetStockMaterialByName(BSTR bstrName, VARIANT* pPropNames,
                                                           VARIANT* pProps) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetPrimaryOpByTable(BSTR bstrToolTable,
                                                        BSTR* bstrPrimaryOp) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetDefPropsValues(BSTR bstrToolTable, VARIANT* pPropNames,
                                                      VARIANT* pProps) = 0;
  virtual HRESULT STDMETHODCALLTYPE ExportToolRecordsToFile(BSTR bstrToolTable, BSTR bstrFileName,
                                                            LONG lFlags) = 0;
  virtual HRESULT STDMETHODCALLTYPE ImportToolRecordsFromFile(BSTR bstrFileName, LONG lFlags) = 0;
  virtual HRESULT STDMETHODCALLTYPE GenerateDefToolName(BSTR bstrToolTable, LONG lId,
                                                        BSTR* bstrName) = 0;
  virtual HRESULT STDMETHODCALLTYPE FindPropByNameInArray(BSTR bstrPropName, VARIANT* pPropNames,
                                                          VARIANT* pProps, VARIANT* pProp,
                                                          LONG* lArrInd) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetToolSubtypePreview(BSTR bstrToolTable,
                                                          VARIANT* pPreView) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetTappingHeadsForTap(BSTR bstrUnit, DOUBLE fTapDiam,
                                                          VARIANT* pNames, VARIANT* pIDs) = 0;
  virtual HRESULT STDMETHODCALLTYPE IsHiddenProperty(BSTR bstrPropName, VARIANT_BOOL* bHidden) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetSelectedRecordCount(BSTR bstrToolTable, LONG* lRecCount) = 0;
  virtual HRESULT STDMETHODCALLTYPE SetToolTableBookmark(BSTR bstrToolTable,
                                                         VARIANT varBookmark) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetToolTableBookmark(BSTR bstrToolTable,
                                                         VARIANT* pvarBookmark) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetPermissibleValues2(BSTR bstrToolTable, VARIANT* pPropNames,
                                                          VARIANT* pProps, BSTR bstrParamName,
                                                          VARIANT* pArrVal,
                                                          VARIANT* pArrDispVal) = 0;
  virtual HRESULT STDMETHODCALLTYPE GenFirstTool(BSTR bstrToolTable, VARIANT* pNames,
                                                 VARIANT* pProps, VARIANT* pGenNames,
                                                 VARIANT* pGenProps) = 0;
  virtual HRESULT STDMETHODCALLTYPE GenNextTool(BSTR bstrToolTable, VARIANT* pGenProps) = 0;
  virtual HRESULT STDMETHODCALLTYPE GenerateDefToolName2(BSTR bstrToolTable, VARIANT* pPropNames,
                                                         VARIANT* pProps, BSTR* bstrName) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetToolTypesByStoredQuery(BSTR bstrQueryName,
                                                              VARIANT* pTypes) = 0;
};
