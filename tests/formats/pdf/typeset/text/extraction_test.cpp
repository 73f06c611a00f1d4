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

TEST(Extraction, GivesBothLettersOfLamAlef) { EXPECT_EQ(paragraphOf("لا"), Lines{"لا"}); }

TEST(Extraction, GivesCombiningMarksAfterTheirLetter) {
  EXPECT_EQ(paragraphOf("x\u0323\u0308y"), Lines{"x\u0323\u0308y"});
}

TEST(Extraction, GivesJoinersAfterTheirLetter) {
  for (const std::string_view text : {"ی\u200C", "ه\u200D", "a\u200Db", "\U0001F468\u200D\U0001F469\u200D\U0001F467"}) {
    EXPECT_EQ(paragraphOf(text), Lines{std::string(text)});
    ShownDocument document;
    document.beginTable({document::Column()}, "");
    document.addRow({text});
    document.end();
    EXPECT_EQ(shown(document.bytes()), Lines{std::string(text)});
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
