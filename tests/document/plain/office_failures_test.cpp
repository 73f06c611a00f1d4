#include "document/plain/office_content.h"
#include "formats/docx/reference/made_reference.h"
#include "support/faults/file_without_memory.h"
#include "support/faults/stream_pieces.h"
#include "system/files/files.h"

#include <gtest/gtest.h>

#include <set>
#include <tuple>

namespace scrivalen::test {
namespace {

// Writes a document into a stream with so much room, beside one that has enough.
void expectToFailAlone(const char* format, std::size_t room, scrivalen_status (*write)(scrivalen_document*)) {
  SCOPED_TRACE(room);
  Written document(format);
  document.stream.room = room;
  MemoryStream text;
  scrivalen_add_stream(document, "text", MemoryStream::write, &text);
  write(document);
  ASSERT_EQ(document.closed().size(), room);
  ASSERT_EQ(document.result, SCRIVALEN_FILE_ERROR);
  ASSERT_EQ(scrivalen_output_result(document, 0), SCRIVALEN_FILE_ERROR);
  ASSERT_EQ(document.error(), std::string("cannot write the stream of ") + format + ": No space left on device");
  ASSERT_EQ(scrivalen_output_result(document, 1), SCRIVALEN_OK);
  ASSERT_FALSE(text.bytes.empty());
}

scrivalen_status writeAWord(scrivalen_document* document) { return scrivalen_paragraph(document, "word", kNul); }

scrivalen_status writePieces(scrivalen_document* document) { return writeMuch(document, 30); }

// A document with whatever has memory of its own and is not in the content of every kind: a table in parts, text from
// right to left, properties.
scrivalen_status writeBeyond(scrivalen_document* document) {
  scrivalen_status first = SCRIVALEN_OK;
  const auto note = [&first](scrivalen_status status) { first = first == SCRIVALEN_OK ? status : first; };
  static const std::string picture = greyPng(3, 3);
  note(scrivalen_set(document, "title", "A title that is longer than what a string holds in itself"));
  note(scrivalen_set(document, "language", "ar"));
  note(scrivalen_set(document, "header", "{title}||{section}"));
  note(scrivalen_set(document, "footer", "{page} of {pages} pages"));
  note(scrivalen_set(document, "property:of the host", "with a value"));
  note(writeMuch(document, 1));
  for (const char* section : {"A section", "A section"}) {
    note(scrivalen_begin_section(document, section, nullptr));
    note(scrivalen_image(document, picture.data(), picture.size(), "grey", 0));
    note(scrivalen_begin_paragraph(document, nullptr));
    note(scrivalen_begin_link(document, "#nowhere-that-is-known", nullptr));
    note(scrivalen_text(document, "A link \xD8\xB3\xD9\x84\xD8\xA7\xD9\x85", kNul));
    note(scrivalen_end(document));
    note(scrivalen_end(document));
    note(scrivalen_begin_table(document, nullptr, 0, "wide"));
    for (int row = 0; row < 42; ++row) {
      note(scrivalen_begin_row(document, row == 0));
      for (int column = 0; column < 70; ++column) {
        note(scrivalen_cell_number(document, row + column / 8.0));
      }
      note(scrivalen_end(document));
    }
    note(scrivalen_end(document));
    note(scrivalen_end(document));
  }
  return first;
}

using WriteOffice = scrivalen_status (*)(scrivalen_document*);

scrivalen_status writeFile(const std::string& path, const char* format, WriteOffice write) {
  const Handle document(scrivalen_new());
  if (!document) {
    return SCRIVALEN_OUT_OF_MEMORY;
  }
  scrivalen_set(document.get(), "clock", "2026-01-31 23:59:59");
  const scrivalen_status added = scrivalen_add_file(document.get(), path.c_str(), format);
  const scrivalen_status content = write(document.get());
  const scrivalen_status closed = scrivalen_close(document.get());
  return added != SCRIVALEN_OK ? added : content != SCRIVALEN_OK ? content : closed;
}

// A template with a theme, a list of fonts, and styles of which some are ours.
const std::string& referencePath() {
  static const TemporaryFolder folder;
  static const std::string path = [] {
    const std::string styles =
        "<w:docDefaults/><w:style w:type='paragraph' w:default='1' w:styleId='Standard'><w:name "
        "w:val='Normal'/></w:style>"
        "<w:style w:styleId='of a heading of the first level'><w:name w:val='heading 1'/>"
        "<w:basedOn w:val='Standard'/><w:pPr><w:numPr><w:numId w:val='1'/></w:numPr></w:pPr></w:style>"
        "<w:style w:styleId='q'><w:name w:val='Quote'/><w:pPr><w:pBdr><w:left "
        "w:val='single'/></w:pBdr></w:pPr></w:style>"
        "<w:style w:type='table' w:styleId='t'><w:name w:val='Table'/><w:tblStylePr w:type='firstRow'><w:tcPr>"
        "<w:shd w:val='clear' w:fill='FF0000'/></w:tcPr></w:tblStylePr></w:style>"
        "<w:style w:styleId='toc'><w:name w:val='toc 1'/><w:pPr><w:tabs><w:tab w:val='right' w:pos='9000'/></w:tabs>"
        "</w:pPr></w:style>";
    writeBytes(folder / L"look.dotx", referenceOfParts(partsWithStyles(styles)));
    return narrowPath(folder / L"look.dotx");
  }();
  return path;
}

scrivalen_status writeWithReference(scrivalen_document* document) {
  const scrivalen_status set = scrivalen_set(document, "reference", referencePath().c_str());
  const scrivalen_status written = writeEveryKind(document);
  return set != SCRIVALEN_OK ? set : written;
}

class OfficeOnAFailingStream : public testing::TestWithParam<const char*> {};

class OfficeWithoutMemory : public testing::TestWithParam<std::tuple<const char*, FailingAllocations::Extent>> {};

}  // namespace

TEST_P(OfficeOnAFailingStream, FailsAtEachByte) {
  for (const WriteOffice write : {writeAWord, writeEveryKind}) {
    Written whole(GetParam());
    ASSERT_EQ(write(whole), SCRIVALEN_OK);
    const std::size_t size = whole.closed().size();
    for (std::size_t room = 0; room < size && !HasFatalFailure(); ++room) {
      expectToFailAlone(GetParam(), room, write);
    }
  }
}

TEST_P(OfficeOnAFailingStream, FailsAtEachOfItsPieces) {
  StreamPieces pieces;
  const Handle whole(scrivalen_new());
  scrivalen_add_stream(whole.get(), GetParam(), StreamPieces::write, &pieces);
  scrivalen_set(whole.get(), "clock", "2026-01-31 23:59:59");  // as in those that fail, which have its size
  ASSERT_EQ(writePieces(whole.get()), SCRIVALEN_OK);
  ASSERT_EQ(scrivalen_close(whole.get()), SCRIVALEN_OK);
  ASSERT_GT(pieces.ends.size(), 4u);
  std::set<std::size_t> rooms = {0};
  for (const std::size_t end : pieces.ends) {
    rooms.insert({end - 1, end});
  }
  rooms.erase(pieces.size);
  for (const std::size_t room : rooms) {
    expectToFailAlone(GetParam(), room, writePieces);
  }
}

INSTANTIATE_TEST_SUITE_P(Each, OfficeOnAFailingStream, testing::Values("xlsx", "docx"),
                         [](const auto& tested) { return std::string(tested.param); });

TEST_P(OfficeWithoutMemory, IsCompleteOrReportsItAndLeavesTheEarlierFile) {
  const auto [format, extent] = GetParam();
  contentSteps();  // which are made once, in memory of the test's own
  for (const WriteOffice write : {writeBeyond, writeEveryKind}) {
    expectTheFileOrTheEarlierOne(
        extent, [format = format, write](const std::string& path) { return writeFile(path, format, write); });
  }
}

INSTANTIATE_TEST_SUITE_P(Each, OfficeWithoutMemory,
                         testing::Combine(testing::Values("xlsx", "docx"),
                                          testing::Values(Extent::One, Extent::AllFromThere)));

TEST(ReferenceWithoutMemory, GivesACompleteDocumentOrReportsItAndLeavesTheEarlierFile) {
  contentSteps();
  referencePath();
  for (const Extent extent : {Extent::One, Extent::AllFromThere}) {
    expectTheFileOrTheEarlierOne(extent,
                                 [](const std::string& path) { return writeFile(path, "docx", writeWithReference); });
  }
}

TEST(ReferenceOnAFailingStream, FailsAtEachOfManyBytes) {
  Written whole("docx");
  ASSERT_EQ(writeWithReference(whole), SCRIVALEN_OK);
  const std::size_t size = whole.closed().size();
  for (std::size_t room = 0; room < size && !testing::Test::HasFatalFailure(); room += 97) {
    expectToFailAlone("docx", room, writeWithReference);
  }
}

}  // namespace scrivalen::test
