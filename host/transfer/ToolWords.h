#pragma once

#include <string>
#include <string_view>

namespace orxdb {

/// The table of the kind of tool that a text names, such as "1/4 ball nose end mill" or "v-bit";
/// empty when it names none, or several.
std::string TableOfWords(std::string_view text);

}  // namespace orxdb
