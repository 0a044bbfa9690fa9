#include "browse/FieldVariantTypes.h"

#include "browse/PropertyArrays.h"
#include "platform/framework/Text.h"
#include "resources/ComponentText.h"

namespace orxdb {
namespace {

/// VT_NULL for database types that have no variant type.
VARTYPE VariantTypeOf(short databaseType) {
  switch (databaseType) {
    case dbBoolean:
      return VT_BOOL;
    case dbByte:
      return VT_UI1;
    case dbInteger:
      return VT_I2;
    case dbLong:
      return VT_I4;
    case dbCurrency:
      return VT_CY;
    case dbSingle:
      return VT_R4;
    case dbDouble:
      return VT_R8;
    case dbDate:
      return VT_DATE;
    case dbText:
    case dbMemo:
      return VT_BSTR;
    case dbLongBinary:
      return VT_ARRAY | VT_UI1;
    case dbGUID:
      return VT_CLSID;
    default:
      return VT_NULL;
  }
}

}  // namespace

HRESULT GetFieldVariantType(CToolDbData& data, const std::string& table, const std::string& field,
                            VARTYPE& type) {
  try {
    const CToolTableInfo* tools = data.FindToolTable(table);
    if (!tools) return S_OK;
    CDaoFieldInfo info;
    tools->ToolSet().GetFieldInfo(field, info);
    type = VariantTypeOf(info.m_nType);
    return type == VT_NULL ? E_FAIL : S_OK;
  } catch (const CException& exception) {
    DropMessage(exception);
    return E_FAIL;
  } catch (...) {
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
