// The tools of a table as an exchange file.
#pragma once

#include <string>

#include "database/records/DaoRecordset.h"
#include "platform/framework/TextFile.h"

namespace orxdb {

/// Writes the names of the exported fields, then all records from the first to the last, and
/// leaves the recordset behind the last. Only the names are written when the recordset stands at
/// an end. A database error ends the file there.
void ExportRecords(const std::string& table, CDaoRecordset& records, TextFile& file);

}  // namespace orxdb
