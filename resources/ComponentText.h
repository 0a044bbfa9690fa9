// The component's texts in use, and its one way to show a message.
#pragma once

#include <string>

#include "platform/framework/ModuleState.h"

namespace orxdb {

/// The component's module state: where its texts come from and the title of its message boxes.
CModuleState& ComponentModuleState();

/// A text of the component, empty when there is none with this id.
std::string ComponentString(unsigned id);

/// Shows a text of the component and returns the button that closed the message.
int ShowComponentMessage(unsigned id, unsigned style);

}  // namespace orxdb
