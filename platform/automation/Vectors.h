// Lists for callers: arrays of one dimension from index 0, filled position by position.
//
//   Variant names = MakeVector(VT_BSTR, texts.size(),
//                              [&](std::size_t i) { return Bstr(texts[i]).detach(); });
#pragma once

#include <type_traits>
#include <utility>

#include "platform/automation/SafeArray.h"
#include "platform/automation/Variant.h"

namespace orxdb {

/// VT_ARRAY | `elementType` with `count` elements, each what `make` gives for its position; the
/// array owns it. Throws std::bad_alloc.
template <typename Make>
Variant MakeVector(VARTYPE elementType, std::size_t count, Make&& make) {
  SafeArray array = SafeArray::Vector(elementType, static_cast<ULONG>(count));
  {
    const ArrayAccess<std::invoke_result_t<Make&, std::size_t>> elements(array.get());
    for (std::size_t i = 0; i < count; ++i) elements[i] = make(i);
  }
  return Variant::FromArray(elementType, std::move(array));
}

/// VT_ARRAY | VT_UI1 with those bytes, a text's or a list's. Throws likewise.
template <typename Bytes>
Variant MakeByteVector(const Bytes& bytes) {
  return MakeVector(VT_UI1, bytes.size(),
                    [&](std::size_t i) { return static_cast<BYTE>(bytes[i]); });
}

}  // namespace orxdb
