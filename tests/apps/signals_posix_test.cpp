#include "running_command_posix.h"
#include "text/replaced_all.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <random>
#include <thread>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace scrivalen::command::test {
namespace {

namespace fs = std::filesystem;
using Names = std::vector<std::string>;

std::string table(int rows) {
  std::string text = "a,b\n";
  for (int row = 0; row < rows; ++row) {
    text += std::to_string(row) + ",some text\n";
  }
  return text;
}

std::string markdown(int sections) {
  std::string text;
  for (int section = 0; section < sections; ++section) {
    text +=
        "# Section " + std::to_string(section) + "\n\nSome *text* with a [link](#section-1) and <b>raw</b> HTML.\n\n";
    text += "- an item\n- another one\n\n| a | b |\n|---|---|\n| 1 | some text |\n\n";
  }
  return text;
}

constexpr const char* kFormats[] = {"text", "html", "xml", "rtf", "pdf", "xlsx", "docx", "chm"};

constexpr std::chrono::milliseconds kMoment{50};
constexpr std::size_t kPipeSize = 65536;  // as Linux makes them

// Text that no format packs into a few bytes.
std::string mixedMarkdown(int paragraphs) {
  std::mt19937 random(1);
  std::string text;
  for (int i = 0; i < paragraphs; ++i) {
    text += std::to_string(random()) + " " + std::to_string(random()) + "\n\n";
  }
  return text;
}

std::ptrdiff_t linesOf(const std::string& text) { return std::count(text.begin(), text.end(), '\n'); }

// Sends the signal again and again, as an impatient user does.
void sendUntilItEnds(RunningCommand& command, int signal) {
  RunningCommand::waitUntil([&] {
    command.send(signal);
    return command.hasEnded();
  });
}

class Signals : public testing::Test {
 protected:
  void makePipe(std::string_view name) { ASSERT_EQ(::mkfifo(folder_.path(name).c_str(), 0600), 0); }

  CommandRun folder_;
};

class TerminatingSignals : public Signals, public testing::WithParamInterface<int> {};

TEST_P(TerminatingSignals, EndTheCommandWithoutLeavingFiles) {
  folder_.with("a.html", "old");
  RunningCommand command(folder_, {.arguments = {"-", "--from", "csv", "-o", "@/a.html", "-o", "@/b.txt", "-o",
                                                 "@/c.xlsx", "-o", "@/d.pdf", "-o", "@/e.chm"}});
  command.write(table(10));
  command.waitForAFile();
  command.send(GetParam());
  EXPECT_EQ(command.end(), -GetParam());
  EXPECT_EQ(command.error(), "scrivalen: interrupted\n");
  EXPECT_EQ(folder_.names(), Names{"a.html"});
  EXPECT_EQ(folder_.bytes("a.html"), "old");
}

class MarkdownSignals : public TerminatingSignals {
 protected:
  void expectNothingWritten() {
    EXPECT_EQ(command_.end(), -GetParam());
    EXPECT_EQ(command_.error(), "scrivalen: interrupted\n");
    EXPECT_EQ(folder_.names(), (Names{"a.html", "b.pdf"}));
    EXPECT_EQ(folder_.bytes("a.html"), "old");
    EXPECT_EQ(folder_.bytes("b.pdf"), "older");
    EXPECT_EQ(temporary_.names(), Names());
  }

  CommandRun temporary_;
  RunningCommand command_{folder_.with("a.html", "old").with("b.pdf", "older"),
                          {.arguments = {"-", "--from", "markdown", "-o", "@/a.html", "-o", "@/b.pdf", "-o", "@/c.xlsx",
                                         "-o", "@/d.rtf", "-o", "@/e.chm"},
                           .variables = {"TMPDIR=" + temporary_.path("")}}};
};

// A pipe holds much less than the text: when all is written, the command has read most of it and waits for more.
TEST_P(MarkdownSignals, EndTheReading) {
  command_.write(markdown(20000));
  command_.send(GetParam());
  expectNothingWritten();
}

// The outputs are opened when the text has been read; writing them takes far longer than the signal.
TEST_P(MarkdownSignals, EndTheWriting) {
  command_.write(markdown(100000));
  command_.closeInput();
  command_.waitForAFile();
  command_.send(GetParam());
  expectNothingWritten();
}

TEST_P(TerminatingSignals, EndTheCommandEvenWhenRepeated) {
  RunningCommand command(folder_, {.arguments = {"-", "--from", "csv", "-o", "@/a.html", "-o", "@/c.xlsx"}});
  command.write(table(10));
  command.waitForAFile();
  sendUntilItEnds(command, GetParam());
  EXPECT_EQ(command.end(), -GetParam());
  EXPECT_EQ(folder_.names(), Names());
}

TEST_P(TerminatingSignals, StayIgnoredWhenTheyWereIgnored) {
  RunningCommand command(folder_, {.arguments = {"-", "--from", "csv", "-o", "@/a.txt"}, .ignored = {GetParam()}});
  command.write("a,b\n");
  command.waitForAFile();
  command.send(GetParam());
  command.write("1,2\n");
  command.closeInput();
  EXPECT_EQ(command.end(), 0);
  EXPECT_EQ(folder_.bytes("a.txt"), "a  b\n-  -\n1  2\n");
}

TEST_P(TerminatingSignals, EndTheWaitForAReader) {
  makePipe("pipe");
  folder_.with("in.md", "x");
  RunningCommand command(folder_, {.arguments = {"@/in.md", "-o", "@/a.txt", "-o", "text:@/pipe"}});
  command.waitForAFile();
  command.send(GetParam());
  EXPECT_EQ(command.end(), -GetParam());
  EXPECT_EQ(command.error(), "scrivalen: interrupted\n");
  EXPECT_EQ(folder_.names(), (Names{"in.md", "pipe"}));
}

// The formats whose content is made elsewhere first, and those that write at once.
TEST_F(Signals, EndTheWaitForAReaderInEveryFormat) {
  makePipe("pipe");
  folder_.with("in.md", "# x\n\ntext");
  for (const std::string format : kFormats) {
    const CommandRun temporary;
    RunningCommand command(folder_, {.arguments = {"@/in.md", "-o", "@/a.txt", "-o", format + ":@/pipe"},
                                     .variables = {"TMPDIR=" + temporary.path("")}});
    command.waitForAFile();
    std::this_thread::sleep_for(kMoment);
    EXPECT_FALSE(command.hasEnded()) << format;
    sendUntilItEnds(command, SIGTERM);
    EXPECT_EQ(command.end(), -SIGTERM) << format;
    EXPECT_EQ(command.error(), "scrivalen: interrupted\n") << format;
    EXPECT_EQ(folder_.names(), (Names{"in.md", "pipe"})) << format;
    EXPECT_EQ(temporary.names(), Names()) << format;
  }
}

// A reader gets the same bytes as a file, and more than the pipe holds.
TEST_F(Signals, DoNotDisturbAPipeThatIsRead) {
  makePipe("pipe");
  folder_.with("in.md", mixedMarkdown(10000));
  const std::vector<std::string> variables = {"SOURCE_DATE_EPOCH=86400"};
  for (const std::string format : kFormats) {
    RunningCommand toFile(folder_, {.arguments = {"@/in.md", "-o", format + ":@/file"}, .variables = variables});
    EXPECT_EQ(toFile.end(), 0) << format << toFile.error();
    RunningCommand toPipe(folder_, {.arguments = {"@/in.md", "-o", format + ":@/pipe"}, .variables = variables});
    const std::string received = scrivalen::test::bytesOf(folder_.widePath("pipe"));
    EXPECT_EQ(toPipe.end(), 0) << format << toPipe.error();
    EXPECT_TRUE(received == folder_.bytes("file")) << format << ": " << received.size() << " bytes";
    EXPECT_GT(received.size(), kPipeSize) << format;
  }
}

std::string nameOf(const testing::TestParamInfo<int>& test) { return "Signal" + std::to_string(test.param); }

INSTANTIATE_TEST_SUITE_P(Each, TerminatingSignals, testing::Values(SIGINT, SIGTERM, SIGHUP), &nameOf);
INSTANTIATE_TEST_SUITE_P(Each, MarkdownSignals, testing::Values(SIGINT, SIGTERM, SIGHUP), &nameOf);

TEST_F(Signals, EndTheWaitForAWriter) {
  makePipe("pipe.csv");
  RunningCommand command(folder_, {.arguments = {"@/pipe.csv", "-o", "@/a.txt"}});
  std::this_thread::sleep_for(std::chrono::milliseconds(100));  // long enough for it to be waiting, in most runs
  command.send(SIGTERM);
  EXPECT_EQ(command.end(), -SIGTERM);
  EXPECT_EQ(folder_.names(), Names{"pipe.csv"});
}

TEST_F(Signals, FromALostReaderFailOneOutput) {
  makePipe("pipe");
  const int reader = ::open(folder_.path("pipe").c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
  RunningCommand command(folder_, {.arguments = {"-", "--from", "csv", "-o", "html:@/pipe", "-o", "@/b.txt"}});
  command.write("a,b\n");
  command.waitForAFile();
  ::close(reader);
  command.write("1,2\n");
  command.closeInput();
  EXPECT_EQ(command.end(), 1);
  EXPECT_EQ(command.error(), "scrivalen: cannot write '@/pipe': Broken pipe\n");
  EXPECT_EQ(folder_.bytes("b.txt"), "a  b\n-  -\n1  2\n");
}

// The reader goes away when the command, which wants to write more than the pipe holds, has written a part.
TEST_F(Signals, FromALostReaderFailOneOutputInEveryFormat) {
  makePipe("pipe");
  folder_.with("in.md", mixedMarkdown(20000));
  for (const std::string format : kFormats) {
    const CommandRun temporary;
    const int reader = ::open(folder_.path("pipe").c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    RunningCommand command(folder_, {.arguments = {"@/in.md", "-o", format + ":@/pipe", "-o", "@/b.txt"},
                                     .variables = {"TMPDIR=" + temporary.path("")}});
    char byte = 0;
    RunningCommand::waitUntil([&] { return ::read(reader, &byte, 1) == 1; });
    ::close(reader);
    EXPECT_EQ(command.end(), 1) << format;
    EXPECT_TRUE(command.error().ends_with("'@/pipe': Broken pipe\n")) << format << ": " << command.error();
    EXPECT_EQ(linesOf(command.error()), 1) << format << ": " << command.error();
    EXPECT_TRUE(folder_.has("b.txt")) << format;
    EXPECT_EQ(folder_.names(), (Names{"b.txt", "in.md", "pipe"})) << format;
    EXPECT_EQ(temporary.names(), Names()) << format;
  }
}

TEST_F(Signals, FromAFileThatGrowsTooLargeKeepTheEarlierOneInEveryFormat) {
  folder_.with("in.md", mixedMarkdown(2000)).with("a.out", "earlier");
  for (const std::string format : kFormats) {
    const CommandRun temporary;
    RunningCommand command(folder_, {.arguments = {"@/in.md", "-o", format + ":@/a.out"},
                                     .variables = {"TMPDIR=" + temporary.path("")},
                                     .largestFile = 4096});
    EXPECT_EQ(command.end(), 1) << format;
    const std::string error = command.error();
    EXPECT_TRUE(error.starts_with("scrivalen: cannot write '@/a.out': ")) << format << ": " << error;
    EXPECT_TRUE(error.ends_with(": File too large\n")) << format << ": " << error;
    EXPECT_EQ(linesOf(error), 1) << format << ": " << error;
    EXPECT_EQ(folder_.bytes("a.out"), "earlier") << format;
    EXPECT_EQ(folder_.names(), (Names{"a.out", "in.md"})) << format;
    EXPECT_EQ(temporary.names(), Names()) << format;
  }
}

TEST_F(Signals, FromAFileThatGrowsTooLargeFailOneOutput) {
  const std::string rows = table(1000);
  folder_.with("in.csv", rows);
  RunningCommand command(
      folder_, {.arguments = {"@/in.csv", "--single-byte", "--separator", ",", "-o", "@/a.html", "-o", "@/b.txt"},
                .largestFile = static_cast<long>(rows.size()) + 2000});
  EXPECT_EQ(command.end(), 1);
  EXPECT_EQ(command.error(), "scrivalen: cannot write '@/a.html': File too large\n");
  EXPECT_EQ(scrivalen::replacedAll<char>(folder_.bytes("b.txt"), "\r", ""), rows);
  EXPECT_EQ(folder_.names(), (Names{"b.txt", "in.csv"}));
}

// A copy of the library with a slow help compiler beside it, which cleans up when it is terminated.
class SlowHelp {
 public:
  SlowHelp() {
    const fs::path from = fs::path(SCRIVALEN_COMMAND).parent_path();
    fs::copy(from / kLibrary, folder_.path(kLibrary));
    fs::copy(from / "tmpl", folder_.path("tmpl"));
    fs::create_directories(folder_.path("hhc"));
    fs::create_directories(folder_.path("temporary"));
    folder_.with("hhc/hhc.exe", "#!/bin/sh\ncd '" + folder_.path("") +
                                    "' && trap 'sleep 0.1; rm started; exit 1' TERM && : >started\n"
                                    "sleep 60 & wait\n");
    fs::permissions(folder_.path("hhc/hhc.exe"), fs::perms::owner_all);
  }

  std::vector<std::string> variables() const {
    return {"LD_LIBRARY_PATH=" + folder_.path(""), "TMPDIR=" + folder_.path("temporary")};
  }
  bool isStarted() const { return folder_.has("started"); }
  bool isTidy() const { return !isStarted() && fs::is_empty(folder_.path("temporary")); }

 private:
  static constexpr const char* kLibrary = "libscrivalen.so.1";

  CommandRun folder_;
};

TEST_F(Signals, EndTheHelpCompilerWithoutLeavingFiles) {
  const SlowHelp help;
  folder_.with("in.md", "# x").with("a.chm", "old");
  RunningCommand command(folder_,
                         {.arguments = {"@/in.md", "-o", "@/a.chm", "-o", "@/b.txt"}, .variables = help.variables()});
  RunningCommand::waitUntil([&] { return help.isStarted(); });
  sendUntilItEnds(command, SIGINT);
  EXPECT_EQ(command.end(), -SIGINT);
  EXPECT_EQ(command.error(), "scrivalen: interrupted\n");
  EXPECT_TRUE(help.isTidy());
  EXPECT_EQ(folder_.names(), (Names{"a.chm", "in.md"}));
  EXPECT_EQ(folder_.bytes("a.chm"), "old");
}

}  // namespace
}  // namespace scrivalen::command::test
