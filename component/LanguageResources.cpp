#include "component/LanguageResources.h"

#include <filesystem>
#include <string>
#include <utility>

#include "resources/ComponentText.h"
#include "resources/StringTable.h"

namespace orxdb {
namespace {

/// Anything in this library: tells which one it is.
const void* const kOwnAddress = &kEnglishTexts;

Library LoadLanguageLibrary() {
  Library found = Library::Load(kLanguageLibrary);
  if (found) return found;
  std::filesystem::path beside = Library::PathContaining(kOwnAddress);
  return Library::Load(beside.replace_filename(kLanguageLibrary));
}

/// The resource library of the user's language; empty when there is none.
Library LoadResourceLibrary() {
  const Library language = LoadLanguageLibrary();
  auto* const choose = language.Find<LanguageFunction>(kLanguageExport);
  if (!choose) return {};
  const Library own = Library::Containing(kOwnAddress);
  const ModuleHandle chosen = choose(own.Handle(), 0);
  // The component's own handle is lent to the language library, not given.
  return Library::Attach(chosen == own.Handle() ? nullptr : chosen);
}

void UseTexts(ResourceHandle texts) {
  CModuleState& state = ComponentModuleState();
  state.SetCurrentResource(texts);
  std::string title;
  if (LoadString(texts, IDS_APPLICATION_TITLE, title)) state.SetTitle(std::move(title));
}

}  // namespace

LanguageResources::LanguageResources() noexcept {
  // Before this object is complete, so that the state outlives it.
  ComponentModuleState();
  try {
    Library library = LoadResourceLibrary();
    const auto texts = static_cast<ResourceHandle>(library.FindSymbol(kResourceTableExport));
    if (!texts) return;
    UseTexts(texts);
    m_library = std::move(library);
  } catch (...) {
    // Whatever goes wrong, the component can be used.
    ComponentModuleState().SetCurrentResource(&kEnglishTexts);
  }
}

LanguageResources::~LanguageResources() {
  if (m_library) UseTexts(&kEnglishTexts);
}

void UseLanguageOfUser() noexcept {
  static const LanguageResources resources;
}

}  // namespace orxdb
