#include "platform/framework/VersionRecord.h"

#include <filesystem>
#include <fstream>
#include <sstream>
#include <utility>

#include "platform/framework/ExecutablePath.h"

namespace orxdb {
namespace {

constexpr std::string_view kBegin = "[Version]\n";
constexpr std::string_view kEnd = "[End]\n";
constexpr std::string_view kSelfRegisters = "OLESelfRegister";

constexpr std::pair<std::string_view, std::string VersionRecord::*> kEntries[] = {
    {"FileDescription = ", &VersionRecord::fileDescription},
    {"FileVersion = ", &VersionRecord::fileVersion},
    {"ProductVersion = ", &VersionRecord::productVersion},
    {"InternalName = ", &VersionRecord::internalName},
    {"OriginalFilename = ", &VersionRecord::originalFilename},
};

/// Cuts the value of an entry off the front of the text; false when another line stands there.
bool TakeEntry(std::string_view& text, std::string_view key, std::string& value) {
  const std::size_t end = text.find('\n');
  if (!text.starts_with(key) || end == std::string_view::npos) return false;
  value = text.substr(key.size(), end - key.size());
  text.remove_prefix(end + 1);
  return true;
}

std::optional<VersionRecord> ReadEntries(std::string_view text) {
  VersionRecord record;
  for (const auto& [key, member] : kEntries) {
    if (!TakeEntry(text, key, record.*member)) return std::nullopt;
  }
  std::string nothing;
  record.selfRegisters = TakeEntry(text, kSelfRegisters, nothing);
  return text.starts_with(kEnd) ? std::optional(std::move(record)) : std::nullopt;
}

}  // namespace

std::optional<VersionRecord> FindVersionRecord(std::string_view bytes) {
  std::optional<VersionRecord> record;
  // The word alone may stand elsewhere: in this library it does.
  for (std::size_t begin; !record && (begin = bytes.find(kBegin)) != std::string_view::npos;) {
    bytes.remove_prefix(begin + kBegin.size());
    record = ReadEntries(bytes);
  }
  return record;
}

std::optional<VersionRecord> ReadVersionRecord(const std::string& path) {
  const std::string native = NativePath(path);
  std::error_code error;
  if (!std::filesystem::is_regular_file(native, error)) return std::nullopt;
  std::ostringstream bytes;
  bytes << std::ifstream(native, std::ios::binary).rdbuf();
  return FindVersionRecord(bytes.view());
}

}  // namespace orxdb
