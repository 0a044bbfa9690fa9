// String resources: the texts of a module, by number.
//
// A resource library is a shared library that holds texts and nothing else. It exports them as
//
//   extern "C" AUTOMATION_API const ResourceTable ModuleResources = {kTexts, kTextCount};
//
// A language library, `libLangExt.so`, chooses one for a component by its export
//
//   extern "C" AUTOMATION_API ModuleHandle LoadResExtDLL(ModuleHandle component, int reserved);
//
// `component` tells which component asks, `reserved` is 0. The result is a resource library in the
// user's language, as loaded by the system (Library::Detach), or null when there is none. The
// component takes it over and frees it when the component itself is unloaded. The language library
// is freed at once, so it must not own what it returns.
#pragma once

#include <cstddef>
#include <string>

#include "platform/automation/Types.h"

namespace orxdb {

/// One text, narrow and zero-terminated.
struct StringResource {
  unsigned id;
  const char* text;
};

/// The texts of a module or of a language, in any order; the first with an id counts. Plain data,
/// so that it can be handed across library borders; who provides it keeps it alive.
struct ResourceTable {
  const StringResource* strings;
  std::size_t count;
};

/// Null means: no resources.
using ResourceHandle = const ResourceTable*;

/// A loaded library, in the system's terms.
using ModuleHandle = void*;

inline constexpr const char* kResourceTableExport = "ModuleResources";
inline constexpr const char* kLanguageLibrary = "libLangExt.so";
inline constexpr const char* kLanguageExport = "LoadResExtDLL";
using LanguageFunction = ModuleHandle(ModuleHandle component, int reserved);

/// Loads a text. False, and `text` emptied, when there is none with this id.
AUTOMATION_API bool LoadString(ResourceHandle resources, unsigned id, std::string& text);

}  // namespace orxdb
