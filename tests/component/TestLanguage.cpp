// A language library that does what TEST_LANGUAGE says, and a resource library with one text.
#include <cstdlib>
#include <filesystem>
#include <string>

#include "platform/framework/Library.h"
#include "platform/framework/Resources.h"

namespace {

constexpr orxdb::StringResource kTexts[] = {{101, "Oui"}};

}  // namespace

extern "C" AUTOMATION_API const orxdb::ResourceTable ModuleResources = {kTexts, 1};

extern "C" AUTOMATION_API orxdb::ModuleHandle LoadResExtDLL(orxdb::ModuleHandle component,
                                                            int reserved) {
  using orxdb::Library;
  const char* const value = std::getenv("TEST_LANGUAGE");
  const std::string wish = value ? value : "";
  if (wish == "throws" || reserved != 0) throw 1;
  if (wish == "component itself") return component;
  if (wish == "no texts") return Library::Load("libm.so.6").Detach();
  if (wish != "one text") return nullptr;
  std::filesystem::path texts = Library::PathContaining(&ModuleResources);
  return Library::Load(texts.replace_filename("libOneText.so")).Detach();
}
