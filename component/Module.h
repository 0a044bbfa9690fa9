// The module: its locks and what it exports.
#pragma once

#include "platform/automation/Types.h"

namespace orxdb {

/// Keeps the module in memory; every live object and class factory has one.
class ModuleLock {
 public:
  ModuleLock() noexcept { Lock(); }
  ~ModuleLock() { Unlock(); }
  ModuleLock(const ModuleLock&) = delete;
  ModuleLock& operator=(const ModuleLock&) = delete;

  static void Lock() noexcept;
  static void Unlock() noexcept;
};

}  // namespace orxdb

extern "C" {

/// The class factory of `OrxDbObj` or `OrxDbLibrary`; CLASS_E_CLASSNOTAVAILABLE for any other
/// class.
AUTOMATION_API HRESULT DllGetClassObject(REFCLSID rclsid, REFIID riid, void** ppv);

/// S_OK when no object and no lock is left, else S_FALSE.
AUTOMATION_API HRESULT DllCanUnloadNow();

/// Registers the classes for this library where it is; ClassRegistration.h tells the place and the
/// statuses. Ends at the first that cannot be registered.
AUTOMATION_API HRESULT DllRegisterServer();

/// Takes the registrations back, also that of another copy of this library.
AUTOMATION_API HRESULT DllUnregisterServer();
}
