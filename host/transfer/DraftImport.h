// Drafts planned against the tools that are there, and carried out.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "host/library/Answer.h"
#include "host/transfer/KnownTools.h"
#include "host/transfer/Plan.h"
#include "host/transfer/ToolStore.h"

namespace orxdb {

struct DraftImportOptions : UnderstandingOptions {
  std::vector<std::string> match{"Name"};  ///< properties by which a tool is the same one
  bool update = false;                     ///< tools that differ become as the source has them
  bool dryRun = false;                     ///< nothing is written
};

/// Brings the records of sources into the database. Every record ends as one of the outcomes; tools
/// are compared with all that are there, those of earlier records too. Memory does not grow with
/// the sources but for some bytes for each tool of their tables.
class DraftImport {
 public:
  DraftImport(ToolDatabase& database, DraftImportOptions options, PlanListener listener);
  DraftImport(DraftImport&&) = delete;

  /// Throws HostError when the source cannot be read on or the database not be used; what was read
  /// before is then carried out and told.
  void Read(DraftReader& source, const Progress& progress);

  const PlanCounts& Counts() const noexcept { return m_counts; }
  /// What is to be said about all of it, in sentences.
  std::vector<std::string> Remarks() const;

 private:
  struct Record {
    PlanLine line;
    UnderstoodTool tool;
  };
  struct Table {
    Table(ToolDatabase& database, const std::string& name, std::vector<std::string> properties)
        : known(database, name), match(std::move(properties)) {}

    KnownTools known;
    std::vector<std::string> match;
  };

  void CarryOut(std::vector<Record>& group);
  void CarryOut(Record& record);
  void Decide(Record& record, Table& table);
  void Add(Record& record, Table& table);
  void Change(Record& record, Table& table, const std::vector<LONG>& tools);
  std::string Differences(const Record& record, LONG id);
  Table& TableOf(const std::string& name);

  ToolDatabase& m_database;
  DraftImportOptions m_options;
  PlanListener m_listener;
  Understanding m_understanding;
  ToolStore m_store;
  std::map<std::string, std::unique_ptr<Table>> m_tables;
  PlanCounts m_counts;
};

}  // namespace orxdb
