#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <random>
#include <string>
#include <utility>

#include "platform/automation/Dates.h"

namespace orxdb {
namespace {

std::string Format(DATE date) {
  DateText text;
  const std::size_t length = FormatDate(date, text);
  EXPECT_EQ(text[length], '\0');
  return {text.data(), length};
}

using Row = std::pair<DATE, std::string>;

TEST(DatesTest, TextOfDates) {
  const Row cases[] = {// whole days, then times rounded to seconds
                       Row(0, "1899-12-30"),
                       Row(61, "1900-03-01"),
                       Row(-657434, "0100-01-01"),
                       Row(-1.999999, "1899-12-30"),
                       Row(36585.999995, "2000-03-01"),
                       Row(36585.999994, "2000-02-29 23:59:59"),
                       Row(-1.75, "1899-12-29 18:00:00"),
                       Row(2958465.99, "9999-12-31 23:45:36")};
  for (const auto& [date, text] : cases) EXPECT_EQ(Format(date), text) << date;
  for (const DATE none :
       {2958465.999999, -657435.0, std::numeric_limits<double>::infinity(), std::nan("")}) {
    EXPECT_EQ(Format(none), "") << none;
  }
}

TEST(DatesTest, DatesOfText) {
  const Row good[] = {// days, times of a day, times alone
                      Row(0, "1899-12-30"),
                      Row(45356, " 2024-03-05 "),
                      Row(45356.25, "2024-3-5 6:00:00"),
                      Row(45356.75, "2024-03-05T18:00"),
                      Row(0.25, "06:00"),
                      Row(0.5 / 86400, "00:00:00.5")};
  for (const auto& [expected, text] : good) {
    DATE date = 99;
    EXPECT_TRUE(ParseDate(text, date)) << text;
    EXPECT_DOUBLE_EQ(date, expected) << text;
  }
  // Parts that are missing, out of range, badly divided, or of another country.
  for (const char* text : {"", " ", "2024-03", "2024-13-01", "2023-02-29", "0099-12-31", "24-03-05",
                           "2024-03-05 24:00", "2024-03-05 12:60", "2024-03-05 12:00:60",
                           "2024-03-05 12", "2024-03-05x12:00", "2024-03-05 12:00:00.", "12:00 PM",
                           "03/05/2024", "2024--3-05", "12:0", "12:00:"}) {
    DATE date = 99;
    EXPECT_FALSE(ParseDate(text, date)) << text;
    EXPECT_EQ(date, 99) << text;
  }
}

TEST(DatesTest, EverySecondSurvivesPartsAndText) {
  std::mt19937 random(7);
  std::uniform_int_distribution<LONG> days(-657434, 2958465);
  std::uniform_int_distribution<int> seconds(0, 86399);
  for (int i = 0; i < 20000; ++i) {
    const LONG day = days(random);
    const double time = seconds(random) / 86400.0;
    const DATE date = day < 0 ? day - time : day + time;
    SYSTEMTIME parts{};
    ASSERT_TRUE(VariantTimeToSystemTime(date, &parts));
    EXPECT_EQ(parts.wDayOfWeek, ((day + 6) % 7 + 7) % 7);  // day zero was a Saturday
    DATE back = 0;
    ASSERT_TRUE(SystemTimeToVariantTime(&parts, &back));
    ASSERT_DOUBLE_EQ(back, date);
    ASSERT_TRUE(ParseDate(Format(date), back = 0));
    ASSERT_DOUBLE_EQ(back, date);
  }
}

TEST(DatesTest, ImpossiblePartsAreRefused) {
  // The last two: month and day must not be cut to eight bits.
  const SYSTEMTIME cases[] = {
      {99, 1, 0, 1, 0, 0, 0, 0},     {10000, 1, 0, 1, 0, 0, 0, 0}, {2023, 2, 0, 29, 0, 0, 0, 0},
      {2024, 0, 0, 1, 0, 0, 0, 0},   {2024, 13, 0, 1, 0, 0, 0, 0}, {2024, 1, 0, 0, 0, 0, 0, 0},
      {2024, 1, 0, 1, 24, 0, 0, 0},  {2024, 1, 0, 1, 0, 60, 0, 0}, {2024, 1, 0, 1, 0, 0, 60, 0},
      {2024, 257, 0, 1, 0, 0, 0, 0}, {2024, 1, 0, 257, 0, 0, 0, 0}};
  DATE date = 99;
  for (const SYSTEMTIME& parts : cases) {
    EXPECT_FALSE(SystemTimeToVariantTime(&parts, &date)) << parts.wYear << ' ' << parts.wMonth;
  }
  EXPECT_EQ(date, 99);
}

}  // namespace
}  // namespace orxdb
