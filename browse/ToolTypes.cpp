#include "browse/ToolTypes.h"

#include <algorithm>
#include <span>
#include <utility>

#include "browse/PropertyArrays.h"
#include "database/ToolTypeColumns.h"
#include "platform/framework/Text.h"

namespace orxdb {
namespace {

/// An array of `count` triples, filled with as many types as fit.
Variant TypeTriples(std::span<const CToolType> types, std::size_t count) {
  SafeArray array = NewResultVector(VT_BSTR, 3 * count);
  {
    const ArrayAccess<BSTR> strings(array.get());
    auto string = strings.begin();
    for (const CToolType& type : types.first(std::min(count, types.size()))) {
      for (const std::string* text : {&type.type, &type.subtype, &type.tableName}) {
        *string++ = WidenToBstr(*text).detach();
      }
    }
  }
  return Variant::FromArray(VT_BSTR, std::move(array));
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
