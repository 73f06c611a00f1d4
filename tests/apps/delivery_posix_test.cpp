#include "command_support.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>

namespace scrivalen::command::test {
namespace {

namespace fs = std::filesystem;
using Names = std::vector<std::string>;

TEST(DeliveryPosix, TellsAFullDiskInOneLineAndDeliversTheOthers) {
  CommandRun run;
  for (const std::string format : {"html", "text", "xml", "rtf", "pdf", "xlsx"}) {
    const Result result = run.with("in.md", "x").run({"@/in.md", "-o", format + ":/dev/full", "-o", "@/b.txt"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.error, "scrivalen: File write error for '/dev/full'. No space left on device\n") << format;
    EXPECT_EQ(run.text("b.txt"), "x\n");
  }
}

TEST(DeliveryPosix, TellsAFullDiskThatWasFoundBeforeTheEnd) {
  CommandRun run;
  const std::string longText(300000, 'x');
  const Result result = run.with("in.md", longText).run({"@/in.md", "-o", "html:/dev/full"});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.error, "scrivalen: File write error for '/dev/full'. No space left on device\n");
}

TEST(DeliveryPosix, WritesToADeviceDirectly) {
  CommandRun run;
  for (const std::string format : {"text", "html", "xml", "rtf", "pdf", "xlsx", "chm"}) {
    const Result result = run.with("in.md", "x").run({"@/in.md", "-o", format + ":/dev/null"});
    EXPECT_EQ(result.status, 0) << format << " " << result.error;
    EXPECT_TRUE(fs::is_character_file("/dev/null")) << format;
  }
}

TEST(DeliveryPosix, LosesNothingOfAFileThatAStreamWasRedirectedTo) {
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

TEST(DeliveryPosix, ReplacesTheFileThatALinkLeadsTo) {
  CommandRun run;
  run.with("in.md", "new").with("real.txt", "old");
  fs::create_symlink("real.txt", run.widePath("link.txt"));
  EXPECT_EQ(run.run({"@/in.md", "-o", "@/link.txt"}).status, 0);
  EXPECT_TRUE(fs::is_symlink(run.widePath("link.txt")));
  EXPECT_EQ(run.text("real.txt"), "new\n");
}

TEST(DeliveryPosix, KnowsTheInputThroughLinks) {
  CommandRun run;
  run.with("in.md", "# x");
  fs::create_symlink("in.md", run.widePath("link.txt"));
  EXPECT_EQ(run.run({"@/in.md", "-o", "@/link.txt"}).status, 2);
  EXPECT_EQ(run.run({"@/link.txt", "-o", "text:@/in.md"}).status, 2);
  EXPECT_EQ(run.bytes("in.md"), "# x");
}

TEST(DeliveryPosix, KeepsThePermissionsOfTheFileItReplaces) {
  CommandRun run;
  run.with("in.md", "x").with("a.txt", "secret");
  fs::permissions(run.widePath("a.txt"), fs::perms::owner_read | fs::perms::owner_write);
  EXPECT_EQ(run.run({"@/in.md", "-o", "@/a.txt"}).status, 0);
  EXPECT_EQ(fs::status(run.widePath("a.txt")).permissions(), fs::perms::owner_read | fs::perms::owner_write);
}

}  // namespace
}  // namespace scrivalen::command::test
