// Texts on a terminal.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace orxdb {

/// Number of places that text takes on a terminal: none for combining characters, two for wide
/// ones.
std::size_t DisplayWidth(std::string_view text);

/// The text with � for every character that would do something to a terminal or turn the direction
/// of reading, and for bytes that are no characters; tabs and line ends stay.
std::string Harmless(std::string_view text);

/// The text if it takes no more than so many places, or else its beginning and "…".
std::string Shortened(const std::string& text, std::size_t places);

}  // namespace orxdb
