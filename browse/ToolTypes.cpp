#include "browse/ToolTypes.h"

#include <array>
#include <span>

#include "browse/PropertyArrays.h"
#include "database/ToolTypeColumns.h"
#include "platform/framework/Text.h"

namespace orxdb {
namespace {

/// An array of `count` triples, filled with as many types as fit.
Variant TypeTriples(std::span<const CToolType> types, std::size_t count) {
  constexpr std::array kParts = {&CToolType::type, &CToolType::subtype, &CToolType::tableName};
  return MakeVector(VT_BSTR, 3 * count, [&](std::size_t i) -> BSTR {
    return i / 3 < types.size() ? WidenToBstr(types[i / 3].*kParts[i % 3]).detach() : nullptr;
  });
}

}  // namespace

Variant CatalogueToolTypes(CToolDbData& data) {
  // The length follows the tables, not the rows: a table named twice has one entry, and hosts
  // count on three elements for each table that they can open.
  return TypeTriples(data.ToolTypes(), data.ToolTables().size());
}

Variant StoredQueryToolTypes(CToolDbData& data, const std::string& queryName) {
  CDaoQueryDef query(&data.Database());
  query.Open(queryName);
  CDaoRecordset records;
  records.Open(&query);
  std::vector<CToolType> types;
  for (; !records.IsBOF() && !records.IsEOF(); records.MoveNext()) {
    types.push_back(ReadToolType(records));
  }
  return types.empty() ? Variant() : TypeTriples(types, types.size());
}

}  // namespace orxdb
