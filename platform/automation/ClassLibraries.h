// The libraries of classes that this process has loaded.
#pragma once

#include <string>

#include "platform/automation/Guid.h"
#include "platform/automation/StatusCodes.h"

namespace orxdb {

/// Asks the library at an absolute path, loading it if need be, for a class object. The statuses
/// are those of CoGetClassObject.
HRESULT GetClassObjectFrom(const std::string& path, REFCLSID clsid, REFIID iid, void** object);

/// Unloads every library whose DllCanUnloadNow answers S_OK. Libraries without it stay.
void UnloadUnusedLibraries();

}  // namespace orxdb
