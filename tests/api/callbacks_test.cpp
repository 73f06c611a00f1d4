#include "api/api_support.h"
#include "support/files.h"
#include "system/files/files.h"

#include <gtest/gtest.h>

#include <stdexcept>

using namespace scrivalen::test;

namespace {

// Calls the document back with everything that it has.
struct CallingBack {
  static int write(void* user, const void*, std::size_t) {
    static_cast<CallingBack*>(user)->callBack();
    return 0;
  }
  static int report(void* user, std::uint64_t, std::uint64_t) {
    static_cast<CallingBack*>(user)->callBack();
    return 0;
  }

  void callBack() {
    ++calls;
    for (const Step& step : contentSteps()) {
      EXPECT_EQ(step.call(document), SCRIVALEN_MISUSE) << step.name;
    }
    EXPECT_EQ(scrivalen_add_file(document, "a.txt", nullptr), SCRIVALEN_MISUSE);
    EXPECT_EQ(scrivalen_set(document, "title", "a"), SCRIVALEN_MISUSE);
    EXPECT_EQ(scrivalen_set_progress(document, nullptr, nullptr), SCRIVALEN_MISUSE);
    EXPECT_EQ(scrivalen_open(document), SCRIVALEN_MISUSE);
    EXPECT_EQ(scrivalen_close(document), SCRIVALEN_MISUSE);
    scrivalen_warning warning{};
    warning.size = sizeof warning;
    EXPECT_EQ(scrivalen_next_warning(document, &warning), 0);
    scrivalen_free(document);
    EXPECT_EQ(scrivalen_result(document), SCRIVALEN_OK);
    EXPECT_EQ(scrivalen_output_result(document, 0), SCRIVALEN_OK);
    EXPECT_STREQ(scrivalen_error(document), "");
  }

  scrivalen_document* document = nullptr;
  int calls = 0;
};

// The bytes of the whole content.
std::string contentAs(const std::string& format) {
  Written document(format.c_str());
  writeContent(document);
  return document.closed();
}

scrivalen_status writeLittle(scrivalen_document* document) {
  scrivalen_heading(document, 1, "Heading", kNul);
  scrivalen_begin_table(document, nullptr, 1, nullptr);
  scrivalen_begin_row(document, 0);
  scrivalen_cell(document, "cell", kNul);
  scrivalen_end(document);
  return scrivalen_end(document);
}

// Lets a stream fail at each byte, or at some of them, and expects the bytes before it, and all of another stream.
void expectOnlyTheRestLost(const std::string& format, std::size_t step,
                           scrivalen_status (*write)(scrivalen_document*)) {
  Written whole(format.c_str());
  ASSERT_EQ(write(whole), SCRIVALEN_OK);
  const std::string expected = whole.closed();
  for (std::size_t missing = 0; missing <= expected.size(); missing += step) {
    const std::size_t room = expected.size() - missing;
    Written document(format.c_str());
    document.stream.room = room;
    MemoryStream other;
    scrivalen_add_stream(document, format.c_str(), MemoryStream::write, &other);
    ASSERT_EQ(write(document), SCRIVALEN_OK);
    ASSERT_EQ(document.closed(), expected.substr(0, room));
    ASSERT_EQ(document.result, missing == 0 ? SCRIVALEN_OK : SCRIVALEN_FILE_ERROR);
    ASSERT_EQ(scrivalen_output_result(document, 0), document.result);
    ASSERT_EQ(scrivalen_output_result(document, 1), SCRIVALEN_OK);
    ASSERT_EQ(other.bytes, expected);
  }
}

}  // namespace

TEST(DocumentCallbacks, MayNotCallTheDocument) {
  const std::string expected = contentAs("text");
  Written document;
  CallingBack stream{document};
  CallingBack progress{document};
  scrivalen_add_stream(document, "html", CallingBack::write, &stream);
  scrivalen_set_progress(document, CallingBack::report, &progress);
  EXPECT_EQ(writeContent(document), SCRIVALEN_OK);
  EXPECT_EQ(document.closed(), expected);
  EXPECT_EQ(document.result, SCRIVALEN_OK);
  EXPECT_GT(stream.calls, 0);
  EXPECT_GT(progress.calls, 0);
}

TEST(DocumentCallbacks, AnExceptionOfAStreamFailsItsOutputAlone) {
  const std::string expected = contentAs("text");
  Written document;
  scrivalen_add_stream(
      document, "html", [](void*, const void*, std::size_t) -> int { throw std::runtime_error("thrown"); }, nullptr);
  EXPECT_EQ(writeContent(document), SCRIVALEN_OK);
  EXPECT_EQ(document.closed(), expected);
  EXPECT_EQ(document.result, SCRIVALEN_FILE_ERROR);
  EXPECT_EQ(scrivalen_output_result(document, 0), SCRIVALEN_OK);
  EXPECT_EQ(scrivalen_output_result(document, 1), SCRIVALEN_FILE_ERROR);
}

// A format that is made in a file comes in one block, wherever the stream fails.
// In steps, because it is long in some formats.
TEST(DocumentCallbacks, AStreamThatFailsInAnyPartLosesOnlyTheRest) {
  for (const std::string& format : formats()) {
    SCOPED_TRACE(format);
    expectOnlyTheRestLost(format, 149, writeContent);
  }
}

// In the formats whose documents begin with a long head, or are copied from a file when they close, at some bytes.
TEST(DocumentCallbacks, AStreamThatFailsAtAnyByteLosesOnlyTheRest) {
  for (const std::string& format : formats()) {
    SCOPED_TRACE(format);
    const bool isShort = format == "text" || format == "html" || format == "xml" || format == "markdown";
    expectOnlyTheRestLost(format, isShort ? 1 : 149, writeLittle);
  }
}

TEST(DocumentCallbacks, TheReasonOfAFailedStreamIsTheSystems) {
  Written document;
  document.stream.room = 0;
  scrivalen_paragraph(document, "text", kNul);
  EXPECT_EQ(document.error(), "");
  document.closed();
  EXPECT_EQ(document.error(), "cannot write the stream of text: No space left on device");
  EXPECT_EQ(scrivalen_output_error(document, 0), document.error());
}

TEST(DocumentCallbacks, AFailedStreamMayGiveAnyNumber) {
  const Written document;
  scrivalen_add_stream(
      document, "html", [](void*, const void*, std::size_t) { return 123456; }, nullptr);
  scrivalen_paragraph(document, "text", kNul);
  EXPECT_EQ(scrivalen_close(document), SCRIVALEN_FILE_ERROR);
  EXPECT_EQ(document.error(), "cannot write the stream of html: error 123456");
}

TEST(DocumentCallbacks, ContentIsRefusedOnceEveryOutputHasFailed) {
  Written document;
  document.stream.room = 0;
  const std::string longText(200000, 'x');
  EXPECT_EQ(scrivalen_begin_code(document, nullptr), SCRIVALEN_OK);
  EXPECT_EQ(scrivalen_text(document, longText.data(), longText.size()), SCRIVALEN_FILE_ERROR);
  EXPECT_EQ(scrivalen_text(document, "text", kNul), SCRIVALEN_FILE_ERROR);
  EXPECT_EQ(scrivalen_end(document), SCRIVALEN_FILE_ERROR);
  EXPECT_EQ(scrivalen_close(document), SCRIVALEN_FILE_ERROR);
  EXPECT_EQ(document.stream.calls, 1);
}

TEST(DocumentCallbacks, ProgressCountsRowsAndBytes) {
  struct Progress {
    std::uint64_t rows = 0;
    std::uint64_t bytes = 0;
  } progress;
  Written document;
  scrivalen_set_progress(
      document,
      [](void* user, std::uint64_t rows, std::uint64_t bytes) {
        *static_cast<Progress*>(user) = {rows, bytes};
        return 0;
      },
      &progress);
  writeContent(document);
  document.closed();
  EXPECT_EQ(progress.rows, 5u);
  EXPECT_EQ(progress.bytes, document.stream.bytes.size());
}

TEST(DocumentCallbacks, ProgressCancelsAtAnyCall) {
  const TemporaryFolder folder;
  const std::wstring path = folder / L"report.html";
  writeBytes(path, "earlier");
  for (int last = 1;; ++last) {
    int toGo = last;
    Written document;
    ASSERT_EQ(scrivalen_add_file(document, scrivalen::narrowPath(path).c_str(), nullptr), SCRIVALEN_OK);
    scrivalen_set_progress(
        document, [](void* user, std::uint64_t, std::uint64_t) { return --*static_cast<int*>(user) == 0 ? 1 : 0; },
        &toGo);
    scrivalen_begin_code(document, nullptr);
    const std::string longText(100000, 'x');
    for (int i = 0; i < 3; ++i) {
      scrivalen_text(document, longText.data(), longText.size());
    }
    document.closed();
    if (toGo > 0) {
      EXPECT_EQ(document.result, SCRIVALEN_OK);
      EXPECT_NE(bytesOf(path), "earlier");
      EXPECT_GT(last, 8);
      return;
    }
    EXPECT_EQ(document.result, SCRIVALEN_CANCELLED);
    EXPECT_EQ(document.error(), "the document was cancelled");
    EXPECT_EQ(scrivalen_output_result(document, 0), SCRIVALEN_CANCELLED);
    EXPECT_EQ(scrivalen_paragraph(document, "late", kNul), SCRIVALEN_MISUSE);
    EXPECT_EQ(bytesOf(path), "earlier");
  }
}
