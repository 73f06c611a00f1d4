#include "api/api_support.h"
#include "support/files.h"
#include "system/files/files.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

using namespace scrivalen::test;

namespace {

// A format, and a folder for temporary files.
struct DocumentAndTemporaryFiles : testing::TestWithParam<const char*> {
  DocumentAndTemporaryFiles() {
    const char* const usual = std::getenv("TMPDIR");
    kept_ = usual ? usual : "/tmp";
    ::setenv("TMPDIR", scrivalen::narrowPath(temporary.path()).c_str(), 1);
  }
  ~DocumentAndTemporaryFiles() override { ::setenv("TMPDIR", kept_.c_str(), 1); }

  static std::ptrdiff_t filesIn(const TemporaryFolder& folder) {
    return std::distance(std::filesystem::directory_iterator(asPath(folder.path())), {});
  }

  const TemporaryFolder temporary;
  const TemporaryFolder folder;
  const std::string path = scrivalen::narrowPath(folder / L"made");

 private:
  std::string kept_;
};

struct DeliveredDocument : DocumentAndTemporaryFiles {};

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

TEST_P(DeliveredDocument, HasTheSameBytesInAFileAndInAStream) {
  Written document(GetParam());
  scrivalen_add_file(document, path.c_str(), GetParam());
  ASSERT_EQ(writeContent(document), SCRIVALEN_OK);
  document.closed();
  EXPECT_TRUE(document.stream.bytes == bytesOf(folder / L"made"));
  EXPECT_GT(document.stream.bytes.size(), 1000u);
  EXPECT_EQ(filesIn(temporary), 0);
}

TEST_P(DeliveredDocument, LeavesNothingWhenItsStreamFails) {
  Written document(GetParam());
  document.stream.room = 100;
  ASSERT_EQ(writeContent(document), SCRIVALEN_OK);
  document.closed();
  EXPECT_EQ(document.result, SCRIVALEN_FILE_ERROR);
  EXPECT_EQ(document.error(), std::string("cannot write the stream of ") + GetParam() + ": No space left on device");
  EXPECT_EQ(filesIn(temporary), 0);
}

TEST_P(DeliveredDocument, IsNotDeliveredWhenItIsCancelledAtAnyPoint) {
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

INSTANTIATE_TEST_SUITE_P(Each, DeliveredDocument, testing::Values("pdf", "xlsx", "docx"),
                         [](const auto& tested) { return std::string(tested.param); });

struct PdfDocumentInAStream : DocumentAndTemporaryFiles {};

TEST_P(PdfDocumentInAStream, NeedsNoTemporaryFileAndReportsEachPage) {
  Written document(GetParam());
  Cancelling progress;
  scrivalen_set_progress(document, Cancelling::report, &progress);
  writePages(document, 50);
  EXPECT_EQ(filesIn(temporary), 0);
  document.closed();
  EXPECT_EQ(document.result, SCRIVALEN_OK);
  EXPECT_GE(progress.calls, 50);
}

INSTANTIATE_TEST_SUITE_P(Each, PdfDocumentInAStream, testing::Values("pdf"),
                         [](const auto& tested) { return std::string(tested.param); });
