#include "host/library/BackUp.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdint>
#include <utility>

#include "host/library/DatabaseFile.h"
#include "host/library/HostError.h"
#include "host/library/ToolDatabase.h"
#include "platform/framework/Text.h"

namespace orxdb {
namespace {

namespace fs = std::filesystem;

/// The time now in names of files, "20260131-235959-123": UTC, so that later names sort behind
/// earlier ones on every machine.
std::string TimeInNames() {
  using namespace std::chrono;
  const auto now = floor<milliseconds>(system_clock::now());
  const auto day = floor<days>(now);
  const year_month_day date(day);
  const hh_mm_ss time(now - day);
  std::string text;
  const auto append = [&](std::int64_t number, std::size_t digits) {
    const std::string all = "0000" + std::to_string(number);
    text += all.substr(all.size() - digits);
  };
  append(static_cast<int>(date.year()), 4);
  append(static_cast<unsigned>(date.month()), 2);
  append(static_cast<unsigned>(date.day()), 2);
  text += '-';
  append(time.hours().count(), 2);
  append(time.minutes().count(), 2);
  append(time.seconds().count(), 2);
  text += '-';
  append(time.subseconds().count(), 3);
  return text;
}

bool IsTimeInNames(std::string_view text) {
  constexpr std::string_view kShape = "00000000-000000-000";
  return std::ranges::equal(text, kShape, [](char c, char shape) {
    return shape == '0' ? c >= '0' && c <= '9' : c == shape;
  });
}

/// Where a library is, whatever links lead there: what stands beside it belongs there.
fs::path PlaceOf(const std::string& library) {
  const fs::path file = DatabaseNamed(library);
  std::error_code error;
  fs::path real = fs::canonical(file, error);
  return error ? file : real;
}

/// The names that backups of a library have in a folder, in the order of their times.
std::vector<fs::path> BackupsIn(const fs::path& folder, const fs::path& library) {
  const std::string before = library.stem().string() + '-';
  const std::string behind = library.extension().string();
  std::vector<fs::path> backups;
  for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
    const std::string name = entry.path().filename().string();
    if (name.size() < before.size() + behind.size() || !name.starts_with(before) ||
        !name.ends_with(behind)) {
      continue;
    }
    const std::string_view time =
        std::string_view(name).substr(before.size(), name.size() - before.size() - behind.size());
    if (IsTimeInNames(time) && entry.is_regular_file()) backups.push_back(entry.path());
  }
  std::ranges::sort(backups);
  return backups;
}

}  // namespace

Answer BackUpTo(const std::string& library, const fs::path& file, bool replace) {
  std::error_code error;
  if (fs::is_directory(file, error)) {
    throw HostError(file.string() + " is a folder; --keep N writes dated files into it.");
  }
  if (fs::exists(file, error) && !replace) {
    throw HostError(file.string() + " is there already; --force replaces it.");
  }
  const ToolDatabase database(library);
  if (FAILED(database.Library().BackUp(WidenToBstr(file.string()).get(),
                                       replace ? VARIANT_TRUE : VARIANT_FALSE))) {
    throw HostError(file.string() + " cannot be written. " + database.LastError());
  }
  return {{"File"}, {Cell::Text(file.string())}};
}

Answer BackUpInto(const std::string& library, const fs::path& folder, std::size_t keep) {
  // Not made here: a disk that should be there would be missed by nobody.
  if (!fs::is_directory(folder)) throw HostError("There is no folder " + folder.string() + '.');
  const fs::path named = PlaceOf(library);
  fs::path file = folder / named.stem();
  file += '-' + TimeInNames();
  file += named.extension();
  Answer answer = BackUpTo(library, file, false);
  std::vector<fs::path> backups = BackupsIn(folder, named);
  std::erase(backups, file);
  for (std::size_t i = 0; i + keep <= backups.size(); ++i) {
    std::error_code error;
    fs::remove(backups[i], error);
    if (error) {
      answer.Complain(backups[i].string() + " cannot be removed: " + error.message() + '.');
    }
  }
  return answer;
}

Answer Restore(const std::string& library, const fs::path& backup, bool certain) {
  const fs::path file = PlaceOf(library);
  std::error_code error;
  if (fs::equivalent(file, backup, error)) {
    throw HostError(backup.string() + " is the library itself.");
  }
  // It must be a library, not just any database.
  static_cast<void>(ToolDatabase(backup.string()));
  Answer answer({"File", "Kept"}, {Cell::Text(file.string()), Cell()});
  fs::path kept;
  if (fs::exists(file)) {
    kept = file;
    kept.replace_extension("replaced-" + TimeInNames() + file.extension().string());
    answer.rows[0][1] = Cell::Text(kept.string());
  }
  RestoreDatabase(file, backup, kept, certain);
  return answer;
}

}  // namespace orxdb
