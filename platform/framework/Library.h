// Dynamically loaded libraries.
#pragma once

#include <string>

#include "platform/automation/Types.h"

namespace orxdb {

/// Holds a loaded library and frees it at its end; empty by default. Failing to load or to find is
/// an answer, not an exception.
///
///   Library language = Library::Load("LangExt.dll");
///   if (auto* load = language.Find<void*(void*, int)>("LoadResExtDLL")) ...
class AUTOMATION_API Library {
 public:
  Library() noexcept = default;
  Library(Library&& other) noexcept;
  Library& operator=(Library&& other) noexcept;
  ~Library();

  /// Loads the library of a path, with either separator, or of a plain name, searched for as the
  /// system does. Empty when that fails, Message() then says why.
  static Library Load(const std::string& name);

  explicit operator bool() const noexcept { return m_handle != nullptr; }
  /// Why loading failed, in the system's words; empty after success.
  const std::string& Message() const noexcept { return m_message; }

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
