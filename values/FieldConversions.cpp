#include "values/FieldConversions.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdio>
#include <cstring>

#include "platform/automation/Bstr.h"
#include "platform/automation/Dates.h"
#include "platform/automation/Vectors.h"
#include "platform/framework/DaoException.h"
#include "platform/framework/Text.h"

namespace orxdb::conversion {
namespace {

/// The number that a single's shortest decimal text means. Stored so, 0.1 is 0.1 to criteria and to
/// other programs and not 0.100000001490116.
double Decimal(float single) {
  char text[32];
  const auto end = std::to_chars(text, std::end(text), single).ptr;
  double number = single;
  std::from_chars(text, end, number);
  return number;
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

std::size_t CharacterCount(std::string_view bytes) {
  return static_cast<std::size_t>(std::count_if(bytes.begin(), bytes.end(), [](char byte) {
    return (static_cast<unsigned char>(byte) & 0xc0U) != 0x80U;
  }));
}

std::string ShortestText(double number) {
  std::array<char, 40> buffer{};
  return {buffer.data(), std::to_chars(buffer.data(), buffer.data() + buffer.size(), number).ptr};
}

std::string Range(const Field& field) {
  const auto& range = field.Type().range;
  return range ? ", which is " + ShortestText(range->lowest) + " to " + ShortestText(range->highest)
               : std::string();
}

/// What a value of the field's type is called.
std::string NameOf(const Field& field) {
  switch (field.Type().kind) {
    case ValueKind::Flag:
      return "yes or no";
    case ValueKind::Date:
      return "date";
    case ValueKind::Text:
      return "text";
    default:
      return "number";
  }
}

/// A value as messages show it, when it has a text of reasonable length.
std::string ShownText(const VARIANT& value) {
  Variant text;
  if (value.vt != VT_BSTR && SUCCEEDED(VariantChangeType(text.ptr(), &value, 0, VT_BSTR))) {
    return Narrow(View(text.get().bstrVal));
  }
  const std::string_view bytes = value.vt == VT_BSTR ? Bytes(value.bstrVal) : std::string_view();
  return bytes.empty() || bytes.size() > 60 ? "the value" : "'" + std::string(bytes) + "'";
}

}  // namespace

void Refuse(const Field& field, std::string_view why) {
  throw CDaoException(DaoError::BadValue,
                      "Field " + field.info.m_strName + ": " + std::string(why));
}

void RefuseCell(const Field& field) {
  Refuse(field, "the file holds a value that is none of the field's type");
}

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
  RefuseCell(field);
}

VARIANT_BOOL FlagOf(const Field& field, const CellView& cell) {
  return NumberOf(field, cell) != 0 ? VARIANT_TRUE : VARIANT_FALSE;
}

float SingleOf(const Field& field, const CellView& cell) {
  const double number = NumberOf(field, cell);
  if (!(std::abs(number) <= std::numeric_limits<float>::max())) RefuseCell(field);
  return static_cast<float>(number);
}

CY CurrencyOf(const Field& field, const CellView& cell) {
  const double scaled = std::nearbyint(NumberOf(field, cell) * 10000.0);
  if (!(std::abs(scaled) < 9.2e18)) RefuseCell(field);
  CY currency{};
  currency.int64 = static_cast<LONGLONG>(scaled);
  return currency;
}

DATE DateOf(const Field& field, const CellView& cell) {
  if (cell.kind != CellView::Kind::Text) return NumberOf(field, cell);
  DATE date = 0;
  if (!ParseDate(cell.text, date)) RefuseCell(field);
  return date;
}

BSTR TextOf(const Field&, const CellView& cell) {
  const bool isNumber = cell.kind == CellView::Kind::Integer || cell.kind == CellView::Kind::Real;
  return Bstr::FromBytes(isNumber ? std::string_view(NumberText(cell)) : cell.text).detach();
}

SAFEARRAY* BytesOf(const Field& field, const CellView& cell) {
  if (cell.kind != CellView::Kind::Bytes && cell.kind != CellView::Kind::Text) RefuseCell(field);
  return MakeByteVector(cell.text).detach().parray;
}

Variant Converted(const Field& field, const VARIANT& value, VARTYPE type) {
  Variant wide;
  const VARIANT* source = &value;
  if (value.vt == VT_BSTR) {
    wide = Variant::FromText(Widen(Bytes(value.bstrVal)));
    source = &wide.get();
  }
  // A whole number that only shares its bits with one of the wanted type is not stored as that.
  if (value.vt == VT_I1 || (value.vt >= VT_UI2 && value.vt <= VT_UINT)) {
    VariantChangeType(wide.ptr(), &value, 0, VT_DECIMAL);
    source = &wide.get();
  }
  Variant converted;
  const HRESULT status = VariantChangeType(converted.put(), source, 0, type);
  if (FAILED(status)) {
    Refuse(field, ShownText(value) + (status == DISP_E_OVERFLOW ? " is out of range" + Range(field)
                                                                : " is no " + NameOf(field)));
  }
  return converted;
}

SqlValue FlagToStore(const Field&, VARIANT_BOOL flag) {
  return std::int64_t{flag != VARIANT_FALSE ? -1 : 0};
}

SqlValue SingleToStore(const Field& field, float number) {
  return DoubleToStore(field, Decimal(number));
}

SqlValue DoubleToStore(const Field& field, double number) {
  if (!std::isfinite(number)) Refuse(field, "the value is no number");
  return number;
}

SqlValue CurrencyToStore(const Field&, CY amount) {
  return static_cast<double>(amount.int64) / 10000.0;
}

SqlValue DateToStore(const Field& field, DATE date) {
  SYSTEMTIME time{};
  if (!VariantTimeToSystemTime(date, &time)) Refuse(field, "the date does not exist");
  std::array<char, 48> iso{};
  std::snprintf(iso.data(), iso.size(), "%04d-%02d-%02d %02d:%02d:%02d", time.wYear, time.wMonth,
                time.wDay, time.wHour, time.wMinute, time.wSecond);
  return iso.data();
}

SqlValue StoreText(const Field& field, const VARIANT& value) {
  std::string text(value.vt == VT_BSTR
                       ? std::string(Bytes(value.bstrVal))
                       : Narrow(View(Converted(field, value, VT_BSTR).get().bstrVal)));
  if (field.info.m_lSize > 0 &&
      CharacterCount(text) > static_cast<std::size_t>(field.info.m_lSize)) {
    const std::size_t longest = static_cast<std::size_t>(field.info.m_lSize);
    Refuse(field, "the text is " + std::to_string(CharacterCount(text) - longest) +
                      " too long, of " + std::to_string(longest) + " characters at most");
  }
  return text;
}

SqlValue StoreBytes(const Field& field, const VARIANT& value) {
  if (value.vt != (VT_ARRAY | VT_UI1) || SafeArrayGetDim(value.parray) != 1) {
    Refuse(field, "the value is no array of bytes");
  }
  const ArrayAccess<BYTE> access(value.parray);
  return Blob(access.begin(), access.end());
}

}  // namespace orxdb::conversion
