#include "api/api_support.h"
#include "api/arrow_abi.h"
#include "support/faults/out_of_memory.h"
#include "support/files.h"
#include "system/files/files.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <iterator>

using namespace scrivalen::test;

namespace {

struct DocumentStatus : testing::Test {
  /// The path of a file in a folder that does not exist.
  std::string missing() const { return scrivalen::narrowPath(folder / L"missing") + "/a.txt"; }
  std::string path(const wchar_t* name) const { return scrivalen::narrowPath(folder / name); }
  std::ptrdiff_t files() const { return std::distance(std::filesystem::directory_iterator(asPath(folder.path())), {}); }

  const TemporaryFolder folder;
};

}  // namespace

// One test for each status of the header.
TEST_F(DocumentStatus, IsOk) {
  const Written document;
  EXPECT_EQ(scrivalen_close(document), SCRIVALEN_OK);
  EXPECT_EQ(scrivalen_result(document), SCRIVALEN_OK);
  EXPECT_EQ(document.error(), "");
}

TEST_F(DocumentStatus, IsAFileError) {
  const Written document;
  scrivalen_add_file(document, missing().c_str(), nullptr);
  EXPECT_EQ(scrivalen_open(document), SCRIVALEN_FILE_ERROR);
  EXPECT_EQ(scrivalen_output_result(document, 1), SCRIVALEN_FILE_ERROR);
  EXPECT_EQ(scrivalen_close(document), SCRIVALEN_FILE_ERROR);
}

TEST_F(DocumentStatus, IsATemplateThatIsNotFound) {
  const Written document("html");
  MemoryStream text;
  scrivalen_add_stream(document, "text", MemoryStream::write, &text);
  EXPECT_EQ(scrivalen_set(document, "html.template", missing().c_str()), SCRIVALEN_OK);
  EXPECT_EQ(scrivalen_open(document), SCRIVALEN_TEMPLATE_NOT_FOUND);
  EXPECT_NE(document.error().find("a.txt"), std::string::npos) << document.error();
  EXPECT_EQ(scrivalen_paragraph(document, "text", kNul), SCRIVALEN_OK);
  EXPECT_EQ(scrivalen_close(document), SCRIVALEN_TEMPLATE_NOT_FOUND);
  EXPECT_EQ(scrivalen_output_result(document, 0), SCRIVALEN_TEMPLATE_NOT_FOUND);
  EXPECT_EQ(scrivalen_output_result(document, 1), SCRIVALEN_OK);
  EXPECT_EQ(text.bytes, "text\n");
}

TEST_F(DocumentStatus, IsThatMemoryRanOut) {
  const Written document;
  {
    const FailingAllocations memory(1, Extent::AllFromThere);
    EXPECT_EQ(scrivalen_begin_section(document, "a section", nullptr), SCRIVALEN_OUT_OF_MEMORY);
  }
  EXPECT_EQ(scrivalen_result(document), SCRIVALEN_OUT_OF_MEMORY);
  EXPECT_EQ(scrivalen_close(document), SCRIVALEN_OUT_OF_MEMORY);
}

TEST_F(DocumentStatus, IsAMisuse) {
  const Written document;
  EXPECT_EQ(scrivalen_end(document), SCRIVALEN_MISUSE);
  EXPECT_EQ(scrivalen_result(document), SCRIVALEN_OK);
}

TEST_F(DocumentStatus, IsAnUnknownFormat) {
  const Written document;
  EXPECT_EQ(scrivalen_add_stream(document, "word", MemoryStream::write, nullptr), SCRIVALEN_UNKNOWN_FORMAT);
  EXPECT_EQ(scrivalen_result(document), SCRIVALEN_OK);
}

TEST_F(DocumentStatus, IsAnUnknownSetting) {
  const Written document;
  EXPECT_EQ(scrivalen_set(document, "colour", "red"), SCRIVALEN_UNKNOWN_SETTING);
  EXPECT_EQ(scrivalen_set(document, "landscape", "perhaps"), SCRIVALEN_UNKNOWN_SETTING);
  EXPECT_EQ(scrivalen_result(document), SCRIVALEN_OK);
}

TEST_F(DocumentStatus, IsThatItWasCancelled) {
  const Written document;
  scrivalen_set_progress(
      document, [](void*, std::uint64_t, std::uint64_t) { return 1; }, nullptr);
  EXPECT_EQ(scrivalen_close(document), SCRIVALEN_CANCELLED);
  EXPECT_EQ(scrivalen_output_result(document, 0), SCRIVALEN_CANCELLED);
}

TEST_F(DocumentStatus, IsAnInputError) {
  const Written document;
  ArrowArrayStream stream{};
  stream.get_schema = [](ArrowArrayStream*, ArrowSchema*) { return 5; };
  stream.get_next = [](ArrowArrayStream*, ArrowArray*) { return 5; };
  stream.release = [](ArrowArrayStream* self) { self->release = nullptr; };
  scrivalen_begin_table(document, nullptr, 1, nullptr);
  EXPECT_EQ(scrivalen_rows_arrow_stream(document, &stream), SCRIVALEN_INPUT_ERROR);
  EXPECT_EQ(document.error(), "the Arrow stream failed: error 5 from get_schema");
  EXPECT_EQ(scrivalen_result(document), SCRIVALEN_OK);
}

// Memory that runs out while a document is set up leaves no file, whether the host opens, writes or closes it then.
TEST_F(DocumentStatus, OfMemoryThatRanOutBeforeTheDocumentOpens) {
  const std::string file = path(L"a.html");
  const std::string longValue(100, 'x');
  for (int next = 0; next < 3; ++next) {
    SCOPED_TRACE(next);
    writeBytes(folder / L"a.html", "earlier");
    const Handle document(scrivalen_new());
    ASSERT_EQ(scrivalen_add_file(document.get(), file.c_str(), nullptr), SCRIVALEN_OK);
    {
      const FailingAllocations memory(1, Extent::One);
      ASSERT_EQ(scrivalen_set(document.get(), "title", longValue.c_str()), SCRIVALEN_OUT_OF_MEMORY);
    }
    if (next == 1) {
      EXPECT_EQ(scrivalen_open(document.get()), SCRIVALEN_OUT_OF_MEMORY);
    } else if (next == 2) {
      EXPECT_EQ(scrivalen_paragraph(document.get(), "text", kNul), SCRIVALEN_OUT_OF_MEMORY);
    }
    EXPECT_EQ(files(), 1) << "nothing is created any more";
    EXPECT_EQ(scrivalen_close(document.get()), SCRIVALEN_OUT_OF_MEMORY);
    EXPECT_EQ(scrivalen_output_result(document.get(), 0), SCRIVALEN_OUT_OF_MEMORY);
    EXPECT_EQ(bytesOf(folder / L"a.html"), "earlier");
    EXPECT_EQ(files(), 1);
  }
}
