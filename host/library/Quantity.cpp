#include "host/library/Quantity.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <optional>

#include "host/library/Cell.h"
#include "host/library/HostError.h"
#include "host/library/Names.h"
#include "platform/automation/Ascii.h"

namespace orxdb {
namespace {

// 25.4 mm, which has no exact binary form.
constexpr int kTenthsPerInch = 254;
constexpr std::string_view kDigits = "0123456789";

/// A unit, and how many of the unit that is kept it makes: `times` divided by `parts`, of which one
/// is 1, so that the result is the nearest number.
struct UnitName {
  std::string_view key;  ///< as NameKey gives it
  Unit unit;
  int times = 1;
  int parts = 1;
};

constexpr auto kUnits = std::to_array<UnitName>({
    {"mm", Unit::Millimetre},
    {"millimeter", Unit::Millimetre},
    {"millimeters", Unit::Millimetre},
    {"millimetre", Unit::Millimetre},
    {"millimetres", Unit::Millimetre},
    {"metric", Unit::Millimetre},
    {"metrisch", Unit::Millimetre},
    {"in", Unit::Inch},
    {"inch", Unit::Inch},
    {"inches", Unit::Inch},
    {"zoll", Unit::Inch},
    {"\"", Unit::Inch},
    {"″", Unit::Inch},
    {"”", Unit::Inch},
    {"''", Unit::Inch},
    {"imperial", Unit::Inch},
    {"°", Unit::Degree},
    {"º", Unit::Degree},
    {"deg", Unit::Degree},
    {"degree", Unit::Degree},
    {"degrees", Unit::Degree},
    {"grad", Unit::Degree},
    // Not units of a tool, but of single lengths
    {"cm", Unit::Millimetre, 10, 1},
    {"µm", Unit::Millimetre, 1, 1000},
    {"μm", Unit::Millimetre, 1, 1000},
    {"um", Unit::Millimetre, 1, 1000},
    {"thou", Unit::Inch, 1, 1000},
    {"mil", Unit::Inch, 1, 1000},
});

const UnitName* FindUnit(std::string_view text) {
  const auto unit = std::ranges::find(kUnits, NameKey(text), &UnitName::key);
  return unit == kUnits.end() ? nullptr : &*unit;
}

/// Wider than the numbers that are kept, so that converting a decimal ends on the nearest one.
long double ValueOf(std::string_view number) {
  long double value = 0;
  const auto [stop, error] = std::from_chars(number.data(), number.data() + number.size(), value);
  if (error == std::errc::result_out_of_range || std::isinf(static_cast<double>(value)))
    throw HostError("is beyond the range of numbers");
  if (error != std::errc() || stop != number.data() + number.size() || !std::isfinite(value)) {
    throw HostError("is no number");
  }
  return value;
}

/// Takes the separators of thousands away and makes the decimal sign a full stop.
std::string WithFullStop(std::string_view number) {
  const std::size_t comma = number.find(',');
  if (comma == number.npos) return std::string(number);
  const std::size_t point = number.find('.');
  const bool several = number.find(',', comma + 1) != number.npos;
  const bool grouped = several || (point != number.npos && point > comma);
  if (!grouped && point == number.npos) {
    const std::size_t first = number.find_first_of(kDigits);
    const std::size_t places = number.find_first_not_of(kDigits, comma + 1);
    const std::size_t decimals = std::min(places, number.size()) - comma - 1;
    // 1,000 is one or a thousand; 0,500 and 1,00 are not groups of three.
    if (decimals == 3 && number[first] != '0' && comma - first <= 3) {
      throw HostError("has a comma that may mean a decimal or a thousand");
    }
  }
  const char separator = grouped ? ',' : '.';
  std::string text;
  std::size_t sinceSeparator = 0;
  bool separated = false;
  for (const char c : number) {
    const bool digit = (kDigits.find(c) != kDigits.npos);
    if (!digit && c != '-' && c != '+' && separated && sinceSeparator != 3) {
      throw HostError("is no number");
    }
    if (c == separator) {
      separated = true;
      sinceSeparator = 0;
      continue;
    }
    if (!digit) separated = false;
    ++sinceSeparator;
    text += c == ',' ? '.' : c;
  }
  if (separated && sinceSeparator != 3) throw HostError("is no number");
  return text;
}

struct Vulgar {
  std::string_view sign;
  std::string_view fraction;
};
constexpr auto kVulgar = std::to_array<Vulgar>({{"½", " 1/2"},
                                                {"¼", " 1/4"},
                                                {"¾", " 3/4"},
                                                {"⅛", " 1/8"},
                                                {"⅜", " 3/8"},
                                                {"⅝", " 5/8"},
                                                {"⅞", " 7/8"}});

/// Whole numbers, parted as in "1 1/2".
std::optional<std::string> ReadFraction(std::string_view text) {
  const std::size_t slash = text.find('/');
  if (slash == text.npos) return std::nullopt;
  const bool negative = text.starts_with('-');
  if (negative) text.remove_prefix(1);
  const auto whole = [](std::string_view digits) {
    digits = Trim(digits, " ");
    if (digits.empty() || digits.size() > 9 || digits.find_first_not_of(kDigits) != digits.npos) {
      throw HostError("is no number");
    }
    return ValueOf(digits);
  };
  std::string_view numerator = Trim(text.substr(0, text.find('/')), " ");
  long double count = 0;
  if (const std::size_t gap = numerator.find_first_of(" -"); gap != numerator.npos) {
    count = whole(numerator.substr(0, gap));
    numerator.remove_prefix(gap + 1);
  }
  const long double parts = whole(text.substr(text.find('/') + 1));
  if (parts == 0) throw HostError("divides by zero");
  const auto value = static_cast<double>((count * parts + whole(numerator)) / parts);
  return Cell::Real(negative ? -value : value).text;
}

}  // namespace

std::string_view NameOf(Unit unit) {
  switch (unit) {
    case Unit::Millimetre:
      return "mm";
    case Unit::Inch:
      return "in";
    case Unit::Degree:
      return "deg";
    case Unit::None:
      break;
  }
  return "";
}

Unit LengthUnitNamed(std::string_view text) {
  const UnitName* unit = FindUnit(Trim(text, " \t"));
  const bool whole = unit && unit->times == 1 && unit->parts == 1 && unit->unit != Unit::Degree;
  return whole ? unit->unit : Unit::None;
}

Quantity ReadQuantity(std::string_view written) {
  std::string expanded(Trim(written, " \t"));
  for (const Vulgar& vulgar : kVulgar) {
    const std::size_t place = expanded.find(vulgar.sign);
    if (place != expanded.npos) expanded.replace(place, vulgar.sign.size(), vulgar.fraction);
  }
  std::string_view text = Trim(std::string_view(expanded), " ");
  for (const std::string_view sign : {"Ø", "ø", "⌀", "+"}) {
    if (text.starts_with(sign)) text = Trim(text.substr(sign.size()), " ");
  }
  const std::size_t last = text.find_last_of(kDigits);
  if (last == text.npos) throw HostError("is no number");
  std::string_view digits = text.substr(0, last + 1);
  const std::string_view unitText = Trim(text.substr(last + 1), " \t.");
  const UnitName* unit = nullptr;
  if (!unitText.empty()) {
    unit = FindUnit(unitText);
    if (!unit) {
      throw HostError(digits.find_first_not_of("0123456789.,+-eE/ ") == digits.npos
                          ? "has the unit " + Cited(std::string(unitText)) + ", which is not known"
                          : "is no number");
    }
  }
  Quantity quantity;
  if (std::optional<std::string> fraction = ReadFraction(digits)) {
    quantity.fraction = true;
    quantity.number = *std::move(fraction);
  } else {
    quantity.number = WithFullStop(digits);
    ValueOf(quantity.number);
  }
  if (unit) {
    quantity.unit = unit->unit;
    if (unit->times != 1 || unit->parts != 1) {
      const long double value = ValueOf(quantity.number) * unit->times / unit->parts;
      quantity.number = Cell::Real(static_cast<double>(value)).text;
    }
  }
  return quantity;
}

std::string Converted(const std::string& number, Unit from, Unit to) {
  if (from == to) return number;
  const long double value = ValueOf(number);
  return Cell::Real(static_cast<double>(to == Unit::Inch ? value * 10 / kTenthsPerInch
                                                         : value * kTenthsPerInch / 10))
      .text;
}

}  // namespace orxdb
