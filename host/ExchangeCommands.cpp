// export, import: tools as text files. The component tells neither whether a file could be written
// nor what became of its lines; both are found out here.
#include <CLI/CLI.hpp>
#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fstream>
#include <memory>

#include "host/Commands.h"
#include "host/DatabaseFile.h"
#include "host/ExchangeFile.h"
#include "host/ImportCheck.h"
#include "host/NewFile.h"
#include "host/ProgressBar.h"
#include "host/ScratchFolder.h"
#include "host/ToolDatabase.h"
#include "platform/framework/ExecutablePath.h"
#include "platform/framework/Text.h"

namespace orxdb {
namespace {

namespace fs = std::filesystem;

struct ExchangeOptions {
  std::string table;
  std::string file;
  std::string folder;
  bool dryRun = false;
};

// --- export

/// Lines of an exported file that an import will not take.
struct Losses {
  LineList stopping;
  LineList wrongFields;
  LineList torn;
  LineList tooLong;
  std::string obstacle;  ///< of the first line that stops an import

  void Tell(const std::string& file) const {
    if (stopping.count > 0) {
      orxdb::Tell(file + ": an import will stop at " + stopping.Text() + ": " + obstacle);
    }
    TellOf(wrongFields, file, "values of a type that has no text (dates, prices, bytes)");
    TellOf(torn, file, "a double quote in a value");
    TellOf(tooLong, file, "more text than a line may have");
  }

 private:
  static void TellOf(const LineList& lines, const std::string& file, const std::string& what) {
    if (lines.count > 0) {
      orxdb::Tell(file + ": an import will not take " + lines.Text() + " as they were: " + what +
                  '.');
    }
  }
};

/// Exports to a new file and shows that it is whole.
Losses ExportWhole(ToolDatabase& database, const std::string& table, LONG tools,
                   const fs::path& path) {
  errno = 0;
  database.Component().ExportToolRecordsToFile(WidenToBstr(table).get(),
                                               WidenToBstr(path.string()).get(), 0);
  std::error_code error;
  if (!fs::exists(path, error)) {
    throw fs::filesystem_error("export", path, std::error_code(errno, std::generic_category()));
  }
  Losses losses;
  LONG lines = 0;
  try {
    ExchangeFile file(path.string());
    const ImportColumns columns(database, file);
    ProgressBar progress("Reading the tools of " + table + " again", tools);
    long long last = 0;
    while (const auto line = file.Next()) {
      if (line->number != last) progress(++lines);
      last = line->number;
      if (line->kind == ExchangeLine::Kind::TooLong) {
        losses.tooLong.Add(line->number);
      } else if (line->torn) {
        losses.torn.Add(line->number);
      } else if (line->kind == ExchangeLine::Kind::WrongFields) {
        losses.wrongFields.Add(line->number);
      } else if (std::string obstacle = columns.Obstacle(line->fields); !obstacle.empty()) {
        losses.stopping.Add(line->number);
        if (losses.obstacle.empty()) losses.obstacle = std::move(obstacle);
      }
    }
  } catch (const HostError&) {
    lines = -1;
  }
  std::ifstream written(path, std::ios::binary);
  written.seekg(-1, std::ios::end);
  if (lines != tools || written.get() != '\n') {
    throw HostError("The tools of " + table + " could not be written as a whole (" +
                    std::to_string(std::max(lines, LONG{0})) + " of " + std::to_string(tools) +
                    "): the disk may be full, or the database cannot be read.");
  }
  return losses;
}

/// Copies a finished file to a device or pipe.
void CopyTo(const fs::path& source, const fs::path& target) {
  std::ifstream from(source, std::ios::binary);
  std::ofstream to(target, std::ios::binary);
  to << from.rdbuf() << std::flush;
  if (!to) throw HostError(target.string() + " cannot be written: " + std::strerror(errno) + '.');
}

void ExportTable(ToolDatabase& database, const std::string& table, const fs::path& target,
                 RowWriter& writer) {
  const LONG tools = database.Count(table);
  Losses losses;
  const auto write = [&](const fs::path& path) {
    losses = ExportWhole(database, table, tools, path);
  };
  std::error_code error;
  const fs::file_status status = fs::status(target, error);
  if (fs::is_other(status)) {
    const ScratchFolder scratch;
    write(scratch / "tools.txt");
    CopyTo(scratch / "tools.txt", target);
  } else {
    // A file that a link names is replaced, not the link.
    WriteNewFile(fs::exists(status) ? fs::canonical(target) : target, true, "", write);
  }
  writer.Row({Cell::Text(table), Cell::Number(tools), Cell::Text(target.string())});
  losses.Tell(target.string());
}

void Export(const Settings& settings, const ExchangeOptions& options) {
  if (options.folder.empty() == options.file.empty()) {
    throw CLI::RequiredError("Either TABLE and FILE, or --all FOLDER");
  }
  ToolDatabase database(settings.database);
  const auto writer = MakeRowWriter(settings.format);
  const auto begin = [&writer] { writer->Header({"Table", "Tools", "File"}); };
  if (options.folder.empty()) {
    const std::string table = database.TableNamed(options.table);
    begin();
    ExportTable(database, table, NativePath(options.file), *writer);
  } else {
    const fs::path folder = NativePath(options.folder);
    std::error_code error;
    fs::create_directories(folder, error);
    if (error) throw HostError(folder.string() + " is no folder: " + error.message() + '.');
    begin();
    for (const ToolKind& type : database.Types()) {
      ExportTable(database, type.table, folder / (type.table + ".txt"), *writer);
    }
  }
  writer->End();
}

// --- import

BareDatabase OpenDatabase(const fs::path& path, int flags) {
  sqlite3* opened = nullptr;
  const int result = sqlite3_open_v2(path.c_str(), &opened, flags, nullptr);
  BareDatabase database(opened);
  if (result != SQLITE_OK) throw HostError(WhyUnusable(path));
  sqlite3_busy_timeout(opened, 5000);
  return database;
}

/// Copies a database as it is at one moment, whoever uses it meanwhile.
void CopyDatabase(const fs::path& source, const fs::path& target) {
  const BareDatabase from = OpenDatabase(source, SQLITE_OPEN_READONLY);
  const BareDatabase to = OpenDatabase(target, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
  sqlite3_backup* backup = sqlite3_backup_init(to.get(), "main", from.get(), "main");
  // A database that is in use is told by the step alone.
  const int copied = backup ? sqlite3_backup_step(backup, -1) : sqlite3_errcode(to.get());
  const int ended = sqlite3_backup_finish(backup);
  if (copied != SQLITE_DONE || ended != SQLITE_OK) {
    throw HostError(source.string() + " cannot be copied: " +
                    sqlite3_errstr(copied != SQLITE_DONE ? copied : ended) + '.');
  }
}

std::string Sentence(const std::string& what, const LineList& lines) {
  return what + lines.Text() + ".\n";
}

/// What of the file is not in the table, or not as it stands in the file; empty when all is well.
std::string Complaint(const ImportResult& result, long long added) {
  std::string text;
  if (result.wrongFields.count > 0) {
    text += Sentence("Passed over for another number of fields than the file has names: ",
                     result.wrongFields);
  }
  if (result.tooLong.count > 0) text += Sentence("Passed over as too long: ", result.tooLong);
  const long long changed = added - result.found;
  if (result.missing.count > 0) {
    text += Sentence("Not in the table as they stand in the file: ", result.missing);
    text += changed > 0 ? std::to_string(changed) +
                              " were added with other values, which their fields take; another "
                              "import adds them again.\n"
                        : "They were refused (the database may be read-only, full or in use), or "
                          "tools that differ in long texts only are there.\n";
  }
  if (result.stoppedAt != 0) {
    text += "The import stopped at line " + std::to_string(result.stoppedAt) + ": " +
            result.reason +
            " It was not added, nor what follows: " + std::to_string(result.unread) + " lines.\n";
  }
  if (!text.empty()) text.pop_back();
  return text;
}

void ImportInto(const std::string& databaseFile, const Settings& settings,
                const ExchangeOptions& options) {
  ExchangeFile file(options.file);
  ToolDatabase database(databaseFile);
  const std::string& table = file.Table();
  if (std::ranges::none_of(database.Types(),
                           [&table](const ToolKind& type) { return type.table == table; })) {
    throw HostError(options.file + " is for the table " + Cited(table) +
                    ", which the database does not have.");
  }
  const LONG before = database.Count(table);
  ImportCheck check(database, file);
  database.Component().ImportToolRecordsFromFile(WidenToBstr(options.file).get(), 0);
  const ImportResult result = check.Run(file, ProgressBar("Looking for the tools in the table", 0));
  Variant names;
  Variant values;
  database.Component().SetTabFilter(WidenToBstr(table).get(), nullptr, nullptr);
  database.Component().GetFirstTool(WidenToBstr(table).get(), names.put(), values.put());
  const LONG after = database.Count(table);
  const LONG added = after - before;
  const long long passedOver = result.wrongFields.count + result.tooLong.count;
  const long long refused = std::max(result.missing.count - (added - result.found), 0LL);
  WriteRecord(
      settings.format,
      {"Table", "Records", "Added", "Present", "Passed_Over", "Refused", "Not_Read", "Tools"},
      {Cell::Text(table), Cell::Number(result.records), Cell::Number(added),
       Cell::Number(result.present), Cell::Number(passedOver), Cell::Number(refused),
       Cell::Number(result.stoppedAt == 0 ? 0 : result.unread + 1), Cell::Number(after)});
  const std::string complaint = Complaint(result, added);
  if (!complaint.empty()) throw HostError(complaint);
}

void Import(const Settings& settings, const ExchangeOptions& options) {
  if (!options.dryRun) {
    ImportInto(settings.database, settings, options);
    return;
  }
  const ScratchFolder scratch;
  CopyDatabase(
      settings.database.empty() ? DefaultDatabase() : fs::path(NativePath(settings.database)),
      scratch / "tools.mdb");
  Tell("Tried on a copy of the database; nothing is changed.");
  ImportInto((scratch / "tools.mdb").string(), settings, options);
}

}  // namespace

void AddExchangeCommands(CLI::App& app, const Settings& settings) {
  CLI::App* out = app.add_subcommand("export", "Write the tools of a table as a text file");
  const auto exported = std::make_shared<ExchangeOptions>();
  CLI::Option* table =
      out->add_option("TABLE", exported->table, "Tool table, as `orxdb types` names it")
          ->type_name("");
  CLI::Option* file =
      out->add_option("FILE", exported->file, "The file, replaced if there is one")->type_name("");
  table->needs(file);
  out->add_option("--all", exported->folder, "Every table, each to FOLDER/TABLE.txt")
      ->excludes(table)
      ->excludes(file)
      ->type_name("FOLDER");
  out->footer(
      "Numbers, feeds and speeds do not travel, and reals keep six decimals. Lines that an\n"
      "import will not take as they were are told.\n\n"
      "Example:\n  orxdb export TAP taps.txt\n  orxdb export --all backup");
  out->callback([&settings, exported] { Export(settings, *exported); });

  CLI::App* in = app.add_subcommand("import", "Add the tools of an exported file");
  const auto imported = std::make_shared<ExchangeOptions>();
  in->add_option("FILE", imported->file, "The file; it names the table")->required()->type_name("");
  in->add_flag("--dry-run", imported->dryRun, "Try it on a copy of the database");
  in->footer(
      "Tools that the table holds already are not added again. An import ends at the first\n"
      "line that the database cannot compare with its tools, such as one without a value for a\n"
      "number. The code is 1 unless all tools of the file are then in the table.\n\n"
      "Example:\n  orxdb export TAP taps.txt && orxdb import taps.txt --dry-run");
  in->callback([&settings, imported] { Import(settings, *imported); });
}

}  // namespace orxdb
