#include "host/transfer/Import.h"

#include <algorithm>

#include "host/library/DatabaseFile.h"
#include "host/library/ScratchFolder.h"
#include "host/library/ToolDatabase.h"
#include "host/transfer/ExchangeFile.h"
#include "host/transfer/ImportCheck.h"
#include "platform/framework/Text.h"

namespace orxdb {
namespace {

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

HostError NoSuchTable(const std::string& file, const std::string& table) {
  return HostError(file + " is for the table " + Cited(table) +
                   ", which the database does not have.");
}

}  // namespace

Answer ImportFile(const std::string& databaseName, const std::string& path,
                  const Progress& progress) {
  ExchangeFile file(path);
  ToolDatabase database(databaseName);
  const std::string& table = file.Table();
  if (std::ranges::find(database.Types(), table, &ToolKind::table) == database.Types().end()) {
    throw NoSuchTable(path, table);
  }
  const LONG before = database.Count(table);
  ImportCheck check(database, file);
  database.Component().ImportToolRecordsFromFile(WidenToBstr(path).get(), 0);
  const ImportResult result = check.Run(
      file, [&](long long done) { progress("Looking for the tools in the table", done, 0); });
  // Behind the last tool none are counted.
  database.Select(table, {}, {});
  const ToolWalk first(database, table, {});
  const LONG after = database.Count(table);
  const LONG added = after - before;
  const long long passedOver = result.wrongFields.count + result.tooLong.count;
  const long long refused = std::max(result.missing.count - (added - result.found), 0LL);
  Answer answer(
      {"Table", "Records", "Added", "Present", "Passed_Over", "Refused", "Not_Read", "Tools"},
      {Cell::Text(table), Cell::Number(result.records), Cell::Number(added),
       Cell::Number(result.present), Cell::Number(passedOver), Cell::Number(refused),
       Cell::Number(result.stoppedAt == 0 ? 0 : result.unread + 1), Cell::Number(after)});
  answer.complaint = Complaint(result, added);
  return answer;
}

Answer TryImport(const std::string& databaseName, const std::string& path,
                 const Progress& progress) {
  const ScratchFolder scratch;
  CopyDatabase(DatabaseNamed(databaseName), scratch / "tools.mdb");
  Answer answer = ImportFile((scratch / "tools.mdb").string(), path, progress);
  answer.remarks.emplace_back("Tried on a copy of the database; nothing is changed.");
  return answer;
}

}  // namespace orxdb
