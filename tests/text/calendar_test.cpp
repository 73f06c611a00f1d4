#include "text/calendar.h"

#include <gtest/gtest.h>

namespace scrivalen {
namespace {

TEST(Calendar, CountsDaysFrom1970) {
  EXPECT_EQ(daysOf({1970, 1, 1}), 0);
  EXPECT_EQ(daysOf({1969, 12, 31}), -1);
  EXPECT_EQ(daysOf({2000, 3, 1}), 11017);
  EXPECT_EQ(daysOf({1900, 3, 1}), -25508);
  EXPECT_EQ(daysOf({0, 3, 1}), -719468);
}

TEST(Calendar, ConvertsEachDayOfAnEraBack) {
  CalendarDate expected{1599, 12, 31};
  for (std::int64_t day = daysOf(expected); expected.year < 2001; ++day) {
    ASSERT_EQ(dateOf(day), expected) << day;
    ASSERT_EQ(daysOf(expected), day);
    const bool isLeap = expected.year % 4 == 0 && (expected.year % 100 != 0 || expected.year % 400 == 0);
    const int lengths[] = {31, isLeap ? 29 : 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    if (++expected.day > lengths[expected.month - 1]) {
      expected.day = 1;
      expected.year += ++expected.month > 12 ? 1 : 0;
      expected.month = (expected.month - 1) % 12 + 1;
    }
  }
}

TEST(Calendar, ReachesFarYears) {
  EXPECT_EQ(dateOf(2147483647), (CalendarDate{5881580, 7, 11}));
  EXPECT_EQ(dateOf(-2147483648LL), (CalendarDate{-5877641, 6, 23}));
}

TEST(Calendar, ReadsIsoDates) {
  EXPECT_EQ(daysOfIsoDate("1970-01-02"), 1);
  EXPECT_EQ(daysOfIsoDate("2000-02-29"), 11016);
  for (const char* text : {"", "1900-02-29", "2001-00-01", "2001-13-01", "2001-01-00", "2001-04-31", "2001-1-01",
                           "01-01-2001", "2001/01/01", "2001-01-01 ", " 2001-01-01", "+001-01-01"}) {
    EXPECT_EQ(daysOfIsoDate(text), std::nullopt) << text;
  }
}

TEST(Calendar, ReadsIsoTimes) {
  EXPECT_EQ(secondsOfIsoTime("1970-01-01 00:00:01"), 1);
  EXPECT_EQ(secondsOfIsoTime("1969-12-31T23:59:59"), -1);
  EXPECT_EQ(secondsOfIsoTime("1970-01-02T01:02:03Z"), 86400 + 3723);
  for (const char* text : {"", "Z", "1970-01-01", "1970-01-01 24:00:00", "1970-01-01 00:60:00", "1970-01-01 00:00:60",
                           "1970-01-01 00:00", "1970-01-01t00:00:00", "1970-01-01 00:00:00+1", "1970-01-32 00:00:00"}) {
    EXPECT_EQ(secondsOfIsoTime(text), std::nullopt) << text;
  }
}

}  // namespace
}  // namespace scrivalen
