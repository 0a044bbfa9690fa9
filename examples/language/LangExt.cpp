// A language library: chooses the resource library beside it that the person's locale asks for.
#include <cstdlib>
#include <filesystem>
#include <string>

#include "platform/framework/Library.h"
#include "platform/framework/Resources.h"

namespace {

/// The language of messages, "de" of "de_DE.UTF-8"; empty when the environment names none.
std::string MessageLanguage() {
  for (const char* variable : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
    const char* const value = std::getenv(variable);
    if (!value || !*value) continue;
    const std::string locale = value;
    return locale.substr(0, locale.find_first_of("_.@"));
  }
  return {};
}

}  // namespace

extern "C" AUTOMATION_API orxdb::ModuleHandle LoadResExtDLL(orxdb::ModuleHandle, int) {
  if (MessageLanguage() != "de") return nullptr;
  std::filesystem::path texts =
      orxdb::Library::PathContaining(reinterpret_cast<void*>(&LoadResExtDLL));
  return orxdb::Library::Load(texts.replace_filename("libORXDB-de.so")).Detach();
}
