// Dynamically loaded libraries.
#pragma once

#include <string>
#include <vector>

#include "platform/automation/Types.h"

namespace orxdb {

/// Holds a loaded library and frees it at its end; empty by default. Failing to load or to find is
/// an answer, not an exception.
///
///   Library fonts = Library::Load("libFonts.so");
///   if (auto* count = fonts.Find<int()>("CountFonts")) ...
class AUTOMATION_API Library {
 public:
  Library() noexcept = default;
  Library(Library&& other) noexcept;
  Library& operator=(Library&& other) noexcept;
  ~Library();

  /// Loads the library of a path, with either separator, or of a plain name, searched for as the
  /// system does. Empty when that fails, Message() then says why.
  static Library Load(const std::string& name);
  /// Takes over one hold on a library that the system's handle stands for; null gives an empty one.
  static Library Attach(void* handle) noexcept;
  /// One more hold on the loaded library that contains `address`.
  static Library Containing(const void* address);
  /// Absolute path of the loaded library that contains `address`; empty when its file is no longer
  /// there (it may have been loaded by a relative path from another working folder).
  static std::string PathContaining(const void* address);

  /// Paths of the libraries that this process has loaded, as the system names them.
  static std::vector<std::string> LoadedPaths();

  explicit operator bool() const noexcept { return m_handle != nullptr; }
  /// Why loading failed, in the system's words; empty after success.
  const std::string& Message() const noexcept { return m_message; }

  /// The system's handle; null when empty.
  void* Handle() const noexcept { return m_handle; }

  /// Address of an exported symbol; null when there is none or nothing is loaded.
  void* FindSymbol(const char* name) const noexcept;
  /// As FindSymbol, for a function of type F.
  template <typename F>
  F* Find(const char* name) const noexcept {
    return reinterpret_cast<F*>(FindSymbol(name));
  }

  /// Frees the library, which the system unloads when nobody else holds it.
  void Free() noexcept;
  /// Leaves the library loaded for good and returns the system's handle, null when empty.
  void* Detach() noexcept;

 private:
  void* m_handle = nullptr;
  std::string m_message;
};

}  // namespace orxdb
