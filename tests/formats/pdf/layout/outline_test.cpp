#include "formats/pdf/layout/made_pdf.h"

#include <gtest/gtest.h>

#include <charconv>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace {

using namespace scrivalen::test;

struct Heading {
  const wchar_t* title;
  int level;
};

// One entry for each heading, all to the bookmark of a paragraph at 802.
MadePdf withEntries(const std::vector<Heading>& headings) {
  return madeInTimes([&](CPDFdoc& doc) {
    paragraph(doc, L"here");
    doc.BookMark(L"there");
    for (const Heading& heading : headings) {
      doc.AddOutlineItem(heading.title, L"there", heading.level);
    }
  });
}

// Objects 1 to 6 are the catalog, the page tree, two fonts, the page and its content; the first entry is 7, the
// outline 8.
TEST(PdfOutline, LinksLevelsZeroOneOne) {
  const MadePdf pdf = withEntries({{L"Intro", 0}, {L"One", 1}, {L"Two", 1}});
  const std::string begin = "<<\r\n/Type /Outline\r\n";
  const std::string destination = "/Dest [5 0 R\r\n/XYZ\r\n50\r\n802\r\n0\r\n]\r\n\r\n";
  const std::string end = ">>\r\nendobj\r\n\r\n";
  EXPECT_EQ(pdf.object(7), "7 0 obj\r\n" + begin + "/Count 2\r\n/Title (Intro)\r\n" + destination +
                               "/First 9 0 R\r\n/Last 10 0 R\r\n/Parent 8 0 R\r\n" + end);
  EXPECT_EQ(pdf.object(8), "8 0 obj\r\n<<\r\n/Type /Outlines\r\n/Count 3\r\n/First 7 0 R\r\n/Last 7 0 R\r\n" + end);
  EXPECT_EQ(pdf.object(9),
            "9 0 obj\r\n" + begin + "/Title (One)\r\n" + destination + "/Parent 7 0 R\r\n/Next 10 0 R\r\n" + end);
  EXPECT_EQ(pdf.object(10),
            "10 0 obj\r\n" + begin + "/Title (Two)\r\n" + destination + "/Prev 9 0 R\r\n/Parent 7 0 R\r\n" + end);
  EXPECT_NE(pdf.object(1).find("/Outlines 8 0 R\r\n"), std::string_view::npos);
}

TEST(PdfOutline, HasThreeLevels) {
  const MadePdf pdf =
      withEntries({{L"1", 0}, {L"1.1", 1}, {L"1.1.1", 2}, {L"1.1.2", 2}, {L"1.2", 1}, {L"2", 0}, {L"2.1", 1}});
  // The count of an entry is that of its own children, the count of the outline that of all entries.
  EXPECT_EQ(pdf.outline(),
            "7 entries\n"
            "1 (2) to page 1 at 50 802\n"
            "  1.1 (2) to page 1 at 50 802\n"
            "    1.1.1 to page 1 at 50 802\n"
            "    1.1.2 to page 1 at 50 802\n"
            "  1.2 to page 1 at 50 802\n"
            "2 (1) to page 1 at 50 802\n"
            "  2.1 to page 1 at 50 802\n");
}

TEST(PdfOutline, IsNotWrittenWithoutEntries) {
  const MadePdf pdf = withEntries({});
  EXPECT_EQ(pdf.object(1).find("/Outlines"), std::string_view::npos);
}

TEST(PdfOutline, OmitsAnEntryThatIsTooDeep) {
  const MadePdf pdf = withEntries({{L"top", 0}, {L"too deep", 2}, {L"child", 1}, {L"too deep again", 3}});
  EXPECT_EQ(pdf.outline(), "2 entries\ntop (1) to page 1 at 50 802\n  child to page 1 at 50 802\n");
  EXPECT_EQ(pdf.object(9),
            "9 0 obj\r\n<<\r\n/Type /Outline\r\n/Title (too deep)\r\n"
            "/Dest [5 0 R\r\n/XYZ\r\n50\r\n802\r\n0\r\n]\r\n\r\n>>\r\nendobj\r\n\r\n");
}

TEST(PdfOutline, IsReferredToButNotWrittenWhenAllItsEntriesAreTooDeep) {
  const MadePdf pdf = withEntries({{L"too deep", 1}});
  ASSERT_EQ(pdf.objectCount(), 8u);
  EXPECT_EQ(pdf.object(8), "");
  EXPECT_NE(pdf.object(1).find("/Outlines 8 0 R\r\n"), std::string_view::npos);
}

TEST(PdfOutline, TreatsANegativeLevelAsTheTop) {
  EXPECT_EQ(withEntries({{L"a", -1}, {L"b", 1}, {L"c", INT32_MIN}, {L"d", INT32_MAX}}).outline(),
            "3 entries\na (1) to page 1 at 50 802\n  b to page 1 at 50 802\nc to page 1 at 50 802\n");
}

TEST(PdfOutline, WritesAnEntryWithoutATitleForANullText) {
  const MadePdf pdf = withEntries({{nullptr, 0}, {L"", 0}});
  EXPECT_EQ(pdf.object(7),
            "7 0 obj\r\n<<\r\n/Type /Outline\r\n/Dest [5 0 R\r\n/XYZ\r\n50\r\n802\r\n0\r\n]\r\n\r\n"
            "/Parent 8 0 R\r\n/Next 9 0 R\r\n>>\r\nendobj\r\n\r\n");
  EXPECT_NE(pdf.object(9).find("/Title ()\r\n"), std::string_view::npos);
}

TEST(PdfOutline, WritesTitlesUnchanged) {
  const MadePdf pdf = withEntries({{L"f(x)", 0}, {L"\x20AC\xE9", 0}});
  EXPECT_NE(pdf.object(7).find("/Title (f(x))\r\n"), std::string_view::npos);
  EXPECT_NE(pdf.object(9).find("/Title (\xAC\xE9)\r\n"), std::string_view::npos);
}

TEST(PdfOutline, LeadsToObjectZeroWithoutItsBookmark) {
  const MadePdf pdf = madeInTimes([](CPDFdoc& doc) { doc.AddOutlineItem(L"a", L"there", 0); });
  EXPECT_EQ(pdf.outline(), "1 entries\na to object 0 at 0 0\n");
}

TEST(PdfOutline, IsNotDrawn) {
  const MadePdf pdf = madeInTimes([](CPDFdoc& doc) { doc.AddOutlineItem(L"a", L"there", 0); });
  EXPECT_EQ(pdf.content(1), "BT\n50 810 Td\nET\n");
  EXPECT_TRUE(pdf.links().empty());
}

TEST(PdfOutline, LeadsToThePagesOfItsBookmarks) {
  const MadePdf pdf = madeInTimes([](CPDFdoc& doc) {
    doc.AddOutlineItem(L"first", L"a", 0);
    doc.AddOutlineItem(L"second", L"b", 0);
    paragraph(doc, L"a");
    doc.BookMark(L"a");
    paragraphs(doc, 33);
    doc.BookMark(L"b");
  });
  // There are 34 paragraphs: the 33rd is the first on page 2, from 810 to 794; the gap of the 34th ends at 786.
  EXPECT_EQ(pdf.outline(), "2 entries\nfirst to page 1 at 50 802\nsecond to page 2 at 50 786\n");
}

// Entries are linked for one target name after another, in the order of their first use.
TEST(PdfOutline, IsInTheOrderOfItsTargetNames) {
  const MadePdf pdf = madeInTimes([](CPDFdoc& doc) {
    doc.HyperLink(L"go", L"b");
    doc.AddOutlineItem(L"to a", L"a", 0);
    doc.AddOutlineItem(L"to b", L"b", 0);
    doc.AddOutlineItem(L"to a again", L"a", 1);
    doc.AddOutlineItem(L"to b again", L"b", 1);
  });
  EXPECT_EQ(pdf.outline(),
            "4 entries\n"
            "to b (1) to object 0 at 0 0\n"
            "  to b again to object 0 at 0 0\n"
            "to a (1) to object 0 at 0 0\n"
            "  to a again to object 0 at 0 0\n");
}

std::size_t numberAfter(std::string_view object, std::string_view key) {
  std::size_t number = 0;
  const auto at = object.find(key);
  if (at != object.npos) {
    std::from_chars(object.data() + at + key.size(), object.data() + object.size(), number);
  }
  return number;
}

TEST(PdfOutline, MayBeAHundredThousandLevelsDeep) {
  constexpr std::size_t kLevels = 100000;
  const MadePdf pdf = madeInTimes([](CPDFdoc& doc) {
    for (std::size_t level = 0; level < kLevels; ++level) {
      doc.AddOutlineItem(L"a", L"there", static_cast<int>(level));
    }
  });
  std::size_t levels = 0;
  for (std::size_t entry = 7; entry != 0 && levels <= kLevels; entry = numberAfter(pdf.object(entry), "/First ")) {
    EXPECT_EQ(numberAfter(pdf.object(entry), "/Count "), levels + 1 < kLevels ? 1u : 0u);
    ++levels;
  }
  EXPECT_EQ(levels, kLevels);
}

}  // namespace
