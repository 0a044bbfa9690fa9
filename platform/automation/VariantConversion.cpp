// Conversion of variants: every source is read as a number or as text, every target is written
// from one of them.
#include <algorithm>
#include <cmath>
#include <limits>
#include <new>
#include <string>
#include <string_view>
#include <variant>

#include "platform/automation/Ascii.h"
#include "platform/automation/Bstr.h"
#include "platform/automation/ComPtr.h"
#include "platform/automation/Decimals.h"
#include "platform/automation/SafeArray.h"
#include "platform/automation/Variant.h"
#include "platform/automation/VariantTypes.h"
#include "platform/automation/Variants.h"

namespace orxdb {
namespace {

constexpr VARTYPE kByteArray = VT_ARRAY | VT_UI1;

/// A real and the significant decimal digits that its type is good for.
struct Real {
  double value;
  int digits;
};
constexpr int kSingleDigits = 7;
constexpr int kDoubleDigits = 15;

using Number = std::variant<Int128, Real, Decimal>;

template <typename... Cases>
struct Overload : Cases... {
  using Cases::operator()...;
};
template <typename... Cases>
Overload(Cases...) -> Overload<Cases...>;

// ---- Reading ------------------------------------------------------------------------------

constexpr bool IsReal(VARTYPE type) {
  return type == VT_R4 || type == VT_R8 || type == VT_DATE || type == VT_BOOL;
}

constexpr bool IsUnsigned(VARTYPE type) {
  return type == VT_UI1 || type == VT_UI2 || type == VT_UI4 || type == VT_UI8 || type == VT_UINT;
}

constexpr bool IsWhole(VARTYPE type) {
  return type == VT_I2 || type == VT_I4 || type == VT_I1 || type == VT_I8 || type == VT_INT ||
         IsUnsigned(type);
}

HRESULT ReadText(BSTR string, VARTYPE target, Number& number) {
  const std::string ascii = ToAscii(View(string));
  NumberText text;
  if (!ParseNumber(ascii, text)) return DISP_E_TYPEMISMATCH;
  if (!IsReal(target)) {
    number = text.exact;
    return S_OK;
  }
  Real real{0, kDoubleDigits};
  if (!NumberToReal(text, real.value)) return DISP_E_OVERFLOW;
  number = real;
  return S_OK;
}

HRESULT ReadNumber(const VARIANT& source, VARTYPE target, Number& number) {
  switch (source.vt) {
    case VT_EMPTY:
      number = Int128{0};
      return S_OK;
    case VT_I1:
      number = Int128{static_cast<signed char>(source.cVal)};
      return S_OK;
    case VT_UI1:
      number = Int128{source.bVal};
      return S_OK;
    case VT_I2:
      number = Int128{source.iVal};
      return S_OK;
    case VT_UI2:
      number = Int128{source.uiVal};
      return S_OK;
    case VT_I4:
    case VT_INT:
      number = Int128{source.lVal};
      return S_OK;
    case VT_UI4:
    case VT_UINT:
      number = Int128{source.ulVal};
      return S_OK;
    case VT_I8:
      number = Int128{source.llVal};
      return S_OK;
    case VT_UI8:
      number = Int128{source.ullVal};
      return S_OK;
    case VT_BOOL:
      // Flags are numbers, also those that hold 1. Unsigned ones take their bits: true is the
      // largest value.
      number = Int128{source.boolVal};
      if (IsUnsigned(target)) {
        number = Int128{source.boolVal} & ((Int128{1} << (8 * SizeOfType(target))) - 1);
      }
      return S_OK;
    case VT_R4:
      number = Real{source.fltVal, kSingleDigits};
      return S_OK;
    case VT_R8:
    case VT_DATE:
      number = Real{source.dblVal, kDoubleDigits};
      return S_OK;
    case VT_CY:
      number = DecimalFromWhole(source.cyVal.int64, kCurrencyScale);
      return S_OK;
    case VT_DECIMAL: {
      Decimal decimal;
      if (!DecimalFromVariant(source.decVal, decimal)) return E_INVALIDARG;
      number = decimal;
      return S_OK;
    }
    case VT_BSTR:
      return ReadText(source.bstrVal, target, number);
    default:
      return DISP_E_TYPEMISMATCH;
  }
}

// ---- Numbers to numbers -------------------------------------------------------------------

double RoundHalfEven(double value) {
  const double below = std::floor(value);
  const double rest = value - below;
  const bool up = rest > 0.5 || (rest == 0.5 && std::fmod(below, 2.0) != 0);
  return up ? below + 1 : below;
}

/// The number in units of 10^-scale; false when it is far beyond 64 bits or not finite.
bool ToWhole(const Number& number, int scale, Int128& whole) {
  return std::visit(
      Overload{[&](Int128 value) { return DecimalToWhole(DecimalFromWhole(value), scale, whole); },
               [&](const Real& real) {
                 const double scaled = RoundHalfEven(real.value * std::pow(10.0, scale));
                 if (!(std::fabs(scaled) < 0x1p100)) return false;
                 whole = static_cast<Int128>(scaled);
                 return true;
               },
               [&](const Decimal& decimal) { return DecimalToWhole(decimal, scale, whole); }},
      number);
}

double ToReal(const Number& number) {
  return std::visit(Overload{[](Int128 value) { return static_cast<double>(value); },
                             [](const Real& real) { return real.value; },
                             [](const Decimal& decimal) {
                               NumberBuffer buffer;
                               NumberText text;
                               double value = 0;
                               ParseNumber(FormatDecimal(decimal, buffer), text);
                               NumberToReal(text, value);
                               return value;
                             }},
                    number);
}

bool ToDecimal(const Number& number, DECIMAL& result) {
  return std::visit(
      Overload{[&](Int128 value) { return DecimalToVariant(DecimalFromWhole(value), result); },
               [&](const Real& real) {
                 if (!std::isfinite(real.value)) return false;
                 // The digits that the type is good for, not the noise behind them.
                 NumberBuffer buffer;
                 NumberText text;
                 ParseNumber(FormatReal(real.value, real.digits, buffer), text);
                 return DecimalToVariant(text.exact, result);
               },
               [&](const Decimal& decimal) { return DecimalToVariant(decimal, result); }},
      number);
}

template <typename T>
HRESULT StoreWhole(const Number& number, T& place, int scale = 0) {
  Int128 whole = 0;
  if (!ToWhole(number, scale, whole) || whole < std::numeric_limits<T>::min() ||
      whole > std::numeric_limits<T>::max()) {
    return DISP_E_OVERFLOW;
  }
  place = static_cast<T>(whole);
  return S_OK;
}

HRESULT StoreNumber(const Number& number, VARTYPE type, VARIANT& target) {
  switch (type) {
    case VT_I1: {
      signed char value = 0;
      const HRESULT status = StoreWhole(number, value);
      target.cVal = static_cast<CHAR>(value);
      return status;
    }
    case VT_UI1:
      return StoreWhole(number, target.bVal);
    case VT_I2:
      return StoreWhole(number, target.iVal);
    case VT_UI2:
      return StoreWhole(number, target.uiVal);
    case VT_I4:
    case VT_INT:
      return StoreWhole(number, target.lVal);
    case VT_UI4:
    case VT_UINT:
      return StoreWhole(number, target.ulVal);
    case VT_I8:
      return StoreWhole(number, target.llVal);
    case VT_UI8:
      return StoreWhole(number, target.ullVal);
    case VT_CY:
      return StoreWhole(number, target.cyVal.int64, kCurrencyScale);
    case VT_R8:
      target.dblVal = ToReal(number);
      return S_OK;
    case VT_R4: {
      const double value = ToReal(number);
      if (std::fabs(value) > std::numeric_limits<float>::max()) return DISP_E_OVERFLOW;
      target.fltVal = static_cast<float>(value);
      return S_OK;
    }
    case VT_DATE: {
      SYSTEMTIME parts{};
      target.date = ToReal(number);
      return VariantTimeToSystemTime(target.date, &parts) ? S_OK : DISP_E_OVERFLOW;
    }
    case VT_BOOL:
      target.boolVal = ToReal(number) != 0 ? VARIANT_TRUE : VARIANT_FALSE;
      return S_OK;
    case VT_DECIMAL:
      return ToDecimal(number, target.decVal) ? S_OK : DISP_E_OVERFLOW;
    default:
      return DISP_E_TYPEMISMATCH;
  }
}

// ---- Text -----------------------------------------------------------------------------------

Bstr ToBstr(std::string_view ascii) {
  return Bstr(std::u16string(ascii.begin(), ascii.end()));
}

HRESULT StoreText(const VARIANT& source, USHORT flags, VARIANT& target) {
  NumberBuffer buffer;
  DateText date;
  std::string_view text;
  if (source.vt == VT_EMPTY) {
    text = "";
  } else if (source.vt == VT_BOOL) {
    const bool set = source.boolVal != VARIANT_FALSE;
    text = (flags & VARIANT_ALPHABOOL) ? (set ? "True" : "False") : (set ? "-1" : "0");
  } else if (source.vt == VT_DATE) {
    text = std::string_view(date.data(), FormatDate(source.date, date));
    if (text.empty()) return E_INVALIDARG;
  } else {
    Number number;
    const HRESULT status = ReadNumber(source, VT_BSTR, number);
    if (FAILED(status)) return status;
    text = std::visit(
        Overload{[&](Int128 value) { return FormatDecimal(DecimalFromWhole(value), buffer); },
                 [&](const Real& real) { return FormatReal(real.value, real.digits, buffer); },
                 [&](const Decimal& decimal) { return FormatDecimal(decimal, buffer); }},
        number);
  }
  target.bstrVal = ToBstr(text).detach();
  return S_OK;
}

/// Flag words and dates in text; S_FALSE when the text must be read as a number.
HRESULT StoreWords(BSTR string, VARTYPE type, VARIANT& target) {
  if (type == VT_DATE) {
    return ParseDate(ToAscii(View(string)), target.date) ? S_OK : DISP_E_TYPEMISMATCH;
  }
  if (type != VT_BOOL) return S_FALSE;
  const std::u16string_view text = Trim(View(string), u" \t\r\n");
  for (const bool value : {false, true}) {
    if (EqualNoCase(text, value ? u"true" : u"false") ||
        EqualNoCase(text, value ? u"#true#" : u"#false#")) {
      target.boolVal = value ? VARIANT_TRUE : VARIANT_FALSE;
      return S_OK;
    }
  }
  return S_FALSE;
}

// ---- Byte arrays and objects --------------------------------------------------------------

/// The bytes of a one-dimensional array become the bytes of a string, whatever they are.
HRESULT StoreBytesAsText(SAFEARRAY* array, VARIANT& target) {
  const ArrayAccess<char> bytes(array);
  if (!bytes || SafeArrayGetDim(array) != 1) return DISP_E_TYPEMISMATCH;
  target.bstrVal = Bstr::FromBytes({bytes.elements().data(), bytes.size()}).detach();
  return S_OK;
}

HRESULT StoreTextAsBytes(BSTR string, VARIANT& target) {
  SafeArray array = SafeArray::Vector(VT_UI1, SysStringByteLen(string));
  std::ranges::copy(Bytes(string), ArrayAccess<char>(array.get()).begin());
  target.parray = array.detach();
  return S_OK;
}

HRESULT StoreObject(IUnknown* object, VARTYPE type, VARIANT& target) {
  target.punkVal = nullptr;
  if (!object) return S_OK;
  void* found = nullptr;
  const IID& iid = type == VT_DISPATCH ? IID_IDispatch : IID_IUnknown;
  if (FAILED(object->QueryInterface(iid, &found))) return DISP_E_TYPEMISMATCH;
  target.byref = found;
  return S_OK;
}

/// The default property of an object.
HRESULT ReadDefaultProperty(IDispatch* object, VARIANT* value) {
  DISPPARAMS none{};
  const HRESULT status = object ? object->Invoke(DISPID_VALUE, IID_NULL, 0, DISPATCH_PROPERTYGET,
                                                 &none, value, nullptr, nullptr)
                                : DISP_E_TYPEMISMATCH;
  return SUCCEEDED(status) && value->vt != VT_DISPATCH ? S_OK : DISP_E_TYPEMISMATCH;
}

// ---- The whole ----------------------------------------------------------------------------

/// Writes `source`, which is of another type, to the value of the empty `target`.
HRESULT Convert(const VARIANT& source, USHORT flags, VARTYPE type, VARIANT& target) {
  if (type == VT_EMPTY || type == VT_NULL) {
    return source.vt == VT_ERROR || source.vt == VT_NULL ? DISP_E_TYPEMISMATCH : S_OK;
  }
  // Whole numbers of one size are the same bits, with a sign or without.
  if (IsWhole(source.vt) && IsWhole(type) && SizeOfType(source.vt) == SizeOfType(type)) {
    target.llVal = source.llVal;
    return S_OK;
  }
  const bool isObject = source.vt == VT_DISPATCH || source.vt == VT_UNKNOWN;
  if (type == VT_DISPATCH || type == VT_UNKNOWN) {
    return isObject ? StoreObject(source.punkVal, type, target) : DISP_E_TYPEMISMATCH;
  }
  if (source.vt == VT_DISPATCH && !(flags & VARIANT_NOVALUEPROP)) {
    Variant value;
    const HRESULT status = ReadDefaultProperty(source.pdispVal, value.ptr());
    if (FAILED(status)) return status;
    return VariantChangeType(&target, value.ptr(), flags, type);
  }
  if (source.vt == kByteArray && type == VT_BSTR) return StoreBytesAsText(source.parray, target);
  if (source.vt == VT_BSTR && type == kByteArray) return StoreTextAsBytes(source.bstrVal, target);
  if (type == VT_BSTR) return StoreText(source, flags, target);
  if (source.vt == VT_BSTR) {
    const HRESULT status = StoreWords(source.bstrVal, type, target);
    if (status != S_FALSE) return status;
  }
  Number number;
  const HRESULT status = ReadNumber(source, type, number);
  return FAILED(status) ? status : StoreNumber(number, type, target);
}

}  // namespace
}  // namespace orxdb

HRESULT VariantChangeTypeEx(VARIANT* target, const VARIANT* source, LCID, USHORT flags,
                            VARTYPE type) {
  if (!target || !source) return E_INVALIDARG;
  if (!orxdb::IsVariantType(type)) return DISP_E_BADVARTYPE;
  VARIANT view{};
  HRESULT status = orxdb::Dereference(*source, view);
  if (FAILED(status)) return status;
  if (view.vt == type) return VariantCopyInd(target, source);

  orxdb::Variant result;
  try {
    status = orxdb::Convert(view, flags, type, *result.ptr());
  } catch (const std::bad_alloc&) {
    status = E_OUTOFMEMORY;
  }
  // Only a finished value gets its type: until then the result owns nothing.
  if (FAILED(status)) return status;
  result.ptr()->vt = type;
  status = VariantClear(target);
  if (SUCCEEDED(status)) *target = result.detach();
  return status;
}

HRESULT VariantChangeType(VARIANT* target, const VARIANT* source, USHORT flags, VARTYPE type) {
  return VariantChangeTypeEx(target, source, 0, flags, type);
}
