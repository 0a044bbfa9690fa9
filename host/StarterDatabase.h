// The tool database that a shop starts from.
#pragma once

#include <filesystem>
#include <span>
#include <string_view>

namespace orxdb {

/// A file of resources/starter, part of this program.
struct StarterFile {
  std::string_view name;  ///< without folders and extension
  std::string_view content;
};

/// SQL scripts, in the order to run them.
std::span<const StarterFile> StarterScripts();
/// Preview pictures, PNG; the names are those of the tool tables in lower case.
std::span<const StarterFile> StarterPictures();

/// Creates the database `file`, its folders too, or nothing at all. Throws HostError, also when
/// there is a file already, unless it may be replaced.
void CreateStarterDatabase(const std::filesystem::path& file, bool replace);

}  // namespace orxdb
