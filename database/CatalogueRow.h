#pragma once

#include <string>

#include "database/records/DaoRecordset.h"

namespace orxdb {

/// A text field of the current record as narrow text; null, and anything that is no text, reads as
/// empty.
std::string TextField(const CDaoRecordset& records, const std::string& column);

/// What a row of the catalogue says of a tool table. `tableName` is without the "Q_" of its stored
/// query.
struct CatalogueRow {
  std::string type;
  std::string subtype;
  std::string tableName;

  /// The current record of a catalogue query. The first two characters of TOOLTABLE_NAME are cut
  /// off whatever they are.
  static CatalogueRow Read(const CDaoRecordset& records);
};

}  // namespace orxdb
