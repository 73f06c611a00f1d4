#include "command_support.h"
#include "support/faults/small_disk.h"
#include "texts.h"

#include <scrivalen/host.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>

// Help files made from their pages by a script, and the command's messages about them. The command writes the pages to
// the folder for temporary files.

namespace scrivalen::command::test {
namespace {

namespace fs = std::filesystem;
using scrivalen::test::onSmallDisk;
using scrivalen::test::SmallDisk;

// Sets a variable of the process for its lifetime.
class Variable {
 public:
  Variable(const char* name, const std::string& value) : name_(name) {
    const char* const before = std::getenv(name);
    before_ = before ? before : "";
    ::setenv(name, value.c_str(), 1);
  }
  Variable(const Variable&) = delete;
  Variable& operator=(const Variable&) = delete;
  ~Variable() { before_.empty() ? ::unsetenv(name_) : ::setenv(name_, before_.c_str(), 1); }

 private:
  const char* name_;
  std::string before_;
};

// A data folder of the library with a template and no help compiler.
class DataFolder {
 public:
  DataFolder() {
    scrivalen::test::makeFolder(folder_ / L"tmpl");
    scrivalen::test::writeBytes(folder_ / L"tmpl/default.htm", "%BODY%");
    scrivalen::SetDataFolder(folder_.path().c_str());
  }
  DataFolder(const DataFolder&) = delete;
  DataFolder& operator=(const DataFolder&) = delete;
  ~DataFolder() { scrivalen::SetDataFolder(nullptr); }

  std::wstring operator/(std::wstring_view name) const { return folder_ / name; }

 private:
  scrivalen::test::TemporaryFolder folder_;
};

// Makes a script the help compiler for its lifetime.
class Compiler {
 public:
  explicit Compiler(const std::string& script) {
    scrivalen::test::makeFolder(folder_ / L"hhc");
    scrivalen::test::writeBytes(folder_ / L"hhc/hhc.exe", "#!/bin/sh\n" + script);
    fs::permissions(scrivalen::test::asPath(folder_ / L"hhc/hhc.exe"), fs::perms::owner_all);
  }

 private:
  DataFolder folder_;
};

// Makes a help file that consists of its pages.
constexpr const char* kJoinPages = "cat *.htm >report.chm\n";

bool holds(const std::string& text, std::string_view part) { return text.find(part) != std::string::npos; }

TEST(HelpOutput, HasATopicForEachHeadingOfLevelOneOrTwo) {
  const Compiler compiler(kJoinPages);
  CommandRun run;
  const Result result = run.with("in.md", "[b](#b)\n\n# A\n\n## B\n\n| \\<b> |\n|---|\n")
                            .run({"@/in.md", "--title", "T", "-o", "@/a.chm"});
  EXPECT_EQ(result.error, "");
  const std::string pages = run.bytes("a.chm");
  EXPECT_TRUE(holds(pages, "<a href=\"topic3.htm#b\">b</a>")) << pages;
  EXPECT_TRUE(holds(pages, "<h1 id=\"a\">A</h1>")) << pages;
  EXPECT_TRUE(holds(pages, "&lt;b&gt;")) << pages;
}

TEST(ChmMessages, NameTheOutputInAWarning) {
  const Compiler compiler("printf made >report.chm\n");
  CommandRun run;
  const Result result = run.with("in.md", "# \xE4\xB8\xAD").run({"@/in.md", "-o", "@/a.chm"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.error,
            "scrivalen: warning: '@/a.chm': letters of the title that the code page of the language lacks, shown as "
            "\"?\" above the window\n");
}

TEST(ChmMessages, NameTheOutputInAWarningOfTheCompiler) {
  const Compiler compiler("printf made >report.chm\necho \"hhc.exe: a\" >&2\n");
  CommandRun run;
  const Result result = run.with("in.md", "text").run({"@/in.md", "-o", "@/a.html", "-o", "@/b.chm", "-o", "@/c.chm"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.error,
            "scrivalen: warning: '@/b.chm': the help compiler: hhc.exe: a\n"
            "scrivalen: warning: '@/c.chm': the help compiler: hhc.exe: a\n");
}

TEST(ChmMessages, DoNotBlameTheOutputForTheFolderOfItsPages) {
  const Compiler compiler(kJoinPages);
  CommandRun run;
  const std::string pages = run.with("in.md", "text").path("\xE6\x97\xA5");
  scrivalen::test::makeFolder(run.widePath("\xE6\x97\xA5"));
  const Variable temporary("TMPDIR", pages);
  const Result result = run.run({"@/in.md", "-o", "@/a.chm"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.error, "");
}

TEST(ChmMessages, NameTheOutputAndTheFullDisk) {
  EXPECT_EQ(
      onSmallDisk([](const SmallDisk& disk) -> std::string {
        if (!disk.resize(64)) {
          return "no small disk";
        }
        CommandRun run;
        const LongTable table(run.environment);
        const std::string folder = toUtf8(disk.folder());
        const Variable temporary("TMPDIR", folder);
        const Result result = run.run({"-", "--from", "csv", "-o", "@/a.chm"});
        const bool isEarly = table.read() < LongTable::kSize / 8;
        return (isEarly ? "early: " : "late: ") + replacedAll<char>(result.error, folder, "DISK");
      }),
      "early: scrivalen: cannot write '@/a.chm': its topics cannot be written in 'DISK': No space left on device\n");
}

TEST(ChmMessages, NameTheOutputWhenNoPagesCanBeWritten) {
  CommandRun run;
  const Variable nowhere("TMPDIR", "/nowhere");
  const Result result = run.with("in.md", "text").run({"@/in.md", "-o", "@/a.chm"});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.error,
            "scrivalen: cannot write '@/a.chm': no folder can be created for its topics in '/nowhere': No such file or "
            "directory\n");
}

TEST(ChmMessages, SayOnceThatTheCompilerIsMissing) {
  const Variable nowhere("PATH", "/nowhere");
  const DataFolder folder;
  CommandRun run;
  const Result result = run.with("in.md", "text").run({"@/in.md", "-o", "@/a.chm"});
  EXPECT_EQ(result.status, 1);
  const std::string_view start =
      "scrivalen: cannot write '@/a.chm': the help compiler could not be started: \"hhc.exe\" ";
  EXPECT_TRUE(result.error.starts_with(start)) << result.error;
  EXPECT_EQ(std::count(result.error.begin(), result.error.end(), '\n'), 1) << result.error;
}

TEST(ChmMessages, SayOnceWhatAFailingCompilerSays) {
  const Compiler compiler("echo \"hhc.exe: there is no chmcmd\" >&2\nexit 1\n");
  CommandRun run;
  const Result result = run.with("in.md", "text").run({"@/in.md", "-o", "@/a.chm", "-o", "@/a.txt"});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.error,
            "scrivalen: cannot write '@/a.chm': the help compiler left no help file. It ended with status 1. hhc.exe: "
            "there is no chmcmd\n");
}

TEST(ChmMessages, NameTheOutputThatTheCompilerDidNotMake) {
  const Compiler compiler("exit 3\n");
  CommandRun run;
  const Result result = run.with("in.md", "text").run({"@/in.md", "-o", "@/a.chm"});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.error,
            "scrivalen: cannot write '@/a.chm': the help compiler left no help file. It ended with status 3.\n");
}

}  // namespace
}  // namespace scrivalen::command::test
