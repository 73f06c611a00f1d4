#include "api/api_support.h"
#include "support/documents/pictures.h"
#include "support/documents/workbook.h"
#include "support/files.h"
#include "system/files/files.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>

// Pictures that cannot be used, in RTF, Word documents and spreadsheets: each has the text of the picture instead, and
// the rest of the document.
namespace scrivalen::test {
namespace {

using PutPicture = std::function<scrivalen_status(scrivalen_document*, const char* alternative)>;

PutPicture bytesAs(const std::string& bytes) {
  return [bytes](scrivalen_document* document, const char* alternative) {
    return scrivalen_image(document, bytes.data(), bytes.size(), alternative, 0);
  };
}

void write(Written& written, const PutPicture& put) {
  scrivalen_begin_paragraph(written, nullptr);
  written.text("before ");
  EXPECT_EQ(put(written, "<A> & {B}"), SCRIVALEN_OK);
  written.text(" after");
  written.end();
  EXPECT_EQ(put(written, "alone"), SCRIVALEN_OK);
  scrivalen_begin_table(written, nullptr, 0, nullptr);
  scrivalen_begin_row(written, 0);
  scrivalen_begin_cell(written, nullptr);
  EXPECT_EQ(put(written, "in a cell"), SCRIVALEN_OK);
  written.end();
  scrivalen_cell(written, "last", kNul);
  written.end(2);
}

// What is between two texts of a document with this picture.
std::string partOf(const char* format, const PutPicture& put, std::string_view begin, std::string_view end,
                   const std::function<std::string(const std::string&)>& textOf) {
  Written written(format);
  write(written, put);
  const std::string text = textOf(written.closed());
  EXPECT_EQ(written.result, SCRIVALEN_OK);
  const std::size_t from = text.find(begin);
  const std::size_t to = text.find(end, from);
  EXPECT_NE(to, text.npos) << text;
  return to == text.npos ? text : text.substr(from, to - from);
}

// The text of a part of an archive that has no pictures.
std::string partOfArchive(const std::string& bytes, std::string_view name) {
  const TemporaryFolder folder;
  writeBytes(folder / L"made", bytes);
  EXPECT_EQ(bytes.find("/media/"), bytes.npos);
  return workbookPart(folder / L"made", name);
}

void expectTextInRtf(const PutPicture& put) {
  const auto itself = [](const std::string& bytes) { return bytes; };
  EXPECT_EQ(partOf("rtf", put, "\\pard", "\\pard\\plain\\sl-160", itself),
            "\\pard\\plain\\s0\\widctlpar\\sl264\\slmult1\\sa120\\fs22\\sb0 before <A> & \\{B\\} after\\par\n"
            "\\pard\\plain\\s0\\widctlpar\\sl264\\slmult1\\sa120\\fs22 alone\\par\n"
            "\\trowd\\trgaph80\\trleft0\\trkeep\\clbrdrb\\brdrs\\brdrw5\\brdrcf2\\cellx1324"
            "\\clbrdrb\\brdrs\\brdrw5\\brdrcf2\\cellx2046\\pard\\plain\\intbl\\sb30\\sa30\\fs20\\ql in a cell\\cell\n"
            "\\ql last\\cell\n\\row\n");
}

void expectTextInWord(const PutPicture& put) {
  const auto text = [](const std::string& bytes) { return partOfArchive(bytes, "word/document.xml"); };
  EXPECT_EQ(partOf("docx", put, "<w:p>", "<w:tbl>", text),
            "<w:p><w:r><w:t xml:space=\"preserve\">before </w:t></w:r><w:r><w:t>&lt;A&gt; &amp; {B}</w:t></w:r>"
            "<w:r><w:t xml:space=\"preserve\"> after</w:t></w:r></w:p>\n"
            "<w:p><w:r><w:t>alone</w:t></w:r></w:p>\n");
  EXPECT_EQ(
      partOf("docx", put, "<w:tr>", "</w:tbl>", text),
      "<w:tr><w:trPr><w:cantSplit/></w:trPr><w:tc><w:tcPr><w:tcW w:w=\"1324\" w:type=\"dxa\"/></w:tcPr><w:p><w:pPr>"
      "<w:pStyle w:val=\"TableText\"/></w:pPr><w:r><w:t>in a cell</w:t></w:r></w:p></w:tc>"
      "<w:tc><w:tcPr><w:tcW w:w=\"722\" w:type=\"dxa\"/></w:tcPr><w:p><w:pPr><w:pStyle w:val=\"TableText\"/>"
      "</w:pPr><w:r><w:t>last</w:t></w:r></w:p></w:tc></w:tr>\n");
}

void expectTextInSheet(const PutPicture& put) {
  const auto sheet = [](const std::string& bytes) { return partOfArchive(bytes, "xl/worksheets/sheet1.xml"); };
  EXPECT_EQ(
      partOf("xlsx", put, "<sheetData>", "<pageMargins", sheet),
      "<sheetData><row r=\"1\"><c r=\"A1\" t=\"inlineStr\"><is><t>before &lt;A&gt; &amp; {B} after</t></is></c></row>"
      "<row r=\"2\"><c r=\"A2\" t=\"inlineStr\"><is><t>alone</t></is></c></row>"
      "<row r=\"4\"><c r=\"A4\" t=\"inlineStr\"><is><t>in a cell</t></is></c>"
      "<c r=\"B4\" t=\"inlineStr\"><is><t>last</t></is></c></row></sheetData>");
}

void expectText(const PutPicture& put, std::string_view subject, std::string_view reason) {
  SCOPED_TRACE(reason);
  expectTextInRtf(put);
  expectTextInWord(put);
  expectTextInSheet(put);
  for (const char* const format : {"rtf", "docx", "xlsx"}) {
    Written written(format);
    write(written, put);
    written.closed();
    EXPECT_EQ(warningsOf(written), std::string("input 4 3 cannot use ")
                                       .append(subject)
                                       .append(": ")
                                       .append(reason)
                                       .append("; its text takes its place\n"));
  }
}

// A PNG that states a size, with the right checksum.
std::string pngThatStates(std::uint32_t width, std::uint32_t height) {
  std::string png = greyPng(1, 1);
  png.replace(png.find("IHDR") + 4, 8, bigEndian(width, 4) + bigEndian(height, 4));
  return withChecksums(png);
}

}  // namespace

TEST(OfficePictures, ThatAreBrokenLeaveTheirText) {
  std::string png = greyPng(8, 8);
  png[png.find("IDAT") + 6] ^= 1;
  expectText(bytesAs(png), "a picture", "it is a PNG with broken pixels");
  expectText(bytesAs("\x89PNG\r\n\x1a\n"), "a picture", "it is a PNG without a valid header");
  const std::string jpeg = greyJpeg(8, 8);
  expectText(bytesAs(jpeg.substr(0, jpeg.size() - 4)), "a picture", "it is a JPEG that ends early");
}

TEST(OfficePictures, ThatLieAboutTheirSizeLeaveTheirText) {
  expectText(bytesAs(pngThatStates(0x7FFFFFFF, 0x7FFFFFFF)), "a picture", "it has more than 64 megapixels");
  expectText(bytesAs(pngThatStates(30'000, 30'000)), "a picture", "it has more than 64 megapixels");
  expectText(bytesAs(pngThatStates(8000, 8000)), "a picture", "it has fewer pixels than it states");
  expectText(bytesAs(pngThatStates(0, 8)), "a picture", "it has no pixels");
  expectText(bytesAs(greyJpeg(8, 0)), "a picture", "it has no pixels");
}

TEST(OfficePictures, OfOtherTypesLeaveTheirText) {
  for (const std::string_view other :
       {"<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"1\" height=\"1\"/>", "GIF89a", ""}) {
    expectText(bytesAs(std::string(other)), "a picture", "it is neither PNG nor JPEG");
  }
}

TEST(OfficePictures, InFilesThatAreTooLargeLeaveTheirText) {
  const TemporaryFolder folder;
  const std::wstring file = folder / L"large.png";
  writeBytes(file, greyPng(1, 1));
  std::filesystem::resize_file(asPath(file), (std::uint64_t{1} << 30) + 1);
  const std::string path = narrowPath(file);
  const auto put = [&path](scrivalen_document* document, const char* alternative) {
    return scrivalen_image_file(document, path.c_str(), alternative, 0);
  };
  expectText(put, "the picture '" + path + "'", "the file is larger than 1 GiB");
}

}  // namespace scrivalen::test
