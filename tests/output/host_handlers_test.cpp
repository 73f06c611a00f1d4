#include "scrivalen/host.h"

#include "output/host_handlers.h"
#include "scrivalen/html_report.h"
#include "support/captured_log.h"
#include "support/files.h"
#include "system/clock.h"
#include "system/files/files.h"
#include "system/module_path.h"
#include "system/process/stop.h"

#include <gtest/gtest.h>

#include <ctime>
#include <string>
#include <thread>
#include <vector>

using namespace scrivalen;

TEST(HostHandlers, TheErrorBoxShowsTitleAndText) {
  static std::wstring shown;
  scrivalen::SetErrorBoxHandler(
      [](const wchar_t* title, const wchar_t* text) { shown = std::wstring(title) + L"|" + text; });
  showErrorBox(L"Title", L"Text");
  scrivalen::SetErrorBoxHandler(nullptr);
  EXPECT_EQ(shown, L"Title|Text");
}

TEST(HostHandlers, TheLogGoesToTheHandler) {
  const scrivalen::test::CapturedLog log;
  sendToLog(L"line");
  EXPECT_EQ(log.lines(), std::vector<std::wstring>{L"line"});
}

TEST(HostHandlers, TheHostsClockIsUsedUntilANullHandlerRestoresTheSystems) {
  {
    const scrivalen::test::FixedClock clock(86400);
    EXPECT_EQ(currentTime(), 86400);
  }
  const std::int64_t before = std::time(nullptr);
  const std::int64_t now = currentTime();
  EXPECT_LE(before - 1, now);
  EXPECT_LE(now, std::time(nullptr) + 1);
}

namespace {

struct StandIn : HostStandIn {
  void log(const wchar_t* line) override { lines += line; }
  std::int64_t time() const override { return 5; }

  std::wstring lines;
};

}  // namespace

TEST(HostScope, StandsInForTheHostInItsThreadAlone) {
  const scrivalen::test::CapturedLog log;
  const scrivalen::test::FixedClock clock(86400);
  StandIn standIn;
  {
    const HostScope scope(standIn);
    sendToLog(L"taken");
    EXPECT_EQ(currentTime(), 5);
    std::thread([] {
      sendToLog(L"other");
      EXPECT_EQ(currentTime(), 86400);
    }).join();
  }
  sendToLog(L"after");
  EXPECT_EQ(currentTime(), 86400);
  EXPECT_EQ(standIn.lines, L"taken");
  EXPECT_EQ(log.lines(), (std::vector<std::wstring>{L"other", L"after"}));
}

TEST(HostScope, EndsInFavourOfTheOuterOne) {
  StandIn outer;
  StandIn inner;
  const HostScope scope(outer);
  {
    const HostScope further(inner);
    sendToLog(L"inner");
  }
  sendToLog(L"outer");
  EXPECT_EQ(inner.lines, L"inner");
  EXPECT_EQ(outer.lines, L"outer");
}

TEST(DataFolder, HoldsTheTemplatesUntilANullFolderRestoresTheLibrarys) {
  const scrivalen::test::TemporaryFolder folder;
  scrivalen::test::makeFolder(folder / L"tmpl");
  scrivalen::test::writeBytes(folder / L"tmpl" + kPathSeparator + L"letter.htm", "");
  HtmlReport report;
  std::wstring path;
  scrivalen::SetDataFolder((folder / L"").c_str());
  EXPECT_EQ(report.MakeTemplateName(path, L"letter.htm"), 1);
  EXPECT_EQ(path, folder / L"tmpl" + kPathSeparator + L"letter.htm");
  scrivalen::SetDataFolder(nullptr);
  EXPECT_EQ(homePath(), modulePath());
}

TEST(Clock, ConvertsToUtc) {
  const auto time = utcTime(1709647620);
  ASSERT_TRUE(time.has_value());
  EXPECT_EQ(time->tm_year, 124);
  EXPECT_EQ(time->tm_mon, 2);
  EXPECT_EQ(time->tm_mday, 5);
  EXPECT_EQ(time->tm_hour, 14);
  EXPECT_EQ(time->tm_min, 7);
  EXPECT_EQ(time->tm_sec, 0);
}

TEST(Clock, ReturnsNothingForATimeWithoutADate) {
  EXPECT_FALSE(localTime(INT64_MAX).has_value());
  EXPECT_FALSE(utcTime(INT64_MAX).has_value());
}
