#pragma once

#include "platform/framework/Library.h"

namespace orxdb {

/// Makes the texts of the user's language those of the component for as long as it lives.
///
/// The language library `libLangExt.so`, looked for as the system does and then beside the
/// component, chooses the texts; Resources.h has its contract. Without one, or with one that does
/// not work or has nothing to offer, the component's own texts stay in use: that is no error. A
/// text that the chosen language lacks is missing; only the title of message boxes then stays the
/// component's own.
class LanguageResources {
 public:
  LanguageResources() noexcept;
  ~LanguageResources();
  LanguageResources(const LanguageResources&) = delete;
  LanguageResources& operator=(const LanguageResources&) = delete;

 private:
  Library m_library;  ///< empty while the component's own texts are in use
};

/// Chooses the texts with the first call and keeps them until the component is unloaded. Not done
/// while the component is being loaded: the system's lock on loading is then held, and a language
/// library must be free to load what it needs.
void UseLanguageOfUser() noexcept;

}  // namespace orxdb
