#include "command_support.h"
#include "system/process/process.h"
#include "texts.h"

#include <gtest/gtest.h>

namespace scrivalen::command::test {
namespace {

// Runs the program in a process of its own.
int execute(const CommandRun& folder, const std::vector<std::string>& arguments) {
  std::vector<std::wstring> all = {toWide(SCRIVALEN_COMMAND)};
  for (const std::string& argument : arguments) {
    all.push_back(toWide(replacedAll<char>(argument, "@/", folder.path(""))));
  }
  const scrivalen::ProcessResult result = scrivalen::runProgram(all);
  EXPECT_TRUE(result.started) << toUtf8(result.commandLine) << ": error " << result.error;
  return result.exitStatus;
}

TEST(Executable, ConvertsAMarkdownFileToSeveralFormats) {
  CommandRun folder;
  folder.with("Größe.md", "# Größe 😀\n\n- a & b\n");
  EXPECT_EQ(execute(folder, {"@/Größe.md", "-o", "@/ä b.html", "-o", "@/c.txt", "-o", "@/d.xml"}), 0);
  EXPECT_EQ(folder.body("ä b.html"), "<h1 id=\"größe-\">Größe 😀</h1>\n<ul>\n<li>a &amp; b</li>\n</ul>");
  EXPECT_EQ(folder.bytes("c.txt"), "Größe 😀\n========\n\n- a & b\n");
  EXPECT_NE(folder.bytes("d.xml").find("<item>a &amp; b</item>"), std::string::npos);
}

TEST(Executable, ConvertsATableToAPage) {
  CommandRun folder;
  folder.with("t.csv", "a,b\n1,\"x\ny\"\n");
  EXPECT_EQ(execute(folder, {"@/t.csv", "-o", "@/t.html", "--title", "A <table>"}), 0);
  EXPECT_EQ(folder.body("t.html"),
            "<h1 class=\"title\">A &lt;table&gt;</h1>\n<table>\n<thead>\n"
            "<tr><th scope=\"col\" style=\"text-align:right\">a</th><th scope=\"col\">b</th></tr>\n</thead>\n"
            "<tbody>\n<tr><td style=\"text-align:right\">1</td><td>x<br>\ny</td></tr>\n</tbody>\n</table>");
  EXPECT_NE(folder.bytes("t.html").find("<title>A &lt;table&gt;</title>"), std::string::npos);
}

TEST(Executable, ExitsWithTheDocumentedStatus) {
  CommandRun folder;
  folder.with("in.md", "x");
  EXPECT_EQ(execute(folder, {"@/in.md", "-o", "@/a.html"}), 0);
  EXPECT_EQ(execute(folder, {"@/in.md", "-o", "@/missing/a.html"}), 1);
  EXPECT_EQ(execute(folder, {"@/missing.md", "-o", "@/b.html"}), 1);
  EXPECT_EQ(execute(folder, {"@/in.md"}), 2);
  EXPECT_EQ(folder.names(), (std::vector<std::string>{"a.html", "in.md"}));
}

}  // namespace
}  // namespace scrivalen::command::test
