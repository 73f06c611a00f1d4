#include "formats/help/help_project.h"

#include "scrivalen/text.h"
#include "support/bytes.h"
#include "support/captured_log.h"
#include "support/files.h"
#include "system/files/files.h"

#include <gtest/gtest.h>

#include <thread>

using namespace scrivalen;
using namespace scrivalen::test;

// The test program's folder has a help compiler that writes down its input.

namespace {

constexpr std::string_view kContentsStart =
    "<!DOCTYPE HTML PUBLIC \"-//IETF//DTD HTML//EN\">\n"
    "<HTML>\n"
    "<HEAD>\n"
    "<!-- Sitemap 1.0 -->\n"
    "</HEAD>\n"
    "<BODY>\n"
    "<OBJECT type=\"text/site properties\"><param name=\"ImageType\" value=\"Folder\">\r\n"
    "</OBJECT><UL>";
constexpr std::string_view kContentsEnd = "</UL></body></html>\n";

std::string projectOf(CCHM& help, std::wstring_view defaultTopic) {
  const TemporaryFolder folder;
  help.writeProject(folder / L"report.hhp", defaultTopic);
  EXPECT_EQ(help.projectPath, folder / L"report.hhp");
  return bytesOf(folder / L"report.hhp");
}

// The entries of the contents, without the tags of the list around them.
std::string entriesOf(CCHM& help) {
  const TemporaryFolder folder;
  help.writeContents(folder / L"report.hhc");
  EXPECT_EQ(help.contentsPath, folder / L"report.hhc");
  const std::string bytes = bytesOf(folder / L"report.hhc");
  EXPECT_TRUE(bytes.starts_with(kContentsStart) && bytes.ends_with(kContentsEnd)) << bytes;
  return bytes.substr(kContentsStart.size(), bytes.size() - kContentsStart.size() - kContentsEnd.size());
}

CCHM helpOfLevels(std::initializer_list<std::int32_t> levels) {
  CCHM help;
  for (const std::int32_t level : levels) {
    help.topics.push_back({1, std::to_wstring(level), L"", level});
  }
  return help;
}

constexpr std::string_view kLevel1 = "<LI><OBJECT type=\"text/sitemap\"><param name=\"Name\" value=\"1\">\r\n</OBJECT>";
constexpr std::string_view kLevel2 = "<LI><OBJECT type=\"text/sitemap\"><param name=\"Name\" value=\"2\">\r\n</OBJECT>";
constexpr std::string_view kLevel3 = "<LI><OBJECT type=\"text/sitemap\"><param name=\"Name\" value=\"3\">\r\n</OBJECT>";

std::string joined(std::initializer_list<std::string_view> pieces) {
  std::string all;
  for (const std::string_view piece : pieces) {
    all += piece;
  }
  return all;
}

// A project with two files in a folder on disk.
struct OnDisk {
  OnDisk() {
    help.title = L"Sales";
    for (const wchar_t* name : {L"a.htm", L"b c.htm"}) {
      writeBytes(folder / name, "page\n");
      help.addTopic(name, folder / name);
      help.files.push_back(folder / name);
    }
    help.writeProject(project, folder / L"a.htm");
    help.writeContents(folder / L"report.hhc");
  }

  TemporaryFolder folder;
  CCHM help;
  std::wstring project = folder / L"report.hhp";
};

}  // namespace

TEST(HelpProject, WritesTheExactBytesOfAProject) {
  CCHM help;
  help.title = L"Sales";
  help.files = {L"C:\\out\\a.htm", L"C:\\out\\b;c $d.htm"};
  EXPECT_EQ(projectOf(help, L"C:\\out\\a.htm"),
            "[OPTIONS]\n"
            "Compatibility=1.0\n"
            "Compiled file=report.chm\n"
            "Contents file=report.hhc\n"
            "Default topic=C:\\out\\a.htm\n"
            "Display compile progress=No\n"
            "Full-text search=Yes\n"
            "Language=0x409 English (United States)\n"
            "Title=Sales\n"
            "[FILES]\n"
            "C:\\out\\a.htm\n"
            "C:\\out\\b;c $d.htm\n");
}

TEST(HelpProject, WritesAnEmptyProject) {
  CCHM help;
  EXPECT_TRUE(projectOf(help, L"").ends_with("\nTitle=\n[FILES]\n"));
  EXPECT_EQ(entriesOf(help), "");
}

TEST(HelpProject, WritesATopicWithItsFile) {
  CCHM help;
  help.addTopic(L"First & last", L"/out/it's a.htm");
  EXPECT_EQ(entriesOf(help),
            "<LI><OBJECT type=\"text/sitemap\"><param name=\"Name\" value=\"First & last\">\r\n"
            "<param name=\"Local\" value=\"/out/it's a.htm\">\r\n"
            "</OBJECT>");
}

TEST(HelpProject, LeavesDoubleQuotesOutOfATitle) {
  CCHM help;
  help.addTopic(L"\"Fast\", they \"\"say\"", L"a.htm");
  ASSERT_EQ(help.topics.size(), 1u);
  EXPECT_EQ(help.topics[0].name, L"Fast, they say");
  EXPECT_EQ(help.topics[0].kind, 0);
  EXPECT_EQ(help.topics[0].local, L"a.htm");
  EXPECT_EQ(help.topics[0].level, 1);
  EXPECT_TRUE(help.files.empty());
}

TEST(HelpProject, WritesTheOtherCharactersOfATitleUnchanged) {
  CCHM help;
  help.addTopic(L"a <b>\nc</b> & &lt;d&gt;", L"a.htm");
  EXPECT_EQ(entriesOf(help),
            "<LI><OBJECT type=\"text/sitemap\"><param name=\"Name\" value=\"a <b>\nc</b> & &lt;d&gt;\">\r\n"
            "<param name=\"Local\" value=\"a.htm\">\r\n"
            "</OBJECT>");
}

TEST(HelpProject, WritesAHeadingWithoutAFile) {
  CCHM help;
  help.topics.push_back({1, L"Chapter", L"never.htm", 1});
  EXPECT_EQ(entriesOf(help), "<LI><OBJECT type=\"text/sitemap\"><param name=\"Name\" value=\"Chapter\">\r\n</OBJECT>");
  help.topics[0].kind = -1;
  EXPECT_EQ(entriesOf(help).find("Local"), std::string::npos);
}

TEST(HelpProject, PutsEntriesOfOneLevelIntoOneList) {
  CCHM help = helpOfLevels({1, 1, 1});
  EXPECT_EQ(entriesOf(help), joined({kLevel1, kLevel1, kLevel1}));
}

TEST(HelpProject, PutsDeeperEntriesIntoTheirOwnList) {
  CCHM help = helpOfLevels({1, 2, 1});
  EXPECT_EQ(entriesOf(help), joined({kLevel1, "<UL>", kLevel2, "</UL>", kLevel1}));
}

TEST(HelpProject, OpensAndClosesOneListEvenIfLevelsAreSkipped) {
  CCHM help = helpOfLevels({1, 2, 3, 1, 3});
  EXPECT_EQ(entriesOf(help), joined({kLevel1, "<UL>", kLevel2, "<UL>", kLevel3, "</UL>", kLevel1, "<UL>", kLevel3}));
}

TEST(HelpProject, WritesInTheCodePage) {
  CCHM help;
  help.title = L"Größe in \u20AC";
  help.files = {L"größe.htm"};
  help.addTopic(L"Größe", L"größe.htm");
  EXPECT_TRUE(
      projectOf(help, L"").ends_with("\nTitle=Gr\xF6\xDF"
                                     "e in \x80\n[FILES]\ngr\xF6\xDF"
                                     "e.htm\n"));
  EXPECT_EQ(entriesOf(help),
            "<LI><OBJECT type=\"text/sitemap\"><param name=\"Name\" value=\"Gr\xF6\xDF"
            "e\">\r\n"
            "<param name=\"Local\" value=\"gr\xF6\xDF"
            "e.htm\">\r\n"
            "</OBJECT>");
  EXPECT_EQ(help.loss.count(), 0u);
}

TEST(HelpProject, CountsTitleCharactersOutsideTheCodePageAndLogsSuchFileNames) {
  const CapturedLog log;
  CCHM help;
  help.title = L"\u65E5\u672C";
  help.files = {L"plain.htm", L"\u65E5.htm"};
  help.addTopic(L"a" + grin(), L"\u65E5.htm");
  EXPECT_TRUE(projectOf(help, L"\u65E5.htm").ends_with("\nTitle=??\n[FILES]\nplain.htm\n?.htm\n"));
  EXPECT_EQ(entriesOf(help),
            "<LI><OBJECT type=\"text/sitemap\"><param name=\"Name\" value=\"a??\">\r\n"
            "<param name=\"Local\" value=\"?.htm\">\r\n"
            "</OBJECT>");
  EXPECT_EQ(help.loss.count(), 3u);
  EXPECT_EQ(help.loss.first(), char32_t{0x65E5});
  EXPECT_EQ(log.lines(), std::vector<std::wstring>{
                             L"'\u65E5.htm' has a letter outside the code page; the help compiler may not find it."});
}

TEST(HelpProject, LogsAFolderOutsideTheCodePageOnce) {
  const CapturedLog log;
  const std::wstring folder = L"\u65E5";
  CCHM help;
  for (const wchar_t* name : {L"a.htm", L"b.htm", L"\u672C.htm"}) {
    help.files.push_back(folder + kPathSeparator + name);
  }
  projectOf(help, L"");
  EXPECT_EQ(log.lines(),
            (std::vector<std::wstring>{
                L"The folder '" + folder +
                    L"' has a letter outside the code page; the help compiler may not find the "
                    L"pages in it.",
                L"'" + help.files[2] + L"' has a letter outside the code page; the help compiler may not find it."}));
}

TEST(HelpProject, KeepsTheReasonWhenAFileCannotBeOpened) {
  const CapturedLog log;
  const TemporaryFolder folder;
  CCHM help;
  help.writeProject(folder / L"report.hhp", L"");
  help.writeContents(folder / L"report.hhc");
  help.writeProject(folder / L"missing" + kPathSeparator + L"report.hhp", L"");
  help.writeContents(folder / L"missing" + kPathSeparator + L"report.hhc");
  EXPECT_EQ(help.projectPath, folder / L"report.hhp");
  EXPECT_EQ(help.contentsPath, folder / L"report.hhc");
  EXPECT_FALSE(exists(folder / L"missing"));
  EXPECT_TRUE(log.lines().empty());
  EXPECT_TRUE(help.failure.starts_with(L"File open/create error for '" + folder.path())) << "no reason is kept";
}

TEST(HelpProject, SharesNoStateBetweenThreads) {
  std::string first;
  std::string second;
  const auto write = [](const wchar_t* title, std::string& bytes) {
    for (int i = 0; i < 50; ++i) {
      CCHM help;
      help.title = title;
      help.addTopic(title, title);
      bytes += projectOf(help, title) + entriesOf(help);
    }
  };
  std::thread other(write, L"a title of another length", std::ref(second));
  write(L"title", first);
  other.join();
  std::string expectedFirst;
  std::string expectedSecond;
  write(L"title", expectedFirst);
  write(L"a title of another length", expectedSecond);
  EXPECT_EQ(first, expectedFirst);
  EXPECT_EQ(second, expectedSecond);
}

TEST(HelpProject, ResetClearsOnlyFilesAndTopics) {
  CCHM help;
  help.title = L"Sales";
  help.files = {L"a.htm"};
  help.addTopic(L"A", L"a.htm");
  help.reset();
  EXPECT_TRUE(help.files.empty());
  EXPECT_TRUE(help.topics.empty());
  EXPECT_EQ(help.title, L"Sales");
}

TEST(HelpCompiler, IsInAFolderNextToTheModule) {
  const TemporaryFolder folder;
  makeFolder(folder / L"hhc");
  const std::wstring compiler = folder / L"hhc" + kPathSeparator + L"hhc.exe";
  writeBytes(compiler, "");
  EXPECT_EQ(scrivalen::formats::helpCompiler(folder / L"library"), compiler);
}

TEST(HelpCompiler, IsLeftToTheSystemsSearchWhenNotNextToTheModule) {
  const TemporaryFolder folder;
  EXPECT_EQ(scrivalen::formats::helpCompiler(folder / L"library"), L"hhc.exe");
  EXPECT_EQ(scrivalen::formats::helpCompiler(L"library"), L"hhc.exe");
  EXPECT_EQ(scrivalen::formats::helpCompiler(L""), L"hhc.exe");
}

TEST(HelpProjectCompile, RunsTheCompilerNextToTheModuleOnTheProject) {
  OnDisk disk;
  EXPECT_EQ(disk.help.compile(disk.project), 1);
  const std::string compiled = bytesOf(disk.folder / L"report.chm");
  EXPECT_TRUE(compiled.starts_with("argument " + scrivalen::ToUtf8(disk.project) + "\n[report.hhp]\n[OPTIONS]\n"))
      << compiled;
  EXPECT_TRUE(disk.help.failure.empty());
}

TEST(HelpProjectCompile, DeletesTheFilesTheProjectAndTheContents) {
  OnDisk disk;
  disk.help.compile(disk.project);
  for (const wchar_t* name : {L"a.htm", L"b c.htm", L"report.hhp", L"report.hhc"}) {
    EXPECT_FALSE(exists(disk.folder / name)) << scrivalen::ToUtf8(name);
  }
  EXPECT_EQ(disk.help.projectPath, L"");
  EXPECT_EQ(disk.help.contentsPath, L"");
}

TEST(HelpProjectCompile, DoesNotDeleteForeignFiles) {
  OnDisk disk;
  disk.help.foreignFiles = {disk.folder / L"a.htm"};
  disk.help.compile(disk.project);
  EXPECT_TRUE(exists(disk.folder / L"a.htm"));
  EXPECT_FALSE(exists(disk.folder / L"b c.htm"));
}

TEST(HelpProjectCompile, IgnoresHowTheCompilerEnded) {
  for (const char* behaviour : {"leaves nothing", "breaks off", "fails but leaves a file"}) {
    const CapturedLog log;
    const CapturedErrorBox box;
    OnDisk disk;
    writeBytes(disk.folder / L"stand_in", behaviour);
    EXPECT_EQ(disk.help.compile(disk.project), 1);
    EXPECT_EQ(exists(disk.folder / L"report.chm"), std::string_view(behaviour) == "fails but leaves a file");
    EXPECT_FALSE(exists(disk.folder / L"a.htm"));
    EXPECT_FALSE(exists(disk.project));
    EXPECT_TRUE(log.lines().empty());
    EXPECT_TRUE(box.shown().empty());
    EXPECT_TRUE(disk.help.failure.empty());
  }
}

TEST(HelpProjectCompile, PassesAPathWithShellCharactersUnchanged) {
  const TemporaryFolder folder;
  const std::wstring odd = folder / L"it's; a $(folder) & more %PATH% \u20AC";
  makeFolder(odd);
  const std::wstring project = odd + kPathSeparator + L"report.hhp";
  CCHM help;
  help.writeProject(project, L"");
  help.compile(project);
  EXPECT_TRUE(bytesOf(odd + kPathSeparator + L"report.chm")
                  .starts_with("argument " + scrivalen::ToUtf8(project) + "\n[report.hhp]\n[OPTIONS]\n"));
}
