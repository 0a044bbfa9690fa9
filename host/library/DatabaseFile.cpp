#include "host/library/DatabaseFile.h"

#include "host/library/Component.h"
#include "host/library/HostError.h"
#include "host/library/NewFile.h"
#include "host/library/OpenFiles.h"
#include "interface/IToolDatabaseFile.h"
#include "platform/automation/Bstr.h"
#include "platform/automation/DataFolder.h"
#include "platform/framework/ExecutablePath.h"
#include "platform/framework/Text.h"

namespace orxdb {
namespace {

Bstr PathText(const std::filesystem::path& path) {
  return WidenToBstr(path.string());
}

ComPtr<IToolDatabaseFile> Files() {
  ComPtr<IToolDatabaseFile> files;
  const HRESULT status = ComponentClass()->QueryInterface(IToolDatabaseFile::iid, files.putVoid());
  if (FAILED(status)) {
    throw HostError("The component ORXDB.OrxDbObj is of an older version than this program (" +
                    Hexadecimal(status) + ").");
  }
  return files;
}

/// What went wrong with a file, with the reason that the component gives.
HostError Failed(const std::filesystem::path& file, const char* what, const Bstr& reason) {
  const std::string why = NarrowBstr(reason.get());
  return HostError(file.string() + ' ' + what + (why.empty() ? "." : ": " + why + '.'));
}

std::string UsedBy(const std::string& name) {
  const std::string programs = ProgramsThatUse(name);
  return programs.empty() ? programs : " (" + programs + ')';
}

std::string WhyUnusable(DatabaseFileState state, const std::string& name) {
  switch (state) {
    case DatabaseFileState::Absent:
      return "There is no tool database " + name + ". `orxdb create " + name + "` makes one.";
    case DatabaseFileState::Folder:
      return name + " is a folder, not a tool database.";
    case DatabaseFileState::Unreadable:
      return name + " cannot be read; it may not be allowed.";
    case DatabaseFileState::Empty:
      return name + " is empty, not a tool database.";
    case DatabaseFileState::NotDatabase:
      return name + " is not a database.";
    case DatabaseFileState::InUse:
      return name + " is in use by another program" + UsedBy(name) + "; try again later.";
    case DatabaseFileState::SharedLog:
      return name + " has a log, with which it cannot be used in a network folder. `orxdb --db " +
             name + " journal delete` takes it away.";
    case DatabaseFileState::Database:
      break;
  }
  return name + " is a database without a readable catalogue of tools (the query TOOL_TYPES).";
}

DatabaseFileState StateOf(IToolDatabaseFile& files, const std::filesystem::path& file) {
  DatabaseFileState state{};
  if (FAILED(files.GetState(PathText(file).get(), &state))) {
    throw HostError(file.string() + " cannot be looked at.");
  }
  return state;
}

using Naming = std::function<void(const std::filesystem::path&)>;

void ReplaceFile(IToolDatabaseFile& files, const std::filesystem::path& file,
                 const std::filesystem::path& fresh, const std::filesystem::path& kept,
                 bool certain) {
  Bstr reason;
  if (FAILED(files.Replace(PathText(file).get(), PathText(fresh).get(), PathText(kept).get(),
                           certain ? VARIANT_TRUE : VARIANT_FALSE, reason.put()))) {
    throw Failed(file, "cannot be replaced", reason);
  }
}

/// The journal of a database that is to take the place of a file.
bool JournalFor(const std::filesystem::path& file, std::optional<bool> asked) {
  if (asked) return *asked;
  const JournalState old = JournalOf(file);
  return old.log && old.network.empty();
}

}  // namespace

JournalState JournalOf(const std::filesystem::path& file) {
  VARIANT_BOOL log = VARIANT_FALSE;
  Bstr network;
  Bstr reason;
  if (FAILED(Files()->GetJournal(PathText(file).get(), &log, network.put(), reason.put()))) {
    throw Failed(file, "cannot be read", reason);
  }
  return {log != VARIANT_FALSE, NarrowBstr(network.get())};
}

void SetJournal(const std::filesystem::path& file, bool log) {
  Bstr reason;
  if (FAILED(Files()->SetJournal(PathText(file).get(), log ? VARIANT_TRUE : VARIANT_FALSE,
                                 reason.put()))) {
    throw Failed(file, "keeps its journal", reason);
  }
}

std::filesystem::path DefaultDatabase() {
  const std::filesystem::path prefix = ProgramFolder().parent_path();
  std::filesystem::path beside = prefix / "CAM" / "TOOLS" / "tools.mdb";
  const std::filesystem::path folder = OwnDataFolder();
  const bool installed = std::filesystem::exists(prefix / "share" / "automation" / "classes.d");
  if (!installed || folder.empty()) return beside;
  std::filesystem::path own = folder / "orxdb" / "tools.mdb";
  return std::filesystem::exists(beside) && !std::filesystem::exists(own) ? beside : own;
}

std::filesystem::path DatabaseNamed(const std::string& name) {
  return NativePath(name);
}

void CreateStarterDatabase(const std::filesystem::path& file, bool replace,
                           std::optional<bool> log) {
  const ComPtr<IToolDatabaseFile> files = Files();
  const auto build = [&](const std::filesystem::path& building) {
    Bstr reason;
    if (file.has_parent_path()) std::filesystem::create_directories(file.parent_path());
    if (FAILED(files->CreateStarter(PathText(building).get(), reason.put()))) {
      throw Failed(file, "cannot be created", reason);
    }
    SetJournal(building, JournalFor(file, log));
  };
  const auto name = [&](const std::filesystem::path& built) {
    ReplaceFile(*files, file, built, {}, false);
  };
  WriteNewFile(file, replace, ", with all its tools", build, replace ? name : Naming());
}

void CopyDatabase(const std::filesystem::path& source, const std::filesystem::path& target) {
  const ComPtr<IToolDatabaseFile> files = Files();
  Bstr reason;
  if (SUCCEEDED(files->Copy(PathText(source).get(), PathText(target).get(), reason.put()))) return;
  const DatabaseFileState state = StateOf(*files, source);
  if (state != DatabaseFileState::Database && state != DatabaseFileState::InUse) {
    throw HostError(WhyUnusable(state, source.string()));
  }
  throw Failed(source, "cannot be copied", reason);
}

void RestoreDatabase(const std::filesystem::path& file, const std::filesystem::path& backup,
                     const std::filesystem::path& kept, bool certain) {
  const ComPtr<IToolDatabaseFile> files = Files();
  const auto copy = [&](const std::filesystem::path& building) {
    CopyDatabase(backup, building);
    SetJournal(building, JournalFor(file, {}));
    Bstr reason;
    if (FAILED(files->Check(PathText(building).get(), reason.put()))) {
      throw Failed(backup, "is not in order", reason);
    }
  };
  const auto name = [&](const std::filesystem::path& built) {
    ReplaceFile(*files, file, built, kept, certain);
  };
  WriteNewFile(file, true, "", copy, name);
}

std::string WhyUnusable(const std::filesystem::path& file) {
  return WhyUnusable(StateOf(*Files(), file), file.string());
}

}  // namespace orxdb
