#include "api/api_support.h"
#include "support/documents/pictures.h"
#include "support/faults/file_without_memory.h"
#include "support/faults/stream_pieces.h"
#include "support/files.h"
#include "system/files/files.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <set>

namespace scrivalen::test {
namespace {

// Letters of several scripts, some joined, some with marks that are drawn on their own.
constexpr const char* kShaped =
    "A link \u043F\u0440 \u0633\u0644\u0627\u0645 \u0645\u064F\u062D\u064E\u0645\u064E\u0651\u062F\u064C "
    "q\u0303x\u0323\u0308yq\u0303 \U0001F600\u200D\U0001F601 \u0645\u06CC\u200C\u062E\u0648\u0627\u0647\u0645";

// A document with whatever needs memory of its own. It has texts of several scripts if that is wished.
scrivalen_status writeContent(scrivalen_document* document, bool isShaped) {
  scrivalen_status first = SCRIVALEN_OK;
  const auto note = [&first](scrivalen_status status) { first = first == SCRIVALEN_OK ? status : first; };
  static const std::string picture = greyPng(3, 3);
  note(scrivalen_set(document, "title", "A title that is longer than what a string holds in itself"));
  note(scrivalen_set(document, "clock", "2026-01-31 23:59:59"));
  note(scrivalen_set(document, "header", "{title}||{section}"));
  note(scrivalen_set(document, "footer", "{page} of {pages} pages"));
  note(scrivalen_begin_contents(document));
  note(scrivalen_contents_item(document, 1, "a-place-with-a-long-name", "An item of the contents", kNul));
  note(scrivalen_end(document));
  note(scrivalen_begin_section(document, "A section", "section"));
  note(scrivalen_begin_heading(document, 1, "a-place-with-a-long-name", nullptr));
  note(scrivalen_text(document, "A heading of more than sixteen letters", kNul));
  note(scrivalen_end(document));
  note(scrivalen_begin_paragraph(document, nullptr));
  note(scrivalen_begin_link(document, "#a-place-with-a-long-name", nullptr));
  note(scrivalen_text(document, isShaped ? kShaped : "A link", kNul));
  note(scrivalen_end(document));
  note(scrivalen_image(document, picture.data(), picture.size(), "grey", 0));
  note(scrivalen_end(document));
  note(scrivalen_begin_quote(document));
  note(scrivalen_begin_code(document, nullptr));
  note(scrivalen_text(document, "int i;\nint j;", kNul));
  note(scrivalen_end(document));
  note(scrivalen_end(document));
  note(scrivalen_begin_table(document, nullptr, 0, nullptr));
  for (int row = 0; row < 2; ++row) {
    note(scrivalen_begin_row(document, row == 0));
    note(scrivalen_cell(document, "The text of a cell that is wide", kNul));
    note(scrivalen_cell_integer(document, 12));
    note(scrivalen_end(document));
  }
  note(scrivalen_end(document));
  note(scrivalen_end(document));
  return first;
}

scrivalen_status writeFile(const std::string& path, bool isShaped) {
  const Handle document(scrivalen_new());
  if (!document) {
    return SCRIVALEN_OUT_OF_MEMORY;
  }
  scrivalen_status first = scrivalen_add_file(document.get(), path.c_str(), "pdf");
  const scrivalen_status content = writeContent(document.get(), isShaped);
  const scrivalen_status closed = scrivalen_close(document.get());
  first = first == SCRIVALEN_OK ? content : first;
  return first == SCRIVALEN_OK ? closed : first;
}

class PdfWithoutMemory : public testing::TestWithParam<Extent> {};

TEST_P(PdfWithoutMemory, IsCompleteOrReportsItAndLeavesTheEarlierFile) {
  expectTheFileOrTheEarlierOne(GetParam(), [](const std::string& path) { return writeFile(path, true); });
}

INSTANTIATE_TEST_SUITE_P(Each, PdfWithoutMemory, testing::Values(Extent::One, Extent::AllFromThere));

// At the edges of all pieces, and at some bytes between them.
TEST(PdfOnAFailingStream, FailsAtEachByteAndAlone) {
  StreamPieces pieces;
  const Handle whole(scrivalen_new());
  scrivalen_add_stream(whole.get(), "pdf", StreamPieces::write, &pieces);
  ASSERT_EQ(writeContent(whole.get(), false), SCRIVALEN_OK);
  ASSERT_EQ(scrivalen_close(whole.get()), SCRIVALEN_OK);
  std::set<std::size_t> rooms = {0, 1};
  for (const std::size_t end : pieces.ends) {
    rooms.insert({end - 1, end, end + 1});
  }
  for (std::size_t room = 0; room < pieces.size; room += 997) {
    rooms.insert(room);
  }
  for (const std::size_t room : rooms) {
    SCOPED_TRACE(room);
    MemoryStream full;
    full.room = room;
    MemoryStream text;
    const Handle document(scrivalen_new());
    scrivalen_add_stream(document.get(), "pdf", MemoryStream::write, &full);
    scrivalen_add_stream(document.get(), "text", MemoryStream::write, &text);
    writeContent(document.get(), false);
    const scrivalen_status closed = scrivalen_close(document.get());
    const bool hasRoom = room >= pieces.size;
    EXPECT_EQ(closed, hasRoom ? SCRIVALEN_OK : SCRIVALEN_FILE_ERROR);
    EXPECT_EQ(scrivalen_output_result(document.get(), 0), closed);
    EXPECT_EQ(scrivalen_output_error(document.get(), 0) == std::string(), hasRoom);
    EXPECT_EQ(scrivalen_output_result(document.get(), 1), SCRIVALEN_OK);
    EXPECT_EQ(full.bytes.size(), std::min(room, pieces.size));
    EXPECT_NE(text.bytes.find("A heading"), std::string::npos);
  }
}

TEST(PdfThatIsCancelled, LeavesTheEarlierFile) {
  const TemporaryFolder folder;
  const std::wstring file = folder / L"a.pdf";
  writeBytes(file, "earlier");
  const Handle document(scrivalen_new());
  scrivalen_add_file(document.get(), narrowPath(file).c_str(), "pdf");
  static int calls;
  calls = 0;
  scrivalen_set_progress(
      document.get(), [](void*, std::uint64_t, std::uint64_t) { return ++calls > 3 ? 1 : 0; }, nullptr);
  scrivalen_begin_table(document.get(), nullptr, 0, nullptr);
  scrivalen_status result = SCRIVALEN_OK;
  int rows = 0;
  for (; rows < 1000000 && result == SCRIVALEN_OK; ++rows) {
    scrivalen_begin_row(document.get(), 0);
    scrivalen_cell(document.get(), "The text of a cell", kNul);
    result = scrivalen_end(document.get());
  }
  EXPECT_EQ(result, SCRIVALEN_CANCELLED);
  EXPECT_LT(rows, 1000000);
  EXPECT_EQ(scrivalen_close(document.get()), SCRIVALEN_CANCELLED);
  EXPECT_EQ(bytesOf(file), "earlier");
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(asPath(folder.path())), {}), 1);
}

}  // namespace
}  // namespace scrivalen::test
