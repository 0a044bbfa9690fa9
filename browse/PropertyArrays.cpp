#include "browse/PropertyArrays.h"

#include <algorithm>

#include "platform/framework/Text.h"
#include "values/StringVariants.h"

namespace orxdb {

Variant FieldNames(const CDaoRecordset& records) {
  return MakeVector(VT_BSTR, static_cast<std::size_t>(records.GetFieldCount()), [&](std::size_t i) {
    return WidenToBstr(records.GetFieldName(static_cast<int>(i))).detach();
  });
}

Variant FieldValues(const CDaoRecordset& records) {
  SafeArray array = SafeArray::Vector(VT_VARIANT, static_cast<ULONG>(records.GetFieldCount()));
  {
    // Filled in place: a walk spends its time here.
    const ArrayAccess<VARIANT> values(array.get());
    records.GetFieldValues(values.elements());
    for (VARIANT& value : values) WidenStringVariant(&value);
  }
  return Variant::FromArray(VT_VARIANT, std::move(array));
}

void PropertyArrays::HandOut(VARIANT* outNames, VARIANT* outValues) && {
  if (values.empty()) return;
  *outNames = names.detach();
  *outValues = values.detach();
}

bool HasCurrentRecord(const CDaoRecordset& records) {
  return !records.IsEOF() && !records.IsBOF();
}

PropertyArrays ReadRecord(const CDaoRecordset& records) {
  return {.names = FieldNames(records), .values = FieldValues(records)};
}

SAFEARRAY* CarriedArray(const VARIANT& value, VARTYPE elementType) {
  SAFEARRAY* array = nullptr;
  if (value.vt & VT_ARRAY) {
    array = value.vt & VT_BYREF ? (value.pparray ? *value.pparray : nullptr) : value.parray;
  }
  VARTYPE held = VT_EMPTY;
  return SUCCEEDED(SafeArrayGetVartype(array, &held)) && held == elementType ? array : nullptr;
}

HRESULT FindProperty(std::string_view name, const VARIANT& names, const VARIANT& values,
                     VARIANT* property, LONG* index) {
  SAFEARRAY* nameArray = CarriedArray(names, VT_BSTR);
  SAFEARRAY* valueArray = CarriedArray(values, VT_VARIANT);
  if (SafeArrayGetDim(nameArray) != 1 || SafeArrayGetDim(valueArray) != 1) return S_OK;
  const ArrayAccess<BSTR> elements(nameArray);
  std::string narrow;
  const auto found = std::ranges::find_if(elements.elements(), [&](BSTR element) {
    narrow.clear();
    NarrowInto(View(element), narrow);
    return narrow == name;
  });
  if (found == elements.end()) return S_OK;
  SafeArrayGetLBound(nameArray, 1, index);
  *index += static_cast<LONG>(found - elements.begin());
  Variant value;
  SafeArrayGetElement(valueArray, index, value.ptr());
  return VariantCopy(property, &value.get());
}

}  // namespace orxdb
