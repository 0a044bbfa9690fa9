#pragma once

#include <string_view>

namespace orxdb {

/// How the component registers itself; ClassRegistration.h has the form.
extern const std::string_view kRegistrationScript;

}  // namespace orxdb
