#include "formats/pdf/typeset/pdf_objects.h"
#include "formats/pdf/typeset/shown_document.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <utility>

using namespace scrivalen::test;
using scrivalen::document::Align;

namespace {

bool has(const std::string& text, std::string_view part) { return text.find(part) != text.npos; }

/// A document for the archive.
struct ArchivedDocument : ShownDocument {
  explicit ArchivedDocument(const char* standard) {
    set("pdf.standard", standard);
    set("title", "Gr\u00F6\u00DFe");
  }
};

// The places of objects in a classic cross-reference table, by their numbers.
std::vector<std::size_t> placesOf(const std::string& file) {
  std::vector<std::size_t> places;
  std::size_t at = file.rfind("\nxref\n0 ") + 8;
  const int count = std::atoi(file.c_str() + at);
  at = file.find('\n', at) + 1;
  for (int i = 0; i < count; ++i, at += 20) {
    places.push_back(static_cast<std::size_t>(std::atoll(file.substr(at, 10).c_str())));
    EXPECT_EQ(file.substr(at + 10, 10), i == 0 ? " 65535 f \n" : " 00000 n \n");
  }
  EXPECT_EQ(file.substr(at, 8), "trailer\n");
  return places;
}

}  // namespace

TEST(ArchivedPdf, OfLevel1IsPdf14WithATableOfItsObjects) {
  ArchivedDocument document("a-1b");
  document.heading(1, "First");
  document.addLines(100);
  const std::string& file = document.bytes();
  EXPECT_EQ(file.substr(0, 15), "%PDF-1.4\n%\xE2\xE3\xCF\xD3\n");
  const std::vector<std::size_t> places = placesOf(file);
  ASSERT_GT(places.size(), 10u);
  for (std::size_t number = 1; number < places.size(); ++number) {
    const std::string begin = std::to_string(number) + " 0 obj\n";
    EXPECT_EQ(file.substr(places[number], begin.size()), begin);
  }
  const std::string end = "startxref\n" + std::to_string(file.rfind("\nxref\n") + 1) + "\n%%EOF\n";
  EXPECT_EQ(file.substr(file.size() - end.size()), end);
  EXPECT_FALSE(has(file, "/ObjStm"));
  EXPECT_FALSE(has(file, "/XRef"));
}

TEST(ArchivedPdf, SaysWhatItsColorsMean) {
  for (const char* standard : {"a-1b", "a-2u"}) {
    ArchivedDocument document(standard);
    document.paragraph("Text");
    const std::string& file = document.bytes();
    if (std::string(standard) == "a-1b") {
      EXPECT_TRUE(has(file, "/OutputIntents["));
      EXPECT_TRUE(has(file, "/S/GTS_PDFA1/OutputConditionIdentifier(sRGB)"));
    } else {
      const PdfObjects objects(file);
      const std::string catalog = objects.object(numberAfter(objects.trailer(), "/Root "));
      const std::string intent = objects.object(referencesAfter(catalog, "/OutputIntents").at(0));
      EXPECT_TRUE(has(intent, "/S/GTS_PDFA1/OutputConditionIdentifier(sRGB)"));
      EXPECT_EQ(objects.stream(numberAfter(intent, "/DestOutputProfile ")).substr(36, 4), "acsp");
    }
  }
}

TEST(ArchivedPdf, NamesItsStandard) {
  ArchivedDocument first("a-1b");
  first.paragraph("Text");
  EXPECT_TRUE(has(first.bytes(), "<pdfaid:part>1</pdfaid:part>\n<pdfaid:conformance>B</pdfaid:conformance>"));
  ArchivedDocument second("a-2u");
  second.paragraph("Text");
  EXPECT_TRUE(has(second.bytes(), "<pdfaid:part>2</pdfaid:part>\n<pdfaid:conformance>U</pdfaid:conformance>"));
}

TEST(ArchivedPdf, HasAnIdentifierThatDependsOnItsContent) {
  const auto identifierOf = [](const char* title) {
    ArchivedDocument document("a-1b");
    document.set("title", title);
    document.paragraph("Text");
    const std::string& file = document.bytes();
    return file.substr(file.rfind("/ID[<") + 5, 32);
  };
  EXPECT_EQ(identifierOf("One").find_first_not_of("0123456789ABCDEF"), std::string::npos);
  EXPECT_EQ(identifierOf("One"), identifierOf("One"));
  EXPECT_NE(identifierOf("One"), identifierOf("Two"));
}

TEST(ArchivedPdf, IsOnlyMadeOnRequest) {
  ShownDocument document;
  document.paragraph("Text");
  EXPECT_EQ(document.bytes().substr(0, 9), "%PDF-1.7\n");
  EXPECT_FALSE(has(document.bytes(), "pdfaid"));
  EXPECT_FALSE(has(PdfObjects(document.bytes()).trailer(), "/ID"));
}

// Readers find the numbers of a subset in its set: two of Greek, and the missing glyph.
TEST(ArchivedPdf, OfLevel1ListsTheNumbersOfASubset) {
  ArchivedDocument document("a-1b");
  document.set("title", "");
  document.paragraph("\u03B1\u03B2");
  const std::string& file = document.bytes();
  const std::size_t key = file.find("/CIDSet ");
  ASSERT_NE(key, file.npos);
  const std::string set =
      "\n" + std::to_string(std::atoi(file.c_str() + key + 8)) + " 0 obj\n<</Filter/FlateDecode/Length ";
  EXPECT_TRUE(has(file, set));
}

// The text of a missing glyph stays, but no glyph 0 is drawn: archives may not show it.
TEST(ArchivedPdf, DrawsABoxForCharactersThatNoFontHas) {
  for (const char* standard : {"none", "a-2u"}) {
    ArchivedDocument document(standard);
    document.paragraph("\u65E5");
    const PdfObjects objects(document.bytes());
    int found = 0;
    for (std::size_t number = 1; number < objects.size(); ++number) {
      const std::string object = objects.object(static_cast<int>(number));
      if (!has(object, "/Subtype/Type0")) {
        continue;
      }
      const std::string map = objects.stream(numberAfter(object, "/ToUnicode "));
      const std::size_t text = map.find("><65E5>");
      if (text != map.npos) {
        const std::size_t begin = map.rfind('<', text) + 1;
        const auto code = std::stoul(map.substr(begin, text - begin), nullptr, 16);
        const std::string font = objects.object(referencesAfter(object, "/DescendantFonts").at(0));
        const std::string glyphs = objects.stream(numberAfter(font, "/CIDToGIDMap "));
        EXPECT_EQ(glyphs.substr(2 * code, 2) == std::string(2, '\0'), std::string(standard) == "none");
        ++found;
      }
    }
    EXPECT_GT(found, 0);
  }
}

TEST(ArchivedPdf, TakesNoOtherStandard) {
  ShownDocument document;
  EXPECT_NE(document.set("pdf.standard", "x-4"), scrivalen::document::Status::Ok);
}

namespace {

std::string times(std::size_t count, std::string_view text) {
  std::string all;
  while (count-- > 0) {
    all += text;
  }
  return all;
}

void addLinks(ShownDocument& document, int count, std::string_view address) {
  document.beginParagraph(Align::Auto);
  for (int i = 0; i < count; ++i) {
    document.beginLink(std::string(address) + std::to_string(i), {});
    document.text("i");
    document.end();
  }
  document.end();
}

// The text of all objects, which a file of PDF 1.4 has as it is.
std::string objectsOf(const std::string& file) {
  if (file.starts_with("%PDF-1.4")) {
    return file;
  }
  const PdfObjects objects(file);
  std::string all;
  for (std::size_t number = 1; number < objects.size(); ++number) {
    all += objects.object(static_cast<int>(number));
  }
  return all;
}

int linksIn(const std::string& file) {
  const std::string objects = objectsOf(file);
  int count = 0;
  for (std::size_t at = objects.find("/Subtype/Link"); at != objects.npos; at = objects.find("/Subtype/Link", at + 1)) {
    ++count;
  }
  return count;
}

}  // namespace

// PDF 1.4, Appendix C, allows 65,535 bytes, ISO 19005-2, 6.1.13, 32,767.
TEST(ArchivedPdf, CutsPropertiesThatAreTooLong) {
  for (const auto& [standard, longest] : {std::pair("a-1b", 65'535u), std::pair("a-2u", 32'767u)}) {
    ArchivedDocument document(standard);
    document.set("title", std::string(70'000, 'x'));
    document.set("author", times(33'000, "\u4E41"));
    document.set("show-title", "no");
    document.paragraph("Text");
    const std::string objects = objectsOf(document.bytes());
    EXPECT_TRUE(has(objects, "/Title(" + std::string(longest, 'x') + ")"));
    EXPECT_TRUE(has(objects, "/Author(\xFE\xFF" + times(longest / 2 - 1, "NA") + ")"));
    EXPECT_TRUE(has(document.bytes(), "\"x-default\">" + std::string(longest, 'x') + "<"));
    EXPECT_TRUE(has(document.warnings(), "the ends of properties and outline entries that are too long for PDF/A"));
  }
}

TEST(ArchivedPdf, CutsEntriesOfTheOutlineThatAreTooLong) {
  ArchivedDocument document("a-2u");
  const std::string words = times(6'667, "words ");
  document.heading(1, words);
  const PdfObjects objects(document.bytes());
  const std::string catalog = objects.object(numberAfter(objects.trailer(), "/Root "));
  const std::string outline = objects.object(numberAfter(catalog, "/Outlines "));
  const std::string entry = objects.object(numberAfter(outline, "/First "));
  EXPECT_TRUE(has(entry, "/Title(" + words.substr(0, 32'767) + ")"));
  EXPECT_TRUE(has(document.warnings(), "the ends of properties and outline entries that are too long for PDF/A"));
}

TEST(ArchivedPdf, KeepsLongTextsWithoutAStandard) {
  ArchivedDocument document("none");
  document.set("title", std::string(70'000, 'x'));
  addLinks(document, 1, "https://example.com/" + std::string(70'000, 'x'));
  EXPECT_EQ(linksIn(document.bytes()), 1);
  EXPECT_EQ(document.warnings(), "");
}

TEST(ArchivedPdf, LeavesOutLinksWithAddressesThatAreTooLong) {
  for (const char* standard : {"a-1b", "a-2u"}) {
    ArchivedDocument document(standard);
    document.set("tagged", "yes");
    document.anchor(std::string(70'000, 'y') + "0");
    addLinks(document, 1, "https://example.com/" + std::string(70'000, 'x'));
    addLinks(document, 1, "#" + std::string(70'000, 'y'));
    addLinks(document, 1, "https://example.com/");
    EXPECT_EQ(linksIn(document.bytes()), 1);
    EXPECT_FALSE(has(objectsOf(document.bytes()), std::string(100, 'y')));
    EXPECT_TRUE(has(document.warnings(), "links that are too long, or too many on a page, for PDF/A"));
  }
}

// An array of PDF 1.4 has 8,191 entries at most.
TEST(ArchivedPdf, OfLevel1HasNoMoreLinksOnAPageThanItMay) {
  for (const auto& [standard, count] : {std::pair("a-1b", 8'191), std::pair("a-2u", 8'200)}) {
    ArchivedDocument document(standard);
    document.set("paper", "1000x1000");
    addLinks(document, 8'200, "https://example.com/");
    EXPECT_EQ(linksIn(document.bytes()), count);
    EXPECT_EQ(has(document.warnings(), "links that are too long, or too many on a page, for PDF/A"), count == 8'191);
  }
}
