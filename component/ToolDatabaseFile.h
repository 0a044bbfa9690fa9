#pragma once

#include "interface/IToolDatabaseFile.h"

namespace orxdb {

/// The part of the class object that handles database files. Its references and interfaces are
/// those of the whole.
class ToolDatabaseFile final : public IToolDatabaseFile {
 public:
  /// Part of `whole`, which is not counted.
  explicit ToolDatabaseFile(IUnknown& whole) noexcept : m_whole(whole) {}
  ToolDatabaseFile(const ToolDatabaseFile&) = delete;
  ToolDatabaseFile& operator=(const ToolDatabaseFile&) = delete;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** ppvObject) override {
    return m_whole.QueryInterface(riid, ppvObject);
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return m_whole.AddRef(); }
  ULONG STDMETHODCALLTYPE Release() override { return m_whole.Release(); }

  HRESULT STDMETHODCALLTYPE CreateStarter(BSTR bstrNewFile, BSTR* pReason) override;
  HRESULT STDMETHODCALLTYPE Copy(BSTR bstrFile, BSTR bstrNewFile, BSTR* pReason) override;
  HRESULT STDMETHODCALLTYPE Check(BSTR bstrFile, BSTR* pReason) override;
  HRESULT STDMETHODCALLTYPE Replace(BSTR bstrFile, BSTR bstrNewFile, BSTR bstrKept,
                                    VARIANT_BOOL bCertain, BSTR* pReason) override;
  HRESULT STDMETHODCALLTYPE GetJournal(BSTR bstrFile, VARIANT_BOOL* pbLog, BSTR* pNetwork,
                                       BSTR* pReason) override;
  HRESULT STDMETHODCALLTYPE SetJournal(BSTR bstrFile, VARIANT_BOOL bLog, BSTR* pReason) override;
  HRESULT STDMETHODCALLTYPE GetState(BSTR bstrFile, DatabaseFileState* pState) override;

 private:
  IUnknown& m_whole;
};

}  // namespace orxdb
