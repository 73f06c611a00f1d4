#include "formats/help/document/code_page.h"

#include <gtest/gtest.h>

#include <cstring>

namespace scrivalen::help {
namespace {

std::string encoded(std::string_view utf8, int page) {
  std::string bytes;
  appendWithReferences(bytes, utf8, CodePage(page));
  return bytes;
}

}  // namespace

TEST(HelpCodePage, HasTheBytesOfEachLanguagesLetters) {
  EXPECT_EQ(encoded("Łódź", 1250),
            "\xA3\xF3"
            "d\x9F");
  EXPECT_EQ(encoded("Ёж", 1251), "\xA8\xE6");
  EXPECT_EQ(encoded("Größe €", 1252),
            "Gr\xF6\xDF"
            "e \x80");
  EXPECT_EQ(encoded("Ώρα", 1253), "\xBF\xF1\xE1");
  EXPECT_EQ(encoded("ığ", 1254), "\xFD\xF0");
  EXPECT_EQ(encoded("שלום", 1255), "\xF9\xEC\xE5\xED");
  EXPECT_EQ(encoded("سلام", 1256), "\xD3\xE1\xC7\xE3");
  EXPECT_EQ(encoded("ūž", 1257), "\xFB\xFE");
  EXPECT_EQ(encoded("đồ", 1258), "\xF0&#7891;");
  EXPECT_EQ(encoded("ไทย", 874), "\xE4\xB7\xC2");
}

TEST(HelpCodePage, HasReferencesToTheLettersThatItLacks) {
  EXPECT_EQ(encoded("a日\xF0\x9F\x98\x80z", 1252), "a&#26085;&#128512;z");
  EXPECT_EQ(encoded("ü", 1251), "&#252;");
  EXPECT_EQ(encoded("\xC2\x81", 1252), "&#129;") << "an unassigned byte";
}

TEST(HelpCodePage, OfSeveralBytesForALetterHasOnlyAscii) { EXPECT_EQ(encoded("Aé日", 932), "A&#233;&#26085;"); }

TEST(HelpCodePage, ReplacesIllFormedBytes) { EXPECT_EQ(encoded("a\xFF\xE4\xB8z", 1252), "a&#65533;&#65533;z"); }

TEST(HelpCodePage, HasAQuestionMarkInPlainTextForALetterThatItLacks) {
  std::string bytes;
  EXPECT_EQ(appendReplaced(bytes, "€ 日\xF0\x9F\x98\x80", CodePage(1252)), 2u);
  EXPECT_EQ(bytes, "\x80 ??");
}

}  // namespace scrivalen::help
