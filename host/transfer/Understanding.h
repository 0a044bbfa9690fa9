// What the values of a draft mean for its kind of tool. Nothing is guessed: what is not understood
// is refused with the reason, and what is understood has all its digits.
#pragma once

#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "host/library/ToolInput.h"
#include "host/transfer/Columns.h"
#include "host/transfer/Draft.h"

namespace orxdb {

struct UnderstandingOptions {
  std::string table;  ///< of drafts that tell none
  std::string unit;   ///< of lengths where the source tells none: "mm", "in" or empty
  std::vector<ColumnMapping> mappings;
  bool addValues = false;  ///< texts that a list lacks become entries of it
};

/// An entry that a list lacks.
struct NewEntry {
  std::string property;
  std::string text;
};

/// A tool as the database is to have it, or why it is not to have it.
struct UnderstoodTool {
  std::string table;
  Assignments values;                ///< a null value stands for none
  std::vector<NewEntry> entries;     ///< to be added to lists first
  std::vector<std::string> reasons;  ///< why it is refused, sentences
};

/// Understands the drafts of one transfer.
class Understanding {
 public:
  Understanding(ToolDatabase& database, UnderstandingOptions options);
  ~Understanding();
  Understanding(Understanding&&) = delete;

  UnderstoodTool Read(const ToolDraft& draft);

  /// The lists of a table have changed.
  void ForgetLists();
  /// What is to be said about the drafts as a whole, in sentences.
  std::vector<std::string> Remarks() const;

 private:
  class Kind;
  class DraftReading;

  /// The table that a draft is for; tells why there is none.
  std::string TableOf(const ToolDraft& draft, UnderstoodTool& tool) const;
  Kind& KindOf(const std::string& table);

  ToolDatabase& m_database;
  UnderstandingOptions m_options;
  std::map<std::string, std::unique_ptr<Kind>> m_kinds;
  std::vector<std::string> m_unmapped;          ///< columns, in the order of their coming
  std::set<std::string> m_filledIn;             ///< properties that are the database's to fill
  std::map<std::string, long long> m_unitless;  ///< by table, records without a unit
};

}  // namespace orxdb
