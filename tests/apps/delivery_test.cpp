#include "command_support.h"
#include "texts.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace scrivalen::command::test {
namespace {

using Names = std::vector<std::string>;

TEST(Delivery, ReplacesAnExistingFileAndLeavesNothingElse) {
  CommandRun run;
  EXPECT_EQ(run.with("in.md", "new").with("a.txt", "old").run({"@/in.md", "-o", "@/a.txt"}).status, 0);
  EXPECT_EQ(run.bytes("a.txt"), "new\n");
  EXPECT_EQ(run.names(), (Names{"a.txt", "in.md"}));
}

TEST(Delivery, ReportsAFailedOutputAndDeliversTheOthers) {
  CommandRun run;
  const Result result = run.with("in.md", "x").run({"@/in.md", "-o", "@/no/a.html", "-o", "@/b.txt"});
  EXPECT_EQ(result.status, 1);
  EXPECT_TRUE(result.error.starts_with("scrivalen: cannot write '@/no/a.html': ")) << result.error;
  EXPECT_EQ(std::count(result.error.begin(), result.error.end(), '\n'), 1);
  EXPECT_EQ(run.bytes("b.txt"), "x\n");
  EXPECT_EQ(run.names(), (Names{"b.txt", "in.md"}));
}

TEST(Delivery, RefusesAFolder) {
  CommandRun run;
  std::filesystem::create_directory(run.fsPath("d.html"));
  const Result result = run.with("in.md", "x").run({"@/in.md", "-o", "@/d.html"});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.error, "scrivalen: cannot write '@/d.html': it is a folder\n");
}

TEST(Delivery, RefusesAReadOnlyFile) {
  CommandRun run;
  run.with("in.md", "x").with("a.txt", "old");
  using std::filesystem::perms;
  std::filesystem::permissions(run.fsPath("a.txt"), perms::owner_read | perms::group_read | perms::others_read);
  const Result result = run.run({"@/in.md", "-o", "@/a.txt"});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.error, "scrivalen: cannot write '@/a.txt': it is read-only\n");
  EXPECT_EQ(run.bytes("a.txt"), "old");
  EXPECT_EQ(run.names(), (Names{"a.txt", "in.md"}));
  std::filesystem::permissions(run.fsPath("a.txt"), perms::owner_all);
}

TEST(Delivery, RefusesToOverwriteItsInput) {
  CommandRun run;
  const Result result = run.with("in.txt", "# x").run({"@/in.txt", "-o", "@/in.txt"});
  EXPECT_EQ(result.status, 2);
  EXPECT_EQ(result.error, "scrivalen: the output '@/in.txt' is the input; it would be overwritten\n");
  EXPECT_EQ(run.bytes("in.txt"), "# x");
}

TEST(Delivery, RefusesToOverwriteAFileThatItReadsBesidesTheInput) {
  struct Case {
    std::vector<std::string> option;
    const char* what;
  };
  for (const auto& [option, what] :
       {Case{{"--template", "@/f.html"}, "template"}, Case{{"--styles", "@/f.html"}, "style sheet"},
        Case{{"--set", "template=@/f.html"}, "template"}, Case{{"--set", "html.template=@/f.html"}, "template"},
        Case{{"--set", "styles=@/f.html"}, "style sheet"}, Case{{"--set", "xlsx.styles=@/f.html"}, "style sheet"},
        Case{{"--reference", "@/f.html"}, "reference"}, Case{{"--set", "docx.reference=@/f.html"}, "reference"},
        Case{{"--set", "header-image=@/f.html"}, "header image"},
        Case{{"--set", "pdf.header-image=@/f.html"}, "header image"},
        Case{{"--set", "font-file=@/f.html", "--set", "font-file=@/g"}, "font file"},
        Case{{"--set", "font-file=@/f.html#1"}, "font file"}}) {
    CommandRun run;
    std::vector<std::string> arguments = {"@/in.md", "-o", "@/f.html", "-o", "@/a.xlsx", "-o", "@/a.pdf"};
    for (const std::string& argument : option) {
      const std::size_t at = argument.find('@');
      arguments.push_back(at == std::string::npos ? argument
                                                  : argument.substr(0, at) + run.path(argument.substr(at + 2)));
    }
    const Result result = run.with("in.md", "x").with("f.html", "mine").run(arguments);
    EXPECT_EQ(result.status, 2) << arguments.back();
    EXPECT_NE(result.error.find(std::string("f.html' is the ") + what + ""), std::string::npos) << result.error;
    EXPECT_NE(result.error.find("; it would be overwritten\n"), std::string::npos) << result.error;
    EXPECT_EQ(run.bytes("f.html"), "mine");
    EXPECT_EQ(run.names(), (Names{"f.html", "in.md"}));
  }
}

TEST(Delivery, RefusesToOverwriteATemplateInTheFolderOfTheOutputs) {
  CommandRun run;
  run.with("index.md", "x").with("index.html", "mine");
  const Result result = run.run({"@/index.md", "--output-dir", "@/", "--to", "html", "--template", "@/index.html"});
  EXPECT_EQ(result.status, 2);
  EXPECT_EQ(result.error, "scrivalen: the output '@/index.html' is the template; it would be overwritten\n");
  EXPECT_EQ(run.bytes("index.html"), "mine");
}

TEST(Delivery, RecognizesTheInputUnderAnotherName) {
  CommandRun run;
  run.with("in.md", "# x");
  std::filesystem::create_hard_link(run.fsPath("in.md"), run.fsPath("same.html"));
  EXPECT_EQ(run.run({"@/in.md", "-o", "@/same.html"}).status, 2);
  EXPECT_EQ(run.bytes("in.md"), "# x");
}

TEST(Delivery, RecognizesOneOutputUnderTwoNames) {
  CommandRun run;
  run.with("in.md", "# x").with("a.txt", "old");
  std::filesystem::create_hard_link(run.fsPath("a.txt"), run.fsPath("b.txt"));
  const Result result = run.run({"@/in.md", "-o", "@/a.txt", "-o", "@/b.txt"});
  EXPECT_EQ(result.status, 2);
  EXPECT_EQ(result.error, "scrivalen: the outputs '@/a.txt' and '@/b.txt' are the same file\n");
  EXPECT_EQ(run.bytes("a.txt"), "old");
}

TEST(Delivery, RefusesTwoOutputsOnStandardOutput) {
  CommandRun run;
  const Result result = run.with("in.md", "x").run({"@/in.md", "-o", "text:-", "-o", "html:-"});
  EXPECT_EQ(result.status, 2);
  EXPECT_EQ(result.error, "scrivalen: two outputs go to standard output; give one of them a file name\n");
}

TEST(Delivery, LeavesNoFilesWhenInterrupted) {
  CommandRun run;
  std::string table = "a,b\n";
  for (int i = 0; i < 2000; ++i) {
    table += "1,2\n";
  }
  int polls = 0;
  run.environment.get().wasInterrupted = [&] { return ++polls > 2; };
  const Result result = run.with("in.csv", table)
                            .with("a.html", "old")
                            .run({"@/in.csv", "-o", "@/a.html", "-o", "@/b.txt", "-o", "@/c.xml"});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.error, "scrivalen: interrupted\n");
  EXPECT_EQ(run.bytes("a.html"), "old");
  EXPECT_EQ(run.names(), (Names{"a.html", "in.csv"}));
}

TEST(Delivery, CanBeInterruptedBetweenTwoReads) {
  CommandRun run;
  int reads = 0;
  run.environment.get().readInput = [&reads](void* data, std::size_t) {
    *static_cast<char*>(data) = 'x';
    return std::optional<std::size_t>(++reads < 1000 ? 1 : 0);
  };
  run.environment.get().wasInterrupted = [&reads] { return reads > 2; };
  EXPECT_EQ(run.run({"-", "-o", "@/a.html"}).error, "scrivalen: interrupted\n");
  EXPECT_EQ(reads, 3);
}

TEST(Delivery, CanBeInterruptedUntilTheLastMoment) {
  CommandRun run;
  run.environment.get().wasInterrupted = [] { return true; };
  const Result result = run.with("in.md", "x").run({"@/in.md", "-o", "@/a.html"});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(run.names(), Names{"in.md"});
}

TEST(Delivery, ReplacesAFileWithANonAsciiPath) {
  CommandRun run;
  run.with("in.md", "x");
  std::filesystem::create_directory(run.fsPath("ordner-ü"));
  for (const std::string name : {"ä.txt", "ordner-ü/a.txt", "ordner-ü/日本.txt"}) {
    for (int i = 0; i < 2; ++i) {
      const Result result = run.run({"@/in.md", "-o", "@/" + name, "-o", "@/other.txt"});
      EXPECT_EQ(result.status, 0) << name << ": " << result.error;
      EXPECT_EQ(run.bytes(name), "x\n");
    }
  }
  EXPECT_EQ(run.names(), (Names{"in.md", "ordner-ü", "other.txt", "ä.txt"}));
}

TEST(Delivery, AcceptsAnyFileName) {
  CommandRun run;
  run.with("-ein 'Bär'.md", "x");
  for (const std::string name : {"-a.txt", "ä ö € 日本.txt", "it's.txt", "a;b&c%PATH%.txt"}) {
    EXPECT_EQ(run.run({"@/-ein 'Bär'.md", "-o", "@/" + name}).status, 0) << name;
    EXPECT_EQ(run.bytes(name), "x\n");
  }
}

}  // namespace
}  // namespace scrivalen::command::test
