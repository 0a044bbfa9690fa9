#include "component/OrxDbLibrary.h"

#include <new>

#include "browse/FieldLimits.h"
#include "component/MethodFrame.h"
#include "lookups/PermissibleValues.h"

using orxdb::NarrowBstr;

namespace {

/// Runs a method's work on the open database if its arguments are there.
template <typename Work>
HRESULT RunOnOpen(bool arguments, Work&& work) {
  const orxdb::ModuleStateSwitch active(orxdb::ComponentModuleState());
  const bool ready = arguments && g_pToolDbData && g_pToolDbData->IsOpen();
  return orxdb::RunReported<orxdb::Guard::Framework>(
      orxdb::kOrxDbLibrary, ready, [&] { return orxdb::StatusOf(work, *g_pToolDbData); });
}

/// Runs a method's work on a tool table likewise.
template <typename Work>
HRESULT RunOnOpenTable(BSTR name, bool arguments, Work&& work) {
  return RunOnOpen(name && arguments, [&](CToolDbData&) -> HRESULT {
    CToolTableInfo* const table = orxdb::FindToolTable(name);
    return table ? orxdb::StatusOf(work, *table) : E_FAIL;
  });
}

}  // namespace

HRESULT OrxDbLibrary::Create(IUnknown* outer, REFIID riid, void** ppvObject) {
  // The object's references own it, which the analyzer does not see through their count.
  // NOLINTNEXTLINE(clang-analyzer-cplusplus.NewDeleteLeaks)
  return HandOut(new (std::nothrow) OrxDbLibrary(outer), riid, ppvObject);
}

HRESULT OrxDbLibrary::ChangeNumber(DOUBLE* pNumber) {
  return RunOnOpen(pNumber, [&](CToolDbData& data) { *pNumber = data.Database().ChangeNumber(); });
}

HRESULT OrxDbLibrary::GetFieldLimits(BSTR bstrToolTable, BSTR bstrParamName, LONG* plLongest,
                                     VARIANT_BOOL* pbRequired, VARIANT* pLowest,
                                     VARIANT* pHighest) {
  const bool arguments = bstrParamName && plLongest && pbRequired && pLowest && pHighest;
  return RunOnOpenTable(bstrToolTable, arguments, [&](CToolTableInfo& table) {
    orxdb::FieldLimits limits =
        orxdb::LimitsOfField(g_pToolDbData->Database(), table, NarrowBstr(bstrParamName));
    *plLongest = limits.longest;
    *pbRequired = limits.required ? VARIANT_TRUE : VARIANT_FALSE;
    *pLowest = limits.lowest.detach();
    *pHighest = limits.highest.detach();
  });
}

HRESULT OrxDbLibrary::LastError(BSTR* pText) {
  // Outside of the frame, which would forget what is asked for.
  const HRESULT result = pText ? orxdb::RunGuarded<orxdb::Guard::Framework>([&] {
    *pText = orxdb::WidenToBstr(orxdb::NotedCauses()).detach();
  })
                               : E_FAIL;
  if (result != S_OK) orxdb::ReportError(orxdb::kOrxDbLibrary);
  return result;
}

HRESULT OrxDbLibrary::AddPermissibleValue(BSTR bstrToolTable, BSTR bstrParamName, BSTR bstrValue) {
  return RunOnOpenTable(bstrToolTable, bstrParamName, [&](CToolTableInfo& table) {
    orxdb::AddPermissibleValue(g_pToolDbData->Database(), table, NarrowBstr(bstrParamName),
                               NarrowBstr(bstrValue));
  });
}

HRESULT OrxDbLibrary::BeginChanges() {
  return RunOnOpen(true, [](CToolDbData& data) { data.Database().BeginChanges(); });
}
HRESULT OrxDbLibrary::EndChanges() {
  return RunOnOpen(true, [](CToolDbData& data) { data.Database().EndChanges(); });
}
HRESULT OrxDbLibrary::CancelChanges() {
  return RunOnOpen(true, [](CToolDbData& data) { data.Database().CancelChanges(); });
}

HRESULT OrxDbLibrary::BackUp(BSTR bstrNewFile, VARIANT_BOOL bReplace) {
  return RunOnOpen(bstrNewFile, [&](CToolDbData& data) {
    data.Database().BackUp(NarrowBstr(bstrNewFile), bReplace != VARIANT_FALSE);
  });
}
