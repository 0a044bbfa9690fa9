#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <map>
#include <random>
#include <string>

#include "platform/automation/Dates.h"

namespace orxdb {
namespace {

std::string Format(DATE date) {
  DateText text;
  const std::size_t length = FormatDate(date, text);
  EXPECT_EQ(text[length], '\0');
  return {text.data(), length};
}

TEST(DatesTest, TextOfDates) {
  const std::map<std::string, DATE> cases = {{"1899-12-30", 0},
                                             {"1900-03-01", 61},
                                             {"0100-01-01", -657434},
                                             {"2000-03-01", 36585.999995},
                                             {"2000-02-29 23:59:59", 36585.999994},
                                             {"1899-12-29 18:00:00", -1.75},
                                             {"9999-12-31 23:45:36", 2958465.99}};
  for (const auto& [text, date] : cases) EXPECT_EQ(Format(date), text) << date;
  EXPECT_EQ(Format(-1.999999), "1899-12-30");
  for (const DATE none :
       {2958465.999999, -657435.0, std::numeric_limits<double>::infinity(), std::nan("")}) {
    EXPECT_EQ(Format(none), "") << none;
  }
}

TEST(DatesTest, DatesOfText) {
  const std::map<std::string, DATE> good = {{"1899-12-30", 0},
                                            {" 2024-03-05 ", 45356},
                                            {"2024-3-5 6:00:00", 45356.25},
                                            {"2024-03-05T18:00", 45356.75},
                                            {"06:00", 0.25},
                                            {"00:00:00.5", 0.5 / 86400}};
  for (const auto& [text, expected] : good) {
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

}  // namespace
}  // namespace orxdb
