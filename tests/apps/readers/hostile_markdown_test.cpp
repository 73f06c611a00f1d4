#include "command_support.h"
#include "readers/markdown/headings.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <string>

namespace scrivalen::command::test {
namespace {

std::string repeated(std::string_view text, std::size_t count) {
  std::string result;
  for (std::size_t i = 0; i < count; ++i) {
    result += text;
  }
  return result;
}

std::size_t countIn(std::string_view text, std::string_view part) {
  std::size_t count = 0;
  for (std::size_t at = text.find(part); at != text.npos; at = text.find(part, at + part.size())) {
    ++count;
  }
  return count;
}

TEST(HostileMarkdown, LosesNoWordOfALongLine) {
  constexpr std::size_t kWords = 50000;
  const std::string words = repeated("word ", kWords);
  for (const std::string_view start : {"", "# ", "> - ", "<div>", "*", "~", "[", "    ", "| a |\n|---|\n| "}) {
    EXPECT_EQ(countIn(textOf(std::string(start) + words), "word"), kWords) << start;
  }
}

TEST(HostileMarkdown, HasAShortTitleOfALongHeading) {
  const auto titleOf = [](const std::string& heading) {
    return headingsOf("# " + heading, Safety::Safe, HeadingSearch::First).title;
  };
  EXPECT_EQ(titleOf(std::string(1000, 'a')), std::string(1000, 'a'));
  EXPECT_EQ(titleOf(std::string(1001, 'a')), std::string(1000, 'a') + "…");
  EXPECT_EQ(titleOf(std::string(999, 'a') + "éa"), std::string(999, 'a') + "…");
  EXPECT_EQ(titleOf(std::string(900, 'a') + " " + std::string(200, 'b')), std::string(900, 'a') + "…");
}

// The text, whatever warnings there are.
std::string shownText(std::string_view markdown) {
  CommandRun run;
  EXPECT_EQ(run.with("in.md", markdown).run({"@/in.md", "-o", "@/out.txt"}).status, 0);
  return run.bytes("out.txt");
}

TEST(HostileMarkdown, KeepsTheTextInDeepNesting) {
  EXPECT_EQ(countIn(shownText(repeated("> ", 10000) + "a"), "a"), 1U);
  EXPECT_EQ(countIn(shownText(repeated("- ", 10000) + "a"), "a"), 1U);
  EXPECT_EQ(countIn(shownText(repeated("*a _b ", 5000) + repeated("_ *", 5000)), "a"), 5000U);
  EXPECT_EQ(countIn(shownText(repeated("[a](", 10000)), "a"), 10000U);
  EXPECT_EQ(countIn(shownText("<div>" + repeated("<b>a<ul>", 10000)), "a"), 10000U);
  EXPECT_EQ(countIn(shownText("---\na: " + repeated("[", 10000) + "\n---\n\nb"), "["), 10000U);
}

// Each of these took the square of the time of half of it, or would.
TEST(HostileMarkdown, IsReadInTimeOfItsLength) {
  constexpr std::size_t kCount = 100000;
  EXPECT_EQ(countIn(textOf("<div>" + repeated("<a href=\"x ", kCount)), "href"), kCount);
  EXPECT_EQ(countIn(textOf("<div>" + repeated("<a href='x'>b", kCount)), "b"), kCount);
  EXPECT_EQ(countIn(textOf(repeated("~a ", kCount)), "~a"), kCount);
  EXPECT_EQ(countIn(textOf(repeated("\\", kCount) + "~~a~"), "~"), 3U);
  EXPECT_EQ(countIn(textOf("```\n" + repeated("\t\tx\n", kCount)), "\t\tx"), kCount);
}

TEST(HostileMarkdown, TakesNoMoreOutputThanInputForDeepQuotes) {
  const std::string text = repeated("> ", 900) + repeated("word ", 20000);
  EXPECT_LT(textOf(text).size(), 3 * text.size());
}

}  // namespace
}  // namespace scrivalen::command::test
