#include "platform/framework/FileSystem.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <sstream>
#include <string_view>
#include <sys/stat.h>
#include <sys/sysmacros.h>

namespace orxdb {
namespace {

/// Kept by other machines, or by the one that this virtual machine runs on.
constexpr std::array<std::string_view, 20> kNetworks = {
    "9p",    "afs",       "beegfs", "ceph",   "cifs",   "coda",    "davfs",
    "gfs2",  "glusterfs", "gpfs",   "lustre", "ncpfs",  "nfs",     "nfs4",
    "ocfs2", "prl_fs",    "smb3",   "smbfs",  "vboxsf", "virtiofs"};

/// Programs may serve files from anywhere, but for these.
constexpr std::string_view kServed = "fuse.";
constexpr std::array<std::string_view, 6> kServedFromHere = {
    "fuse.bindfs",    "fuse.exfat",    "fuse.fuse-overlayfs",
    "fuse.gocryptfs", "fuse.mergerfs", "fuse.ntfs-3g"};

bool IsNetwork(std::string_view type) {
  return std::ranges::find(kNetworks, type) != kNetworks.end() ||
         (type.starts_with(kServed) &&
          std::ranges::find(kServedFromHere, type) == kServedFromHere.end());
}

/// The number of the device that a file is on, as in the list; empty when the file is not there.
std::string DeviceOf(const std::filesystem::path& file) {
  struct stat status = {};
  if (stat(file.c_str(), &status) != 0) return {};
  return std::to_string(major(status.st_dev)) + ':' + std::to_string(minor(status.st_dev));
}

}  // namespace

FileSystem FileSystemOf(const std::filesystem::path& file, const char* mounts) {
  std::string device = DeviceOf(file);
  if (device.empty()) device = DeviceOf(file.has_parent_path() ? file.parent_path() : ".");
  // Of each line: two numbers, the device, two folders, options, further ones, "-", the type.
  std::ifstream lines(mounts);
  for (std::string line; std::getline(lines, line);) {
    std::istringstream words(line);
    std::string skipped;
    std::string found;
    std::string options;
    FileSystem system;
    words >> skipped >> skipped >> found >> skipped >> skipped >> options;
    if (found != device) continue;
    while (words >> skipped && skipped != "-") {
    }
    words >> system.type;
    system.network = IsNetwork(system.type);
    system.readOnly = options == "ro" || options.starts_with("ro,");
    return system;
  }
  return {};
}

}  // namespace orxdb
