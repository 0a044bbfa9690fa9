#include "lookups/ToolKinds.h"

#include "platform/framework/Text.h"

namespace orxdb {

HRESULT PrimaryOperation(CDaoRecordset& toolTypes, const std::string& table, BSTR* operation) {
  if (!toolTypes.FindFirst("TOOLTABLE_NAME = 'Q_" + table + "'")) return S_OK;
  const Variant value = toolTypes.GetFieldValue("PRIMARY_OP");
  if (value.type() != VT_BSTR && !value.isNull()) return E_FAIL;
  *operation = WidenToBstr(value.isNull() ? "" : Bytes(value.get().bstrVal)).detach();
  return S_OK;
}

Variant PreviewPicture(CDaoRecordset& toolTypes, const std::string& table) {
  if (!toolTypes.FindFirst("[TOOLTABLE_NAME] = 'Q_" + table + "'")) return {};
  Variant picture = toolTypes.GetFieldValue("ICON");
  return picture.isNull() ? Variant() : std::move(picture);
}

}  // namespace orxdb
