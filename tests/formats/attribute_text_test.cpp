#include "formats/attribute_text.h"

#include <gtest/gtest.h>

using namespace scrivalen;
using document::Align;
using document::ValueType;

namespace {

Attributes readFrom(std::string_view text) {
  Attributes attributes;
  readAttributes(text, attributes);
  return attributes;
}

}  // namespace

TEST(AttributeText, ReadsTheStyleOfACell) {
  const Attributes read = readFrom(
      " style=\"text-align: right; color:#ff8000; background-color: yellow; font-weight: bold; font-style:italic\"");
  EXPECT_EQ(read.align, Align::Right);
  EXPECT_EQ(read.color, 0xFF8000u);
  EXPECT_EQ(read.background, 0xFFFF00u);
  EXPECT_TRUE(read.isBold);
  EXPECT_TRUE(read.isItalic);
}

TEST(AttributeText, ReadsAttributesInAnyCaseAndQuotes) {
  const Attributes read = readFrom("class=x ALIGN='Center' nowrap colspan=3 DATA-TYPE = \"Number\" id=\"here\"");
  EXPECT_EQ(read.align, Align::Center);
  EXPECT_EQ(read.span, 3);
  EXPECT_EQ(read.type, ValueType::Number);
  EXPECT_EQ(read.id, "here");
}

TEST(AttributeText, TakesTheColorOutOfABackground) {
  EXPECT_EQ(readFrom("style=\"background: url(x.png) no-repeat #0a0 !important\"").background, 0x00AA00u);
  EXPECT_EQ(readFrom("bgcolor=\"red\"").background, 0xFF0000u);
}

TEST(AttributeText, ReadsTheColorsOfRtf) {
  const Attributes both = readFrom("white;darkyellow");
  EXPECT_EQ(both.color, 0xFFFFFFu);
  EXPECT_EQ(both.background, 0x808000u);
  EXPECT_EQ(readFrom("lightgreen").background, 0x90EE90u);
  EXPECT_FALSE(readFrom("lightgreen").color);
  EXPECT_FALSE(readFrom("nowrap").background);
}

TEST(AttributeText, ReadsWidths) {
  const auto width = [](std::string_view text) { return readFrom(text).width; };
  EXPECT_EQ(width("width=\"25%\"").unit, ColumnWidth::Unit::Percent);
  EXPECT_EQ(width("width=\"25%\"").value, 25);
  EXPECT_EQ(width("width=100").value, 75);
  EXPECT_EQ(width("style='width: 2.5em'").value, 30);
  EXPECT_EQ(width("style='width: auto'").unit, ColumnWidth::Unit::None);
  EXPECT_EQ(width("width=\"-3\"").unit, ColumnWidth::Unit::None);
  EXPECT_EQ(width("width=\"1e9\"").unit, ColumnWidth::Unit::None);
}

TEST(AttributeText, KeepsSpansInRange) {
  EXPECT_EQ(readFrom("colspan=0").span, 1);
  EXPECT_EQ(readFrom("colspan=-4").span, 1);
  EXPECT_EQ(readFrom("colspan=99999999999999").span, 16384);
  EXPECT_EQ(readFrom("colspan=2x").span, 1);
}

TEST(AttributeText, IgnoresWhatItDoesNotKnow) {
  for (const char* text : {"", " ", "=", "==\"", "style", "style=", "style=\"", "style=\"color\"", "style=\";:;\"",
                           "style=\"color:nocolor;text-align:nowhere\"", "align=\"nowhere\"", "colspan=\"\"",
                           "data-type=\"thing\"", "onclick=\"style='color:red'\""}) {
    const Attributes read = readFrom(text);
    EXPECT_EQ(read.align, Align::Auto) << text;
    EXPECT_FALSE(read.color) << text;
    EXPECT_FALSE(read.background) << text;
    EXPECT_EQ(read.span, 1) << text;
    EXPECT_EQ(read.type, ValueType::Auto) << text;
  }
}

TEST(AttributeText, SaysWhetherAColorIsUnknown) {
  Attributes attributes;
  EXPECT_TRUE(readColors("red", attributes));
  EXPECT_TRUE(readColors("#123456;", attributes));
  EXPECT_FALSE(readColors("red;nocolor", attributes));
  EXPECT_EQ(attributes.color, 0xFF0000u);
}
