#include "formats/pdf/typeset/fonts/sample_fonts.h"
#include "output/host_handlers.h"
#include "support/files.h"
#include "system/files/files.h"
#include "text/direction.h"
#include "text/utf.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

using namespace scrivalen::test;

namespace scrivalen::typeset {
namespace {

// The output of a command.
std::string outputOf(const std::string& command) {
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> pipe(popen(command.c_str(), "r"), &pclose);
  EXPECT_TRUE(pipe) << command;
  std::string output;
  char bytes[4096];
  for (std::size_t size = 0; pipe && (size = std::fread(bytes, 1, sizeof bytes, pipe.get())) > 0;) {
    output.append(bytes, size);
  }
  return output;
}

// Glyphs as hb-shape writes them: [glyph=cluster@x,y+advance|...].
std::string asHbShape(const std::vector<ShapedGlyph>& glyphs) {
  std::ostringstream out;
  const char* before = "[";
  for (const ShapedGlyph& glyph : glyphs) {
    out << before << glyph.glyph << '=' << glyph.cluster;
    if (glyph.x != 0 || glyph.y != 0) {
      out << '@' << glyph.x << ',' << glyph.y;
    }
    out << '+' << glyph.advance;
    before = "|";
  }
  out << "]\n";
  return out.str();
}

std::wstring pathOf(std::string_view font) {
  std::wstring path(folderOf(homePath()));
  return path.append(L"fonts").append(1, kPathSeparator).append(toWide(font));
}

// Shapes a word of one script as the document's texts are shaped.
void expectGlyphsOfHbShape(const std::wstring& path, const std::string& word) {
  const auto font = readFont(bytesOf(path));
  const char* at = word.data();
  char32_t first = 0;
  nextUtf8(at, word.data() + word.size(), first);
  std::vector<ShapedGlyph> glyphs;
  font->shape({word, scriptOf(first), firstDirection(word) == Direction::RightToLeft, "en"}, glyphs);
  EXPECT_EQ(asHbShape(glyphs), outputOf("hb-shape --no-glyph-names --utf8-clusters --font-size=1000 --language=en '" +
                                        narrowPath(path) + "' '" + word + "'"))
      << word;
}

TEST(Glyphs, AreThoseOfHbShapeInSimpleScripts) {
  for (const char* word : {"AVATAR", "office", "Ἑλλάς", "Ελληνικά", "Москва", "Թ", "ქართული"}) {
    expectGlyphsOfHbShape(pathOf(kDejaVuFont), word);
  }
}

TEST(Glyphs, AreThoseOfHbShapeInScriptsThatNeedShaping) {
  for (const char* word : {"سلام", "لا", "مُحَمَّد", "שָׁלוֹם", "ພາສາລາວ", "ߒߞߏ", "ⵜⵉⴼⵉⵏⴰⵖ", "ᐃᓄᒃᑎᑐᑦ", "ᚑᚌᚐᚋ"}) {
    expectGlyphsOfHbShape(pathOf(kDejaVuFont), word);
  }
}

// Conjuncts, half forms, a vowel that is drawn before its consonant, and one that is above the next.
TEST(Glyphs, AreThoseOfHbShapeInDevanagari) {
  for (const char* word : {"हिन्दी", "क्षत्रिय", "र्क", "कि", "श्रृंखला", "विद्यार्थियों", "क्\u200Dष", "क्\u200Cष"}) {
    expectGlyphsOfHbShape(toWide(SCRIVALEN_DEVANAGARI_FONT), word);
  }
}

// Vowels and tones above each other, and a vowel of two parts.
TEST(Glyphs, AreThoseOfHbShapeInThai) {
  for (const char* word : {"น้ำ", "ที่", "กำลัง", "ผู้", "ปั๊ม", "มนุษย์", "ญี่ปุ่น", "ฐานะ", "ฤๅษี"}) {
    expectGlyphsOfHbShape(toWide(SCRIVALEN_THAI_FONT), word);
  }
}

TEST(Glyphs, AreThoseOfHbShapeWithMarks) {
  for (const char* word : {"x\u0323\u0308", "e\u0301", "\u0416\u0301"}) {
    expectGlyphsOfHbShape(pathOf(kSansFont), word);
  }
}

}  // namespace
}  // namespace scrivalen::typeset
