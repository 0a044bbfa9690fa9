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

/// The class factory of `OrxDbObj`; CLASS_E_CLASSNOTAVAILABLE for any other class.
__attribute__((visibility("default"))) HRESULT DllGetClassObject(REFCLSID rclsid, REFIID riid,
                                                                 void** ppv);

/// S_OK when no object and no lock is left, else S_FALSE.
__attribute__((visibility("default"))) HRESULT DllCanUnloadNow();
}
