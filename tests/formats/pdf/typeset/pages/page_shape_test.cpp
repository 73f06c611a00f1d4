#include "formats/pdf/typeset/shown_document.h"

#include <gtest/gtest.h>

#include <cmath>
#include <utility>

namespace scrivalen::test {
namespace {

using document::Status;

// The page of a document with a setting, as "width x height in points".
std::string pageWith(std::initializer_list<std::pair<std::string_view, std::string_view>> settings) {
  ShownDocument document;
  for (const auto& [name, value] : settings) {
    EXPECT_EQ(document.set(name, value), Status::Ok);
  }
  document.paragraph("text");
  const ShownPages pages = document.pages();
  return std::to_string(std::lround(pages.at(0).width)) + " x " + std::to_string(std::lround(pages.at(0).height));
}

TEST(PageShape, IsThatOfThePaper) {
  EXPECT_EQ(pageWith({}), "595 x 842");
  EXPECT_EQ(pageWith({{"paper", "A3"}}), "842 x 1191");
  EXPECT_EQ(pageWith({{"paper", "A4"}}), "595 x 842");
  EXPECT_EQ(pageWith({{"paper", "A5"}}), "420 x 595");
  EXPECT_EQ(pageWith({{"paper", "Letter"}}), "612 x 792");
  EXPECT_EQ(pageWith({{"paper", "Legal"}}), "612 x 1008");
  EXPECT_EQ(pageWith({{"paper", "210x297"}}), "595 x 842");
  EXPECT_EQ(pageWith({{"paper", "50x1200"}}), "142 x 3402");
}

TEST(PageShape, IsTurnedByLandscape) {
  EXPECT_EQ(pageWith({{"landscape", "yes"}}), "842 x 595");
  EXPECT_EQ(pageWith({{"paper", "Letter"}, {"landscape", "yes"}}), "792 x 612");
  EXPECT_EQ(pageWith({{"paper", "300x100"}, {"landscape", "yes"}}), "850 x 283");
}

TEST(PageShape, StaysWhenASettingIsNonsense) {
  ShownDocument document;
  for (const auto& [name, value] : {std::pair("paper", "A99"),
                                    {"paper", "1x1"},
                                    {"paper", "210x"},
                                    {"margins", "-1mm"},
                                    {"margins", "1mm 2mm"},
                                    {"margins", "3"},
                                    {"landscape", "perhaps"}}) {
    EXPECT_EQ(document.set(name, value), Status::UnknownSetting) << name << ' ' << value;
  }
  document.paragraph("text");
  const ShownPages pages = document.pages();
  EXPECT_NEAR(pages.at(0).width, 595.276, 0.01);
  EXPECT_NEAR(pages.at(0).find("text").x, 56.7, 0.1);
}

TEST(PageShape, HasTheMarginsAroundTheText) {
  ShownDocument document;
  document.set("margins", "10mm 1in 2cm 40pt");
  std::string words;
  for (int i = 0; i < 3000; ++i) {
    words += "word ";
  }
  document.paragraph(words);
  const ShownPages pages = document.pages();
  ASSERT_GT(pages.count(), 1u);
  const std::vector<PdfText>& lines = pages.at(0).texts();
  EXPECT_NEAR(lines.front().x, 40, 0.1);
  EXPECT_LT(lines.front().y, 841.9 - 28.3);
  EXPECT_GT(lines.front().y, 841.9 - 28.3 - 13);
  EXPECT_GT(lines.back().y, 56.7);
  EXPECT_LT(lines.back().y, 56.7 + 2 * 13);
}

TEST(PageShape, ReducesMarginsThatLeaveNoRoom) {
  ShownDocument document;
  document.set("paper", "A5");
  document.set("margins", "200mm");
  document.paragraph("text");
  const ShownPages pages = document.pages();
  EXPECT_NEAR(pages.at(0).find("text").x, 419.5 / 3, 0.1);
}

}  // namespace
}  // namespace scrivalen::test
