// The kinds of tools: (tool type, tool subtype, table name), as consecutive triples of strings in a
// VT_ARRAY | VT_BSTR from index 0.
#pragma once

#include <string>

#include "database/ToolDbData.h"
#include "platform/automation/Variant.h"

namespace orxdb {

/// The triples of the loaded catalogue. There are as many as the catalogue has distinct tables:
/// rows beyond that number are left out, and entries beyond the rows stay null strings.
Variant CatalogueToolTypes(CToolDbData& data);

/// The triples of a stored query, one per row; empty when there are no rows.
Variant StoredQueryToolTypes(CToolDbData& data, const std::string& queryName);

}  // namespace orxdb
