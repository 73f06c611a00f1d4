#include "api/api_support.h"
#include "support/files.h"
#include "system/files/files.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

using namespace scrivalen::test;

namespace {

struct DocumentDelivery : testing::Test {
  std::string path(const wchar_t* name) const { return scrivalen::narrowPath(folder / name); }
  /// How many files the folder has.
  std::ptrdiff_t files() const { return std::distance(std::filesystem::directory_iterator(asPath(folder.path())), {}); }

  const TemporaryFolder folder;
};

}  // namespace

TEST_F(DocumentDelivery, FilesReplaceEarlierOnesWhenTheDocumentCloses) {
  writeBytes(folder / L"a.txt", "earlier");
  const Handle document(scrivalen_new());
  EXPECT_EQ(scrivalen_add_file(document.get(), path(L"a.txt").c_str(), nullptr), SCRIVALEN_OK);
  EXPECT_EQ(scrivalen_add_file(document.get(), path(L"b.HTM").c_str(), nullptr), SCRIVALEN_OK);
  EXPECT_EQ(scrivalen_add_file(document.get(), path(L"c").c_str(), "text"), SCRIVALEN_OK);
  EXPECT_EQ(scrivalen_paragraph(document.get(), "new", kNul), SCRIVALEN_OK);
  EXPECT_EQ(bytesOf(folder / L"a.txt"), "earlier");
  EXPECT_EQ(scrivalen_close(document.get()), SCRIVALEN_OK);
  EXPECT_EQ(bytesOf(folder / L"a.txt"), "new\n");
  EXPECT_NE(bytesOf(folder / L"b.HTM").find("<p>new</p>"), std::string::npos);
  EXPECT_EQ(bytesOf(folder / L"c"), "new\n");
  EXPECT_EQ(files(), 3);
}

TEST_F(DocumentDelivery, FreeingAtAnyPointLeavesEarlierFilesAndNoOthers) {
  writeBytes(folder / L"a.txt", "earlier");
  writeBytes(folder / L"b.html", "earlier");
  for (std::size_t taken = 0; taken <= contentSteps().size(); ++taken) {
    Handle document(scrivalen_new());
    scrivalen_add_file(document.get(), path(L"a.txt").c_str(), nullptr);
    scrivalen_add_file(document.get(), path(L"b.html").c_str(), nullptr);
    for (std::size_t i = 0; i < taken; ++i) {
      ASSERT_EQ(contentSteps()[i].call(document.get()), SCRIVALEN_OK);
    }
    document.reset();
    ASSERT_EQ(bytesOf(folder / L"a.txt"), "earlier");
    ASSERT_EQ(bytesOf(folder / L"b.html"), "earlier");
    ASSERT_EQ(files(), 2) << taken;
  }
}

TEST_F(DocumentDelivery, AFileThatCannotBeCreatedIsReportedWhenTheDocumentOpens) {
  const std::string missing = path(L"missing") + "/a.txt";
  Written document;
  EXPECT_EQ(scrivalen_add_file(document, missing.c_str(), nullptr), SCRIVALEN_OK);
  EXPECT_EQ(scrivalen_open(document), SCRIVALEN_FILE_ERROR);
  EXPECT_EQ(document.error().find("cannot write '" + missing + "': "), 0u) << document.error();
  EXPECT_EQ(scrivalen_output_result(document, 0), SCRIVALEN_OK);
  EXPECT_EQ(scrivalen_output_result(document, 1), SCRIVALEN_FILE_ERROR);
  EXPECT_EQ(scrivalen_output_error(document, 1), document.error());
  EXPECT_EQ(scrivalen_paragraph(document, "text", kNul), SCRIVALEN_OK);
  EXPECT_EQ(document.closed(), "text\n");
  EXPECT_EQ(document.result, SCRIVALEN_FILE_ERROR);
}

TEST_F(DocumentDelivery, TheCallThatOpensReturnsTheFailureAndIsTaken) {
  const std::string missing = path(L"missing") + "/a.txt";
  Written document;
  scrivalen_add_file(document, missing.c_str(), nullptr);
  EXPECT_EQ(scrivalen_paragraph(document, "one", kNul), SCRIVALEN_FILE_ERROR);
  EXPECT_EQ(scrivalen_paragraph(document, "two", kNul), SCRIVALEN_OK);
  EXPECT_EQ(document.closed(), "one\n\ntwo\n");
}

TEST_F(DocumentDelivery, ARefusedOutputGetsNoNumber) {
  const Handle document(scrivalen_new());
  EXPECT_EQ(scrivalen_add_file(document.get(), path(L"a.doc").c_str(), nullptr), SCRIVALEN_UNKNOWN_FORMAT);
  EXPECT_EQ(scrivalen_add_file(document.get(), path(L"b.txt").c_str(), nullptr), SCRIVALEN_OK);
  EXPECT_EQ(scrivalen_output_count(document.get()), 1u);
  EXPECT_EQ(scrivalen_close(document.get()), SCRIVALEN_OK);
  EXPECT_EQ(scrivalen_output_result(document.get(), 0), SCRIVALEN_OK);
  EXPECT_EQ(files(), 1);
}

TEST_F(DocumentDelivery, PathsHaveAnyCharacters) {
  const Handle document(scrivalen_new());
  EXPECT_EQ(scrivalen_add_file(document.get(), path(L"\u010D\u4E2D.txt").c_str(), nullptr), SCRIVALEN_OK);
  EXPECT_EQ(scrivalen_close(document.get()), SCRIVALEN_OK);
  EXPECT_TRUE(exists(folder / L"\u010D\u4E2D.txt"));
}

TEST_F(DocumentDelivery, AReadOnlyFileIsNotReplaced) {
  const std::wstring file = folder / L"a.txt";
  writeBytes(file, "earlier");
  std::filesystem::permissions(asPath(file), std::filesystem::perms::owner_read);
  Written document;
  scrivalen_add_file(document, path(L"a.txt").c_str(), nullptr);
  EXPECT_EQ(scrivalen_open(document), SCRIVALEN_FILE_ERROR);
  EXPECT_EQ(document.error(), "cannot write '" + path(L"a.txt") + "': it is read-only");
  EXPECT_EQ(scrivalen_paragraph(document, "new", kNul), SCRIVALEN_OK);
  EXPECT_EQ(document.closed(), "new\n");
  EXPECT_EQ(document.result, SCRIVALEN_FILE_ERROR);
  EXPECT_EQ(bytesOf(file), "earlier");
  EXPECT_EQ(files(), 1);
  std::filesystem::permissions(asPath(file), std::filesystem::perms::owner_all);
}
