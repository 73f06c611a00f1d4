#include "command_support.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

namespace scrivalen::command::test {
namespace {

namespace fs = std::filesystem;
using Names = std::vector<std::string>;

// A run with a folder "out" and three inputs.
class SeveralInputs : public ::testing::Test {
 protected:
  SeveralInputs() {
    fs::create_directory(run_.fsPath("out"));
    run_.with("a.md", "# A").with("b.csv", "x,y\n1,2\n").with("c.notes.md", "c\xFF");
  }

  Names outputs() const {
    Names names;
    for (const auto& entry : fs::directory_iterator(run_.fsPath("out"))) {
      names.push_back(entry.path().filename().string());
    }
    std::sort(names.begin(), names.end());
    return names;
  }

  // Nothing is written where the usage is wrong.
  std::string complaint(const std::vector<std::string>& arguments) {
    const Result result = run_.run(arguments);
    EXPECT_EQ(result.status, 2) << result.error;
    EXPECT_EQ(outputs(), Names());
    return result.error;
  }

  CommandRun run_;
};

TEST_F(SeveralInputs, BecomeOutputsNamedAfterThem) {
  const Result result = run_.run({"@/a.md", "@/b.csv", "@/c.notes.md", "--output-dir", "@/out", "--to", "html,text"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.error,
            "scrivalen: warning: '@/c.notes.md': replaced 1 invalid character with U+FFFD; if it is not UTF-8, see "
            "--encoding\n");
  EXPECT_EQ(outputs(), (Names{"a.html", "a.txt", "b.html", "b.txt", "c.notes.html", "c.notes.txt"}));
  EXPECT_EQ(run_.body("out/a.html"), "<h1 id=\"a\">A</h1>");
  EXPECT_EQ(run_.bytes("out/b.txt"), "x  y\n-  -\n1  2\n");
}

TEST_F(SeveralInputs, MayBeASingleOne) {
  EXPECT_EQ(run_.run({"--to", "MD", "--to", "html,htm", "@/a.md", "--output-dir", "@/out"}).error, "");
  EXPECT_EQ(outputs(), (Names{"a.html", "a.md"}));
}

TEST_F(SeveralInputs, ShareTheOptions) {
  const Result result =
      run_.run({"@/a.md", "@/b.csv", "--output-dir", "@/out/", "--to", "html", "--title", "T", "--set", "author=Me"});
  EXPECT_EQ(result.error, "");
  for (const char* const name : {"out/a.html", "out/b.html"}) {
    EXPECT_NE(run_.bytes(name).find("<title>T</title>"), std::string::npos) << name;
    EXPECT_NE(run_.bytes(name).find("content=\"Me\""), std::string::npos) << name;
  }
}

TEST_F(SeveralInputs, HaveFormatsOfTheirOwnUnlessOneIsGiven) {
  EXPECT_EQ(run_.run({"@/a.md", "@/b.csv", "--from", "csv", "--output-dir", "@/out", "--to", "text"}).status, 0);
  EXPECT_EQ(run_.bytes("out/a.txt"), "# A\n---\n");
}

TEST_F(SeveralInputs, AreConvertedWhenOneOfThemFails) {
  const Result result =
      run_.with("bad.csv", "a\n\"b\n")
          .run({"@/bad.csv", "@/a.md", "@/missing.md", "@/b.csv", "--output-dir", "@/out", "--to", "txt"});
  EXPECT_EQ(result.status, 1);
  EXPECT_TRUE(
      result.error.starts_with("scrivalen: '@/bad.csv', line 2: a quoted cell begins here but never ends\n"
                               "scrivalen: cannot read '@/missing.md': "))
      << result.error;
  EXPECT_EQ(std::count(result.error.begin(), result.error.end(), '\n'), 2) << result.error;
  EXPECT_EQ(outputs(), (Names{"a.txt", "b.txt"}));
}

TEST_F(SeveralInputs, AreConvertedWhenAnOutputFails) {
  fs::create_directory(run_.fsPath("out/a.html"));
  const Result result = run_.run({"@/a.md", "@/b.csv", "--output-dir", "@/out", "--to", "html"});
  EXPECT_EQ(result.status, 1);
  EXPECT_TRUE(result.error.ends_with("a.html': it is a folder\n")) << result.error;
  EXPECT_TRUE(run_.has("out/b.html"));
}

TEST_F(SeveralInputs, AreConvertedWhenAnOptionDoesNotFitOneOfThem) {
  const Result result =
      run_.with("d.csv", "x,z\n1,2\n")
          .run({"@/b.csv", "@/d.csv", "@/a.md", "--columns", "y", "--output-dir", "@/out", "--to", "txt"});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.error, "scrivalen: '@/d.csv': --columns: there is no column 'y'; the columns are 'x', 'z'\n");
  EXPECT_EQ(outputs(), (Names{"a.txt", "b.txt"}));
}

TEST_F(SeveralInputs, AreNotBegunWithWrongSettings) {
  EXPECT_EQ(complaint({"@/missing.md", "@/a.md", "--set", "papre=A4", "--output-dir", "@/out", "--to", "txt"}),
            "scrivalen: There is no setting \"papre\". Did you mean \"paper\"?\n");
}

TEST_F(SeveralInputs, AllStopWhenInterrupted) {
  run_.environment.get().wasInterrupted = [this] { return run_.has("out/a.txt"); };
  const Result result = run_.run({"@/a.md", "@/b.csv", "@/c.notes.md", "--output-dir", "@/out", "--to", "txt"});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.error, "scrivalen: interrupted\n");
  EXPECT_EQ(outputs(), Names{"a.txt"});
}

TEST_F(SeveralInputs, AreFailuresAfterAWarningWhenStrict) {
  EXPECT_EQ(run_.run({"@/c.notes.md", "@/a.md", "--strict", "--output-dir", "@/out", "--to", "txt"}).status, 1);
  EXPECT_EQ(outputs(), (Names{"a.txt", "c.notes.txt"}));
}

TEST_F(SeveralInputs, MustNotHaveTheSameOutput) {
  const std::string error = complaint({"@/a.md", "@/out/../a.md", "--output-dir", "@/out", "--to", "html"});
  EXPECT_TRUE(error.starts_with("scrivalen: the outputs of '@/a.md' and '@/out/../a.md' would be the same file, '"))
      << error;
  EXPECT_TRUE(error.ends_with("a.html'; convert them into different folders\n")) << error;
}

TEST_F(SeveralInputs, MustNotBeGivenTwice) {
  EXPECT_EQ(complaint({"@/a.md", "@/b.csv", "@/a.md", "--output-dir", "@/out", "--to", "html"}),
            "scrivalen: the input '@/a.md' is given twice; give it once\n");
}

TEST_F(SeveralInputs, MustNotBeOutputs) {
  const std::string error = complaint({"@/b.csv", "@/a.md", "--output-dir", "@/", "--to", "html,md"});
  EXPECT_EQ(error, "scrivalen: the output '@/a.md' is the input; it would be overwritten\n");
  fs::create_hard_link(run_.fsPath("a.md"), run_.fsPath("b.txt"));
  EXPECT_EQ(complaint({"@/b.csv", "@/a.md", "--output-dir", "@/", "--to", "txt"}),
            "scrivalen: the output '@/b.txt' is the input '@/a.md'; it would be overwritten\n");
}

TEST_F(SeveralInputs, NeedAFolderThatExists) {
  EXPECT_EQ(complaint({"@/a.md", "--output-dir", "@/no", "--to", "html"}),
            "scrivalen: there is no folder '@/no'; create it first\n");
  EXPECT_EQ(complaint({"@/a.md", "--output-dir", "@/b.csv", "--to", "html"}),
            "scrivalen: the output folder '@/b.csv' is not a folder\n");
}

TEST_F(SeveralInputs, NeedFormats) {
  EXPECT_EQ(complaint({"@/a.md", "--output-dir", "@/out"}),
            "scrivalen: --output-dir FOLDER needs --to FORMAT, such as --to html,pdf\n");
  EXPECT_EQ(complaint({"@/a.md", "--output-dir", "@/out", "--to", "pfd"}),
            "scrivalen: there is no format 'pfd'; did you mean 'pdf'?\n");
  EXPECT_EQ(complaint({"@/a.md", "--output-dir", "@/out", "--to", "html,"}),
            "scrivalen: --to takes formats with commas and no blanks between them, such as html,pdf, not 'html,'\n");
}

TEST_F(SeveralInputs, CannotBeMixedWithSingleOutputs) {
  EXPECT_EQ(complaint({"@/a.md", "--to", "html"}),
            "scrivalen: --to FORMAT needs --output-dir FOLDER; for a single file use -o FILE\n");
  EXPECT_EQ(complaint({"@/a.md", "-o", "@/out/a.txt", "--output-dir", "@/out", "--to", "html"}),
            "scrivalen: -o FILE and --output-dir FOLDER --to FORMAT exclude each other; use the one or the others\n");
  EXPECT_EQ(complaint({"@/a.md", "@/b.csv", "-o", "@/out/a.txt"}),
            "scrivalen: -o FILE takes one input, not also '@/b.csv'; for several inputs use --output-dir FOLDER --to "
            "FORMAT\n");
  EXPECT_EQ(complaint({"-", "--output-dir", "@/out", "--to", "html"}),
            "scrivalen: standard input has no name for an output in '@/out'; use -o FILE\n");
}

// In a folder that ignores case, which the folder for temporary files may be on any system, one would replace the
// other.
TEST_F(SeveralInputs, MayDifferInCaseOnlyWhereTheirOutputsDo) {
  fs::create_directory(run_.fsPath("other"));
  run_.with("other/A.csv", "x\n");
  const bool isOne = fs::exists(run_.fsPath("OUT"));
  const Result result = run_.run({"@/a.md", "@/other/A.csv", "--output-dir", "@/out", "--to", "txt"});
  EXPECT_EQ(result.status, isOne ? 2 : 0) << result.error;
  EXPECT_EQ(outputs(), isOne ? Names() : (Names{"A.txt", "a.txt"}));
}

TEST_F(SeveralInputs, AreNotReplacedUnderAnotherSpelling) {
  const bool isOne = fs::exists(run_.fsPath("OUT"));
  const Result result = run_.run({"@/a.md", "-o", "text:@/A.MD"});
  EXPECT_EQ(result.status, isOne ? 2 : 0) << result.error;
  EXPECT_EQ(run_.bytes("a.md"), "# A");
  EXPECT_EQ(run_.run({"@/a.md", "-o", "@/out/x.txt", "-o", "@/out/X.TXT"}).status, isOne ? 2 : 0);
}

}  // namespace
}  // namespace scrivalen::command::test
