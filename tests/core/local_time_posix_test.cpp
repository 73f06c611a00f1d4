#include "platform/clock.h"
#include "support/captured_log.h"
#include "support/recording_report.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>

namespace {

// Lets the program live in another time zone for a while.
class TimeZone {
 public:
  explicit TimeZone(const char* name) { set(name); }
  TimeZone(const TimeZone&) = delete;
  TimeZone& operator=(const TimeZone&) = delete;
  ~TimeZone() { set("UTC"); }

 private:
  static void set(const char* name) {
    ::setenv("TZ", name, 1);
    ::tzset();
  }
};

}  // namespace

TEST(LocalTime, IsThatOfTheTimeZone) {
  const TimeZone tokyo("JST-9");
  const auto time = scrivalen::platform::localTime(1709647620);
  ASSERT_TRUE(time.has_value());
  EXPECT_EQ(time->tm_hour, 23);
  EXPECT_EQ(time->tm_mday, 5);
}

TEST(ReportCreatedRow, TellsTheLocalTime) {
  const TimeZone tokyo("JST-9");
  const scrivalen::test::FixedClock clock(1709647620);
  scrivalen::test::RecordingReport report;
  report.ReportCreated();
  ASSERT_EQ(report.calls().size(), 4u);
  EXPECT_EQ(report.calls()[2], "Cell(\"05-Mar-2024 23:07\", 0, null)");
}
