#include "host/transfer/FieldValues.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <utility>

#include "host/library/Names.h"
#include "host/library/PropertyText.h"
#include "host/transfer/Synonyms.h"
#include "platform/framework/Text.h"

namespace orxdb {
namespace {

bool HasWord(const std::string& name, const auto& words) {
  return std::ranges::any_of(words, [&name](std::string_view word) { return HasPart(name, word); });
}

bool IsReal(const Property& property) {
  return property.type == VT_R8 || property.type == VT_R4;
}

bool IsWhole(const Property& property) {
  return property.type == VT_UI1 || property.type == VT_I2 || property.type == VT_I4;
}

bool IsAngle(const Property& property) {
  return HasPart(property.name, "Angle");
}

double ValueOf(const std::string& number) {
  double value = 0;
  std::from_chars(number.data(), number.data() + number.size(), value);
  return value;
}

/// Spreadsheets write whole numbers with decimals.
std::string WithoutZeroDecimals(const std::string& number) {
  const std::size_t point = number.find('.');
  const bool zeros =
      point != number.npos && point > 0 && number.find_first_not_of('0', point + 1) == number.npos;
  return zeros ? number.substr(0, point) : number;
}

/// Flags in German, which are not the database's.
std::string FlagText(const std::string& text) {
  constexpr auto kYes = std::to_array<std::string_view>({"ja", "j", "y", "wahr", "x"});
  constexpr auto kNo = std::to_array<std::string_view>({"nein", "n", "falsch"});
  const std::string key = NameKey(text);
  if (std::ranges::find(kYes, key) != kYes.end()) return "yes";
  if (std::ranges::find(kNo, key) != kNo.end()) return "no";
  return text;
}

void CheckSign(const Property& property, const std::string& number) {
  const double value = ValueOf(number);
  // A tip may be sharp.
  const bool mayBeZero = !HasPart(property.name, "Diameter") || property.name.starts_with("Tip");
  if (value < 0) throw HostError("is negative");
  if (value == 0 && !mayBeZero) throw HostError("is zero");
}

}  // namespace

FieldValues::FieldValues(ToolDatabase& database, std::string table)
    : m_database(database), m_table(std::move(table)) {}

bool FieldValues::IsLength(const Property& property) {
  constexpr auto kWords =
      std::to_array<std::string_view>({"Diameter", "Length", "Width", "Radius", "Pitch", "Bore",
                                       "Overhang", "Height", "Depth", "Thickness", "Tap_Drill"});
  return IsReal(property) && !IsAngle(property) && HasWord(property.name, kWords);
}

Unit FieldValues::UnitOf(const std::string& text, Unit column) {
  try {
    const Unit own = ReadQuantity(text).unit;
    return own == Unit::None ? column : own;
  } catch (const HostError&) {
    return Unit::None;  // told when the value is read
  }
}

Assignment FieldValues::Read(const Property& property, const std::string& text, Unit column,
                             const ToolUnit& unit) {
  std::string plain = text;
  if (IsReal(property) || IsWhole(property) || property.type == VT_CY) {
    plain = NumberOf(property, text, column, unit);
  } else if (property.type == VT_BOOL) {
    plain = FlagText(text);
  } else if (property.type == VT_BSTR) {
    CheckLength(property, text);
  }
  try {
    Variant value = ParseValue(property, plain);
    Cell shown = Cell::Of(value.get());
    return {property.name, std::move(value), std::move(shown)};
  } catch (const HostError& e) {
    // Without the beginning, which the caller writes with the text as it was.
    const std::string why = e.what();
    const std::string beginning = property.name + ": " + Cited(plain) + ' ';
    throw HostError(why.substr(beginning.size(), why.size() - beginning.size() - 1));
  }
}

std::string FieldValues::NumberOf(const Property& property, const std::string& text, Unit column,
                                  const ToolUnit& unit) {
  Quantity quantity = ReadQuantity(text);
  if (quantity.unit == Unit::None) quantity.unit = column;
  const std::string unitName(NameOf(quantity.unit));
  if (IsLength(property)) {
    CheckSign(property, quantity.number);
    if (quantity.unit == Unit::Degree) throw HostError("is an angle, not a length");
    if (quantity.unit != Unit::None) {
      if (unit.unit == Unit::None) throw HostError("has a unit, which its kind of tool has not");
      return Converted(quantity.number, quantity.unit, unit.unit);
    }
    if (quantity.fraction && unit.unit != Unit::Inch) {
      throw HostError("is a fraction, as of an inch, without its unit");
    }
    if (unit.fromLengths) throw HostError("has no unit, although others of the tool have one");
    return quantity.number;
  }
  const bool suits =
      quantity.unit == Unit::None || (quantity.unit == Unit::Degree && IsAngle(property));
  if (!suits) throw HostError("has the unit " + unitName + ", which does not suit it");
  if (!IsWhole(property)) return quantity.number;
  if (property.name.ends_with('#')) CheckSign(property, quantity.number);
  return WithoutZeroDecimals(quantity.number);
}

const std::optional<std::vector<std::string>>& FieldValues::ListOf(const Property& property) {
  auto known = m_lists.find(property.name);
  if (known == m_lists.end()) {
    std::optional<std::vector<std::string>> list;
    if (const auto values = m_database.PermissibleValues(m_table, property.name)) {
      list.emplace();
      for (const Cell& value : *values) list->push_back(value.text);
    }
    known = m_lists.emplace(property.name, std::move(list)).first;
  }
  return known->second;
}

bool FieldValues::HasList(const Property& property) {
  return ListOf(property).has_value();
}

std::optional<Assignment> FieldValues::Choose(const Property& property, const std::string& text) {
  const std::vector<std::string>& list = *ListOf(property);
  const auto entry = FindNamed(list, text, std::identity());
  if (entry != list.end()) return LookedUp(property.name, *entry);
  // The component's own word for a tap without a head.
  if (property.name == "TappingHead" && text == "Absent") {
    return Assignment{property.name, Variant::Null(), {}};
  }
  const std::string key = NameKey(text);
  std::vector<std::string> meant;
  std::ranges::copy_if(list, std::back_inserter(meant),
                       [&key](const std::string& known) { return NameKey(known) == key; });
  for (const std::string_view synonym : EntriesMeantBy(property.name, key)) {
    if (!meant.empty()) break;
    const auto known = FindNamed(list, synonym, std::identity());
    if (known != list.end()) meant.push_back(*known);
  }
  if (meant.size() > 1) throw HostError("may be any of " + Listed(meant));
  if (meant.empty()) return std::nullopt;
  return LookedUp(property.name, meant.front());
}

std::string FieldValues::NearestIn(const Property& property, const std::string& text) {
  return Listed(NearestNames(text, *ListOf(property)));
}

void FieldValues::CheckLength(const Property& property, const std::string& text) {
  const LONG longest = LimitsOf(property).longest;
  const auto length = std::ranges::count_if(
      text, [](char c) { return (static_cast<unsigned char>(c) & 0xc0U) != 0x80U; });
  if (longest > 0 && length > longest) {
    throw HostError("is " + std::to_string(length - longest) + " too long, of " +
                    std::to_string(longest) + " characters at most");
  }
}

const FieldLimits& FieldValues::LimitsOf(const Property& property) {
  auto known = m_limits.find(property.name);
  if (known == m_limits.end()) {
    known = m_limits.emplace(property.name, m_database.Limits(m_table, property.name)).first;
  }
  return known->second;
}

}  // namespace orxdb
