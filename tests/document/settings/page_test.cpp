#include "document/settings/page.h"

#include "document/settings/settings.h"

#include <gtest/gtest.h>

#include <initializer_list>

namespace scrivalen::document {
namespace {

struct Given {
  std::string_view name;
  std::string_view value;
};

Page pageWith(std::initializer_list<Given> given) {
  Settings settings;
  std::string reason;
  for (const Given& setting : given) {
    EXPECT_TRUE(settings.set(setting.name, setting.value, reason)) << reason;
  }
  return pageOf(FormatSettings(settings, "pdf"));
}

constexpr double kClose = 0.001;

void expectSize(const Page& page, double width, double height) {
  EXPECT_NEAR(page.widthPt, width, kClose);
  EXPECT_NEAR(page.heightPt, height, kClose);
}

void expectMargins(const Page& page, double top, double right, double bottom, double left) {
  EXPECT_NEAR(page.topPt, top, kClose);
  EXPECT_NEAR(page.rightPt, right, kClose);
  EXPECT_NEAR(page.bottomPt, bottom, kClose);
  EXPECT_NEAR(page.leftPt, left, kClose);
}

TEST(Page, IsA4WithMarginsOf20MillimetresByDefault) {
  expectSize(pageWith({}), 595.276, 841.890);
  expectMargins(pageWith({}), 56.693, 56.693, 56.693, 56.693);
}

TEST(Page, HasTheSizeOfItsPaper) {
  expectSize(pageWith({{"paper", "A3"}}), 841.890, 1190.551);
  expectSize(pageWith({{"paper", "a5"}}), 419.528, 595.276);
  expectSize(pageWith({{"paper", "Letter"}}), 612, 792);
  expectSize(pageWith({{"paper", "legal"}}), 612, 1008);
  expectSize(pageWith({{"paper", "127x50.8"}}), 360, 144);
}

TEST(Page, IsWiderThanHighInLandscape) {
  expectSize(pageWith({{"paper", "Letter"}, {"landscape", "yes"}}), 792, 612);
  expectSize(pageWith({{"paper", "127x50.8"}, {"landscape", "yes"}}), 360, 144);
}

TEST(Page, HasMarginsInFourUnits) {
  expectMargins(pageWith({{"margins", "1in 36pt 2.54cm 12.7mm"}}), 72, 36, 72, 36);
  expectMargins(pageWith({{"margins", "0pt"}}), 0, 0, 0, 0);
}

TEST(Page, KeepsAThirdOfThePaperForTheText) {
  const Page page = pageWith({{"paper", "127x127"}, {"margins", "10mm 200mm 10mm 100mm"}});
  expectMargins(page, 28.346, 160, 28.346, 80);
}

TEST(Page, RefusesOtherPapers) {
  for (const std::string_view paper :
       {"", "B7", "A4 ", "210", "210x", "x297", "210x297 ", "210x297mm", "49.9x100", "100x1201", "-210x297", "infx297",
        "nanx297", "1e3x297", "210x297x1", "99999999999999999999999x297"}) {
    EXPECT_FALSE(paperOf(paper).has_value()) << paper;
  }
}

TEST(Page, RefusesOtherMargins) {
  for (const std::string_view margins :
       {"", " ", "20", "20 mm", "mm", "-1mm", "20mm 20mm", "1mm 1mm 1mm", "1mm 1mm 1mm 1mm 1mm", "20mm ,20mm", "201mm",
        "8in", "20px", "infmm", "1e1mm"}) {
    EXPECT_FALSE(marginsOf(margins).has_value()) << margins;
  }
}

}  // namespace
}  // namespace scrivalen::document
