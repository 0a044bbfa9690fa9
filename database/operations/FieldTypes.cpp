#include "database/operations/FieldTypes.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <limits>
#include <optional>
#include <string>

#include "database/operations/DaoException.h"
#include "platform/automation/Bstr.h"
#include "platform/automation/Dates.h"
#include "platform/automation/SafeArray.h"
#include "platform/automation/Variant.h"
#include "platform/framework/Text.h"

namespace orxdb {
namespace {

struct TypeName {
  std::string_view word;
  short type;
  long size;  ///< bytes of a value; 0 where the declaration tells
};

constexpr std::array kTypeNames = {
    TypeName{"boolean", dbBoolean, 1}, TypeName{"bool", dbBoolean, 1},
    TypeName{"bit", dbBoolean, 1},     TypeName{"yesno", dbBoolean, 1},
    TypeName{"byte", dbByte, 1},       TypeName{"tinyint", dbByte, 1},
    TypeName{"short", dbInteger, 2},   TypeName{"smallint", dbInteger, 2},
    TypeName{"long", dbLong, 4},       TypeName{"integer", dbLong, 4},
    TypeName{"int", dbLong, 4},        TypeName{"counter", dbLong, 4},
    TypeName{"bigint", dbBigInt, 8},   TypeName{"currency", dbCurrency, 8},
    TypeName{"money", dbCurrency, 8},  TypeName{"single", dbSingle, 4},
    TypeName{"double", dbDouble, 8},   TypeName{"float", dbDouble, 8},
    TypeName{"real", dbDouble, 8},     TypeName{"numeric", dbDouble, 8},
    TypeName{"decimal", dbDouble, 8},  TypeName{"number", dbDouble, 8},
    TypeName{"datetime", dbDate, 8},   TypeName{"date", dbDate, 8},
    TypeName{"timestamp", dbDate, 8},  TypeName{"longbinary", dbLongBinary, 0},
    TypeName{"blob", dbLongBinary, 0}, TypeName{"image", dbLongBinary, 0},
    TypeName{"binary", dbBinary, 0},   TypeName{"varbinary", dbBinary, 0},
    TypeName{"longtext", dbMemo, 0},   TypeName{"memo", dbMemo, 0},
    TypeName{"clob", dbMemo, 0},       TypeName{"guid", dbGUID, 16}};

[[noreturn]] void Refuse(const Field& field, const char* why) {
  throw CDaoException(DaoError::BadValue, "Field " + field.info.m_strName + ": " + why);
}

constexpr const char* kUnreadable = "the file holds a value that is none of the field's type";

/// The cell as a number; text counts when all of it is one.
double NumberOf(const Field& field, const CellView& cell) {
  switch (cell.kind) {
    case CellView::Kind::Integer:
      return static_cast<double>(cell.integer);
    case CellView::Kind::Real:
      return cell.real;
    case CellView::Kind::Text: {
      double number = 0;
      const char* end = cell.text.data() + cell.text.size();
      const auto result = std::from_chars(cell.text.data(), end, number);
      if (result.ec == std::errc() && result.ptr == end) return number;
      break;
    }
    default:
      break;
  }
  Refuse(field, kUnreadable);
}

template <typename Whole>
Whole WholeOf(const Field& field, const CellView& cell) {
  // The double holds every value of the types up to 32 bits exactly.
  const double number = std::nearbyint(NumberOf(field, cell));
  if (!(number >= static_cast<double>(std::numeric_limits<Whole>::min()) &&
        number <= static_cast<double>(std::numeric_limits<Whole>::max()))) {
    Refuse(field, kUnreadable);
  }
  return static_cast<Whole>(number);
}

/// The number that a single's shortest decimal text means. Stored so, 0.1 is 0.1 to criteria and to
/// other programs and not 0.100000001490116.
double Decimal(float single) {
  char text[32];
  const auto end = std::to_chars(text, std::end(text), single).ptr;
  double number = single;
  std::from_chars(text, end, number);
  return number;
}

float SingleOf(const Field& field, const CellView& cell) {
  const double number = NumberOf(field, cell);
  if (!(std::abs(number) <= std::numeric_limits<float>::max())) Refuse(field, kUnreadable);
  return static_cast<float>(number);
}

CY CurrencyOf(const Field& field, const CellView& cell) {
  const double scaled = std::nearbyint(NumberOf(field, cell) * 10000.0);
  if (!(std::abs(scaled) < 9.2e18)) Refuse(field, kUnreadable);
  CY currency{};
  currency.int64 = static_cast<LONGLONG>(scaled);
  return currency;
}

/// ISO text; a number counts as days.
DATE DateOf(const Field& field, const CellView& cell) {
  if (cell.kind != CellView::Kind::Text) return NumberOf(field, cell);
  DATE date = 0;
  if (!ParseDate(cell.text, date)) Refuse(field, kUnreadable);
  return date;
}

BSTR NarrowString(std::string_view bytes) {
  BSTR text = SysAllocStringByteLen(bytes.data(), static_cast<UINT>(bytes.size()));
  if (text == nullptr) throw CMemoryException();
  return text;
}

std::string NumberText(const CellView& cell) {
  std::array<char, 40> buffer{};
  const auto result =
      cell.kind == CellView::Kind::Integer
          ? std::to_chars(buffer.data(), buffer.data() + buffer.size(), cell.integer)
          : std::to_chars(buffer.data(), buffer.data() + buffer.size(), cell.real,
                          std::chars_format::general, 15);
  return {buffer.data(), result.ptr};
}

SAFEARRAY* ByteArray(std::string_view bytes) {
  SafeArray array = SafeArray::Vector(VT_UI1, static_cast<ULONG>(bytes.size()));
  if (!bytes.empty()) {
    const ArrayAccess<BYTE> access(array.get());
    std::memcpy(access.elements().data(), bytes.data(), bytes.size());
  }
  return array.detach();
}

void ReadComputed(const CellView& cell, VARIANT& value) {
  switch (cell.kind) {
    case CellView::Kind::Integer:
      if (cell.integer == static_cast<LONG>(cell.integer)) {
        value.vt = VT_I4;
        value.lVal = static_cast<LONG>(cell.integer);
      } else {
        value.vt = VT_R8;
        value.dblVal = static_cast<double>(cell.integer);
      }
      break;
    case CellView::Kind::Real:
      value.vt = VT_R8;
      value.dblVal = cell.real;
      break;
    case CellView::Kind::Text:
      value.bstrVal = NarrowString(cell.text);
      value.vt = VT_BSTR;
      break;
    default:
      value.parray = ByteArray(cell.text);
      value.vt = VT_ARRAY | VT_UI1;
  }
}

/// The given value as the wanted variant type, text read as a number first where need be.
Variant Converted(const Field& field, const VARIANT& value, VARTYPE type) {
  Variant wide;
  const VARIANT* source = &value;
  if (value.vt == VT_BSTR) {
    wide = Variant::FromText(Widen(Bytes(value.bstrVal)));
    source = &wide.get();
  }
  Variant converted;
  if (FAILED(VariantChangeType(converted.put(), source, 0, type))) {
    Refuse(field, "the value is none of the field's type");
  }
  return converted;
}

std::size_t CharacterCount(std::string_view bytes) {
  return static_cast<std::size_t>(std::count_if(bytes.begin(), bytes.end(), [](char byte) {
    return (static_cast<unsigned char>(byte) & 0xc0U) != 0x80U;
  }));
}

std::string TextToStore(const Field& field, const VARIANT& value) {
  std::string text(value.vt == VT_BSTR
                       ? std::string(Bytes(value.bstrVal))
                       : Narrow(View(Converted(field, value, VT_BSTR).get().bstrVal)));
  if (field.info.m_lSize > 0 &&
      CharacterCount(text) > static_cast<std::size_t>(field.info.m_lSize)) {
    Refuse(field, "the text is too long");
  }
  return text;
}

std::string DateToStore(const Field& field, const VARIANT& value) {
  SYSTEMTIME time{};
  if (!VariantTimeToSystemTime(Converted(field, value, VT_DATE).get().date, &time)) {
    Refuse(field, "the date does not exist");
  }
  std::array<char, 48> iso{};
  std::snprintf(iso.data(), iso.size(), "%04d-%02d-%02d %02d:%02d:%02d", time.wYear, time.wMonth,
                time.wDay, time.wHour, time.wMinute, time.wSecond);
  return iso.data();
}

Blob BytesToStore(const Field& field, const VARIANT& value) {
  if (value.vt != (VT_ARRAY | VT_UI1) || SafeArrayGetDim(value.parray) != 1) {
    Refuse(field, "the value is no array of bytes");
  }
  const ArrayAccess<BYTE> access(value.parray);
  return {access.begin(), access.end()};
}

double RealToStore(const Field& field, double real) {
  if (!std::isfinite(real)) Refuse(field, "the value is no number");
  return real;
}

}  // namespace

DeclaredType ParseDeclaredType(std::string_view declared) {
  const std::string folded = FoldedName(declared);
  const std::string word = folded.substr(0, folded.find_first_of(" ("));
  if (word.empty()) return {};
  const auto* known = std::find_if(kTypeNames.begin(), kTypeNames.end(),
                                   [&](const TypeName& each) { return each.word == word; });
  if (known != kTypeNames.end()) return {known->type, known->size};
  long size = 0;
  const std::size_t open = folded.find('(');
  if (open != std::string::npos) {
    std::from_chars(folded.data() + open + 1, folded.data() + folded.size(), size);
  }
  return {dbText, size};
}

void ReadValue(const Field& field, const CellView& cell, VARIANT& value) {
  if (cell.kind == CellView::Kind::Null) {
    value.vt = VT_NULL;
    return;
  }
  switch (field.info.m_nType) {
    case dbBoolean:
      value.boolVal = NumberOf(field, cell) != 0 ? VARIANT_TRUE : VARIANT_FALSE;
      value.vt = VT_BOOL;
      break;
    case dbByte:
      value.bVal = WholeOf<BYTE>(field, cell);
      value.vt = VT_UI1;
      break;
    case dbInteger:
      value.iVal = WholeOf<SHORT>(field, cell);
      value.vt = VT_I2;
      break;
    case dbLong:
      value.lVal = WholeOf<LONG>(field, cell);
      value.vt = VT_I4;
      break;
    case dbBigInt:
      value.llVal = cell.kind == CellView::Kind::Integer
                        ? cell.integer
                        : static_cast<LONGLONG>(WholeOf<LONG>(field, cell));
      value.vt = VT_I8;
      break;
    case dbCurrency:
      value.cyVal = CurrencyOf(field, cell);
      value.vt = VT_CY;
      break;
    case dbSingle:
      value.fltVal = SingleOf(field, cell);
      value.vt = VT_R4;
      break;
    case dbDouble:
      value.dblVal = NumberOf(field, cell);
      value.vt = VT_R8;
      break;
    case dbDate:
      value.date = DateOf(field, cell);
      value.vt = VT_DATE;
      break;
    case dbText:
    case dbMemo:
      value.bstrVal =
          NarrowString(cell.kind == CellView::Kind::Text || cell.kind == CellView::Kind::Bytes
                           ? cell.text
                           : std::string_view(NumberText(cell)));
      value.vt = VT_BSTR;
      break;
    case dbBinary:
    case dbLongBinary:
    case dbGUID:
      if (cell.kind != CellView::Kind::Bytes && cell.kind != CellView::Kind::Text) {
        Refuse(field, kUnreadable);
      }
      value.parray = ByteArray(cell.text);
      value.vt = VT_ARRAY | VT_UI1;
      break;
    default:
      ReadComputed(cell, value);
  }
}

SqlValue StoreValue(const Field& field, const VARIANT& given) {
  Variant own;
  const VARIANT* value = &given;
  if ((given.vt & VT_BYREF) != 0) {
    if (FAILED(VariantCopyInd(own.put(), &given))) Refuse(field, "the value cannot be read");
    value = &own.get();
  }
  if (value->vt == VT_EMPTY || value->vt == VT_NULL) return std::monostate();
  switch (field.info.m_nType) {
    case dbBoolean:
      return std::int64_t{Converted(field, *value, VT_BOOL).get().boolVal != 0 ? -1 : 0};
    case dbByte:
      return std::int64_t{Converted(field, *value, VT_UI1).get().bVal};
    case dbInteger:
      return std::int64_t{Converted(field, *value, VT_I2).get().iVal};
    case dbLong:
      return std::int64_t{Converted(field, *value, VT_I4).get().lVal};
    case dbBigInt:
      return std::int64_t{Converted(field, *value, VT_I8).get().llVal};
    case dbCurrency:
      return static_cast<double>(Converted(field, *value, VT_CY).get().cyVal.int64) / 10000.0;
    case dbSingle:
      return RealToStore(field, Decimal(Converted(field, *value, VT_R4).get().fltVal));
    case dbDouble:
      return RealToStore(field, Converted(field, *value, VT_R8).get().dblVal);
    case dbDate:
      return DateToStore(field, *value);
    case dbText:
    case dbMemo:
      return TextToStore(field, *value);
    default:
      return BytesToStore(field, *value);
  }
}

}  // namespace orxdb
