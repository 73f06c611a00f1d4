#include "formats/help/document/open_links.h"

#include <gtest/gtest.h>

namespace scrivalen::help {

TEST(OpenLinks, AreCompletedHoweverThePageIsDivided) {
  const std::string page = "<a href=\"" + openLink(0) + "\">a</a><a href=\"" + openLink(12) + "\">b</a>";
  for (std::size_t first = 0; first <= page.size(); ++first) {
    OpenLinks links([](std::size_t number) { return "p" + std::to_string(number) + ".htm#x"; });
    std::string completed(links.completed(std::string_view(page).substr(0, first)));
    completed += links.completed(std::string_view(page).substr(first));
    ASSERT_EQ(completed, "<a href=\"p0.htm#x\">a</a><a href=\"p12.htm#x\">b</a>") << first;
  }
}

TEST(OpenLinks, AreNotMadeByMarkup) { EXPECT_EQ(withoutMarks("a" + openLink(7) + "b"), "a7b"); }

TEST(OpenLinks, AreFoundInMarkup) {
  const auto link = nextLinkInside("<a href=\"x\">x</a> <a title=\"#\" href=\"#caf%C3%A9\">y</a>");
  ASSERT_TRUE(link);
  EXPECT_EQ(link->id, "caf\xC3\xA9");
  EXPECT_FALSE(nextLinkInside("<a href=\"x#y\">href=\"#z\"</a>"));
  EXPECT_EQ(nextLinkInside("<a href=\"#unfinished")->id, "unfinished");
}

}  // namespace scrivalen::help
