#include "browse/ToolTypes.h"

#include <array>
#include <span>

#include "platform/automation/Vectors.h"
#include "platform/framework/Text.h"

namespace orxdb {
namespace {

/// An array of `count` triples, filled with as many rows as fit.
Variant TypeTriples(std::span<const CatalogueRow> rows, std::size_t count) {
  constexpr std::array kParts = {&CatalogueRow::type, &CatalogueRow::subtype,
                                 &CatalogueRow::tableName};
  return MakeVector(VT_BSTR, 3 * count, [&](std::size_t i) -> BSTR {
    return i / 3 < rows.size() ? WidenToBstr(rows[i / 3].*kParts[i % 3]).detach() : nullptr;
  });
}

}  // namespace

Variant CatalogueToolTypes(CToolDbData& data) {
  // The length follows the tables, not the rows: a table named twice has one entry, and hosts
  // count on three elements for each table that they can open.
  return TypeTriples(data.Rows(), data.ToolTables().size());
}

Variant StoredQueryToolTypes(CToolDbData& data, const std::string& queryName) {
  CDaoQueryDef query(&data.Database());
  query.Open(queryName);
  CDaoRecordset records;
  records.Open(&query);
  std::vector<CatalogueRow> rows;
  for (; !records.IsBOF() && !records.IsEOF(); records.MoveNext()) {
    rows.push_back(CatalogueRow::Read(records));
  }
  return rows.empty() ? Variant() : TypeTriples(rows, rows.size());
}

}  // namespace orxdb
