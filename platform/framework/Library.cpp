#include "platform/framework/Library.h"

#include <dlfcn.h>
#include <filesystem>
#include <link.h>
#include <utility>

#include "platform/framework/ExecutablePath.h"

namespace orxdb {

Library::Library(Library&& other) noexcept
    : m_handle(other.Detach()), m_message(std::move(other.m_message)) {}

Library& Library::operator=(Library&& other) noexcept {
  if (this != &other) {
    Free();
    m_handle = other.Detach();
    m_message = std::move(other.m_message);
  }
  return *this;
}

Library::~Library() {
  Free();
}

Library Library::Load(const std::string& name) {
  Library library;
  // The system takes an empty name for the program itself.
  if (name.empty()) {
    library.m_message = "no library name";
    return library;
  }
  library.m_handle = dlopen(NativePath(name).c_str(), RTLD_NOW | RTLD_LOCAL);
  if (!library.m_handle) {
    const char* message = dlerror();
    library.m_message = message ? message : "cannot load " + name;
  }
  return library;
}

Library Library::Attach(void* handle) noexcept {
  Library library;
  library.m_handle = handle;
  return library;
}

Library Library::Containing(const void* address) {
  Dl_info info{};
  if (dladdr(address, &info) == 0) return {};
  return Attach(dlopen(info.dli_fname, RTLD_NOW | RTLD_NOLOAD));
}

std::string Library::PathContaining(const void* address) {
  Dl_info info{};
  if (dladdr(address, &info) == 0) return {};
  std::error_code error;
  const std::filesystem::path path = std::filesystem::absolute(info.dli_fname, error);
  return std::filesystem::exists(path, error) ? path.string() : std::string();
}

std::vector<std::string> Library::LoadedPaths() {
  std::vector<std::string> paths;
  const auto visit = [](dl_phdr_info* library, std::size_t, void* list) {
    // The program itself comes without a name.
    const std::string_view path = library->dlpi_name;
    if (!path.empty()) static_cast<std::vector<std::string>*>(list)->emplace_back(path);
    return 0;
  };
  dl_iterate_phdr(visit, &paths);
  return paths;
}

void* Library::FindSymbol(const char* name) const noexcept {
  return m_handle ? dlsym(m_handle, name) : nullptr;
}

void Library::Free() noexcept {
  if (void* handle = Detach()) dlclose(handle);
}

void* Library::Detach() noexcept {
  return std::exchange(m_handle, nullptr);
}

}  // namespace orxdb
