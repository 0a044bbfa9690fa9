#include "lookups/CatalogueColumns.h"

#include "database/ToolRules.h"
#include "platform/framework/Text.h"

namespace orxdb {
namespace {

bool FindRow(CDaoRecordset& catalogue, const std::string& table) {
  return catalogue.FindFirst("[TOOLTABLE_NAME] = '" + StoredQueryOf(table) + "'");
}

}  // namespace

HRESULT PrimaryOperation(CDaoRecordset& catalogue, const std::string& table, BSTR* operation) {
  if (!FindRow(catalogue, table)) return S_OK;
  const Variant value = catalogue.GetFieldValue("PRIMARY_OP");
  if (value.type() != VT_BSTR && !value.isNull()) return E_FAIL;
  *operation = WidenToBstr(value.isNull() ? "" : Bytes(value.get().bstrVal)).detach();
  return S_OK;
}

Variant PreviewPicture(CDaoRecordset& catalogue, const std::string& table) {
  if (!FindRow(catalogue, table)) return {};
  Variant picture = catalogue.GetFieldValue("ICON");
  return picture.isNull() ? Variant() : std::move(picture);
}

}  // namespace orxdb
