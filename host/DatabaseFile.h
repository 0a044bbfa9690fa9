// The database file seen from outside: where it is by default, and why it may be of no use.
#pragma once

#include <filesystem>
#include <memory>
#include <sqlite3.h>
#include <string>

namespace orxdb {

/// The folder of this program.
std::filesystem::path ProgramFolder();

/// The file that hosts open when they name none: CAM/TOOLS/tools.mdb beside the program's folder.
std::filesystem::path DefaultDatabase();

struct CloseDatabase {
  void operator()(sqlite3* database) const { sqlite3_close(database); }
};
/// A database that the host opens without the component.
using BareDatabase = std::unique_ptr<sqlite3, CloseDatabase>;

/// A sentence on why the component found no tools in the file.
std::string WhyUnusable(const std::filesystem::path& file);

}  // namespace orxdb
