#include "command_support.h"
#include "texts.h"

#include <scrivalen/host.h>

#include <gtest/gtest.h>

#include <filesystem>

#include <unistd.h>

// Templates that exist but cannot be read.

namespace scrivalen::command::test {
namespace {

namespace fs = std::filesystem;

constexpr const char* kLinkLoop = "Too many levels of symbolic links";

// The library's data folder for its lifetime.
class DataFolder {
 public:
  DataFolder() { scrivalen::SetDataFolder(folder_.path().c_str()); }
  DataFolder(const DataFolder&) = delete;
  DataFolder& operator=(const DataFolder&) = delete;
  ~DataFolder() { scrivalen::SetDataFolder(nullptr); }

  fs::path operator/(std::wstring_view name) const { return scrivalen::test::asPath(folder_ / name); }

 private:
  scrivalen::test::TemporaryFolder folder_;
};

// Runs as a user subject to permissions, which root is not, for its lifetime.
class OrdinaryUser {
 public:
  OrdinaryUser() : before_(::geteuid()) { become(before_ == 0 ? kNobody : before_); }
  OrdinaryUser(const OrdinaryUser&) = delete;
  OrdinaryUser& operator=(const OrdinaryUser&) = delete;
  ~OrdinaryUser() { become(before_); }

 private:
  static constexpr uid_t kNobody = 65534;
  static void become(uid_t user) { EXPECT_EQ(::seteuid(user), 0); }

  uid_t before_;
};

std::string cannotRead(const char* what, const fs::path& path, const char* reason) {
  return std::string("scrivalen: cannot read the ") + what + " '" + path.string() + "': " + reason + "\n";
}

struct UnreadableTemplates : testing::Test {
  UnreadableTemplates() {
    fs::create_directory(data / L"tmpl");
    run.with("in.md", "x");
  }

  Result result(std::initializer_list<std::string> arguments) {
    std::vector<std::string> all = {"@/in.md"};
    all.insert(all.end(), arguments);
    return run.run(all);
  }

  DataFolder data;
  const fs::path page = data / L"tmpl/default.htm";
  CommandRun run;
};

TEST_F(UnreadableTemplates, DoNotMatterWithoutTheOption) {
  fs::create_symlink("default.htm", page);
  EXPECT_EQ(result({"-o", "html:@/a"}).error, "");
}

TEST_F(UnreadableTemplates, AreAnErrorWhenRequestedByName) {
  fs::create_symlink("letter.htm", data / L"tmpl/letter.htm");
  const Result made = result({"--template", "Letter", "-o", "@/a.html"});
  EXPECT_EQ(made.status, 1);
  EXPECT_EQ(made.error, cannotRead("template", data / L"tmpl/letter.htm", kLinkLoop));
  EXPECT_EQ(run.names(), std::vector<std::string>{"in.md"});
}

TEST_F(UnreadableTemplates, AreAnErrorWhenTheirFolderIsUnreadable) {
  fs::remove(data / L"tmpl");
  fs::create_symlink("tmpl", data / L"tmpl");
  const std::string error = cannotRead("folder of templates", data / L"tmpl/", kLinkLoop);
  const Result made = result({"--template", "default", "-o", "@/a.html"});
  EXPECT_EQ(made.status, 1);
  EXPECT_TRUE(made.error.starts_with(error)) << made.error;
  const Result list = run.run({"--list-templates"});
  EXPECT_EQ(list.status, 1);
  EXPECT_EQ(list.output, "");
  EXPECT_EQ(list.error, error);
}

TEST_F(UnreadableTemplates, AreAnErrorWhenTheUserMayNotReadThem) {
  fs::permissions(data / L"", fs::perms::all);
  fs::permissions(run.fsPath(""), fs::perms::all);
  scrivalen::test::writeBytes(toWide(page.string()), "%BODY%");
  fs::permissions(page, fs::perms::none);
  {
    const OrdinaryUser user;
    const Result made = result({"--template", "default", "-o", "@/a.html"});
    EXPECT_EQ(made.status, 1);
    EXPECT_EQ(made.error, cannotRead("template", page, "Permission denied"));
  }
  fs::permissions(data / L"tmpl", fs::perms::none);
  {
    const OrdinaryUser user;
    EXPECT_EQ(result({"--template", "default", "-o", "@/a.html"}).error,
              cannotRead("folder of templates", data / L"tmpl/", "Permission denied"));
  }
  fs::permissions(data / L"tmpl", fs::perms::all);
}

TEST_F(UnreadableTemplates, AreNoErrorWithoutATemplateFolder) {
  fs::remove(data / L"tmpl");
  EXPECT_EQ(result({"-o", "@/a.html"}).status, 0);
  EXPECT_EQ(run.run({"--list-templates"}).status, 0);
}

}  // namespace
}  // namespace scrivalen::command::test
