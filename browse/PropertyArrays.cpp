#include "browse/PropertyArrays.h"

#include "platform/framework/Exception.h"
#include "platform/framework/Text.h"
#include "values/StringVariants.h"

namespace orxdb {

SafeArray NewResultVector(VARTYPE elementType, std::size_t count) {
  SafeArray array;
  array.attach(SafeArrayCreateVector(elementType, 0, static_cast<ULONG>(count)));
  if (!array) throw CMemoryException();
  return array;
}

Variant FieldNames(const CDaoRecordset& records) {
  const int count = records.GetFieldCount();
  SafeArray array = NewResultVector(VT_BSTR, static_cast<std::size_t>(count));
  {
    const ArrayAccess<BSTR> names(array.get());
    CDaoFieldInfo info;
    for (int i = 0; i < count; ++i) {
      records.GetFieldInfo(i, info);
      names[static_cast<std::size_t>(i)] = WidenToBstr(info.m_strName).detach();
    }
  }
  return Variant::FromArray(VT_BSTR, std::move(array));
}

Variant FieldValues(const CDaoRecordset& records) {
  SafeArray array = NewResultVector(VT_VARIANT, static_cast<std::size_t>(records.GetFieldCount()));
  {
    // Filled in place: a walk spends its time here.
    const ArrayAccess<VARIANT> values(array.get());
    records.GetFieldValues(values.elements());
    for (VARIANT& value : values) WidenStringVariant(&value);
  }
  return Variant::FromArray(VT_VARIANT, std::move(array));
}

}  // namespace orxdb
