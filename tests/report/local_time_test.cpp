#include "support/captured_log.h"
#include "support/documents/recording_report.h"
#include "support/time_zone.h"
#include "system/clock.h"

#include <gtest/gtest.h>

using scrivalen::test::TimeZone;

TEST(LocalTime, FollowsTheTimeZone) {
  const TimeZone tokyo("JST-9");
  const auto time = scrivalen::localTime(1709647620);
  ASSERT_TRUE(time.has_value());
  EXPECT_EQ(time->tm_hour, 23);
  EXPECT_EQ(time->tm_mday, 5);
}

TEST(ReportCreatedRow, ShowsTheLocalTime) {
  const TimeZone tokyo("JST-9");
  const scrivalen::test::FixedClock clock(1709647620);
  scrivalen::test::RecordingReport report;
  report.ReportCreated();
  ASSERT_EQ(report.calls().size(), 4u);
  EXPECT_EQ(report.calls()[2], "Cell(\"05-Mar-2024 23:07\", 0, null)");
}
