// What came of an import. The component answers success whatever happens; so the file is gone
// through again, and every line is looked for in the table by the component's own criteria.
#pragma once

#include <optional>
#include <set>
#include <string>
#include <vector>

#include "host/library/ToolDatabase.h"
#include "host/transfer/ExchangeFile.h"

namespace orxdb {

/// Lines of a file for a message; the first of them are kept.
struct LineList {
  long long count = 0;
  std::vector<long long> first;

  void Add(long long number);
  /// "line 7", "lines 7, 9 and 12", "lines 7, 9, 12, 14, 20 and 15 more".
  std::string Text() const;
};

struct ImportResult {
  long long records = 0;  ///< lines that hold anything, behind the names of the fields
  long long present = 0;  ///< in the table before, or by an earlier line
  long long found = 0;    ///< tools added that read as their lines
  LineList wrongFields;
  LineList tooLong;
  LineList missing;         ///< neither present nor found again
  long long stoppedAt = 0;  ///< the line that ended the import; 0 when it went to the end
  std::string reason;       ///< why, a whole sentence
  long long unread = 0;     ///< lines behind that one
};

/// The columns of an exchange file as an import into its table takes them.
class ImportColumns {
 public:
  ImportColumns(ToolDatabase& database, const ExchangeFile& file);

  /// Why an import stops at a record of such fields, a whole sentence; empty when it does not.
  std::string Obstacle(const std::vector<std::string>& fields) const;
  /// What a tool meets that the component takes for the same.
  std::string Criteria(const std::vector<std::string>& fields) const;

 private:
  std::string m_table;
  std::vector<ExchangeColumn> m_columns;
};

/// Looks the lines of an exchange file up in the table that they have been imported into.
class ImportCheck {
 public:
  /// Before the import.
  ImportCheck(ToolDatabase& database, const ExchangeFile& file);

  /// Goes through the lines of the file, after the import. `progress` is told the lines done.
  template <typename Progress>
  ImportResult Run(ExchangeFile& file, Progress&& progress) {
    ImportResult result;
    while (const std::optional<ExchangeLine> line = file.Next()) {
      Take(*line, result);
      progress(result.records);
    }
    return result;
  }

 private:
  void Take(const ExchangeLine& line, ImportResult& result);
  /// The number of the first tool that meets the criteria, 0 for none; nothing when the database
  /// does not accept them.
  std::optional<LONG> Find(const std::string& criteria);
  LONG HighestId();

  ToolDatabase& m_database;
  std::string m_table;
  ImportColumns m_columns;
  LONG m_lastBefore = 0;  ///< no tool had a higher number before the import
  std::set<LONG> m_claimed;
};

}  // namespace orxdb
