// Reading the catalogue's columns.
#pragma once

#include <string>

#include "database/ToolDbData.h"

namespace orxdb {

/// A text field of the current record as narrow text; null, and anything that is no text, reads as
/// empty.
std::string TextField(const CDaoRecordset& records, const std::string& column);

/// The table name, kind and subkind that the current record of a catalogue query describes. The
/// first two characters of TOOLTABLE_NAME are cut off whatever they are.
CToolType ReadToolType(const CDaoRecordset& records);

}  // namespace orxdb
