#include "document/word/document_font.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

using scrivalen::document::DocumentFont;
using scrivalen::document::OutputWarnings;
using scrivalen::document::Warning;
using scrivalen::document::WarningCode;
using scrivalen::document::Warnings;
using Kind = scrivalen::document::DocumentFont::Kind;

namespace {

constexpr std::string_view kLongestName = "The name of a font, 31 letters.";

struct NamedFont {
  DocumentFont font;
  std::vector<Warning> warnings;
};

NamedFont fontNamed(std::string_view setting) {
  Warnings warnings;
  OutputWarnings ofOutput(warnings, 0);
  const DocumentFont font = DocumentFont::of(setting, ofOutput);
  return {font, warnings.all()};
}

}  // namespace

TEST(DocumentFont, IsOfTheKindThatTheSettingNames) {
  EXPECT_EQ(fontNamed("").font.name, "Arial");
  EXPECT_EQ(fontNamed("Sans-Serif").font.name, "Arial");
  EXPECT_EQ(fontNamed("serif").font.name, "Times New Roman");
  EXPECT_EQ(fontNamed("MONO").font.name, "Courier New");
  EXPECT_EQ(fontNamed("monospace").font.kind, Kind::Mono);
}

TEST(DocumentFont, HasTheNameThatTheSettingGives) {
  const NamedFont named = fontNamed(kLongestName);
  EXPECT_EQ(named.font.kind, Kind::Own);
  EXPECT_EQ(named.font.name, kLongestName);
  EXPECT_TRUE(named.warnings.empty());
}

TEST(DocumentFont, HasNoNameThatWordRefuses) {
  const std::string longer = std::string(kLongestName).append("x");
  const NamedFont named = fontNamed(longer);
  EXPECT_EQ(named.font.name, kLongestName);
  ASSERT_EQ(named.warnings.size(), 1u);
  EXPECT_EQ(named.warnings[0].code, WarningCode::TextCut);
  EXPECT_EQ(named.warnings[0].message, "the name of a font cut at 31 characters");
}

// U+1D400 is two units of UTF-16.
TEST(DocumentFont, IsNotCutWithinACharacter) {
  const std::string wide = std::string(30, 'x').append("\xF0\x9D\x90\x80");
  EXPECT_EQ(fontNamed(wide).font.name, std::string(30, 'x'));
}
