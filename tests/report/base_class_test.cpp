#include "report/template_path.h"
#include "scrivalen/report.h"
#include "support/documents/recording_report.h"
#include "system/files/files.h"

#include <gtest/gtest.h>

#include <functional>
#include <type_traits>

using scrivalen::kPathSeparator;
using scrivalen::templatePath;
using scrivalen::test::RecordingReport;

namespace {

// Opens the fields that a report keeps for its formats to the test.
struct Fields : AReport {
  static bool areInDeclaredOrder(const AReport& report) {
    const void* const addresses[] = {
        &(report.*&Fields::reserved_),  &(report.*&Fields::outputFileName_), &(report.*&Fields::templateFileName_),
        &(report.*&Fields::styles_),    &(report.*&Fields::error_),          &(report.*&Fields::openFlag_),
        &(report.*&Fields::properties_)};
    return std::is_sorted(std::begin(addresses), std::end(addresses), std::less<const void*>());
  }
  static_assert(std::is_same_v<decltype(openFlag_), std::int32_t>);
};

// A class with a table of virtual operations and only these fields. Programs that derive from AReport are compiled with
// its size, so a new field of the report may only use padding.
struct ClassicFields {
  virtual void operation() {}

  std::wstring texts[5];
  std::int32_t openFlag;
  std::vector<std::shared_ptr<PropertyRecord>> properties;
};

template <typename Report>
concept OpensFilesForAnyone = requires(Report& report, ReportFile& file) {
  report.OpenReportFile(file, L"");
};
template <typename Report>
concept LoadsTemplatesForAnyone = requires(Report& report, std::wstring& text) {
  report.LoadTemplate(&text, L"", 0);
};
template <typename Report>
concept PreparesTemplatesForAnyone = requires(Report& report, std::wstring& text) {
  report.PrepareTemplate(text);
};

}  // namespace

TEST(BaseClass, KeepsItsFieldsInTheirOrder) {
  const RecordingReport report;
  EXPECT_TRUE(Fields::areInDeclaredOrder(report));
}

TEST(BaseClass, IsAsLargeAsItsClassicFields) { EXPECT_EQ(sizeof(AReport), sizeof(ClassicFields)); }

TEST(BaseClass, KeepsFilesAndTemplatesForItsFormats) {
  EXPECT_FALSE(OpensFilesForAnyone<AReport>);
  EXPECT_FALSE(LoadsTemplatesForAnyone<AReport>);
  EXPECT_FALSE(PreparesTemplatesForAnyone<AReport>);
}

TEST(BaseClass, PassesTheHeaderFlagOfRowsOnUnchanged) {
  RecordingReport report;
  report.Row2(L"a", L"b", 2, nullptr, nullptr);
  report.Row3(L"a", L"b", L"c", -1);
  EXPECT_EQ(report.calls(),
            (std::vector<std::string>{"BeginRow(\"row\", null, 2)", "Cell(\"a\", 2, null)", "Cell(\"b\", 2, null)",
                                      "EndRow(\"row\")", "BeginRow(\"row\", null, 3)", "Cell(\"a\", -1, null)",
                                      "Cell(\"b\", -1, null)", "Cell(\"c\", -1, null)", "EndRow(\"row\")"}));
}

TEST(TemplatePath, IsTheTemplateFolderBesideTheModule) {
  const std::wstring folder = std::wstring(L"lib") + kPathSeparator;
  EXPECT_EQ(templatePath(folder + L"library.dll", L"page.htm"), folder + L"tmpl" + kPathSeparator + L"page.htm");
  EXPECT_EQ(templatePath(folder + L"library.dll", L""), folder + L"tmpl" + kPathSeparator);
}

TEST(TemplatePath, HasNoValueWithoutAFolder) {
  EXPECT_EQ(templatePath(L"library.dll", L"page.htm"), std::nullopt);
  EXPECT_EQ(templatePath(L"", L"page.htm"), std::nullopt);
}
