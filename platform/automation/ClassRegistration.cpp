#include "platform/automation/ClassRegistration.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <new>
#include <optional>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>
#include <vector>

#include "platform/automation/ClassFiles.h"

namespace orxdb {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kModule = "%MODULE%";

[[noreturn]] void ThrowSystemError() {
  throw std::system_error(errno, std::generic_category());
}

int Checked(int result) {
  if (result < 0) ThrowSystemError();
  return result;
}

class Descriptor {
 public:
  explicit Descriptor(int descriptor) : m_descriptor(Checked(descriptor)) {}
  ~Descriptor() { close(m_descriptor); }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;

  void Write(std::string_view bytes) const {
    while (!bytes.empty()) {
      const ssize_t written = write(m_descriptor, bytes.data(), bytes.size());
      if (written < 0 && errno != EINTR) ThrowSystemError();
      if (written > 0) bytes.remove_prefix(static_cast<std::size_t>(written));
    }
  }
  void AllowReadingByAll() const { Checked(fchmod(m_descriptor, 0644)); }
  void Sync() const { Checked(fsync(m_descriptor)); }

 private:
  int m_descriptor;
};

/// A new file beside its final place, gone unless it was moved there.
class TemporaryFile {
 public:
  explicit TemporaryFile(const fs::path& folder)
      : m_path((folder / ".registering-XXXXXX").string()),
        m_file(mkostemp(m_path.data(), O_CLOEXEC)) {}
  ~TemporaryFile() {
    if (!m_path.empty()) unlink(m_path.c_str());
  }
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;

  const Descriptor& File() const { return m_file; }
  void MoveTo(const fs::path& place) {
    fs::rename(m_path, place);
    m_path.clear();
  }

 private:
  std::string m_path;
  Descriptor m_file;
};

/// Makes changes in a folder last.
void SyncFolder(const fs::path& folder) {
  Descriptor(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)).Sync();
}

/// Puts a whole new file in the place of what is there, or leaves that as it was.
void ReplaceFile(const fs::path& place, std::string_view text) {
  TemporaryFile fresh(place.parent_path());
  fresh.File().Write(text);
  fresh.File().AllowReadingByAll();
  fresh.File().Sync();
  fresh.MoveTo(place);
}

/// The text of a class file: the script with the library's path.
std::string Expand(std::string_view script, std::string_view library) {
  std::string text(script);
  for (std::size_t at = 0; (at = text.find(kModule, at)) != std::string::npos;) {
    text.replace(at, kModule.size(), library);
    at += library.size();
  }
  return text;
}

/// What the text says, provided that it says this library: a path may hold line ends.
std::optional<ClassFile> Read(std::string_view text, std::string_view library) {
  std::optional<ClassFile> file = ParseClassFile(text);
  const bool usable = file && file->library == library && !file->progId.empty() &&
                      file->progId.find('/') == std::string::npos;
  return usable ? std::move(file) : std::nullopt;
}

/// Removes the folder's files that name the class, but for the one that is kept.
void RemoveClassFiles(const fs::path& folder, const CLSID& clsid, const fs::path& kept) {
  for (const fs::path& path : ListClassFiles(folder)) {
    if (path == kept) continue;
    const std::optional<ClassFile> file = ReadClassFile(path);
    if (file && file->clsid == clsid) fs::remove(path);
  }
}

/// Runs `change` on the class described, with the folder and the place of its file.
template <typename Change>
HRESULT ChangeRegistration(std::string_view script, const std::string& library,
                           Change&& change) noexcept {
  try {
    const std::string text = Expand(script, library);
    const std::optional<ClassFile> file = Read(text, library);
    const fs::path folder = RegistrationFolder();
    if (!file || folder.empty()) return SELFREG_E_CLASS;
    change(*file, text, folder, folder / (file->progId + std::string(kClassFileExtension)));
    return S_OK;
  } catch (const std::system_error& e) {
    const bool denied = e.code() == std::errc::permission_denied ||
                        e.code() == std::errc::operation_not_permitted ||
                        e.code() == std::errc::read_only_file_system;
    return denied ? E_ACCESSDENIED : SELFREG_E_CLASS;
  } catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
  } catch (...) {
    return SELFREG_E_CLASS;
  }
}

}  // namespace

std::string RegistrationFolder() {
  if (const auto path = ClassPath()) return path->empty() ? std::string() : path->front();
  if (geteuid() != 0) return OwnClassFolder();
  std::string usual = "/usr/local/share/automation/classes.d";
  const std::vector<std::string> shared = SharedClassFolders();
  if (std::ranges::find(shared, usual) != shared.end()) return usual;
  return shared.empty() ? std::string() : shared.front();
}

HRESULT RegisterClass(std::string_view script, const std::string& library) noexcept {
  return ChangeRegistration(script, library,
                            [](const ClassFile& file, const std::string& text,
                               const fs::path& folder, const fs::path& place) {
                              fs::create_directories(folder);
                              ReplaceFile(place, text);
                              RemoveClassFiles(folder, file.clsid, place);
                              SyncFolder(folder);
                            });
}

HRESULT UnregisterClass(std::string_view script) noexcept {
  // Any path makes the script a class file.
  return ChangeRegistration(
      script, "/",
      [](const ClassFile& file, const std::string&, const fs::path& folder, const fs::path& place) {
        if (!fs::exists(folder)) return;
        // By its name too: it may be damaged.
        fs::remove(place);
        RemoveClassFiles(folder, file.clsid, {});
        SyncFolder(folder);
      });
}

}  // namespace orxdb
