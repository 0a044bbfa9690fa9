// The class files that tell which library holds a class; ClassObject.h describes their form.
#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/automation/Guid.h"

namespace orxdb {

/// What a class file says. Texts are as written, empty where the file has none; only `clsid` and
/// `library` are sure to be there.
struct ClassFile {
  CLSID clsid{};
  std::string progId;
  std::string versionIndependentProgId;
  std::string description;
  std::string library;
  std::string threadingModel;
  std::string typeLibrary;
  std::string typeLibraryName;
};

inline constexpr std::string_view kClassFileExtension = ".class";

/// Reads the text of a class file; nothing when it is not a whole, valid one.
std::optional<ClassFile> ParseClassFile(std::string_view text);

/// Reads a class file; nothing when it is no plain file of reasonable size or not a valid one.
std::optional<ClassFile> ReadClassFile(const std::filesystem::path& path);

/// The class files of a folder in the order of their names; none when it cannot be read.
std::vector<std::filesystem::path> ListClassFiles(const std::filesystem::path& folder);

/// The folders of AUTOMATION_CLASS_PATH; nothing while that is not set.
std::optional<std::vector<std::string>> ClassPath();

/// The person's own class folder; empty when the environment names none.
std::string OwnClassFolder();

/// The class folders of all, in order.
std::vector<std::string> SharedClassFolders();

/// The folders to search, in order.
std::vector<std::string> ClassFolders();

/// The first class that `matches`, nothing when there is none.
std::optional<ClassFile> FindClass(const std::function<bool(const ClassFile&)>& matches);

/// Reads "{8-4-4-4-12 hexadecimal digits}".
std::optional<GUID> ParseGuid(std::string_view text);

}  // namespace orxdb
