#include "host/transfer/Export.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fstream>

#include "host/library/NewFile.h"
#include "host/library/ScratchFolder.h"
#include "host/transfer/ExchangeFile.h"
#include "host/transfer/ImportCheck.h"
#include "platform/framework/Text.h"

namespace orxdb {
namespace {

namespace fs = std::filesystem;

/// Lines of an exported file that an import will not take.
struct Losses {
  LineList stopping;
  LineList wrongFields;
  LineList torn;
  LineList tooLong;
  std::string obstacle;  ///< of the first line that stops an import

  void Add(const ExchangeLine& line, const ImportColumns& columns) {
    if (line.kind == ExchangeLine::Kind::TooLong) {
      tooLong.Add(line.number);
    } else if (line.torn) {
      torn.Add(line.number);
    } else if (line.kind == ExchangeLine::Kind::WrongFields) {
      wrongFields.Add(line.number);
    } else if (std::string hindrance = columns.Obstacle(line.fields); !hindrance.empty()) {
      stopping.Add(line.number);
      if (obstacle.empty()) obstacle = std::move(hindrance);
    }
  }

  std::vector<std::string> Remarks(const std::string& file) const {
    std::vector<std::string> remarks;
    if (stopping.count > 0) {
      remarks.push_back(file + ": an import will stop at " + stopping.Text() + ": " + obstacle);
    }
    const auto tell = [&](const LineList& lines, const char* what) {
      if (lines.count == 0) return;
      remarks.push_back(file + ": an import will not take " + lines.Text() +
                        " as they were: " + what + '.');
    };
    tell(wrongFields, "values of a type that has no text (dates, prices, bytes)");
    tell(torn, "a double quote in a value");
    tell(tooLong, "more text than a line may have");
    return remarks;
  }
};

HostError NotWhole(const std::string& table, LONG lines, LONG tools) {
  return HostError("The tools of " + table + " could not be written as a whole (" +
                   std::to_string(lines) + " of " + std::to_string(tools) +
                   "): the disk may be full, or the database cannot be read.");
}

/// Reads the file again and counts its lines.
LONG CountLines(ToolDatabase& database, const std::string& table, LONG tools,
                const std::string& path, Losses& losses, const Progress& progress) {
  ExchangeFile file(path);
  const ImportColumns columns(database, file);
  LONG lines = 0;
  long long last = 0;
  while (const auto line = file.Next()) {
    if (line->number != last) {
      progress("Reading the tools of " + table + " again", ++lines, tools);
    }
    last = line->number;
    losses.Add(*line, columns);
  }
  return lines;
}

bool EndsWithLine(const fs::path& file) {
  std::ifstream written(file, std::ios::binary);
  written.seekg(-1, std::ios::end);
  return written.get() == '\n';
}

/// Exports to a new file and shows that it is whole.
Losses ExportWhole(ToolDatabase& database, const std::string& table, LONG tools,
                   const fs::path& path, const Progress& progress) {
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
    lines = CountLines(database, table, tools, path.string(), losses, progress);
  } catch (const HostError&) {
    throw NotWhole(table, 0, tools);
  }
  if (lines != tools || !EndsWithLine(path)) throw NotWhole(table, lines, tools);
  return losses;
}

/// Copies a finished file to a device or pipe.
void CopyTo(const fs::path& source, const fs::path& target) {
  std::ifstream from(source, std::ios::binary);
  std::ofstream to(target, std::ios::binary);
  to << from.rdbuf() << std::flush;
  if (!to) throw HostError(target.string() + " cannot be written: " + std::strerror(errno) + '.');
}

void AddExport(ToolDatabase& database, const std::string& table, const fs::path& target,
               const Progress& progress, Answer& answer) {
  const LONG tools = database.Count(table);
  Losses losses;
  const auto write = [&](const fs::path& path) {
    losses = ExportWhole(database, table, tools, path, progress);
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
  answer.rows.push_back({Cell::Text(table), Cell::Number(tools), Cell::Text(target.string())});
  std::ranges::move(losses.Remarks(target.string()), std::back_inserter(answer.remarks));
}

Answer EmptyAnswer() {
  return Answer({"Table", "Tools", "File"});
}

}  // namespace

Answer ExportTable(ToolDatabase& database, const std::string& table, const fs::path& target,
                   const Progress& progress) {
  Answer answer = EmptyAnswer();
  AddExport(database, table, target, progress, answer);
  return answer;
}

Answer ExportAll(ToolDatabase& database, const fs::path& folder, const Progress& progress) {
  std::error_code error;
  fs::create_directories(folder, error);
  if (error) throw HostError(folder.string() + " is no folder: " + error.message() + '.');
  Answer answer = EmptyAnswer();
  try {
    for (const ToolKind& kind : database.Types()) {
      AddExport(database, kind.table, folder / (kind.table + ".txt"), progress, answer);
    }
  } catch (const HostError& failure) {
    answer.Complain(failure.what());
  }
  return answer;
}

}  // namespace orxdb
