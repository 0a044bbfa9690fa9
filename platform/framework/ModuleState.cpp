#include "platform/framework/ModuleState.h"

namespace orxdb {
namespace {

thread_local CModuleState* t_active = nullptr;

}  // namespace

CModuleState& ActiveModuleState() noexcept {
  static CModuleState process;
  return t_active ? *t_active : process;
}

ModuleStateSwitch::ModuleStateSwitch(CModuleState& state) noexcept
    : m_previous(std::exchange(t_active, &state)) {}

ModuleStateSwitch::~ModuleStateSwitch() {
  t_active = m_previous;
}

}  // namespace orxdb
