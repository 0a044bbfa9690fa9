// The component's class and objects: of the library beside the program, as in a build or an
// unpacked archive, or else of the registered one.
#pragma once

#include <filesystem>

#include "interface/IOrxDbLibrary.h"
#include "interface/IOrxDbObj.h"
#include "platform/automation/ComPtr.h"

namespace orxdb {

/// The folder of this program.
std::filesystem::path ProgramFolder();

/// The class object. Throws HostError.
ComPtr<IClassFactory> ComponentClass();

/// A new object. There is to be one at a time: all share one open database. Throws HostError.
ComPtr<IOrxDbObj> CreateComponent();

/// A new object of the second class, which works on the database that the first has open. Throws
/// HostError.
ComPtr<IOrxDbLibrary> CreateLibrary();

}  // namespace orxdb
