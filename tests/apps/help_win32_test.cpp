#include "command_support.h"

#include <cstdlib>
#include <filesystem>

#include <gtest/gtest.h>

// The help compiler on the search path of these tests records its input: the project, the contents and each topic's
// page.
namespace scrivalen::command::test {
namespace {

bool holds(const std::string& text, std::string_view part) { return text.find(part) != std::string::npos; }

class ChmOutput : public testing::Test {
 protected:
  void SetUp() override {
    std::string path = "PATH=" + std::filesystem::absolute(SCRIVALEN_STAND_IN_COMPILER).string();
    if (const char* before = std::getenv("PATH")) {
      path.append(";").append(before);
    }
    ASSERT_EQ(::_putenv(path.c_str()), 0);
  }
};

std::string compilerInputFor(std::string_view markdown, const std::vector<std::string>& options = {}) {
  CommandRun run;
  std::vector<std::string> arguments = {"@/in.md", "-o", "@/out.chm", "--title", "T"};
  arguments.insert(arguments.end(), options.begin(), options.end());
  const Result result = run.with("in.md", markdown).run(arguments);
  EXPECT_EQ(result.status, 0) << result.error;
  return run.bytes("out.chm");
}

TEST_F(ChmOutput, HasATopicForEachHeadingOfLevelOneOrTwo) {
  const std::string input = compilerInputFor("a\n\n# B\n\n### C\n\n## D");
  EXPECT_TRUE(holds(input, "Default topic=topic1.htm\n")) << input;
  EXPECT_TRUE(holds(input, "Title=T\n[FILES]\ntopic1.htm\ntopic2.htm\ntopic3.htm\n")) << input;
  EXPECT_TRUE(holds(input, "<param name=\"Name\" value=\"T\">\n<param name=\"Local\" value=\"topic1.htm\">"));
  EXPECT_TRUE(holds(input, "<param name=\"Name\" value=\"B\">\n<param name=\"Local\" value=\"topic2.htm\">"));
  EXPECT_TRUE(holds(input, "<h1 id=\"b\">B</h1>\n<h3 id=\"c\">C</h3>"));
}

TEST_F(ChmOutput, LinksFromTopicToTopic) {
  const std::string input = compilerInputFor("# A\n\n[d](#d) [c](#c)\n\n### C\n\n# B\n\n### D\n\n[c](#c)");
  EXPECT_TRUE(holds(input, "<a href=\"topic2.htm#d\">d</a> <a href=\"#c\">c</a>")) << input;
  EXPECT_TRUE(holds(input, "<a href=\"topic1.htm#c\">c</a>")) << input;
}

TEST_F(ChmOutput, BeginsNoTopicInAQuoteOrAList) {
  EXPECT_TRUE(holds(compilerInputFor("# A\n\n> # B\n\n- # C"), "[FILES]\ntopic1.htm\n[report.hhc]"));
}

TEST_F(ChmOutput, WritesRawHtmlAsTextUnlessUnsafe) {
  const std::string_view markdown = "a <b onclick='e'>b</b><script>e</script> [c](javascript:e)\n\n<div>d</div>";
  EXPECT_TRUE(holds(compilerInputFor(markdown), "<p>a b c (javascript:e)</p>\n<p>d</p>"));
  EXPECT_TRUE(holds(compilerInputFor(markdown, {"--unsafe"}),
                    "<p>a <b onclick='e'>b</b><script>e</script> <a href=\"javascript:e\">c</a></p>\n<div>d</div>"));
}

}  // namespace
}  // namespace scrivalen::command::test
