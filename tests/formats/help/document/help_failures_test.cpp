#include "formats/help/document/made_help.h"
#include "support/captured_log.h"
#include "support/files.h"
#include "system/files/files.h"
#include "text/utf.h"

#include <chrono>
#include <filesystem>

using namespace scrivalen::test;

namespace {

// A help file and a text beside it.
struct HelpFailure : testing::Test {
  HelpFailure() {
    writeBytes(folder / L"a.chm", "earlier");
    EXPECT_EQ(scrivalen_add_file(document.get(), path(L"a.chm").c_str(), nullptr), SCRIVALEN_OK);
    EXPECT_EQ(scrivalen_add_stream(document.get(), "text", MemoryStream::write, &text), SCRIVALEN_OK);
  }

  std::string path(const wchar_t* name) const { return scrivalen::narrowPath(folder / name); }
  scrivalen_status close(const char* title) const {
    scrivalen_set(document.get(), "title", title);
    scrivalen_heading(document.get(), 1, "Text", kNul);
    return scrivalen_close(document.get());
  }
  std::string shownPath() const { return scrivalen::toUtf8(folder / L"a.chm"); }
  /// How many files the folder has.
  std::ptrdiff_t files() const { return std::distance(std::filesystem::directory_iterator(asPath(folder.path())), {}); }

  const TemporaryFolder folder;
  const CapturedLog log;
  const CapturedErrorBox box;
  MemoryStream text;
  const Handle document{scrivalen_new()};
};

}  // namespace

TEST_F(HelpFailure, OfACompilerIsReportedAndTheEarlierFileStays) {
  EXPECT_EQ(close("stand-in: leaves nothing"), SCRIVALEN_FILE_ERROR);
  EXPECT_EQ(std::string(scrivalen_error(document.get())),
            "cannot write '" + shownPath() + "': the help compiler left no help file. It ended with status 0.");
  EXPECT_EQ(scrivalen_output_result(document.get(), 0), SCRIVALEN_FILE_ERROR);
  EXPECT_EQ(scrivalen_output_result(document.get(), 1), SCRIVALEN_OK);
  EXPECT_EQ(bytesOf(folder / L"a.chm"), "earlier");
  EXPECT_EQ(text.bytes, "Text\n====\n");
  EXPECT_EQ(files(), 1);
  EXPECT_TRUE(log.lines().empty());
  EXPECT_TRUE(box.shown().empty());
}

TEST_F(HelpFailure, OfACompilerThatBreaksOffIsReported) {
  EXPECT_EQ(close("stand-in: breaks off"), SCRIVALEN_FILE_ERROR);
  EXPECT_NE(std::string(scrivalen_error(document.get())).find("It ended with status 217."), std::string::npos);
}

TEST_F(HelpFailure, IsNotInAnExitStatusBesideAHelpFile) {
  EXPECT_EQ(close("stand-in: fails but leaves a file"), SCRIVALEN_OK) << scrivalen_error(document.get());
  EXPECT_NE(bytesOf(folder / L"a.chm").find("[topic1.htm]"), std::string::npos);
}

TEST_F(HelpFailure, OfATemplateIsReportedWhenTheDocumentOpens) {
  EXPECT_EQ(scrivalen_set(document.get(), "chm.template", path(L"missing.htm").c_str()), SCRIVALEN_OK);
  EXPECT_EQ(scrivalen_open(document.get()), SCRIVALEN_TEMPLATE_NOT_FOUND);
  EXPECT_EQ(scrivalen_output_result(document.get(), 0), SCRIVALEN_TEMPLATE_NOT_FOUND);
  EXPECT_EQ(close(""), SCRIVALEN_TEMPLATE_NOT_FOUND);
  EXPECT_EQ(bytesOf(folder / L"a.chm"), "earlier");
  EXPECT_EQ(scrivalen_output_result(document.get(), 1), SCRIVALEN_OK);
}

TEST_F(HelpFailure, ByCancellingEndsTheCompiler) {
  const auto start = std::chrono::steady_clock::now();
  int calls = 0;
  scrivalen_set_progress(
      document.get(), [](void* count, std::uint64_t, std::uint64_t) { return ++*static_cast<int*>(count) > 5 ? 1 : 0; },
      &calls);
  EXPECT_EQ(close("stand-in: waits"), SCRIVALEN_CANCELLED);
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::minutes(1));
  EXPECT_EQ(calls, 6);
  EXPECT_STREQ(scrivalen_error(document.get()), "the document was cancelled");
  EXPECT_EQ(bytesOf(folder / L"a.chm"), "earlier");
  EXPECT_EQ(files(), 1);
}

TEST_F(HelpFailure, OfAStreamIsReported) {
  MadeHelp help;
  help.stream.room = 100;
  help.heading(1, "Text");
  EXPECT_EQ(help.closed().size(), 100u);
  EXPECT_EQ(help.result, SCRIVALEN_FILE_ERROR);
  EXPECT_EQ(help.error(), "cannot write the stream of chm: No space left on device");
}
