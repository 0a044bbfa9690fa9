#include "lookups/TappingHeads.h"

#include <vector>

#include "database/ToolRules.h"
#include "platform/framework/Text.h"
#include "values/ValueText.h"

namespace orxdb {
namespace {

Variant Find(const Bstr& property, Variant& names, Variant& values, IOrxDbObj& own) {
  Variant value;
  LONG index = -1;
  own.FindPropByNameInArray(property.get(), names.ptr(), values.ptr(), value.ptr(), &index);
  return value;
}

}  // namespace

TappingHeads HeadsForTap(double metricDiameter, IOrxDbObj& own) {
  const Bstr table = WidenToBstr(kTappingHeadTable);
  const Bstr nameField(u"Name");
  const Bstr idField(u"TAPPING_HEAD.ID");
  const Bstr filter = WidenToBstr(HeadsTaking(DoubleToString(metricDiameter, 6)));
  own.SetTabFilter(table.get(), filter.get(), Bstr(u"").get());

  std::vector<Bstr> names;
  std::vector<LONG> ids;
  Variant fields;
  Variant head;
  for (own.GetFirstTool(table.get(), fields.ptr(), head.ptr()); !head.empty();
       own.GetNextTool(table.get(), head.put())) {
    const Variant name = Find(nameField, fields, head, own);
    const Variant id = Find(idField, fields, head, own);
    names.emplace_back(name.type() == VT_BSTR ? View(name.get().bstrVal) : u"");
    ids.push_back(id.type() == VT_I4 ? id.get().lVal : 0);
  }
  if (ids.empty()) return {};

  return {
      .names = MakeVector(VT_BSTR, names.size(), [&](std::size_t i) { return names[i].detach(); }),
      .ids = MakeVector(VT_I4, ids.size(), [&](std::size_t i) { return ids[i]; })};
}

}  // namespace orxdb
