#include "platform/automation/ClassLibraries.h"

#include <dlfcn.h>
#include <map>
#include <memory>
#include <mutex>
#include <vector>

namespace orxdb {
namespace {

using GetClassObjectFunction = HRESULT (*)(REFCLSID, REFIID, void**);
using CanUnloadNowFunction = HRESULT (*)();

struct CloseLibrary {
  void operator()(void* handle) const noexcept { dlclose(handle); }
};
using LibraryHandle = std::unique_ptr<void, CloseLibrary>;

struct Library {
  LibraryHandle handle;
  GetClassObjectFunction getClassObject = nullptr;
  CanUnloadNowFunction canUnloadNow = nullptr;
};

/// Loaded libraries by path. Libraries may create objects of other libraries while they start or
/// hand out a class object, hence a recursive lock.
struct Libraries {
  std::recursive_mutex mutex;
  std::map<std::string, Library> byPath;
};

Libraries& Loaded() {
  // Never destroyed: objects may live, and their libraries be needed, until the process is gone.
  static auto* const libraries = new Libraries;
  return *libraries;
}

template <typename Function>
Function Export(void* handle, const char* name) {
  return reinterpret_cast<Function>(dlsym(handle, name));
}

HRESULT Load(const std::string& path, Library& library) {
  library.handle.reset(dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL));
  if (!library.handle) return CO_E_DLLNOTFOUND;
  library.getClassObject =
      Export<GetClassObjectFunction>(library.handle.get(), "DllGetClassObject");
  library.canUnloadNow = Export<CanUnloadNowFunction>(library.handle.get(), "DllCanUnloadNow");
  return library.getClassObject ? S_OK : CO_E_ERRORINDLL;
}

}  // namespace

HRESULT GetClassObjectFrom(const std::string& path, REFCLSID clsid, REFIID iid, void** object) {
  Libraries& loaded = Loaded();
  const std::lock_guard lock(loaded.mutex);
  auto found = loaded.byPath.find(path);
  if (found == loaded.byPath.end()) {
    Library library;
    const HRESULT status = Load(path, library);
    if (FAILED(status)) return status;
    found = loaded.byPath.emplace(path, std::move(library)).first;
  }
  return found->second.getClassObject(clsid, iid, object);
}

void UnloadUnusedLibraries() {
  Libraries& loaded = Loaded();
  const std::lock_guard lock(loaded.mutex);
  std::vector<std::string> unused;
  for (const auto& [path, library] : loaded.byPath) {
    if (library.canUnloadNow && library.canUnloadNow() == S_OK) unused.push_back(path);
  }
  // A library taken out of the map goes when its node does: its own clean-up finds a sound map.
  for (const std::string& path : unused) loaded.byPath.extract(path);
}

}  // namespace orxdb
