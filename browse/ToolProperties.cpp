#include "browse/ToolProperties.h"

#include "browse/ToolCursor.h"
#include "interface/KnownNames.h"
#include "platform/framework/Text.h"

namespace orxdb {
namespace {

Variant OneString(const OLECHAR* text) {
  SafeArray array = NewResultVector(VT_BSTR, 1);
  ArrayAccess<BSTR>(array.get())[0] = Bstr(text).detach();
  return Variant::FromArray(VT_BSTR, std::move(array));
}

Variant OneValue(std::u16string_view text) {
  SafeArray array = NewResultVector(VT_VARIANT, 1);
  ArrayAccess<VARIANT>(array.get())[0] = Variant::FromText(text).detach();
  return Variant::FromArray(VT_VARIANT, std::move(array));
}

/// Adds the temporary tool; -1 when it got no identifier.
LONG AddTemporaryTool(BSTR table, IOrxDbObj& own) {
  Variant names = OneString(OLESTR("Name"));
  Variant values = OneValue(kTemporaryToolName);
  LONG id = -1;
  own.AddNewRecord(table, names.ptr(), values.ptr(), &id);
  return id;
}

}  // namespace

PropertyArrays FindToolProperties(const CToolTableInfo& table, LONG id) {
  PropertyArrays properties;
  CDaoRecordset& tools = table.ToolSet();
  UseFoundTool(tools, ToolCriteria(table.m_strTableName, id), [&](bool found) {
    if (found) properties = ReadRecord(tools);
  });
  return properties;
}

Variant SearchParamNames(const CToolTableInfo& table) {
  const std::size_t count = table.m_searchParamNames.size();
  if (count == 0) return {};
  SafeArray array = NewResultVector(VT_BSTR, count);
  {
    const ArrayAccess<BSTR> names(array.get());
    CDaoFieldInfo unused;
    for (std::size_t i = 0; i < count; ++i) {
      // Hosts count on a failure when the table cannot be read.
      table.ToolSet().GetFieldInfo(static_cast<int>(i), unused);
      names[i] = WidenToBstr(table.m_searchParamNames[i]).detach();
    }
  }
  return Variant::FromArray(VT_BSTR, std::move(array));
}

void ReadDefaultProperties(CDaoRecordset& tools, BSTR table, VARIANT* names, VARIANT* values,
                           IOrxDbObj& own) {
  const Variant position = ToolPosition(tools);
  const LONG id = AddTemporaryTool(table, own);
  if (id != -1) {
    own.GetToolProps(table, id, names, values);
    // A tool that got an identifier but was not stored is not found. The record at the cursor is
    // then deleted all the same: hosts have always met it so.
    tools.FindFirst(NarrowBstr(table) + ".ID=" + std::to_string(id));
    tools.Delete();
    tools.Requery();
  }
  RepositionToolCursor(tools, &position.get());
}

}  // namespace orxdb
