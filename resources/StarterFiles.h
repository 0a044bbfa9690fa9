// The tool database that a shop starts from: the files of resources/starter, part of the library.
#pragma once

#include <span>
#include <string_view>

namespace orxdb {

struct StarterFile {
  std::string_view name;  ///< without folders and extension
  std::string_view content;
};

/// SQL scripts, in the order to run them.
std::span<const StarterFile> StarterScripts();
/// Preview pictures, PNG; the names are those of the tool tables in lower case.
std::span<const StarterFile> StarterPictures();

}  // namespace orxdb
