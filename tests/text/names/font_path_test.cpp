#include "text/names/font_path.h"

#include <gtest/gtest.h>

namespace scrivalen {
namespace {

void expectPath(std::string_view value, std::string_view file, unsigned index) {
  const FontPath path = fontPathOf(value);
  EXPECT_EQ(path.file, file) << value;
  EXPECT_EQ(path.index, index) << value;
}

TEST(FontPath, IsAFileWithoutANumber) {
  expectPath("a.ttf", "a.ttf", 0);
  expectPath("C#", "C#", 0);
  expectPath("C#/a.ttf", "C#/a.ttf", 0);
  expectPath("", "", 0);
}

TEST(FontPath, EndsWithTheNumberOfAFontOfACollection) {
  expectPath("a.ttc#12", "a.ttc", 12);
  expectPath("track#1#0", "track#1", 0);
}

TEST(FontPath, HasTheLargestNumberForOneThatIsLarger) {
  expectPath("a#4294967295", "a", kLargestFontIndex);
  expectPath("a#4294967296", "a", kLargestFontIndex);
  expectPath("a#99999999999999999999999", "a", kLargestFontIndex);
}

TEST(FontPath, IsAFileWithWhatIsNoNumber) {
  expectPath("a#-1", "a#-1", 0);
  expectPath("a#4294967296b", "a#4294967296b", 0);
}

}  // namespace
}  // namespace scrivalen
