// Owner of a variant.
//
//   Variant value = Variant::FromText(u"HSS");
//   object->GetValue(value.put());     // clears first, then takes the callee's value
//   *out = value.detach();             // hands it over, leaving an empty one
#pragma once

#include <new>
#include <string_view>
#include <type_traits>
#include <utility>

#include "platform/automation/Bstr.h"
#include "platform/automation/SafeArray.h"
#include "platform/automation/Variants.h"

namespace orxdb {

/// Owns one variant; empty by default. Copies are explicit.
class Variant {
 public:
  Variant() noexcept = default;
  Variant(Variant&& other) noexcept : m_value(other.detach()) {}
  Variant& operator=(Variant&& other) noexcept {
    if (this != &other) {
      clear();
      m_value = other.detach();
    }
    return *this;
  }
  ~Variant() { clear(); }

  /// A deep copy. Throws std::bad_alloc; a value that cannot be copied (an impossible type) gives
  /// an empty one.
  static Variant CopyOf(const VARIANT& value) {
    Variant copy;
    if (VariantCopy(&copy.m_value, &value) == E_OUTOFMEMORY) throw std::bad_alloc();
    return copy;
  }
  Variant Copy() const { return CopyOf(m_value); }

  static Variant Null() noexcept { return OfType(VT_NULL); }
  static Variant FromBool(bool value) noexcept {
    return Make(VT_BOOL, &VARIANT::boolVal, value ? VARIANT_TRUE : VARIANT_FALSE);
  }
  static Variant FromUI1(BYTE value) noexcept { return Make(VT_UI1, &VARIANT::bVal, value); }
  static Variant FromI2(SHORT value) noexcept { return Make(VT_I2, &VARIANT::iVal, value); }
  static Variant FromI4(LONG value) noexcept { return Make(VT_I4, &VARIANT::lVal, value); }
  static Variant FromR4(FLOAT value) noexcept { return Make(VT_R4, &VARIANT::fltVal, value); }
  static Variant FromR8(DOUBLE value) noexcept { return Make(VT_R8, &VARIANT::dblVal, value); }
  static Variant FromCy(CY value) noexcept { return Make(VT_CY, &VARIANT::cyVal, value); }
  static Variant FromDate(DATE value) noexcept { return Make(VT_DATE, &VARIANT::date, value); }
  /// Takes the string over, null too.
  static Variant FromBstr(Bstr string) noexcept {
    return Make(VT_BSTR, &VARIANT::bstrVal, string.detach());
  }
  /// Throws std::bad_alloc.
  static Variant FromText(std::u16string_view text) { return FromBstr(Bstr(text)); }
  /// Takes an array with elements of `elementType` over.
  static Variant FromArray(VARTYPE elementType, SafeArray array) noexcept {
    return Make(static_cast<VARTYPE>(VT_ARRAY | elementType), &VARIANT::parray, array.detach());
  }

  VARTYPE type() const noexcept { return m_value.vt; }
  bool empty() const noexcept { return type() == VT_EMPTY; }
  bool isNull() const noexcept { return type() == VT_NULL; }

  const VARIANT& get() const noexcept { return m_value; }
  /// Clears the value and gives the place for another.
  VARIANT* put() noexcept {
    clear();
    return &m_value;
  }
  /// The value itself, to be read and changed in place.
  VARIANT* ptr() noexcept { return &m_value; }
  [[nodiscard]] VARIANT detach() noexcept { return std::exchange(m_value, VARIANT{}); }
  /// Takes the value over and leaves an empty one behind.
  void attach(VARIANT& value) noexcept {
    clear();
    m_value = std::exchange(value, VARIANT{});
  }
  void clear() noexcept {
    if (!OwnsNothing(m_value.vt)) VariantClear(&m_value);
    m_value.vt = VT_EMPTY;
  }

 private:
  static Variant OfType(VARTYPE type) noexcept {
    Variant variant;
    variant.m_value.vt = type;
    return variant;
  }
  template <typename T>
  static Variant Make(VARTYPE type, T VARIANT::*member, std::type_identity_t<T> value) noexcept {
    Variant variant = OfType(type);
    variant.m_value.*member = value;
    return variant;
  }

  VARIANT m_value{};
};

}  // namespace orxdb
