#include "api/api_support.h"
#include "support/captured_log.h"
#include "support/faults/file_size_limit.h"
#include "support/files.h"
#include "system/files/files.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

using namespace scrivalen::test;

namespace {

// Formats that are made in a file of their own, which is among these temporary files.
struct DocumentInAPrivateFile : testing::TestWithParam<const char*> {
  DocumentInAPrivateFile() {
    const char* const usual = std::getenv("TMPDIR");
    kept_ = usual ? usual : "/tmp";
    ::setenv("TMPDIR", scrivalen::narrowPath(temporary.path()).c_str(), 1);
  }
  ~DocumentInAPrivateFile() override { ::setenv("TMPDIR", kept_.c_str(), 1); }

  static std::ptrdiff_t filesIn(const TemporaryFolder& folder) {
    return std::distance(std::filesystem::directory_iterator(asPath(folder.path())), {});
  }

  const TemporaryFolder temporary;
  const TemporaryFolder folder;
  const std::string path = scrivalen::narrowPath(folder / L"made");

 private:
  std::string kept_;
};

struct Cancelling {
  static int report(void* user, std::uint64_t, std::uint64_t) {
    Cancelling& self = *static_cast<Cancelling*>(user);
    return ++self.calls == self.last ? 1 : 0;
  }

  int last = 0;
  int calls = 0;
};

void writePages(scrivalen_document* document, int pages) {
  for (int i = 0; i < pages; ++i) {
    scrivalen_paragraph(document, "a page", kNul);
    scrivalen_page_break(document);
  }
}

}  // namespace

TEST_P(DocumentInAPrivateFile, HasItOnlyUntilItIsFreed) {
  for (std::size_t taken = 0; taken <= contentSteps().size(); ++taken) {
    Handle document(scrivalen_new());
    scrivalen_add_file(document.get(), path.c_str(), GetParam());
    scrivalen_open(document.get());
    EXPECT_EQ(filesIn(temporary), 1);
    for (std::size_t i = 0; i < taken; ++i) {
      ASSERT_EQ(contentSteps()[i].call(document.get()), SCRIVALEN_OK);
    }
    document.reset();
    ASSERT_EQ(filesIn(temporary), 0) << taken;
    ASSERT_EQ(filesIn(folder), 0) << taken;
  }
}

TEST_P(DocumentInAPrivateFile, HasTheSameBytesInAFileAndInAStream) {
  Written document(GetParam());
  scrivalen_add_file(document, path.c_str(), GetParam());
  ASSERT_EQ(writeContent(document), SCRIVALEN_OK);
  document.closed();
  EXPECT_TRUE(document.stream.bytes == bytesOf(folder / L"made"));
  EXPECT_GT(document.stream.bytes.size(), 1000u);
  EXPECT_EQ(filesIn(temporary), 0);
}

TEST_P(DocumentInAPrivateFile, LeavesNothingWhenItsStreamFails) {
  Written document(GetParam());
  document.stream.room = 100;
  ASSERT_EQ(writeContent(document), SCRIVALEN_OK);
  document.closed();
  EXPECT_EQ(document.result, SCRIVALEN_FILE_ERROR);
  EXPECT_EQ(document.error(), std::string("cannot write the stream of ") + GetParam() + ": No space left on device");
  EXPECT_EQ(filesIn(temporary), 0);
}

TEST_P(DocumentInAPrivateFile, FailsWithoutAPlaceForIt) {
  ::setenv("TMPDIR", (path + "/missing").c_str(), 1);
  Written document(GetParam());
  scrivalen_add_file(document, path.c_str(), "text");
  EXPECT_EQ(scrivalen_open(document), SCRIVALEN_FILE_ERROR);
  EXPECT_EQ(document.error(), std::string("cannot write the stream of ") + GetParam() +
                                  ": no folder can be created for its temporary file in '" + path +
                                  "/missing': No such file or directory");
  scrivalen_paragraph(document, "a", kNul);
  document.closed();
  EXPECT_EQ(bytesOf(folder / L"made"), "a\n");
}

TEST_P(DocumentInAPrivateFile, FailsWhenItIsTooLargeForItsDisk) {
  const CapturedLog log;
  Written document(GetParam());
  writePages(document, 2000);
  {
    const FileSizeLimit limit(20000);
    document.closed();
  }
  EXPECT_EQ(document.result, SCRIVALEN_FILE_ERROR);
  const std::string start = std::string("cannot write the stream of ") + GetParam() +
                            ": its temporary file cannot be completed in '" + scrivalen::narrowPath(temporary.path()) +
                            "': ";
  EXPECT_EQ(document.error().find(start), 0u) << document.error();
  EXPECT_EQ(document.error().find("scrivalen-work-"), std::string_view::npos) << document.error();
  EXPECT_EQ(document.stream.bytes, "");
  EXPECT_EQ(warningsOf(document), "");
  EXPECT_EQ(filesIn(temporary), 0);
  EXPECT_TRUE(log.lines().empty());
}

TEST_P(DocumentInAPrivateFile, IsNotDeliveredWhenItIsCancelledAtAnyPoint) {
  writeBytes(folder / L"made", "earlier");
  bool isCancelled = true;
  for (int last = 1; isCancelled && !HasFailure(); ++last) {
    const Handle document(scrivalen_new());
    Cancelling progress{last};
    scrivalen_add_file(document.get(), path.c_str(), GetParam());
    scrivalen_set_progress(document.get(), Cancelling::report, &progress);
    writePages(document.get(), 5);
    const scrivalen_status result = scrivalen_close(document.get());
    isCancelled = progress.calls == last;
    EXPECT_EQ(progress.calls, isCancelled ? last : last - 1) << "it was called again";
    EXPECT_EQ(result, isCancelled ? SCRIVALEN_CANCELLED : SCRIVALEN_OK) << scrivalen_error(document.get());
    EXPECT_EQ(scrivalen_output_result(document.get(), 0), result);
    EXPECT_EQ(bytesOf(folder / L"made") == "earlier", isCancelled);
    EXPECT_EQ(filesIn(temporary), 0);
    EXPECT_EQ(filesIn(folder), 1);
  }
}

INSTANTIATE_TEST_SUITE_P(Each, DocumentInAPrivateFile, testing::Values("pdf"),
                         [](const auto& tested) { return std::string(tested.param); });

// Pages are laid out twice: once for their places, once for their bytes.
TEST(PdfInAPrivateFile, ReportsEachPage) {
  Written document("pdf");
  Cancelling progress;
  scrivalen_set_progress(document, Cancelling::report, &progress);
  writePages(document, 50);
  document.closed();
  EXPECT_EQ(document.result, SCRIVALEN_OK);
  EXPECT_GE(progress.calls, 100);
}
