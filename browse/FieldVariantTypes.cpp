#include "browse/FieldVariantTypes.h"

#include "browse/PropertyArrays.h"
#include "platform/framework/CallNotes.h"
#include "platform/framework/Text.h"
#include "values/FieldTypes.h"

namespace orxdb {
HRESULT GetFieldVariantType(CToolDbData& data, const std::string& table, const std::string& field,
                            VARTYPE& type) {
  try {
    const CToolTableInfo* tools = data.FindToolTable(table);
    if (!tools) return S_OK;
    CDaoFieldInfo info;
    tools->ToolSet().GetFieldInfo(field, info);
    type = FieldTypeOf(info.m_nType).variantType;
    return type == VT_NULL ? E_FAIL : S_OK;
  } catch (...) {
    NoteCurrentException();
    return E_FAIL;
  }
}

Variant FieldVariantTypes(const CDaoRecordset& tools, BSTR table, IOrxDbObj& own) {
  CDaoFieldInfo info;
  return MakeVector(VT_I2, static_cast<std::size_t>(tools.GetFieldCount()), [&](std::size_t i) {
    tools.GetFieldInfo(static_cast<int>(i), info);
    USHORT type = VT_EMPTY;
    own.GetFieldType(table, WidenToBstr(info.m_strName).get(), &type);
    return type;
  });
}

}  // namespace orxdb
