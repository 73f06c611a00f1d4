#include "readers/front_matter/front_matter.h"

#include "command_support.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace scrivalen::command::test {
namespace {

using Settings = std::vector<std::pair<std::string, std::string>>;
using Warnings = std::vector<std::string>;

FrontMatter read(const std::string& lines) { return frontMatterOf("---\n" + lines + "---\ntext\n"); }

TEST(FrontMatter, GivesTheTitleAndSettingsOfTheDocument) {
  const FrontMatter front =
      read("title: A b\nauthor: Ann\ndate: 2024-01-02\nlang: de\nkeywords: one, two\nlayout: {a: [b]}\n");
  EXPECT_EQ(front.title, "A b");
  EXPECT_EQ(front.settings,
            (Settings{{"author", "Ann"}, {"date", "2024-01-02"}, {"language", "de"}, {"keywords", "one, two"}}));
  EXPECT_EQ(front.warnings, Warnings());
}

TEST(FrontMatter, JoinsAList) {
  EXPECT_EQ(read("keywords: [one, 'two', 3]\nauthor:\n  - Ann\n  - ~\n  - Bob\n").settings,
            (Settings{{"keywords", "one, two, 3"}, {"author", "Ann, Bob"}}));
}

TEST(FrontMatter, TakesValuesOfAnyKindAsTheirText) {
  EXPECT_EQ(read("title: 2024\n").title, "2024");
  EXPECT_EQ(read("title: true\n").title, "true");
  EXPECT_EQ(read("title: !!float 1.50\n").title, "1.50");
  EXPECT_EQ(read("title: >\n  folded\n  text\n").title, "folded text");
  EXPECT_EQ(read("title: \"a\\0b\"\n").title, std::string("a\xEF\xBF\xBD") + "b");
  EXPECT_EQ(read("title: &name t\n").title, "t");
}

TEST(FrontMatter, HasNoValueWhereOneIsLeftOut) {
  EXPECT_EQ(read("title:\n").title, std::nullopt);
  EXPECT_EQ(read("title: ~\n").title, std::nullopt);
  EXPECT_EQ(read("title: null\n").title, std::nullopt);
  EXPECT_EQ(read("title: 'null'\n").title, "null");
  EXPECT_EQ(read("keywords: []\n").settings, Settings());
}

TEST(FrontMatter, EndsWithItsLastFence) {
  EXPECT_EQ(frontMatterOf("---\na: b\n---\nc").size, 13U);
  EXPECT_EQ(frontMatterOf("--- \r\na: b\r\n...\t\r\nc").size, 18U);
  EXPECT_EQ(frontMatterOf("---\na: b\n---").size, 12U);
  EXPECT_EQ(frontMatterOf("---\n---\na").size, 8U);
}

TEST(FrontMatter, IsNotWhatBeginsWithARule) {
  for (const char* const text :
       {"", "---", "---\n", "---\na: b\n", "----\na: b\n---\n", "\n---\na: b\n---\n", " ---\na: b\n---\n",
        "---\n\na: b\n---\n", "---\na: b\n ---\n", "---\ntitle\n", "---\nA title: b\n", "---\ntitle:b\n",
        "---\na\ntitle: b\n", "---\n\ntitle: b\n", "---\n# Heading\n\n---\n", "---\n# a\n# b\n---\nc"}) {
    const FrontMatter front = frontMatterOf(text);
    EXPECT_EQ(front.size, 0U) << text;
    EXPECT_EQ(front.warnings, Warnings()) << text;
  }
}

// The one warning about lines between fences that are read as text.
std::string warningOf(const std::string& lines) {
  const FrontMatter front = read(lines);
  EXPECT_EQ(front.size, 0U) << lines;
  EXPECT_EQ(front.title, std::nullopt) << lines;
  EXPECT_EQ(front.settings, Settings()) << lines;
  return front.warnings.size() == 1 ? front.warnings[0] : std::to_string(front.warnings.size()) + " warnings";
}

TEST(FrontMatter, ThatIsNoYamlIsTextAndAWarning) {
  const std::string isText = ", so the front matter is read as text";
  EXPECT_EQ(warningOf("author: b\ntitle: a: b\n"), "line 3: mapping values are not allowed in this context" + isText);
  EXPECT_EQ(warningOf("a: [b\n"), "line 3: while parsing a flow sequence, did not find expected ',' or ']'" + isText);
  EXPECT_EQ(warningOf("a: b\nc: \x01\n"), "line 3: control characters are not allowed" + isText);
  EXPECT_EQ(warningOf("{a: b}\nc\n"), "line 3: did not find expected <document start>" + isText);
  EXPECT_EQ(warningOf("Just a text.\n"), "line 2: there is no \"name: value\"" + isText);
  EXPECT_EQ(warningOf("- a\n- b\n"), "line 2: there is no \"name: value\"" + isText);
}

TEST(FrontMatter, ThatIsNotClosedIsTextAndAWarning) {
  const Warnings warning = {"line 1: no line '---' or '...' ends the front matter, so it is read as text"};
  for (const char* const text : {"---\ntitle: a\n", "--- \r\nAuthor: a\r\n\r\nb\r\n", "---\ndate:", "---\nlang : de\n",
                                 "---\nlanguage: de\n# a\n", "---\nkeywords:\n- a\n\n ---\n"}) {
    const FrontMatter front = frontMatterOf(text);
    EXPECT_EQ(front.size, 0U) << text;
    EXPECT_EQ(front.title, std::nullopt) << text;
    EXPECT_EQ(front.warnings, warning) << text;
  }
}

TEST(FrontMatter, SkipsAValueThatIsNoText) {
  const FrontMatter front = read("author:\n  - name: Ann\n    mail: a@b\nkeywords: [a, [b]]\ntitle: t\n");
  EXPECT_EQ(front.title, "t");
  EXPECT_EQ(front.settings, Settings());
  EXPECT_EQ(front.warnings, (Warnings{"line 2: 'author' is neither a text nor a list of texts, so it is skipped",
                                      "line 5: 'keywords' is neither a text nor a list of texts, so it is skipped"}));
}

TEST(FrontMatter, ExpandsNoAlias) {
  std::string lines = "a: &a0 [lol, lol]\n";
  for (int i = 1; i < 40; ++i) {
    lines += "a" + std::to_string(i) + ": &a" + std::to_string(i);
    lines += " [*a" + std::to_string(i - 1) + ", *a" + std::to_string(i - 1) + "]\n";
  }
  const FrontMatter front = read(lines + "keywords: *a39\ntitle: t\n");
  EXPECT_EQ(front.title, "t");
  EXPECT_EQ(front.warnings, Warnings{"line 42: 'keywords' is neither a text nor a list of texts, so it is skipped"});
}

TEST(FrontMatter, IsTextWhereItIsNestedTooDeeply) {
  for (const std::string& open : {std::string("["), std::string("{a: "), std::string("- "), std::string("? ")}) {
    std::string lines = "a:\n  ";
    for (int i = 0; i < 10000; ++i) {
      lines += open;
    }
    const FrontMatter front = read(lines + "\n");
    EXPECT_EQ(front.size, 0U);
    EXPECT_EQ(front.warnings,
              Warnings{"line 3: lists and mappings are too deep in each other, so the front matter is read as text"});
  }
}

TEST(FrontMatter, IsTextWhereItIsTooLong) {
  EXPECT_EQ(read("a: " + std::string(200 * 1024, 'b') + "\n").warnings, Warnings());
  const FrontMatter front = read("a: " + std::string(256 * 1024, 'b') + "\n");
  EXPECT_EQ(front.size, 0U);
  EXPECT_EQ(front.warnings, Warnings{"line 1: there are more than 256 KiB up to the next '---', so the front matter is "
                                     "read as text"});
}

bool holds(const std::string& text, std::string_view part) { return text.find(part) != std::string::npos; }

constexpr std::string_view kFront =
    "---\ntitle: Of the text\nauthor: Ann\nlanguage: de\nkeywords: [x, y]\ndate: 1 May\n---\n";

TEST(FrontMatter, SetsThePropertiesOfADocument) {
  CommandRun run;
  const Result result = run.with("in.md", std::string(kFront) + "a\n").run({"@/in.md", "-o", "@/a.html"});
  EXPECT_EQ(result.error, "");
  const std::string page = run.bytes("a.html");
  for (const std::string_view part :
       {"<html lang=\"de\">", "<title>Of the text</title>", "<meta name=\"author\" content=\"Ann\">",
        "<meta name=\"keywords\" content=\"x, y\">"}) {
    EXPECT_TRUE(holds(page, part)) << part << page;
  }
  EXPECT_EQ(run.body("a.html"), "<h1 class=\"title\">Of the text</h1>\n<p>a</p>");
}

TEST(FrontMatter, HasATitleThatIsShownWhereTheFirstBlockIsNoHeading) {
  EXPECT_EQ(textOf(std::string(kFront) + "a\n"), "Of the text\n===========\n\na\n");
  EXPECT_EQ(textOf(std::string(kFront) + "\n# b\n\na\n"), "b\n=\n\na\n");
}

TEST(FrontMatter, ComesAfterTheOptions) {
  CommandRun run;
  run.with("in.md", std::string(kFront) + "a\n");
  EXPECT_EQ(run.run({"@/in.md", "-o", "@/a.html", "--title", "Mine", "--set", "author=Bob"}).error, "");
  EXPECT_TRUE(holds(run.bytes("a.html"), "<title>Mine</title>")) << run.bytes("a.html");
  EXPECT_TRUE(holds(run.bytes("a.html"), "content=\"Bob\"")) << run.bytes("a.html");
  EXPECT_EQ(run.run({"@/in.md", "-o", "@/a.html", "--set", "title=Mine"}).error, "");
  EXPECT_EQ(run.body("a.html"), "<h1 class=\"title\">Mine</h1>\n<p>a</p>");
}

TEST(FrontMatter, WithAValueThatCannotBeUsedIsAWarning) {
  CommandRun run;
  const Result result = run.with("in.md", "---\nlang: no such\n---\n# a\n").run({"@/in.md", "-o", "@/a.html"});
  EXPECT_EQ(result.status, 0);
  EXPECT_TRUE(holds(result.error, "scrivalen: warning: '@/in.md': ")) << result.error;
  EXPECT_TRUE(holds(result.error, "\"language\" does not take \"no such\"")) << result.error;
}

TEST(FrontMatter, ThatIsNoYamlLosesNoWord) {
  CommandRun run;
  const Result result = run.with("in.md", "---\ntitle: a: b\n---\nc\n").run({"@/in.md", "-o", "@/a.txt"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(
      result.error,
      "scrivalen: warning: '@/in.md': line 2: mapping values are not allowed in this context, so the front matter "
      "is read as text\n");
  EXPECT_TRUE(holds(run.bytes("a.txt"), "title: a: b")) << run.bytes("a.txt");
}

TEST(FrontMatter, IsOfMarkdownOnly) {
  CommandRun run;
  EXPECT_EQ(run.with("in.csv", "---\ntitle: a\n---\n").run({"@/in.csv", "-o", "@/a.txt"}).error, "");
  EXPECT_TRUE(holds(run.bytes("a.txt"), "title: a")) << run.bytes("a.txt");
}

}  // namespace
}  // namespace scrivalen::command::test
