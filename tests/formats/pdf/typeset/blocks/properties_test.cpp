#include "formats/pdf/typeset/shown_document.h"

#include <gtest/gtest.h>

namespace scrivalen::test {
namespace {

TEST(PropertiesOfAPdfDocument, AreInTheInformation) {
  ShownDocument document;
  document.set("title", "The title");
  document.set("author", "The author");
  document.set("subject", "The subject");
  document.set("keywords", "a, b");
  document.set("property:Department", "Sales (North)");
  document.set("property:My key", "\u00FC");
  document.paragraph("text");
  const std::string information = document.pages().information();
  for (const char* part : {"/Title(The title)", "/Author(The author)", "/Subject(The subject)", "/Keywords(a, b)",
                           "/Department(Sales \\(North\\))", "/My#20key(\xFE\xFF"}) {
    EXPECT_NE(information.find(part), std::string::npos) << part << " in " << information;
  }
}

TEST(PropertiesOfAPdfDocument, HaveTheTimeOfTheClock) {
  ShownDocument document;
  document.paragraph("text");
  const ShownPages pages = document.pages();
  const std::string information = pages.information();
  EXPECT_NE(information.find("/CreationDate(D:20260131235959Z)/ModDate(D:20260131235959Z)"), std::string::npos);
  const std::string xmp = pages.xmp();
  EXPECT_NE(xmp.find("<xmp:CreateDate>2026-01-31T23:59:59Z</xmp:CreateDate>"), std::string::npos);
}

TEST(PropertiesOfAPdfDocument, WithANameThatIsTakenAreWarnings) {
  ShownDocument document;
  document.set("property:Producer", "me");
  document.set("property:" + std::string(128, 'n'), "long");
  document.paragraph("text");
  EXPECT_EQ(document.pages().information().find("(me)"), std::string::npos);
  EXPECT_NE(document.warnings().find("1 x the property 'Producer', a name that the file cannot have\n"),
            std::string::npos);
}

TEST(PropertiesOfAPdfDocument, SayTheLanguage) {
  ShownDocument document;
  document.set("language", "fr-CA");
  document.paragraph("text");
  const ShownPages pages = document.pages();
  EXPECT_NE(pages.catalog().find("/Lang(fr-CA)"), std::string::npos);
  const std::string xmp = pages.xmp();
  EXPECT_NE(xmp.find("<rdf:li>fr-CA</rdf:li>"), std::string::npos);
}

TEST(EmptyPdfDocuments, HaveAPage) {
  ShownDocument empty;
  EXPECT_EQ(empty.pages().count(), 1u);
  ShownDocument blank;
  blank.paragraph(" ");
  const ShownPages pages = blank.pages();
  ASSERT_EQ(pages.count(), 1u);
  EXPECT_EQ(pages.at(0).all(), "");
}

TEST(LetterAsPdf, IsSmall) {
  ShownDocument letter;
  letter.set("title", "A letter");
  letter.set("footer", "||{page} / {pages}");
  for (int i = 0; i < 10; ++i) {
    letter.paragraph(
        "The quick brown fox jumps over the lazy dog, 0123456789 times a day, and \u201CTHE FIVE BOXING WIZARDS\u201D "
        "jump quickly; sphinx of black quartz, judge my vow: 100 % (more or less) & nothing else!");
  }
  EXPECT_EQ(letter.pages().count(), 1u);
  EXPECT_LT(letter.bytes().size(), 30u << 10);
}

}  // namespace
}  // namespace scrivalen::test
