// Messages that want an answer from the person at the host.
#pragma once

#include <functional>
#include <string>

#include "platform/automation/Types.h"

namespace orxdb {

inline constexpr unsigned MB_OK = 0x0;         ///< an OK button
inline constexpr unsigned MB_ICONSTOP = 0x10;  ///< a stop sign beside the text
inline constexpr int IDOK = 1;                 ///< the OK button closed the box

/// Shows a message and returns the button that closed it.
using MessageBoxHandler =
    std::function<int(const std::string& text, const std::string& caption, unsigned style)>;

/// Lets the host show messages its own way, on every thread; an empty handler brings back the
/// default. Returns the earlier handler, empty for the default. A library takes its handler back
/// before it is unloaded.
AUTOMATION_API MessageBoxHandler InstallMessageBoxHandler(MessageBoxHandler handler);

/// Shows a message through the installed handler. By default it is one line, "caption: text", on
/// standard error, answered with IDOK.
AUTOMATION_API int ShowMessageBox(const std::string& text, const std::string& caption,
                                  unsigned style);

}  // namespace orxdb
