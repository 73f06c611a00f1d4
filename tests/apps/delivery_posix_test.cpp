#include "command_support.h"
#include "running_command_posix.h"
#include "support/faults/small_disk.h"
#include "system/files/files.h"
#include "system/process/process.h"
#include "texts.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>

#include <sys/stat.h>
#include <unistd.h>

namespace scrivalen::command::test {
namespace {

namespace fs = std::filesystem;
using Names = std::vector<std::string>;

TEST(DeliveryPosix, ReportsAFullDiskInOneLineAndDeliversTheOtherOutputs) {
  CommandRun run;
  for (const std::string format : {"html", "text", "xml", "rtf", "pdf", "xlsx", "docx"}) {
    const Result result = run.with("in.md", "x").run({"@/in.md", "-o", format + ":/dev/full", "-o", "@/b.txt"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.error, "scrivalen: cannot write '/dev/full': No space left on device\n") << format;
    EXPECT_EQ(run.bytes("b.txt"), "x\n");
  }
}

TEST(DeliveryPosix, WritesSeveralOutputsToOneDevice) {
  CommandRun run;
  EXPECT_EQ(run.with("in.md", "x").run({"@/in.md", "-o", "html:/dev/null", "-o", "pdf:/dev/null"}).error, "");
  EXPECT_EQ(run.run({"/dev/null", "-o", "text:/dev/null"}).error, "");
}

TEST(DeliveryPosix, ReportsAFullDiskFoundBeforeTheEnd) {
  CommandRun run;
  const std::string longText(300000, 'x');
  const Result result = run.with("in.md", longText).run({"@/in.md", "-o", "html:/dev/full"});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.error, "scrivalen: cannot write '/dev/full': No space left on device\n");
}

TEST(DeliveryPosix, StopsReadingOnceNoOutputHasRoom) {
  for (const std::string format : {"html", "text", "xml", "rtf"}) {
    CommandRun run;
    const LongTable table(run.environment);
    const Result result = run.run({"-", "--from", "csv", "-o", format + ":/dev/full", "-o", "@/missing/b.txt"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.error,
              "scrivalen: cannot write '/dev/full': No space left on device\n"
              "scrivalen: cannot write '@/missing/b.txt': No such file or directory\n");
    EXPECT_LT(table.read(), LongTable::kSize / 8) << format;
  }
}

TEST(DeliveryPosix, ReadsOnForAnOutputThatHasRoom) {
  CommandRun run;
  const LongTable table(run.environment);
  const Result result = run.run({"-", "--from", "csv", "-o", "html:/dev/full", "-o", "text:/dev/null"});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.error,
            "scrivalen: cannot write '/dev/full': No space left on device\n"
            "scrivalen: warning: '-': 1 row has fewer cells than the header, in line 1118482\n");
  EXPECT_EQ(table.read(), LongTable::kSize);
}

TEST(DeliveryPosix, StopsReadingWhenTheTargetsDiskIsFull) {
  EXPECT_EQ(scrivalen::test::onSmallDisk([](const scrivalen::test::SmallDisk& disk) -> std::string {
              if (!disk.resize(256)) {
                return "no small disk";
              }
              CommandRun run;
              const LongTable table(run.environment);
              const std::string target = scrivalen::narrowPath(disk / L"a.html");
              const Result result = run.run({"-", "--from", "csv", "-o", target});
              const bool isEarly = table.read() < LongTable::kSize / 8;
              return (isEarly ? "early: " : "late: ") + replacedAll<char>(result.error, target, "TARGET");
            }),
            "early: scrivalen: cannot write 'TARGET': No space left on device\n");
}

TEST(DeliveryPosix, ReportsThatStandardOutputIsFull) {
  const CommandRun folder;
  for (const char* const option : {"--help", "--version"}) {
    RunningCommand full(folder, {.arguments = {option}, .outputFile = "/dev/full"});
    EXPECT_EQ(full.end(), 1);
    EXPECT_EQ(full.error(), "scrivalen: cannot write to standard output: No space left on device\n");
  }
}

TEST(DeliveryPosix, WritesToADeviceDirectly) {
  CommandRun run;
  for (const std::string format : {"text", "html", "xml", "rtf", "pdf", "xlsx", "docx", "chm"}) {
    const Result result = run.with("in.md", "x").run({"@/in.md", "-o", format + ":/dev/null"});
    EXPECT_EQ(result.status, 0) << format << " " << result.error;
    EXPECT_TRUE(fs::is_character_file("/dev/null")) << format;
  }
}

TEST(DeliveryPosix, KeepsAFileThatAStreamIsRedirectedTo) {
  CommandRun run;
  run.with("in.md", "x").with("log", "earlier");
  std::FILE* const stream = std::fopen(run.path("log").c_str(), "a");
  ASSERT_NE(stream, nullptr);
  const std::string device = "/dev/fd/" + std::to_string(fileno(stream));
  const Result result = run.run({"@/in.md", "-o", "text:" + device});
  std::fclose(stream);
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.error, "scrivalen: cannot write '" + device + "': it leads to a file; give that file's name\n");
  EXPECT_EQ(run.bytes("log"), "earlier");
}

// Makes a folder the one for temporary files for its lifetime.
class TemporaryFilesIn {
 public:
  explicit TemporaryFilesIn(const fs::path& folder) {
    fs::create_directory(folder);
    ::setenv("TMPDIR", folder.c_str(), 1);
  }
  TemporaryFilesIn(const TemporaryFilesIn&) = delete;
  TemporaryFilesIn& operator=(const TemporaryFilesIn&) = delete;
  ~TemporaryFilesIn() { before_.empty() ? ::unsetenv("TMPDIR") : ::setenv("TMPDIR", before_.c_str(), 1); }

 private:
  const std::string before_ = std::getenv("TMPDIR") ? std::getenv("TMPDIR") : "";
};

TEST(DeliveryPosix, CompilesHelpInFoldersOfAnyName) {
  for (const std::string folder : {"tmp-ü", "tmp-日本", "tmp-\xFC"}) {
    CommandRun run;
    run.with("in.md", "# A\n\n[c](#c)\n\n# B\n\n## C\n");
    const TemporaryFilesIn temporaryFiles(run.fsPath(folder));
    for (int i = 0; i < 2; ++i) {
      const Result result = run.run({"@/in.md", "-o", "@/ä.chm"});
      EXPECT_EQ(result.status, 0) << result.error;
      EXPECT_TRUE(run.bytes("ä.chm").starts_with("ITSF"));
    }
    EXPECT_TRUE(fs::is_empty(run.fsPath(folder)));
    EXPECT_EQ(run.names(), (Names{"in.md", folder, "ä.chm"}));
  }
}

TEST(DeliveryPosix, AcceptsFileNamesThatAreNotUtf8) {
  CommandRun run;
  run.with("\xE4.md", "x");
  for (const std::string name : {"\xE4.txt", "b\xE4\xC3.txt"}) {
    for (int i = 0; i < 2; ++i) {
      const Result result = run.run({"@/\xE4.md", "-o", "@/" + name});
      EXPECT_EQ(result.status, 0) << result.error;
      EXPECT_EQ(run.bytes(name), "x\n");
    }
  }
  EXPECT_EQ(run.names(), (Names{"b\xE4\xC3.txt", "\xE4.md", "\xE4.txt"}));
  EXPECT_EQ(run.run({"@/\xE4.md", "-o", "@/no/\xFF.txt"}).error,
            "scrivalen: cannot write '@/no/\xEF\xBF\xBD.txt': No such file or directory\n");
}

TEST(DeliveryPosix, ReplacesTheTargetOfALink) {
  CommandRun run;
  run.with("in.md", "new").with("real.txt", "old");
  fs::create_symlink("real.txt", run.fsPath("link.txt"));
  EXPECT_EQ(run.run({"@/in.md", "-o", "@/link.txt"}).status, 0);
  EXPECT_TRUE(fs::is_symlink(run.fsPath("link.txt")));
  EXPECT_EQ(run.bytes("real.txt"), "new\n");
}

TEST(DeliveryPosix, CreatesTheMissingTargetOfALink) {
  CommandRun run;
  run.with("in.md", "new");
  fs::create_symlink("real.txt", run.fsPath("link.txt"));
  EXPECT_EQ(run.run({"@/in.md", "-o", "@/link.txt"}).status, 0);
  EXPECT_TRUE(fs::is_symlink(run.fsPath("link.txt")));
  EXPECT_EQ(run.bytes("real.txt"), "new\n");
  fs::create_symlink("other.txt", run.fsPath("second.txt"));
  EXPECT_EQ(run.run({"@/in.md", "-o", "@/second.txt", "-o", "@/other.txt"}).error,
            "scrivalen: the outputs '@/second.txt' and '@/other.txt' are the same file\n");
}

TEST(DeliveryPosix, FailsOnAClosedStreamAndLeavesItsDeviceAlone) {
  CommandRun run;
  run.with("in.md", "x");
  const auto before = fs::read_symlink("/dev/stdout");
  const auto result = scrivalen::runProgram({L"sh", L"-c", L"exec \"$0\" \"$1\" -o text:/dev/stdout >&-",
                                             scrivalen::widePath(SCRIVALEN_COMMAND), run.widePath("in.md")});
  EXPECT_EQ(result.exitStatus, 1);
  EXPECT_EQ(result.messages, std::vector<std::wstring>{L"scrivalen: cannot write '/dev/stdout': it is closed"});
  EXPECT_EQ(fs::read_symlink("/dev/stdout"), before);
}

TEST(DeliveryPosix, ReplacesFilesOnAMemoryFileSystem) {
  const scrivalen::test::TemporaryFolder folder(L"/dev/shm/scrivalen-" + scrivalen::randomName());
  const std::string output = scrivalen::narrowPath(folder / L"a.xml");
  CommandRun run;
  run.with("in.md", "x");
  for (int i = 0; i < 2; ++i) {
    EXPECT_EQ(run.run({"@/in.md", "-o", output}).error, "");
  }
  EXPECT_EQ(std::distance(fs::directory_iterator(scrivalen::test::asPath(folder.path())), {}), 1);
}

TEST(DeliveryPosix, ReplacesOnlyOneOfSeveralHardLinks) {
  CommandRun run;
  run.with("in.md", "new").with("a.txt", "old");
  fs::create_hard_link(run.fsPath("a.txt"), run.fsPath("b.txt"));
  EXPECT_EQ(run.run({"@/in.md", "-o", "@/a.txt"}).status, 0);
  EXPECT_EQ(run.bytes("a.txt"), "new\n");
  EXPECT_EQ(run.bytes("b.txt"), "old");
}

TEST(DeliveryPosix, RemovesTheFilesThatAKilledRunLeft) {
  CommandRun run;
  run.with("in.md", "x");
  ASSERT_EQ(::mkfifo(run.fsPath("never.csv").c_str(), 0600), 0);
  const auto killed = scrivalen::runProgram(
      {L"sh", L"-c",
       L"\"$0\" \"$1/never.csv\" -o \"$1/a.xlsx\" -o \"$1/b.html\" & exec 3>\"$1/never.csv\"; "
       L"seq 1000 >&3; until [ $(ls -A \"$1\" | wc -l) = 4 ]; do sleep 0.01; done; kill -9 $!; wait $!",
       scrivalen::widePath(SCRIVALEN_COMMAND), run.widePath("")});
  EXPECT_TRUE(killed.started);
  EXPECT_EQ(run.names().size(), 4u);
  EXPECT_EQ(run.run({"@/in.md", "-o", "@/a.xlsx", "-o", "@/b.html"}).status, 0);
  EXPECT_EQ(run.names(), (Names{"a.xlsx", "b.html", "in.md", "never.csv"}));
}

TEST(DeliveryPosix, RemovesTheHelpPagesThatAKilledRunLeft) {
  CommandRun run;
  run.with("in.md", "x");
  const TemporaryFilesIn temporary(run.path("temporary"));
  ASSERT_EQ(::mkfifo(run.fsPath("never.csv").c_str(), 0600), 0);
  const auto killed = scrivalen::runProgram(
      {L"sh", L"-c",
       L"\"$0\" \"$1/never.csv\" -o \"$1/a.chm\" & exec 3>\"$1/never.csv\"; "
       L"seq 2000 >&3; until ls \"$1\"/temporary/*/* >\"$1/list\" 2>&1; do sleep 0.01; done; kill -9 $!; wait $!",
       scrivalen::widePath(SCRIVALEN_COMMAND), run.widePath("")});
  EXPECT_TRUE(killed.started);
  EXPECT_FALSE(fs::is_empty(run.fsPath("temporary")));
  EXPECT_EQ(run.run({"@/in.md", "-o", "@/other.chm"}).status, 0);
  EXPECT_TRUE(fs::is_empty(run.fsPath("temporary")));
}

TEST(DeliveryPosix, KeepsTheModeAndGroupOfAFileInEveryFormat) {
  CommandRun run;
  run.with("in.md", "x");
  for (const std::string name : {"a.txt", "a.html", "a.xml", "a.rtf", "a.pdf", "a.xlsx", "a.docx", "a.chm"}) {
    run.with(name, "secret");
    ASSERT_EQ(::chmod(run.fsPath(name).c_str(), 0620), 0);
    ASSERT_EQ(::chown(run.fsPath(name).c_str(), static_cast<uid_t>(-1), ::geteuid() == 0 ? 1234 : ::getegid()), 0);
    struct stat before {};
    struct stat after {};
    ::stat(run.fsPath(name).c_str(), &before);
    EXPECT_EQ(run.run({"@/in.md", "-o", "@/" + name}).error, "") << name;
    ::stat(run.fsPath(name).c_str(), &after);
    EXPECT_NE(before.st_ino, after.st_ino) << name;
    EXPECT_EQ(before.st_mode, after.st_mode) << name;
    EXPECT_EQ(before.st_gid, after.st_gid) << name;
  }
}

TEST(DeliveryPosix, RecognizesTheInputThroughLinks) {
  CommandRun run;
  run.with("in.md", "# x");
  fs::create_symlink("in.md", run.fsPath("link.txt"));
  EXPECT_EQ(run.run({"@/in.md", "-o", "@/link.txt"}).status, 2);
  EXPECT_EQ(run.run({"@/link.txt", "-o", "text:@/in.md"}).status, 2);
  EXPECT_EQ(run.bytes("in.md"), "# x");
}

TEST(DeliveryPosix, KeepsThePermissionsOfTheFileItReplaces) {
  CommandRun run;
  run.with("in.md", "x").with("a.txt", "secret");
  fs::permissions(run.fsPath("a.txt"), fs::perms::owner_read | fs::perms::owner_write);
  EXPECT_EQ(run.run({"@/in.md", "-o", "@/a.txt"}).status, 0);
  EXPECT_EQ(fs::status(run.fsPath("a.txt")).permissions(), fs::perms::owner_read | fs::perms::owner_write);
}

}  // namespace
}  // namespace scrivalen::command::test
