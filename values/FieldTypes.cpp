#include "values/FieldTypes.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <limits>
#include <string>

#include "platform/automation/Ascii.h"
#include "platform/automation/Variant.h"
#include "values/FieldConversions.h"

namespace orxdb {
namespace {

using namespace conversion;

constexpr VARTYPE kBytes = VT_ARRAY | VT_UI1;

void ReadComputed(const Field& field, const CellView& cell, VARIANT& value) {
  ComputedType(cell).read(field, cell, value);
}

template <typename Number>
constexpr NumberRange kRangeOf = {std::numeric_limits<Number>::lowest(),
                                  std::numeric_limits<Number>::max()};

constexpr FieldType kTypes[] = {
    // A computed column has no type: each value is read as one of the type that fits it.
    {.read = &ReadComputed, .store = &StoreBytes},
    {.code = dbBoolean,
     .variantType = VT_BOOL,
     .kind = ValueKind::Flag,
     .name = "BOOLEAN",
     .synonyms = {"bool", "bit", "yesno"},
     .size = 1,
     .read = &Read<VT_BOOL, &VARIANT::boolVal, FlagOf>,
     .store = &Store<VT_BOOL, &VARIANT::boolVal, FlagToStore>},
    {.code = dbByte,
     .variantType = VT_UI1,
     .kind = ValueKind::Number,
     .name = "BYTE",
     .synonyms = {"tinyint"},
     .size = 1,
     .range = kRangeOf<BYTE>,
     .read = &Read<VT_UI1, &VARIANT::bVal, WholeOf<BYTE>>,
     .store = &Store<VT_UI1, &VARIANT::bVal, WholeToStore>},
    {.code = dbInteger,
     .variantType = VT_I2,
     .kind = ValueKind::Number,
     .name = "SHORT",
     .synonyms = {"smallint"},
     .size = 2,
     .range = kRangeOf<SHORT>,
     .read = &Read<VT_I2, &VARIANT::iVal, WholeOf<SHORT>>,
     .store = &Store<VT_I2, &VARIANT::iVal, WholeToStore>},
    {.code = dbLong,
     .variantType = VT_I4,
     .kind = ValueKind::Number,
     .name = "LONG",
     .synonyms = {"integer", "int", "counter"},
     .size = 4,
     .range = kRangeOf<LONG>,
     .read = &Read<VT_I4, &VARIANT::lVal, WholeOf<LONG>>,
     .store = &Store<VT_I4, &VARIANT::lVal, WholeToStore>},
    {.code = dbCurrency,
     .variantType = VT_CY,
     .kind = ValueKind::Money,
     .name = "CURRENCY",
     .synonyms = {"money"},
     .size = 8,
     .comparable = false,
     .read = &Read<VT_CY, &VARIANT::cyVal, CurrencyOf>,
     .store = &Store<VT_CY, &VARIANT::cyVal, CurrencyToStore>},
    {.code = dbSingle,
     .variantType = VT_R4,
     .kind = ValueKind::Number,
     .name = "SINGLE",
     .size = 4,
     .range = kRangeOf<FLOAT>,
     .read = &Read<VT_R4, &VARIANT::fltVal, SingleOf>,
     .store = &Store<VT_R4, &VARIANT::fltVal, SingleToStore>},
    {.code = dbDouble,
     .variantType = VT_R8,
     .kind = ValueKind::Number,
     .name = "DOUBLE",
     .synonyms = {"float", "real", "numeric", "decimal", "number"},
     .size = 8,
     .read = &Read<VT_R8, &VARIANT::dblVal, NumberOf>,
     .store = &Store<VT_R8, &VARIANT::dblVal, DoubleToStore>},
    {.code = dbDate,
     .variantType = VT_DATE,
     .kind = ValueKind::Date,
     .name = "DATETIME",
     .synonyms = {"date", "timestamp"},
     .size = 8,
     .comparable = false,
     .read = &Read<VT_DATE, &VARIANT::date, DateOf>,
     .store = &Store<VT_DATE, &VARIANT::date, DateToStore>},
    {.code = dbBinary,
     .synonyms = {"binary", "varbinary"},
     .read = &Read<kBytes, &VARIANT::parray, BytesOf>,
     .store = &StoreBytes},
    {.code = dbText,
     .variantType = VT_BSTR,
     .kind = ValueKind::Text,
     .name = "TEXT",
     .read = &Read<VT_BSTR, &VARIANT::bstrVal, TextOf>,
     .store = &StoreText},
    {.code = dbLongBinary,
     .variantType = kBytes,
     .name = "LONGBINARY",
     .synonyms = {"blob", "image"},
     .comparable = false,
     .read = &Read<kBytes, &VARIANT::parray, BytesOf>,
     .store = &StoreBytes},
    {.code = dbMemo,
     .variantType = VT_BSTR,
     .kind = ValueKind::Text,
     .name = "LONGTEXT",
     .synonyms = {"memo", "clob"},
     .comparable = false,
     .read = &Read<VT_BSTR, &VARIANT::bstrVal, TextOf>,
     .store = &StoreText},
    {.code = dbGUID,
     .variantType = VT_CLSID,
     .name = "GUID",
     .size = 16,
     .comparable = false,
     .read = &Read<kBytes, &VARIANT::parray, BytesOf>,
     .store = &StoreBytes},
    {.code = dbBigInt,
     .kind = ValueKind::Number,
     .synonyms = {"bigint"},
     .size = 8,
     .read = &Read<VT_I8, &VARIANT::llVal, WholeOf<LONGLONG>>,
     .store = &Store<VT_I8, &VARIANT::llVal, WholeToStore>}};

/// The places of the types in the list by their codes; unknown codes lead to the first.
constexpr auto kPlaces = [] {
  std::array<unsigned char, dbBigInt + 1> places{};
  for (std::size_t i = 0; i < std::size(kTypes); ++i) {
    places[static_cast<std::size_t>(kTypes[i].code)] = static_cast<unsigned char>(i);
  }
  return places;
}();

const FieldType* FindDeclared(std::string_view word) {
  return std::ranges::find_if(kTypes, [&](const FieldType& type) {
    return EqualNoCase(type.name, word) || std::ranges::any_of(type.synonyms, [&](auto synonym) {
             return EqualNoCase(synonym, word);
           });
  });
}

}  // namespace

const FieldType& FieldTypeOf(short code) noexcept {
  const auto place = static_cast<std::size_t>(code);
  return kTypes[place < kPlaces.size() ? kPlaces[place] : 0];
}

const FieldType& ComputedType(const CellView& value) noexcept {
  switch (value.kind) {
    case CellView::Kind::Integer:
      return FieldTypeOf(std::in_range<LONG>(value.integer) ? dbLong : dbDouble);
    case CellView::Kind::Real:
      return FieldTypeOf(dbDouble);
    case CellView::Kind::Bytes:
      return FieldTypeOf(dbLongBinary);
    default:
      return FieldTypeOf(dbText);
  }
}

DeclaredType ParseDeclaredType(std::string_view declared) {
  const std::string_view word = declared.substr(0, declared.find_first_of(" ("));
  if (word.empty()) return {};
  const FieldType* known = FindDeclared(word);
  if (known != std::end(kTypes) && known->code != dbText) return {known->code, known->size};
  long size = 0;
  if (const std::size_t open = declared.find('('); open != declared.npos) {
    std::from_chars(declared.data() + open + 1, declared.data() + declared.size(), size);
  }
  return {dbText, size};
}

void ReadValue(const Field& field, const CellView& cell, VARIANT& value) {
  if (cell.kind == CellView::Kind::Null) {
    value.vt = VT_NULL;
  } else {
    field.Type().read(field, cell, value);
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
  return field.Type().store(field, *value);
}

}  // namespace orxdb
