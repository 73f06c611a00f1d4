#include "formats/recorded_report.h"

#include "formats/document_report.h"
#include "support/documents/recording_writer.h"
#include "support/files.h"

#include <gtest/gtest.h>

namespace scrivalen::test {
namespace {

std::string recordedIn(const document::Format& format, const Play& play) {
  const TemporaryFolder folder;
  DocumentReport report(format);
  EXPECT_EQ(report.Open((folder / L"a").c_str()), REPORT_OK);
  play(report);
  EXPECT_EQ(report.Close(), REPORT_OK);
  const std::string all = bytesOf(folder / L"a");
  constexpr std::string_view kBegin = "begin\n";
  constexpr std::string_view kFinish = "finish\n";
  EXPECT_TRUE(all.starts_with(kBegin) && all.ends_with(kFinish)) << all;
  return all.substr(kBegin.size(), all.size() - kBegin.size() - kFinish.size());
}

}  // namespace

std::string recorded(const Play& play) { return recordedIn(kRecordingFormat, play); }
std::string recordedAsHtml(const Play& play) { return recordedIn(kOtherRecordingFormat, play); }

}  // namespace scrivalen::test
