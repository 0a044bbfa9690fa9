// Dates as days since 30 December 1899, as parts, and as text.
#pragma once

#include <array>
#include <string_view>

#include "platform/automation/Types.h"

/// A date taken apart. Months and days count from 1, days of the week from Sunday = 0.
struct SYSTEMTIME {
  WORD wYear;
  WORD wMonth;
  WORD wDayOfWeek;
  WORD wDay;
  WORD wHour;
  WORD wMinute;
  WORD wSecond;
  WORD wMilliseconds;
};

extern "C" {

/// The date of `parts`: years 100 to 9999; the day of the week and the milliseconds are ignored.
/// False, and `date` unchanged, for parts that make no date (30 February, 24:00).
AUTOMATION_API INT SystemTimeToVariantTime(const SYSTEMTIME* parts, DATE* date);

/// The parts of `date`, rounded to the nearest second. False, and `parts` unchanged, for dates
/// outside the years 100 to 9999 and for values that are not finite.
AUTOMATION_API INT VariantTimeToSystemTime(DATE date, SYSTEMTIME* parts);
}

namespace orxdb {

/// Zero-terminated date text of at most 19 characters.
using DateText = std::array<char, 20>;

/// Writes "YYYY-MM-DD", followed by " HH:MM:SS" unless it is midnight sharp. Gives the number of
/// characters, 0 for dates that VariantTimeToSystemTime refuses.
AUTOMATION_API std::size_t FormatDate(DATE date, DateText& text) noexcept;

/// Reads a day, a day and a time of day (parted by blanks or a T) or a time of day alone; blanks
/// around are ignored. False, and `date` unchanged, for anything else.
///
/// - A day is "YYYY-MM-DD", or a month's English name (three letters or more, in any case) before,
///   between or behind two numbers: "2-Jan-1970", "January 2, 1970". The year is the second number,
///   or the first if no month has so many days. Years of two digits are 1930 to 2029. Days in
///   numbers only in another order are not read: they mean something else in every country.
/// - A time is "HH:MM[:SS[.fraction]]" or with "am" or "pm" behind it, then also without minutes.
AUTOMATION_API bool ParseDate(std::string_view text, DATE& date) noexcept;

}  // namespace orxdb
