#pragma once

#include <array>
#include <string_view>

namespace orxdb {

/// How the component registers each of its classes; ClassRegistration.h has the form.
extern const std::array<std::string_view, 2> kRegistrationScripts;

}  // namespace orxdb
