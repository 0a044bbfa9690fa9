// What others call the properties of tools, and the entries of their lists.
#pragma once

#include <span>
#include <string_view>
#include <vector>

namespace orxdb {

/// The properties that a column of that name may mean, the likeliest first. The name is a
/// NameKey.
std::vector<std::string_view> PropertiesMeantBy(std::string_view key);

/// The entries of the list of a property that a text may mean, the likeliest first. The text is a
/// NameKey.
std::vector<std::string_view> EntriesMeantBy(std::string_view property, std::string_view key);

}  // namespace orxdb
