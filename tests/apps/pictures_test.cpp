#include "command_support.h"
#include "writing/data_address.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace scrivalen::command::test {
namespace {

// One white pixel.
constexpr std::string_view kPicture =
    "iVBORw0KGgoAAAANSUhEUgAAAAEAAAABCAAAAAA6fptVAAAACklEQVR4nGP4DwABAQEAsTj2BgAAAABJRU5ErkJggg==";

std::string picture() { return *dataOf("data:image/png;base64," + std::string(kPicture)); }

std::string embedded(const std::string& alternative) {
  return "<img src=\"data:image/png;base64," + std::string(kPicture) + "\" alt=\"" + alternative + "\"";
}

bool holds(const std::string& text, std::string_view part) { return text.find(part) != std::string::npos; }

TEST(Pictures, AreEmbeddedFromTheFolderOfTheInputAndBelow) {
  CommandRun run;
  std::filesystem::create_directory(run.fsPath("pics"));
  run.with("a.png", picture()).with("pics/b c.png", picture());
  const Result result =
      run.with("in.md", "![one](a.png) ![two](./pics/b%20c.png?raw=true \"t\")\n").run({"@/in.md", "-o", "@/a.html"});
  EXPECT_EQ(result.error, "");
  EXPECT_TRUE(holds(run.body("a.html"), embedded("one"))) << run.body("a.html");
  EXPECT_TRUE(holds(run.body("a.html"), embedded("two"))) << run.body("a.html");
}

TEST(Pictures, AreNotReadFromElsewhere) {
  CommandRun run;
  for (const char* const folder : {"secret", "docs", "docs/x"}) {
    std::filesystem::create_directory(run.fsPath(folder));
  }
  run.with("secret/a.png", picture());
  const std::string absolute = run.path("secret/a.png");
  for (const std::string& address : {std::string("../secret/a.png"), std::string("x/../../secret/a.png"),
                                     std::string("..%2Fsecret/a.png"), absolute, std::string("..\\secret\\a.png")}) {
    run.with("docs/in.md", "a ![alt](<" + address + ">)\n");
    const Result result = run.run({"@/docs/in.md", "-o", "@/a.html"});
    EXPECT_EQ(result.status, 0);
    EXPECT_FALSE(holds(run.body("a.html"), "<img")) << address;
    EXPECT_TRUE(holds(run.body("a.html"), "alt")) << address;
    EXPECT_TRUE(holds(result.error, "scrivalen: warning: ")) << address;
  }
}

TEST(Pictures, OnOtherComputersAreLinks) {
  CommandRun run;
  const Result result =
      run.with("in.md", "![a](https://example.org/a.png) [![b](//example.org/b.png) c](d) ![](http://e/f.png)\n")
          .run({"@/in.md", "-o", "@/a.html"});
  EXPECT_EQ(result.error, "scrivalen: warning: '@/in.md': pictures on other computers are links (3)\n");
  EXPECT_EQ(run.body("a.html"),
            "<p><a href=\"https://example.org/a.png\">a</a> <a href=\"d\">b c</a> "
            "<a href=\"http://e/f.png\">http://e/f.png</a></p>");
}

TEST(Pictures, InTheirAddressesAreEmbedded) {
  EXPECT_TRUE(holds(htmlOf("![a](data:image/png;base64," + std::string(kPicture) + ")\n"), embedded("a")));
}

TEST(Pictures, ThatCannotBeReadLeaveTheirTextAndAWarning) {
  CommandRun run;
  const Result result = run.with("no.png", "text")
                            .with("in.md", "![a](no.png) ![b](missing.png) ![c](data:image/png,xx)\n")
                            .run({"@/in.md", "-o", "@/a.txt"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(run.bytes("a.txt"), "a b c\n");
  EXPECT_EQ(std::count(result.error.begin(), result.error.end(), '\n'), 3) << result.error;
}

TEST(Pictures, ThatAreLeftOutAreOneClearWarningEach) {
  const auto warningOf = [](const std::string& picture, std::string_view body) {
    CommandRun run;
    run.with("a.svg", "<svg/>").with("in.md", "x " + picture + "\n");
    const std::string error = run.run({"@/in.md", "-o", "@/a.html"}).error;
    EXPECT_EQ(run.body("a.html"), "<p>x " + std::string(body) + "</p>");
    return error;
  };
  const std::string start = "scrivalen: warning: '@/in.md': ";
  EXPECT_EQ(warningOf("![b]()", "b"), start + "a picture has no address; its text takes its place\n");
  EXPECT_EQ(warningOf("![]()", ""), start + "a picture has no address; nothing takes its place\n");
  EXPECT_EQ(warningOf("![b](../c.png)", "b"),
            start + "the picture '../c.png' is not in the folder of the input or below it; its text takes its place\n");
  EXPECT_EQ(warningOf("![b](a.svg)", "b"),
            start + "cannot use the picture '@/a.svg': it is neither PNG nor JPEG; its text takes its place\n");
  EXPECT_EQ(warningOf("![](a.svg)", ""),
            start + "cannot use the picture '@/a.svg': it is neither PNG nor JPEG; nothing takes its place\n");
  EXPECT_EQ(warningOf("![b](c.png)", "b").substr(0, start.size() + 27), start + "cannot use the picture '@/c");
  EXPECT_TRUE(warningOf("![b](c.png)", "b").ends_with("; its text takes its place\n"));
  EXPECT_EQ(warningOf("![b](data:image/svg+xml,c)", "b"),
            start + "cannot use a picture: it is neither PNG nor JPEG; its text takes its place\n");
}

/// Has the folder of a run as the current one.
class CurrentFolder {
 public:
  explicit CurrentFolder(const std::filesystem::path& folder) : before_(std::filesystem::current_path()) {
    std::filesystem::current_path(folder);
  }
  CurrentFolder(const CurrentFolder&) = delete;
  CurrentFolder& operator=(const CurrentFolder&) = delete;
  ~CurrentFolder() { std::filesystem::current_path(before_); }

 private:
  std::filesystem::path before_;
};

TEST(Pictures, OfStandardInputAreInTheCurrentFolderAndBelow) {
  CommandRun run;
  std::filesystem::create_directory(run.fsPath("pics"));
  std::filesystem::create_directory(run.fsPath("here"));
  std::filesystem::create_directory(run.fsPath("here/pics"));
  run.with("secret.png", picture()).with("here/a.png", picture()).with("here/pics/b.png", picture());
  const CurrentFolder current(run.fsPath("here"));
  run.environment.input = "![a](a.png) ![b](pics/b.png) ![c](../secret.png)\n";
  const Result result = run.run({"-", "-o", "html:-"});
  EXPECT_TRUE(holds(result.output, embedded("a"))) << result.output;
  EXPECT_TRUE(holds(result.output, embedded("b"))) << result.output;
  EXPECT_FALSE(holds(result.output, embedded("c"))) << result.output;
  EXPECT_EQ(result.error,
            "scrivalen: warning: '-': the picture '../secret.png' is not in the current folder or below it; its text "
            "takes its place\n");
}

TEST(DataAddress, HoldsItsContentInBase64) {
  EXPECT_EQ(dataOf("data:;base64,QUJD"), "ABC");
  EXPECT_EQ(dataOf("DATA:text/plain;charset=x;BASE64,QUI="), "AB");
  EXPECT_EQ(dataOf("data:;base64,QQ=="), "A");
  EXPECT_EQ(dataOf("data:;base64,"), "");
  EXPECT_EQ(dataOf("data:,ABC"), std::nullopt);
  EXPECT_EQ(dataOf("data:;base64,Q!"), std::nullopt);
}

}  // namespace
}  // namespace scrivalen::command::test
