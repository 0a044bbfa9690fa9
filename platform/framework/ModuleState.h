// Which module's resources are in force on this thread. A module makes its own state active while
// it runs and gives the caller's back on every way out:
//
//   CModuleState g_state(&kTexts, "Tool Data Base");
//   HRESULT Method() {
//     ModuleStateSwitch active(g_state);
//     ...
//   }
#pragma once

#include <string>
#include <utility>

#include "platform/framework/Resources.h"

namespace orxdb {

/// What a module shares with the framework; it outlives every switch to it.
class CModuleState {
 public:
  CModuleState() = default;
  explicit CModuleState(ResourceHandle resources, std::string title = {})
      : m_hCurrentResource(resources), m_strTitle(std::move(title)) {}
  CModuleState(const CModuleState&) = delete;
  CModuleState& operator=(const CModuleState&) = delete;

  /// Where strings are loaded from; null without resources.
  ResourceHandle CurrentResource() const noexcept { return m_hCurrentResource; }
  /// Returns the earlier handle.
  ResourceHandle SetCurrentResource(ResourceHandle resources) noexcept {
    return std::exchange(m_hCurrentResource, resources);
  }

  /// Title of the application, the caption of message boxes.
  const std::string& Title() const noexcept { return m_strTitle; }
  void SetTitle(std::string title) noexcept { m_strTitle = std::move(title); }

 private:
  ResourceHandle m_hCurrentResource = nullptr;
  std::string m_strTitle;
};

/// The state active on this thread; outside every switch an empty one of the process.
AUTOMATION_API CModuleState& ActiveModuleState() noexcept;

/// Makes a state active on this thread until its end. Switches nest.
class AUTOMATION_API ModuleStateSwitch {
 public:
  explicit ModuleStateSwitch(CModuleState& state) noexcept;
  ~ModuleStateSwitch();
  ModuleStateSwitch(const ModuleStateSwitch&) = delete;
  ModuleStateSwitch& operator=(const ModuleStateSwitch&) = delete;

 private:
  CModuleState* m_previous;
};

}  // namespace orxdb
