#include "platform/automation/Dates.h"

#include <algorithm>
#include <charconv>
#include <chrono>
#include <cmath>
#include <iterator>
#include <span>
#include <utility>

#include "platform/automation/Ascii.h"

namespace {

using std::chrono::sys_days;
using std::chrono::year_month_day;

constexpr sys_days kDayZero =
    std::chrono::year(1899) / std::chrono::December / std::chrono::day(30);
constexpr int kFirstYear = 100;
constexpr int kLastYear = 9999;
constexpr int kSecondsPerDay = 86400;

constexpr LONG DayNumber(year_month_day day) {
  return static_cast<LONG>((sys_days(day) - kDayZero).count());
}
constexpr LONG kFirstDay =
    DayNumber(std::chrono::year(kFirstYear) / std::chrono::January / std::chrono::day(1));
constexpr LONG kLastDay =
    DayNumber(std::chrono::year(kLastYear) / std::chrono::December / std::chrono::day(31));

/// A day and the seconds since its midnight. Before day zero the fraction of a date still counts
/// forward from midnight, so it is taken off the whole days.
DATE Join(LONG day, double seconds) {
  const double time = seconds / kSecondsPerDay;
  return day < 0 ? day - time : day + time;
}

bool DayFromParts(int year, unsigned month, unsigned day, LONG& number) {
  // The calendar types keep eight bits only.
  if (month > 12 || day > 31) return false;
  const year_month_day date{std::chrono::year(year), std::chrono::month(month),
                            std::chrono::day(day)};
  if (year < kFirstYear || year > kLastYear || !date.ok()) return false;
  number = DayNumber(date);
  return true;
}

constexpr std::string_view kMonths[] = {"january",   "february", "march",    "april",
                                        "may",       "june",     "july",     "august",
                                        "september", "october",  "november", "december"};

/// Reads text from its front; every step is false, and takes nothing, where the text is another.
class Reader {
 public:
  explicit Reader(std::string_view text) : m_at(text.data()), m_end(m_at + text.size()) {}

  bool AtEnd() const { return m_at == m_end; }
  bool Take(char expected) {
    if (AtEnd() || *m_at != expected) return false;
    ++m_at;
    return true;
  }
  bool Blanks() {
    const char* start = m_at;
    while (Take(' ')) continue;
    return m_at != start;
  }
  /// What may part a month's name and numbers, nothing also.
  void Gap() {
    Blanks();
    if (!AtEnd() && std::string_view("-/,.").find(*m_at) != std::string_view::npos) ++m_at;
    Blanks();
  }
  /// A number of `fewest` to `most` digits; how many there are, 0 for none.
  int Digits(int fewest, int most, unsigned& value) {
    const char* limit = m_at + std::min<std::ptrdiff_t>(most, m_end - m_at);
    const auto [behind, error] = std::from_chars(m_at, limit, value);
    const auto count = static_cast<int>(behind - m_at);
    if (error != std::errc() || count < fewest) return 0;
    m_at = behind;
    return count;
  }
  /// The digits behind a full stop as a part of 1.
  bool Fraction(double& value) {
    double scale = 1;
    const char* start = m_at;
    for (value = 0; m_at != m_end && *m_at >= '0' && *m_at <= '9'; ++m_at) {
      scale /= 10;
      value += (*m_at - '0') * scale;
    }
    return m_at != start;
  }
  /// One of the words, or its first three letters or more; its number from 1, 0 for none.
  unsigned Word(std::span<const std::string_view> words, std::size_t fewest) {
    const char* behind = m_at;
    while (behind != m_end && orxdb::LowerAscii(*behind) >= 'a' &&
           orxdb::LowerAscii(*behind) <= 'z')
      ++behind;
    const std::string_view word(m_at, static_cast<std::size_t>(behind - m_at));
    for (std::size_t i = 0; i < words.size() && word.size() >= fewest; ++i) {
      if (!orxdb::EqualNoCase(word, words[i].substr(0, word.size()))) continue;
      m_at = behind;
      return static_cast<unsigned>(i + 1);
    }
    return 0;
  }

 private:
  const char* m_at;
  const char* m_end;
};

bool ReadIsoDay(Reader& reader, LONG& day) {
  unsigned year = 0;
  unsigned month = 0;
  unsigned monthDay = 0;
  return reader.Digits(4, 4, year) && reader.Take('-') && reader.Digits(1, 2, month) &&
         reader.Take('-') && reader.Digits(1, 2, monthDay) &&
         DayFromParts(static_cast<int>(year), month, monthDay, day);
}

/// A day whose month has its name.
bool ReadNamedDay(Reader& reader, LONG& day) {
  struct Number {
    unsigned value = 0;
    int digits = 0;
  } numbers[2];
  unsigned month = 0;
  Number* next = numbers;
  for (int part = 0; part < 3; ++part) {
    if (part > 0) reader.Gap();
    if (month == 0 && (month = reader.Word(kMonths, 3)) != 0) continue;
    if (next == std::end(numbers)) return false;
    next->digits = reader.Digits(1, 4, next->value);
    if (next++->digits == 0) return false;
  }
  auto& [monthDay, year] = numbers;
  if (monthDay.value > 31) std::swap(monthDay, year);
  if (year.digits <= 2) year.value += year.value < 30 ? 2000 : 1900;
  return DayFromParts(static_cast<int>(year.value), month, monthDay.value, day);
}

bool ReadTime(Reader& reader, double& seconds) {
  constexpr std::string_view kHalves[] = {"am", "pm"};
  unsigned hour = 0;
  unsigned minute = 0;
  unsigned second = 0;
  double fraction = 0;
  if (!reader.Digits(1, 2, hour)) return false;
  const bool hasMinutes = reader.Take(':');
  if (hasMinutes && !reader.Digits(1, 2, minute)) return false;
  if (hasMinutes && reader.Take(':')) {
    if (!reader.Digits(1, 2, second)) return false;
    if (reader.Take('.') && !reader.Fraction(fraction)) return false;
  }
  reader.Blanks();
  if (const unsigned half = reader.Word(kHalves, 2)) {
    if (hour > 12) return false;
    hour = hour % 12 + 12 * (half - 1);
  } else if (!hasMinutes) {
    return false;
  }
  seconds = hour * 3600 + minute * 60 + second + fraction;
  return hour < 24 && minute < 60 && second < 60;
}

/// Writes `value` in `width` digits and moves behind it.
void WriteDigits(char*& at, unsigned value, int width) {
  for (int i = width; i-- > 0; value /= 10) at[i] = static_cast<char>('0' + value % 10);
  at += width;
}

}  // namespace

INT SystemTimeToVariantTime(const SYSTEMTIME* parts, DATE* date) {
  LONG day = 0;
  if (!parts || !date || parts->wHour > 23 || parts->wMinute > 59 || parts->wSecond > 59 ||
      !DayFromParts(parts->wYear, parts->wMonth, parts->wDay, day)) {
    return 0;
  }
  *date = Join(day, parts->wHour * 3600 + parts->wMinute * 60 + parts->wSecond);
  return 1;
}

INT VariantTimeToSystemTime(DATE date, SYSTEMTIME* parts) {
  if (!parts || !(date > kFirstDay - 1.0 && date < kLastDay + 1.0)) return 0;
  const double whole = std::trunc(date);
  auto day = static_cast<LONG>(whole);
  auto seconds = static_cast<int>(std::lround(std::fabs(date - whole) * kSecondsPerDay));
  if (seconds == kSecondsPerDay) {
    seconds = 0;
    ++day;
  }
  if (day < kFirstDay || day > kLastDay) return 0;

  const sys_days days = kDayZero + std::chrono::days(day);
  const year_month_day calendar(days);
  parts->wYear = static_cast<WORD>(static_cast<int>(calendar.year()));
  parts->wMonth = static_cast<WORD>(static_cast<unsigned>(calendar.month()));
  parts->wDay = static_cast<WORD>(static_cast<unsigned>(calendar.day()));
  parts->wDayOfWeek = static_cast<WORD>(std::chrono::weekday(days).c_encoding());
  parts->wHour = static_cast<WORD>(seconds / 3600);
  parts->wMinute = static_cast<WORD>(seconds / 60 % 60);
  parts->wSecond = static_cast<WORD>(seconds % 60);
  parts->wMilliseconds = 0;
  return 1;
}

namespace orxdb {

std::size_t FormatDate(DATE date, DateText& text) noexcept {
  SYSTEMTIME parts{};
  text[0] = '\0';
  if (!VariantTimeToSystemTime(date, &parts)) return 0;
  char* at = text.data();
  WriteDigits(at, parts.wYear, 4);
  *at++ = '-';
  WriteDigits(at, parts.wMonth, 2);
  *at++ = '-';
  WriteDigits(at, parts.wDay, 2);
  if (parts.wHour || parts.wMinute || parts.wSecond) {
    *at++ = ' ';
    WriteDigits(at, parts.wHour, 2);
    *at++ = ':';
    WriteDigits(at, parts.wMinute, 2);
    *at++ = ':';
    WriteDigits(at, parts.wSecond, 2);
  }
  *at = '\0';
  return static_cast<std::size_t>(at - text.data());
}

bool ParseDate(std::string_view text, DATE& date) noexcept {
  Reader reader(Trim(text, " \t\r\n"));
  LONG day = 0;
  double seconds = 0;
  for (const auto readDay : {ReadIsoDay, ReadNamedDay}) {
    Reader dayFirst = reader;
    if (!readDay(dayFirst, day)) continue;
    reader = dayFirst;
    if (reader.AtEnd()) {
      date = day;
      return true;
    }
    if (!reader.Take('T') && !reader.Blanks()) return false;
    break;
  }
  if (!ReadTime(reader, seconds) || !reader.AtEnd()) return false;
  date = Join(day, seconds);
  return true;
}

}  // namespace orxdb
