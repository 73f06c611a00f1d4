#include "scrivalen/html_report.h"

#include "support/documents/templates.h"
#include "support/files.h"
#include "system/files/files.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

using namespace scrivalen::test;
using scrivalen::kPathSeparator;

namespace {

using Names = std::vector<std::wstring>;

// The list for a folder with empty files of these names, sorted because the file system has its own order.
Names listed(const std::vector<std::wstring>& files) {
  const TemporaryFolder folder;
  for (const std::wstring& file : files) {
    writeBytes(folder / file, "");
  }
  Names names;
  EXPECT_EQ(HtmlReport::GetTemplatesList(folder.path().c_str(), &names), static_cast<int>(files.size()));
  std::sort(names.begin(), names.end());
  return names;
}

}  // namespace

TEST(TemplatesList, NeedsAList) { EXPECT_EQ(HtmlReport::GetTemplatesList(templateFolder().c_str(), nullptr), -1); }

TEST(TemplatesList, HasADisplayNameForEachTemplate) { EXPECT_EQ(listed({L"a.htm", L"b.htm"}), (Names{L"A", L"B"})); }

TEST(TemplatesList, IsInTheOrderOfTheFileSystem) {
  const TemporaryFolder folder;
  for (const wchar_t* file : {L"C.htm", L"A.htm", L"D.htm", L"B.htm"}) {
    writeBytes(folder / file, "");
  }
  Names inOrder;
  for (const auto& entry : std::filesystem::directory_iterator(asPath(folder.path()))) {
    inOrder.push_back(entry.path().stem().wstring());
  }
  Names names;
  EXPECT_EQ(HtmlReport::GetTemplatesList(folder.path().c_str(), &names), 4);
  EXPECT_EQ(names, inOrder);
}

TEST(TemplatesList, AcceptsAFolderWithATrailingSeparator) {
  const TemporaryFolder folder;
  writeBytes(folder / L"a.htm", "");
  Names names;
  EXPECT_EQ(HtmlReport::GetTemplatesList((folder.path() + kPathSeparator).c_str(), &names), 1);
  EXPECT_EQ(names, Names{L"A"});
}

TEST(TemplatesList, CutsANameAtItsLastDot) { EXPECT_EQ(listed({L"monthly.v2.htm"}), Names{L"Monthly.v2"}); }

TEST(TemplatesList, KeepsANameWhoseOnlyDotComesFirst) { EXPECT_EQ(listed({L".htm"}), Names{L".htm"}); }

TEST(TemplatesList, AcceptsTheExtensionInAnyCase) { EXPECT_EQ(listed({L"a.HTM", L"b.Htm"}), (Names{L"A", L"B"})); }

TEST(TemplatesList, CapitalizesOnlyTheFirstLetter) {
  EXPECT_EQ(listed({L"two words.htm", L"UPPER.htm", L"1st.htm", L"_x.htm"}),
            (Names{L"1st", L"Two words", L"UPPER", L"_x"}));
}

TEST(TemplatesList, CapitalizesLettersBeyondAscii) {
  EXPECT_EQ(listed({L"\u00E9t\u00E9.htm"}), Names{L"\u00C9t\u00E9"});
  EXPECT_EQ(listed({L"\u043E\u0442\u0447\u0435\u0442.htm"}), Names{L"\u041E\u0442\u0447\u0435\u0442"});
}

TEST(TemplatesList, SkipsFoldersAndOtherFiles) {
  const TemporaryFolder folder;
  std::filesystem::create_directory(asPath(folder / L"folder.htm"));
  for (const wchar_t* file : {L"page.html", L"page.htmx", L"htm", L"a.htm.bak", L"one.htm"}) {
    writeBytes(folder / file, "");
  }
  Names names;
  EXPECT_EQ(HtmlReport::GetTemplatesList(folder.path().c_str(), &names), 1);
  EXPECT_EQ(names, Names{L"One"});
}

TEST(TemplatesList, IsClearedWhenThereAreNone) {
  const TemporaryFolder folder;
  Names names = {L"old"};
  EXPECT_EQ(HtmlReport::GetTemplatesList(folder.path().c_str(), &names), -1);
  EXPECT_EQ(names, Names{});
  names = {L"old"};
  EXPECT_EQ(HtmlReport::GetTemplatesList((folder / L"missing").c_str(), &names), -1);
  EXPECT_EQ(names, Names{});
}

TEST(TemplatesList, ReplacesEarlierEntries) {
  const TemporaryFolder folder;
  writeBytes(folder / L"a.htm", "");
  Names names = {L"old", L"older"};
  EXPECT_EQ(HtmlReport::GetTemplatesList(folder.path().c_str(), &names), 1);
  EXPECT_EQ(names, Names{L"A"});
}

TEST(TemplatesList, HasTheShippedTemplate) {
  Names names;
  EXPECT_GE(HtmlReport::GetTemplatesList(templateFolder().c_str(), &names), 1);
  EXPECT_NE(std::find(names.begin(), names.end(), L"Default"), names.end());
}
