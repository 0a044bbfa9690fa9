#pragma once

#include <string>
#include <string_view>

#include "host/transfer/ReadOptions.h"

namespace orxdb {

/// The format of a text by its beginning and, where that leaves it open, by the name of its file;
/// Auto for no tool data.
ToolFormat Recognise(std::string_view beginning, const std::string& name);

}  // namespace orxdb
