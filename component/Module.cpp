#include "component/Module.h"

#include <atomic>

#include "component/ClassFactory.h"
#include "interface/IOrxDbObj.h"
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
  if (rclsid != CLSID_OrxDbObj) return CLASS_E_CLASSNOTAVAILABLE;
  return orxdb::ClassFactory::Create(riid, ppv);
}

HRESULT DllCanUnloadNow() {
  return orxdb::g_moduleLocks == 0 ? S_OK : S_FALSE;
}

HRESULT DllRegisterServer() try {
  return orxdb::RegisterClass(orxdb::kRegistrationScript,
                              orxdb::Library::PathContaining(&orxdb::g_moduleLocks));
} catch (...) {
  return E_OUTOFMEMORY;
}

HRESULT DllUnregisterServer() {
  return orxdb::UnregisterClass(orxdb::kRegistrationScript);
}
