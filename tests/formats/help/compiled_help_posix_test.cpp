#include "formats/help/chm_report.h"

#include "scrivalen/text.h"
#include "support/bytes.h"
#include "support/captured_log.h"
#include "support/faults/open_errors.h"
#include "support/files.h"
#include "system/files/files.h"
#include "system/process/process.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <map>
#include <optional>

#include <unistd.h>

using namespace scrivalen;
using namespace scrivalen::test;

// Help files written by the library's own compiler and unpacked with extract_chmLib, which belongs to another library.

namespace {

namespace fs = std::filesystem;

// Runs a shell command; "$1" and "$2" are the arguments.
int shell(const wchar_t* command, const std::wstring& first, const std::wstring& second = L"") {
  return runProgram({L"sh", L"-c", command, L"sh", first, second}).exitStatus;
}

// All files in a help file, by name.
std::map<std::string, std::string> filesIn(const std::wstring& help) {
  const TemporaryFolder folder;
  EXPECT_EQ(shell(L"extract_chmLib \"$1\" \"$2\" >/dev/null 2>&1", help, folder / L"out"), 0);
  std::map<std::string, std::string> files;
  const fs::path root = asPath(folder / L"out");
  for (const auto& entry : fs::recursive_directory_iterator(root)) {
    if (entry.is_regular_file()) {
      files[entry.path().lexically_relative(root).string()] = bytesOf(widePath(entry.path().string()));
    }
  }
  return files;
}

unsigned smallNumber(const std::string& bytes, std::size_t at) {
  return static_cast<unsigned char>(bytes.at(at)) + 256u * static_cast<unsigned char>(bytes.at(at + 1));
}

constexpr unsigned kContentsEntry = 0;
constexpr unsigned kDefaultTopicEntry = 2;
constexpr unsigned kTitleEntry = 3;

// A string from the help file's settings: after a four-byte version, each setting has a code, a length and its bytes.
std::string setting(std::map<std::string, std::string>& files, unsigned wanted) {
  const std::string& settings = files["#SYSTEM"];
  for (std::size_t at = 4; at + 4 <= settings.size();) {
    const unsigned code = smallNumber(settings, at);
    const unsigned length = smallNumber(settings, at + 2);
    if (code == wanted) {
      return settings.substr(at + 4, length).c_str();
    }
    at += 4 + length;
  }
  return "nothing";
}

std::string entry(const std::string& name, const std::string& local) {
  return "<LI><OBJECT type=\"text/sitemap\"><param name=\"Name\" value=\"" + name +
         "\">\r\n<param name=\"Local\" value=\"" + local + "\">\r\n</OBJECT>";
}

struct Help {
  Help() { report.SetReportOption(OPTION_CONFORMING, 1); }

  REPORT_ERRORS open() { return report.Open(target.c_str()); }

  // Writes a topic into a folder that is created for it; an empty name is the test's own folder.
  void topic(const std::wstring& name, const wchar_t* title, const wchar_t* text, const std::wstring& in = L"") {
    const std::wstring prefix = folder / in + (in.empty() ? L"" : L"/");
    makeFolder(prefix);
    EXPECT_EQ(report.BeginSubDocument(prefix.c_str(), name.c_str(), title), REPORT_OK);
    report.Text(text, PARAGRAPH_NORMAL, L"", 1);
    report.EndSubDocument();
    pages[name] = bytesOf(prefix + name);
  }

  std::size_t leftovers() const {
    const fs::directory_iterator all{asPath(folder.path())};
    return static_cast<std::size_t>(std::distance(begin(all), end(all)));
  }

  TemporaryFolder folder;
  std::wstring target = folder / L"help.chm";
  std::map<std::wstring, std::string> pages;
  CHMReport report;
};

// Hides the programs that the compiler runs for as long as it lives.
class WithoutPrograms {
 public:
  explicit WithoutPrograms(std::initializer_list<const char*> kept) : path_(std::getenv("PATH")) {
    for (const char* name : kept) {
      shell(L"ln -s \"$(command -v \"$1\")\" \"$2/\"", scrivalen::FromUtf8(name), folder_.path());
    }
    ::setenv("PATH", scrivalen::ToUtf8(folder_.path()).c_str(), 1);
  }
  WithoutPrograms(const WithoutPrograms&) = delete;
  WithoutPrograms& operator=(const WithoutPrograms&) = delete;
  ~WithoutPrograms() { ::setenv("PATH", path_.c_str(), 1); }

  // Puts a script in the place of a missing program.
  void put(const wchar_t* name, const std::string& script) const {
    writeBytes(folder_ / name, script);
    fs::permissions(asPath(folder_ / name), fs::perms::owner_all);
  }

 private:
  std::string path_;
  TemporaryFolder folder_;
};

// A temporary folder in memory; those of the other tests are on a disk.
class OnAnotherVolume {
 public:
  OnAnotherVolume() {
    const char* const usual = std::getenv("TMPDIR");
    const std::string kept = usual ? usual : "/tmp";
    ::setenv("TMPDIR", kept == "/dev/shm" ? "/tmp" : "/dev/shm", 1);
    folder_.emplace();
    ::setenv("TMPDIR", kept.c_str(), 1);
  }

  const TemporaryFolder& folder() const { return *folder_; }

 private:
  std::optional<TemporaryFolder> folder_;
};

constexpr std::initializer_list<const char*> kAllButCompiler = {
    "bash", "cat", "cmp", "cp", "dd", "env", "iconv", "ln", "mkdir", "mktemp", "mv", "od", "rm", "stat", "chmls"};

}  // namespace

TEST(CompiledHelp, HasTopicsContentsTitleAndDefaultTopic) {
  Help help;
  help.report.AddProperty(L"%TITLE%", L"Sales & more");
  EXPECT_EQ(help.open(), REPORT_OK);
  help.topic(L"first.htm", L"The first", L"one");
  help.topic(L"second.htm", L"\"Two\"", L"<a href=\"first.htm\">two</a>");
  EXPECT_EQ(help.report.Close(), REPORT_OK) << scrivalen::ToUtf8(help.report.GetError());
  auto files = filesIn(help.target);
  EXPECT_EQ(files["first.htm"], help.pages[L"first.htm"]);
  EXPECT_EQ(files["second.htm"], help.pages[L"second.htm"]);
  EXPECT_NE(files["first.htm"].find("<title>The first</title>"), std::string::npos);
  EXPECT_EQ(files["report.hhc"],
            "<!DOCTYPE HTML PUBLIC \"-//IETF//DTD HTML//EN\">\n<HTML>\n<HEAD>\n<!-- Sitemap 1.0 -->\n</HEAD>\n<BODY>\n"
            "<OBJECT type=\"text/site properties\"><param name=\"ImageType\" value=\"Folder\">\r\n</OBJECT><UL>" +
                entry("The first", "first.htm") + entry("Two", "second.htm") + "</UL></body></html>\n");
  EXPECT_EQ(setting(files, kTitleEntry), "Sales & more");
  EXPECT_EQ(setting(files, kDefaultTopicEntry), "first.htm");
  EXPECT_EQ(setting(files, kContentsEntry), "report.hhc");
  EXPECT_EQ(help.leftovers(), 1u);
}

TEST(CompiledHelp, HasAFullTextIndexAndIsInEnglish) {
  Help help;
  EXPECT_EQ(help.open(), REPORT_OK);
  help.topic(L"a.htm", L"A", L"word");
  EXPECT_EQ(help.report.Close(), REPORT_OK);
  auto files = filesIn(help.target);
  EXPECT_FALSE(files["$FIftiMain"].empty());
  constexpr unsigned kLanguageEntry = 4;
  EXPECT_EQ(setting(files, kLanguageEntry), "\x09\x04");
}

TEST(CompiledHelp, HasTheSameBytesAtTheSameTime) {
  const auto bytesAt = [](std::int64_t time) {
    const FixedClock clock(time);
    Help help;
    EXPECT_EQ(help.open(), REPORT_OK);
    help.topic(L"a.htm", L"A", L"one");
    help.topic(L"b.htm", L"B", L"two");
    EXPECT_EQ(help.report.Close(), REPORT_OK);
    return bytesOf(help.target);
  };
  const std::string bytes = bytesAt(1730815620);
  EXPECT_TRUE(areSameBytes(bytes, bytesAt(1730815620)));
  EXPECT_EQ(bytes.substr(16, 4), "\x67\x2A\x26\x84");
  const std::string later = bytesAt(1730815620 + 0x01010101);
  ASSERT_EQ(later.size(), bytes.size());
  std::size_t different = 0;
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    different += bytes[i] == later[i] ? 0 : 1;
  }
  EXPECT_EQ(different, 8u);
}

TEST(CompiledHelp, KeepsATimeBefore1970) {
  const FixedClock clock(-5);
  Help help;
  EXPECT_EQ(help.open(), REPORT_OK);
  help.topic(L"a.htm", L"A", L"one");
  EXPECT_EQ(help.report.Close(), REPORT_OK);
  EXPECT_EQ(bytesOf(help.target).substr(16, 4), "\xFF\xFF\xFF\xFB");
  EXPECT_EQ(filesIn(help.target)["#SYSTEM"].substr(4, 8), std::string("\x0A\x00\x04\x00\xFB\xFF\xFF\xFF", 8));
}

TEST(CompiledHelp, HoldsTopicsWithOddNames) {
  Help help;
  EXPECT_EQ(help.open(), REPORT_OK);
  const std::vector<std::wstring> names = {L"two words.htm",  L"it's.htm",         L"say \"x\".htm", L"a;b $c.htm",
                                           L"$(touch x).htm", L"`x`.htm",          L"a&b.htm",       L"-r.htm",
                                           L"a=b.htm",        L"50%20.htm",        L"a#b.htm",       L"what?.htm",
                                           L"*.htm",          L"größe \u20AC.htm", L"no extension"};
  for (const std::wstring& name : names) {
    help.topic(name, name.c_str(), name.c_str());
  }
  EXPECT_EQ(help.report.Close(), REPORT_OK) << scrivalen::ToUtf8(help.report.GetError());
  auto files = filesIn(help.target);
  for (const std::wstring& name : names) {
    EXPECT_EQ(files[scrivalen::ToUtf8(name)], help.pages[name]) << scrivalen::ToUtf8(name);
  }
  const std::string& contents = files["report.hhc"];
  EXPECT_NE(contents.find(entry("two words.htm", "two words.htm")), std::string::npos);
  EXPECT_NE(contents.find(entry("say x.htm", "say %22x%22.htm")), std::string::npos);
  EXPECT_NE(contents.find(entry("a#b.htm", "a%23b.htm")), std::string::npos);
  EXPECT_NE(contents.find(entry("50%20.htm", "50%2520.htm")), std::string::npos);
  EXPECT_NE(contents.find(entry("gr\xF6\xDF"
                                "e \x80.htm",
                                "gr\xF6\xDF"
                                "e \x80.htm")),
            std::string::npos);
  EXPECT_EQ(help.leftovers(), 1u);
}

TEST(CompiledHelp, PrefixesTheFolderToNamesThatCannotBeginAProjectLine) {
  Help help;
  EXPECT_EQ(help.open(), REPORT_OK);
  for (const wchar_t* name : {L";a.htm", L" b.htm", L"[FILES]", L"=d.htm", L"\x01x.htm", L"c.htm"}) {
    help.topic(name, name, name, L"topics");
  }
  EXPECT_EQ(help.report.Close(), REPORT_OK) << scrivalen::ToUtf8(help.report.GetError());
  auto files = filesIn(help.target);
  EXPECT_EQ(files["topics/;a.htm"], help.pages[L";a.htm"]);
  EXPECT_EQ(files["topics/ b.htm"], help.pages[L" b.htm"]);
  EXPECT_EQ(files["topics/[FILES]"], help.pages[L"[FILES]"]);
  EXPECT_EQ(files["topics/=d.htm"], help.pages[L"=d.htm"]);
  EXPECT_EQ(files["topics/\x01x.htm"], help.pages[L"\x01x.htm"]);
  EXPECT_EQ(files["topics/c.htm"], help.pages[L"c.htm"]);
  EXPECT_EQ(setting(files, kDefaultTopicEntry), "topics/;a.htm");
}

TEST(CompiledHelp, PrefixesTheFolderToNamesOfItsInternalFiles) {
  for (const wchar_t* name : {L"#SYSTEM", L"#strings", L"$FIftiMain", L"::DataSpace"}) {
    Help help;
    EXPECT_EQ(help.open(), REPORT_OK);
    help.topic(name, name, L"one", L"topics");
    help.topic(L"b.htm", L"B", L"two", L"topics");
    EXPECT_EQ(help.report.Close(), REPORT_OK) << scrivalen::ToUtf8(help.report.GetError());
    auto files = filesIn(help.target);
    EXPECT_EQ(files["topics/" + scrivalen::ToUtf8(name)], help.pages[name]);
    EXPECT_EQ(files["topics/b.htm"], help.pages[L"b.htm"]);
    EXPECT_EQ(setting(files, kDefaultTopicEntry), "topics/" + scrivalen::ToUtf8(name));
  }
}

TEST(CompiledHelp, KeepsRelativePathsBetweenFoldersOfTopics) {
  Help help;
  EXPECT_EQ(help.open(), REPORT_OK);
  help.topic(L"a.htm", L"A", L"<a href=\"../two/deep/b.htm\">B</a>", L"one");
  help.topic(L"b.htm", L"B", L"b", L"two/deep");
  help.topic(L"c.htm", L"C", L"c", L"two");
  EXPECT_EQ(help.report.Close(), REPORT_OK) << scrivalen::ToUtf8(help.report.GetError());
  auto files = filesIn(help.target);
  EXPECT_EQ(files["one/a.htm"], help.pages[L"a.htm"]);
  EXPECT_EQ(files["two/deep/b.htm"], help.pages[L"b.htm"]);
  EXPECT_EQ(files["two/c.htm"], help.pages[L"c.htm"]);
  EXPECT_EQ(setting(files, kDefaultTopicEntry), "one/a.htm");
}

TEST(CompiledHelp, HoldsPicturesBelowATopicsFolderButNothingOutsideIt) {
  Help help;
  writeBytes(help.folder / L"secret.txt", "secret");
  makeFolder(help.folder / L"topics/pictures");
  writeBytes(help.folder / L"topics/pictures/p.png", "png");
  EXPECT_EQ(help.open(), REPORT_OK);
  help.topic(L"a.htm", L"A", L"text <img src=\"pictures/p.png\">", L"topics");
  EXPECT_EQ(help.report.Close(), REPORT_OK);
  EXPECT_EQ(filesIn(help.target)["pictures/p.png"], "png");
  EXPECT_EQ(help.open(), REPORT_OK);
  help.topic(L"a.htm", L"A", L"text <a href=\"../../secret.txt\">x</a> <a href=\"../secret.txt\">x</a>", L"topics");
  EXPECT_EQ(help.report.Close(), REPORT_OK);
  for (const auto& [name, bytes] : filesIn(help.target)) {
    EXPECT_NE(bytes, "secret") << name;
  }
}

TEST(CompiledHelp, WorksInAFolderWhoseNameIsNotInTheCodePage) {
  const CapturedLog log;
  Help help;
  EXPECT_EQ(help.open(), REPORT_OK);
  help.topic(L"a.htm", L"A", L"one", L"\u65E5\u672C \U0001F600?");
  help.topic(L"b.htm", L"B", L"two", L"\u65E5\u672C \U0001F600?");
  EXPECT_EQ(help.report.Close(), REPORT_OK) << scrivalen::ToUtf8(help.report.GetError());
  auto files = filesIn(help.target);
  EXPECT_EQ(files["a.htm"], help.pages[L"a.htm"]);
  EXPECT_EQ(files["b.htm"], help.pages[L"b.htm"]);
  EXPECT_EQ(log.lines(), std::vector<std::wstring>{});
}

TEST(CompiledHelp, WorksWithRelativePaths) {
  const auto before = fs::current_path();
  Help help;
  makeFolder(help.folder / L"-topics");
  fs::current_path(asPath(help.folder.path()));
  EXPECT_EQ(help.open(), REPORT_OK);
  for (const wchar_t* folder : {L"", L"-topics/"}) {
    EXPECT_EQ(help.report.BeginSubDocument(folder, L"a.htm", L"A"), REPORT_OK);
    help.report.Text(folder, PARAGRAPH_NORMAL, L"", 0);
    help.report.EndSubDocument();
  }
  EXPECT_EQ(help.report.Close(), REPORT_OK) << scrivalen::ToUtf8(help.report.GetError());
  fs::current_path(before);
  auto files = filesIn(help.target);
  EXPECT_NE(files["a.htm"].find("<p></p>"), std::string::npos);
  EXPECT_NE(files["-topics/a.htm"].find("<p>-topics/</p>"), std::string::npos);
}

TEST(CompiledHelp, MayHaveNoTopics) {
  const auto before = fs::current_path();
  Help help;
  fs::current_path(asPath(help.folder.path()));
  EXPECT_EQ(help.open(), REPORT_OK);
  EXPECT_EQ(help.report.Close(), REPORT_OK) << scrivalen::ToUtf8(help.report.GetError());
  fs::current_path(before);
  auto files = filesIn(help.target);
  EXPECT_EQ(setting(files, kTitleEntry), "Report");
  EXPECT_EQ(files.count("report.hhc"), 1u);
}

TEST(CompiledHelp, HoldsManyTopics) {
  Help help;
  EXPECT_EQ(help.open(), REPORT_OK);
  for (int i = 0; i < 600; ++i) {
    const std::wstring number = std::to_wstring(i);
    help.topic(L"topic" + number + L".htm", number.c_str(), (L"page " + number).c_str());
  }
  EXPECT_EQ(help.report.Close(), REPORT_OK) << scrivalen::ToUtf8(help.report.GetError());
  auto files = filesIn(help.target);
  for (const auto& [name, page] : help.pages) {
    EXPECT_EQ(files[scrivalen::ToUtf8(name)], page);
  }
}

TEST(CompiledHelp, LogsThatPagesWithoutWordsHaveNoIndex) {
  const CapturedLog log;
  Help help;
  EXPECT_EQ(help.open(), REPORT_OK);
  help.topic(L"a.htm", L"", L"");
  help.topic(L"b.htm", L"", L"");
  EXPECT_EQ(help.report.Close(), REPORT_OK) << scrivalen::ToUtf8(help.report.GetError());
  EXPECT_EQ(filesIn(help.target)["b.htm"], help.pages[L"b.htm"]);
  EXPECT_EQ(log.lines(), std::vector<std::wstring>{
                             L"'" + help.target +
                             L"': hhc.exe: chmcmd cannot index these pages: the help file has no full-text search"});
}

TEST(HelpThatIsNotCompiled, LeavesNothingWhenATopicIsMissing) {
  const CapturedLog log;
  Help help;
  EXPECT_EQ(help.open(), REPORT_OK);
  help.topic(L"a.htm", L"A", L"one");
  help.topic(L"b.htm", L"B", L"two");
  fs::remove(asPath(help.folder / L"b.htm"));
  EXPECT_EQ(help.report.Close(), REPORT_FILE_ERROR);
  EXPECT_EQ(help.report.GetError(),
            L"The help compiler left no '" +
                help.folder / L"report.chm'. It ended with status 1. hhc.exe: there is no topic '" +
                help.folder / L"b.htm'");
  EXPECT_EQ(log.lines(), std::vector<std::wstring>{help.report.GetError()});
  EXPECT_EQ(help.leftovers(), 0u);
}

TEST(HelpThatIsNotCompiled, ReportsWhyATopicHasNoPage) {
  const CapturedLog log;
  Help help;
  EXPECT_EQ(help.open(), REPORT_OK);
  help.topic(L"a.htm", L"A", L"one");
  makeFolder(help.folder / L"b.htm");
  const std::wstring reason = openingError(help.folder / L"b.htm");
  EXPECT_EQ(help.report.BeginSubDocument((help.folder / L"").c_str(), L"b.htm", L"B"), REPORT_FILE_ERROR);
  help.report.EndSubDocument();
  EXPECT_EQ(help.report.Close(), REPORT_FILE_ERROR);
  EXPECT_EQ(help.report.GetError(), reason);
  EXPECT_EQ(log.lines(),
            (std::vector<std::wstring>{reason, L"The help compiler left no '" +
                                                   help.folder / L"report.chm'. It ended with status 1. " +
                                                   L"hhc.exe: there is no topic '" + help.folder / L"b.htm'"}));
  EXPECT_EQ(help.leftovers(), 1u);
  EXPECT_TRUE(fs::is_directory(asPath(help.folder / L"b.htm")));
}

TEST(HelpThatIsNotCompiled, LeavesNothingWhenATopicNameIsOutsideTheCodePage) {
  const CapturedLog log;
  Help help;
  EXPECT_EQ(help.open(), REPORT_OK);
  help.topic(L"\u65E5.htm", L"A", L"one");
  EXPECT_EQ(help.report.Close(), REPORT_FILE_ERROR);
  EXPECT_EQ(log.lines().front(), L"'" + help.folder / L"\u65E5.htm" +
                                     L"' has a letter outside the code page; the help compiler may not find it.");
  EXPECT_EQ(help.leftovers(), 0u);
}

TEST(HelpThatIsNotCompiled, LeavesNothingWhenATopicNameHasAnUnusedByteOfTheCodePage) {
  const CapturedLog log;
  Help help;
  EXPECT_EQ(help.open(), REPORT_OK);
  help.topic(L"\x81.htm", L"A", L"one");
  EXPECT_EQ(help.report.Close(), REPORT_FILE_ERROR);
  EXPECT_EQ(help.report.GetError(),
            L"The help compiler left no '" +
                help.folder / L"report.chm'. It ended with status 1. hhc.exe: the name of a topic in '" +
                help.folder / L"report.hhp' is not Windows-1252");
  EXPECT_EQ(help.leftovers(), 0u);
}

TEST(HelpThatIsNotCompiled, LeavesNothingWhenATopicNameIsInvalidInHelpFiles) {
  for (const wchar_t* name : {L"back\\slash.htm", L"blank.htm ", L"tab.htm\t", L"control.htm\x01"}) {
    const CapturedLog log;
    Help help;
    EXPECT_EQ(help.open(), REPORT_OK);
    help.topic(name, L"A", L"one");
    EXPECT_EQ(help.report.Close(), REPORT_FILE_ERROR) << scrivalen::ToUtf8(name);
    EXPECT_EQ(help.leftovers(), 0u);
  }
}

TEST(HelpThatIsNotCompiled, LeavesNothingWithoutTheCompilersPrograms) {
  const CapturedLog log;
  Help help;
  EXPECT_EQ(help.open(), REPORT_OK);
  help.topic(L"a.htm", L"A", L"one");
  {
    const WithoutPrograms without(kAllButCompiler);
    EXPECT_EQ(help.report.Close(), REPORT_FILE_ERROR);
  }
  EXPECT_NE(std::wstring_view(help.report.GetError()).find(L"package fp-utils"), std::wstring_view::npos);
  EXPECT_EQ(help.leftovers(), 0u);
}

TEST(HelpThatIsNotCompiled, LeavesNoHelpFileThatLacksItsTopics) {
  const TemporaryFolder other;
  {
    Help good;
    EXPECT_EQ(good.open(), REPORT_OK);
    good.topic(L"a.htm", L"A", L"of another report");
    EXPECT_EQ(good.report.Close(), REPORT_OK);
    fs::copy_file(asPath(good.target), asPath(other / L"other.chm"));
  }
  const std::string copy = "cp '" + scrivalen::ToUtf8(other / L"other.chm") + "' report.chm\n";
  for (const std::string& compiler : {std::string("exit 0\n"), std::string(": >report.chm\n"), copy}) {
    const CapturedLog log;
    Help help;
    EXPECT_EQ(help.open(), REPORT_OK);
    help.topic(L"a.htm", L"A", L"one");
    const WithoutPrograms without(kAllButCompiler);
    without.put(L"chmcmd", "#!/bin/sh\n" + compiler);
    EXPECT_EQ(help.report.Close(), REPORT_FILE_ERROR) << compiler;
    EXPECT_EQ(help.leftovers(), 0u) << compiler;
  }
}

TEST(HelpThatIsNotCompiled, LeavesNoTruncatedHelpFile) {
  for (const char* cut : {"1", "100", "5000"}) {
    const CapturedLog log;
    Help help;
    EXPECT_EQ(help.open(), REPORT_OK);
    help.topic(L"a.htm", L"A", L"one");
    const std::string path = std::getenv("PATH");
    const WithoutPrograms without(kAllButCompiler);
    without.put(L"chmcmd", "#!/bin/sh\nPATH='" + path + "'\nchmcmd \"$@\"\ntruncate -s -" + cut + " report.chm\n");
    EXPECT_EQ(help.report.Close(), REPORT_FILE_ERROR) << cut;
    EXPECT_EQ(help.leftovers(), 0u) << cut;
  }
}

TEST(CompiledHelp, IsWrittenToADeviceInsteadOfReplacingIt) {
  const CapturedLog log;
  Help help;
  EXPECT_EQ(help.report.Open(L"/dev/null"), REPORT_OK);
  help.topic(L"a.htm", L"A", L"one");
  EXPECT_EQ(help.report.Close(), REPORT_OK);
  EXPECT_TRUE(fs::is_character_file("/dev/null"));
  EXPECT_EQ(help.report.Open(L"/dev/full"), REPORT_OK);
  help.topic(L"a.htm", L"A", L"one");
  EXPECT_EQ(help.report.Close(), REPORT_FILE_ERROR);
  EXPECT_TRUE(std::wstring_view(help.report.GetError()).ends_with(L"'/dev/full'. No space left on device"));
  EXPECT_TRUE(fs::is_character_file("/dev/full"));
  EXPECT_EQ(help.leftovers(), 0u);
}

TEST(CompiledHelp, KeepsThePermissionsOfTheFileItReplaces) {
  for (const wchar_t* name : {L"help.chm", L"report.chm"}) {
    Help help;
    help.target = help.folder / name;
    writeBytes(help.target, "secret");
    fs::permissions(asPath(help.target), fs::perms(0600));
    EXPECT_EQ(help.open(), REPORT_OK);
    help.topic(L"a.htm", L"A", L"one");
    EXPECT_EQ(help.report.Close(), REPORT_OK);
    EXPECT_EQ(fs::status(asPath(help.target)).permissions(), fs::perms(0600));
    EXPECT_EQ(filesIn(help.target).count("a.htm"), 1u);
    EXPECT_EQ(help.leftovers(), 1u);
  }
}

TEST(HelpThatIsNotCompiled, DoesNotReplaceAClosedStandardStream) {
  const CapturedLog log;
  const auto before = fs::read_symlink("/dev/stdout");
  const int output = ::dup(STDOUT_FILENO);
  Help help;
  help.target = L"/dev/stdout";
  EXPECT_EQ(help.open(), REPORT_OK);
  help.topic(L"a.htm", L"A", L"one");
  ::close(STDOUT_FILENO);
  const REPORT_ERRORS result = help.report.Close();
  ::dup2(output, STDOUT_FILENO);
  ::close(output);
  EXPECT_EQ(result, REPORT_FILE_ERROR);
  EXPECT_EQ(fs::read_symlink("/dev/stdout"), before);
}

TEST(CompiledHelp, CanBeMovedToAnotherVolume) {
  const OnAnotherVolume other;
  const std::wstring target = other.folder() / L"help.chm";
  writeBytes(target, "earlier");
  Help help;
  EXPECT_EQ(help.report.Open(target.c_str()), REPORT_OK);
  help.topic(L"a.htm", L"A", L"one");
  EXPECT_EQ(help.report.Close(), REPORT_OK);
  EXPECT_EQ(filesIn(target)["a.htm"], help.pages[L"a.htm"]);
  EXPECT_EQ(help.leftovers(), 0u);
}

TEST(HelpThatIsNotCompiled, ReportsAnIncompletePage) {
  const CapturedLog log;
  Help help;
  fs::create_symlink("/dev/full", asPath(help.folder / L"b.htm"));
  EXPECT_EQ(help.open(), REPORT_OK);
  help.topic(L"a.htm", L"A", L"one");
  EXPECT_EQ(help.report.BeginSubDocument((help.folder / L"").c_str(), L"b.htm", L"B"), REPORT_OK);
  help.report.EndSubDocument();
  EXPECT_EQ(help.report.Close(), REPORT_FILE_ERROR);
  const std::wstring reason = L"File write error for '" + help.folder / L"b.htm" + L"'. No space left on device";
  EXPECT_EQ(help.report.GetError(), reason);
  EXPECT_EQ(log.lines().front(), reason);
  EXPECT_FALSE(exists(help.folder / L"a.htm"));
  EXPECT_FALSE(exists(help.target));
}
