#include "command_support.h"
#include "readers/markdown/headings.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <ctime>
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

struct RepeatedText {
  std::string_view start;
  std::string_view part;
  std::string_view end;
};

// In ticks of the processor time.
std::clock_t timeToRead(const RepeatedText& text, std::size_t count) {
  const std::string markdown = std::string(text.start) + repeated(text.part, count) + std::string(text.end);
  const std::clock_t begin = std::clock();
  shownText(markdown);
  return std::clock() - begin;
}

// Four times the text takes four times as long, or sixteen times if the time grows as the square of the length. What
// else the machine does may spoil a measurement, but not each of several.
bool isReadInTimeOfItsLength(const RepeatedText& text) {
  constexpr std::size_t kCount = 25000;
  constexpr std::clock_t kTooShortToCompare = CLOCKS_PER_SEC / 20;
  constexpr int kAttempts = 3;
  for (int i = 0; i < kAttempts; ++i) {
    const std::clock_t shorter = timeToRead(text, kCount);
    const std::clock_t longer = timeToRead(text, 4 * kCount);
    if (longer <= kTooShortToCompare || longer <= 8 * shorter) {
      return true;
    }
  }
  return false;
}

// Each of these took the square of the time of half of it, or would.
TEST(HostileMarkdown, IsReadInTimeOfItsLength) {
  constexpr RepeatedText kTexts[] = {{"<div>", "<a href=\"x ", ""},
                                     {"<div>", "<a href='x'>b", ""},
                                     {"<div>\n", "<a href=\"x\"></a> ", ""},
                                     {"<div>\n", "<a href=\"x\"><b> ", ""},
                                     {"<div>\n", "<a href=x></a><td>", ""},
                                     {"<div>\n", "<?", ""},
                                     {"<div>\n", "<!x", ""},
                                     {"<div>\n", "<![CDATA[", ""},
                                     {"", "~a ", ""},
                                     {"", "\\", "~~a~"},
                                     {"```\n", "\t\tx\n", ""}};
  for (const RepeatedText& text : kTexts) {
    EXPECT_TRUE(isReadInTimeOfItsLength(text)) << text.start << text.part;
  }
}

TEST(HostileMarkdown, KeepsTheTextOfManyMarksWithoutAnEnd) {
  constexpr std::size_t kCount = 100000;
  EXPECT_EQ(countIn(textOf("<div>" + repeated("<a href=\"x ", kCount)), "href"), kCount);
  EXPECT_EQ(countIn(textOf("<div>" + repeated("<a href='x'>b", kCount)), "b"), kCount);
  EXPECT_EQ(countIn(textOf("<div>\n" + repeated("<?", kCount)), "<?"), kCount);
  EXPECT_EQ(countIn(textOf("<div>\n" + repeated("<![CDATA[", kCount)), "<![CDATA["), kCount);
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
