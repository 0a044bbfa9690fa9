#pragma once

#include "component/DualObject.h"
#include "interface/IOrxDbLibrary.h"

/// The second class of the component. Its objects have no state: they work on the data object that
/// is in the slot, whoever put it there, and neither make nor end one.
class OrxDbLibrary final : public orxdb::DualObject<IOrxDbLibrary, orxdb::kOrxDbLibrary> {
 public:
  /// A new object, handed out as the interface asked for; `outer` is the aggregate's controlling
  /// object or null.
  static HRESULT Create(IUnknown* outer, REFIID riid, void** ppvObject);

  HRESULT STDMETHODCALLTYPE ChangeNumber(DOUBLE* pNumber) override;
  HRESULT STDMETHODCALLTYPE GetFieldLimits(BSTR bstrToolTable, BSTR bstrParamName, LONG* plLongest,
                                           VARIANT_BOOL* pbRequired, VARIANT* pLowest,
                                           VARIANT* pHighest) override;
  HRESULT STDMETHODCALLTYPE LastError(BSTR* pText) override;
  HRESULT STDMETHODCALLTYPE AddPermissibleValue(BSTR bstrToolTable, BSTR bstrParamName,
                                                BSTR bstrValue) override;
  HRESULT STDMETHODCALLTYPE BeginChanges() override;
  HRESULT STDMETHODCALLTYPE EndChanges() override;
  HRESULT STDMETHODCALLTYPE CancelChanges() override;
  HRESULT STDMETHODCALLTYPE BackUp(BSTR bstrNewFile, VARIANT_BOOL bReplace) override;

 private:
  explicit OrxDbLibrary(IUnknown* outer) : DualObject(outer) {}
};
