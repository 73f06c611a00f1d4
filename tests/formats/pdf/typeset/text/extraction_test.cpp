#include "formats/pdf/typeset/fonts/sample_fonts.h"
#include "formats/pdf/typeset/shown_document.h"
#include "support/files.h"
#include "support/pdf/pdf_pages.h"
#include "system/files/files.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace scrivalen::test;

namespace scrivalen::typeset {
namespace {

// What each of the texts of a paragraph says to a reader.
std::vector<std::string> shown(const std::string& bytes) {
  const PdfPages pages(bytes);
  EXPECT_EQ(pages.problems(), std::vector<std::string>());
  return pages.lines();
}

std::vector<std::string> paragraphOf(std::string_view text) {
  ShownDocument document;
  document.paragraph(text);
  return shown(document.bytes());
}

using Lines = std::vector<std::string>;

TEST(Extraction, GivesTheLettersOfALigature) {
  ShownDocument document;
  document.set("font", "DejaVu Sans");
  document.paragraph("office fi");
  EXPECT_EQ(shown(document.bytes()), Lines{"office fi"});
}

// Readers turn round all the characters of a text from right to left, which the file has in the order of the page.
TEST(Extraction, GivesBothLettersOfLamAlef) { EXPECT_EQ(paragraphOf("\u0644\u0627"), Lines{"\u0627\u0644"}); }

TEST(Extraction, GivesTheVowelsOfALetterFromRightToLeft) {
  EXPECT_EQ(paragraphOf("\u0645\u064E\u0651"), Lines{"\u0651\u064E\u0645"});
}

TEST(Extraction, GivesCombiningMarksAfterTheirLetter) {
  EXPECT_EQ(paragraphOf("x\u0323\u0308y"), Lines{"x\u0323\u0308y"});
}

// In a paragraph and in a cell, which is set in another way.
void expectShown(std::string_view text, const std::string& expected) {
  EXPECT_EQ(paragraphOf(text), Lines{expected});
  ShownDocument document;
  document.beginTable({document::Column()}, "");
  document.addRow({text});
  document.end();
  EXPECT_EQ(shown(document.bytes()), Lines{expected});
}

TEST(Extraction, GivesJoinersAfterTheirLetter) {
  for (const std::string text : {"a\u200D", "a\u200Db", "a\u200C\u200D.", "\u2764\uFE0F\u200D\u2764"}) {
    expectShown(text, text);
  }
}

TEST(Extraction, GivesJoinersAfterTheirLetterFromRightToLeft) {
  expectShown("\u06CC\u200C\u062E", "\u062E\u200C\u06CC");
  expectShown("\u0647\u200D", "\u200D\u0647");
}

TEST(Extraction, GivesJoinersOfCharactersPastTheBasicPlane) {
  for (const std::string text : {"\U0001F468\u200D\U0001F469\u200D\U0001F467", "\U0001F600\uFE0F\u200D\U0001F600\u200D",
                                 "\U0001F468\u200D\u2642\uFE0F"}) {
    ShownDocument document;
    document.paragraph(text);
    std::string joined;
    for (const std::string& each : shown(document.bytes())) {
      joined += each;
    }
    EXPECT_EQ(joined, text);
  }
}

TEST(Extraction, GivesCharactersPastTheBasicPlane) {
  EXPECT_EQ(paragraphOf("a \U0001F600 \U0001D49C"), Lines{"a \U0001F600 \U0001D49C"});
}

TEST(Extraction, GivesTheCharactersOfAConjunct) {
  TemporaryFolder folder;
  writeBytes(folder / L"deva.ttf", devanagariFont());
  for (const std::string_view word : {"\u0915\u094D\u0937", "\u0915\u093F", "\u0930\u094D\u0915"}) {
    ShownDocument document;
    document.set("font-file", narrowPath(folder / L"deva.ttf"));
    document.paragraph(word);
    EXPECT_EQ(shown(document.bytes()), Lines{std::string(word)});
  }
}

}  // namespace
}  // namespace scrivalen::typeset
