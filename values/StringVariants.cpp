#include "values/StringVariants.h"

#include "platform/automation/Bstr.h"
#include "platform/framework/Text.h"

namespace orxdb {
namespace {

bool HoldsString(const VARIANT* value) {
  return value && value->vt == VT_BSTR && value->bstrVal != nullptr;
}

/// Frees the value's string and gives it the other one.
void ReplaceString(VARIANT& value, Bstr string) {
  SysFreeString(value.bstrVal);
  value.bstrVal = string.detach();
}

}  // namespace

bool NarrowStringVariant(VARIANT* value) {
  if (!HoldsString(value)) return false;
  ReplaceString(*value, Bstr::FromBytes(NarrowBstr(value->bstrVal)));
  return true;
}

bool WidenStringVariant(VARIANT* value) {
  if (!HoldsString(value)) return false;
  ReplaceString(*value, WidenToBstr(Bytes(value->bstrVal)));
  return true;
}

}  // namespace orxdb
