// What a library says about itself. The record is a text inside the library's file,
//
//   [Version]
//   FileDescription = ORXDB Module
//   FileVersion = 3.0.0.36
//   ProductVersion = 3.0.0.36
//   InternalName = ORXDB
//   OriginalFilename = ORXDB.DLL
//   OLESelfRegister
//   [End]
//
// where people find it with `strings`. The last entry marks a library that registers its classes
// by its own exports, others leave it out. Libraries that are not of this system have no record.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/automation/Types.h"

namespace orxdb {

struct VersionRecord {
  std::string fileDescription;
  std::string fileVersion;
  std::string productVersion;
  std::string internalName;
  std::string originalFilename;
  bool selfRegisters = false;
};

/// The first record in the bytes of a library; nothing when they hold no whole one.
AUTOMATION_API std::optional<VersionRecord> FindVersionRecord(std::string_view bytes);

/// The record of the library in a file, which is read and not loaded; either separator parts
/// folders. Nothing when it has none or cannot be read. With Library::LoadedPaths, which versions
/// a program runs with.
AUTOMATION_API std::optional<VersionRecord> ReadVersionRecord(const std::string& path);

}  // namespace orxdb
