#include "platform/automation/ClassFiles.h"

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <dirent.h>
#include <filesystem>
#include <fstream>
#include <memory>
#include <system_error>
#include <utility>

#include "platform/automation/Ascii.h"
#include "platform/automation/DataFolder.h"

namespace orxdb {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kMostBytes = std::size_t{64} * 1024;
constexpr std::string_view kSubfolder = "/automation/classes.d";
constexpr std::string_view kBlanks = " \t\r";

constexpr std::pair<std::string_view, std::string ClassFile::*> kTextKeys[] = {
    {"ProgId", &ClassFile::progId},
    {"VersionIndependentProgId", &ClassFile::versionIndependentProgId},
    {"Description", &ClassFile::description},
    {"Library", &ClassFile::library},
    {"ThreadingModel", &ClassFile::threadingModel},
    {"TypeLibrary", &ClassFile::typeLibrary},
    {"TypeLibraryName", &ClassFile::typeLibraryName},
};

struct CloseFolder {
  void operator()(DIR* folder) const noexcept { closedir(folder); }
};

/// Cuts the part before the next `separator` off the front of `rest`.
std::string_view NextPart(std::string_view& rest, char separator) {
  const std::size_t length = std::min(rest.find(separator), rest.size());
  const std::string_view part = rest.substr(0, length);
  rest.remove_prefix(std::min(length + 1, rest.size()));
  return part;
}

/// The parts of a colon-separated list that are not empty.
std::vector<std::string> SplitFolders(std::string_view list) {
  std::vector<std::string> folders;
  while (!list.empty()) {
    const std::string_view folder = NextPart(list, ':');
    if (!folder.empty()) folders.emplace_back(folder);
  }
  return folders;
}

std::string_view Environment(const char* name) {
  const char* value = std::getenv(name);
  return value ? value : "";
}

bool IsAbsolute(std::string_view path) {
  return path.starts_with('/');
}

/// The whole file, nothing when it is not a plain file of reasonable size.
std::optional<std::string> ReadSmallFile(const fs::path& path) {
  std::error_code error;
  // Never open a pipe or a device: reading could wait for ever.
  if (!fs::is_regular_file(path, error)) return std::nullopt;
  std::ifstream stream(path, std::ios::binary);
  std::string text(kMostBytes + 1, '\0');
  stream.read(text.data(), static_cast<std::streamsize>(text.size()));
  text.resize(static_cast<std::size_t>(stream.gcount()));
  if (stream.bad() || text.size() > kMostBytes) return std::nullopt;
  return text;
}

/// The class folder in a data folder; empty for a relative one, which would mean another place in
/// every program.
std::string ClassFolderIn(std::string_view dataFolder) {
  if (!IsAbsolute(dataFolder)) return {};
  while (dataFolder.ends_with('/')) dataFolder.remove_suffix(1);
  return std::string(dataFolder).append(kSubfolder);
}

/// Stores one "key = value" line; false when it is none or its value is refused.
bool ReadEntry(std::string_view line, ClassFile& file, bool& hasId) {
  if (line.find('=') == std::string_view::npos) return false;
  const std::string_view key = Trim(NextPart(line, '='), kBlanks);
  const std::string_view value = Trim(line, kBlanks);
  if (EqualNoCase(key, "ClassId")) {
    const std::optional<GUID> id = ParseGuid(value);
    if (!id) return false;
    file.clsid = *id;
    hasId = true;
    return true;
  }
  for (const auto& [name, member] : kTextKeys) {
    if (EqualNoCase(key, name)) file.*member = value;
  }
  return true;
}

}  // namespace

std::optional<GUID> ParseGuid(std::string_view text) {
  constexpr std::string_view kForm = "{XXXXXXXX-XXXX-XXXX-XXXX-XXXXXXXXXXXX}";
  if (text.size() != kForm.size()) return std::nullopt;
  for (std::size_t i = 0; i < kForm.size(); ++i) {
    if (kForm[i] != 'X' && text[i] != kForm[i]) return std::nullopt;
  }
  bool valid = true;
  const auto read = [&](std::size_t position, std::size_t length, auto& value) {
    const char* end = text.data() + position + length;
    const auto [behind, error] = std::from_chars(text.data() + position, end, value, 16);
    valid = valid && error == std::errc() && behind == end;
  };
  GUID guid{};
  read(1, 8, guid.Data1);
  read(10, 4, guid.Data2);
  read(15, 4, guid.Data3);
  for (std::size_t i = 0; i < 8; ++i) read(i < 2 ? 20 + 2 * i : 21 + 2 * i, 2, guid.Data4[i]);
  return valid ? std::optional(guid) : std::nullopt;
}

std::optional<ClassFile> ParseClassFile(std::string_view text) {
  if (text.find('\0') != std::string_view::npos) return std::nullopt;
  enum class Part { Before, Inside, Behind } part = Part::Before;
  ClassFile file;
  bool hasId = false;
  while (!text.empty()) {
    const std::string_view line = Trim(NextPart(text, '\n'), kBlanks);
    if (line.empty() || line[0] == '#' || line[0] == ';') continue;
    if (part == Part::Before && EqualNoCase(line, "[Class]")) {
      part = Part::Inside;
    } else if (part == Part::Inside && EqualNoCase(line, "[End]")) {
      part = Part::Behind;
    } else if (part != Part::Inside || !ReadEntry(line, file, hasId)) {
      return std::nullopt;
    }
  }
  if (part != Part::Behind || !hasId || !IsAbsolute(file.library)) return std::nullopt;
  return file;
}

std::optional<ClassFile> ReadClassFile(const fs::path& path) {
  const std::optional<std::string> text = ReadSmallFile(path);
  return text ? ParseClassFile(*text) : std::nullopt;
}

std::vector<fs::path> ListClassFiles(const fs::path& folder) {
  // The library's own iterator ends the process when memory runs out.
  const std::unique_ptr<DIR, CloseFolder> opened(opendir(folder.c_str()));
  std::vector<fs::path> files;
  while (const dirent* entry = opened ? readdir(opened.get()) : nullptr) {
    fs::path file = folder / entry->d_name;
    if (file.extension() == kClassFileExtension) files.push_back(std::move(file));
  }
  std::sort(files.begin(), files.end());
  return files;
}

std::optional<std::vector<std::string>> ClassPath() {
  const char* folders = std::getenv("AUTOMATION_CLASS_PATH");
  return folders ? std::optional(SplitFolders(folders)) : std::nullopt;
}

std::string OwnClassFolder() {
  return ClassFolderIn(OwnDataFolder());
}

std::vector<std::string> SharedClassFolders() {
  const std::string_view shared = Environment("XDG_DATA_DIRS");
  std::vector<std::string> folders =
      SplitFolders(shared.empty() ? "/usr/local/share:/usr/share" : shared);
  for (std::string& folder : folders) folder = ClassFolderIn(folder);
  std::erase(folders, "");
  return folders;
}

std::vector<std::string> ClassFolders() {
  if (auto path = ClassPath()) return *std::move(path);
  std::vector<std::string> folders = SharedClassFolders();
  if (std::string own = OwnClassFolder(); !own.empty()) {
    folders.insert(folders.begin(), std::move(own));
  }
  return folders;
}

std::optional<ClassFile> FindClass(const std::function<bool(const ClassFile&)>& matches) {
  for (const std::string& folder : ClassFolders()) {
    for (const fs::path& path : ListClassFiles(folder)) {
      std::optional<ClassFile> file = ReadClassFile(path);
      if (file && matches(*file)) return file;
    }
  }
  return std::nullopt;
}

}  // namespace orxdb
