#include "component/Module.h"

#include <atomic>

#include "component/ClassFactory.h"
#include "platform/automation/ClassRegistration.h"
#include "platform/framework/Library.h"
#include "resources/RegistrationScript.h"

namespace orxdb {
namespace {

std::atomic<ULONG> g_moduleLocks = 0;

}  // namespace

void ModuleLock::Lock() noexcept {
  ++g_moduleLocks;
}
void ModuleLock::Unlock() noexcept {
  --g_moduleLocks;
}

}  // namespace orxdb

HRESULT DllGetClassObject(REFCLSID rclsid, REFIID riid, void** ppv) {
  if (!ppv) return E_POINTER;
  *ppv = nullptr;
  return orxdb::ClassFactory::Create(rclsid, riid, ppv);
}

HRESULT DllCanUnloadNow() {
  return orxdb::g_moduleLocks == 0 ? S_OK : S_FALSE;
}

HRESULT DllRegisterServer() try {
  const std::string library = orxdb::Library::PathContaining(&orxdb::g_moduleLocks);
  HRESULT status = S_OK;
  for (const std::string_view script : orxdb::kRegistrationScripts) {
    if (SUCCEEDED(status)) status = orxdb::RegisterClass(script, library);
  }
  return status;
} catch (...) {
  return E_OUTOFMEMORY;
}

HRESULT DllUnregisterServer() {
  HRESULT status = S_OK;
  for (const std::string_view script : orxdb::kRegistrationScripts) {
    const HRESULT removed = orxdb::UnregisterClass(script);
    if (SUCCEEDED(status)) status = removed;
  }
  return status;
}
