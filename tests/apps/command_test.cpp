#include "command.h"

#include "command_support.h"
#include "system/files/files.h"
#include "system/messages.h"
#include "texts.h"

#include <scrivalen/html_report.h>

#include <gtest/gtest.h>

#include <cerrno>

namespace scrivalen::command::test {
namespace {

std::string titleOf(const std::string& page) {
  const std::size_t begin = page.find("<title>");
  const std::size_t end = page.find("</title>");
  return begin == std::string::npos ? "none" : page.substr(begin + 7, end - begin - 7);
}

std::string titleAfter(CommandRun& run, std::vector<std::string> arguments) {
  arguments.insert(arguments.end(), {"-o", "@/out.html"});
  const Result result = run.run(arguments);
  EXPECT_EQ(result.status, 0) << result.error;
  return titleOf(run.bytes("out.html"));
}

TEST(Command, WritesEveryOutputInOneRun) {
  CommandRun run;
  const Result result =
      run.with("in.md", "# T\n\nx").run({"@/in.md", "-o", "@/a.html", "-o", "@/b.txt", "-o", "xml:@/c"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.output, "");
  EXPECT_EQ(result.error, "");
  EXPECT_EQ(run.body("a.html"), "<h1 id=\"t\">T</h1>\n<p>x</p>");
  EXPECT_EQ(run.bytes("b.txt"), "T\n=\n\nx\n");
  EXPECT_NE(run.bytes("c").find("<paragraph>x</paragraph>"), std::string::npos);
}

TEST(Command, ReadsStandardInput) {
  CommandRun run;
  run.environment.input = "a,b\n1,2\n";
  EXPECT_EQ(run.run({"-", "--from", "csv", "-o", "@/a.txt"}).status, 0);
  EXPECT_EQ(run.bytes("a.txt"), "a  b\n-  -\n1  2\n");
}

TEST(Command, WritesToStandardOutput) {
  CommandRun run;
  const Result result = run.with("in.md", "# T\n").run({"@/in.md", "-o", "text:-", "-o", "@/a.txt"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.output, "T\n=\n");
  EXPECT_EQ(run.bytes("a.txt"), "T\n=\n");
  EXPECT_EQ(run.names(), (std::vector<std::string>{"a.txt", "in.md"}));
}

TEST(Command, FailsWhenStandardOutputTakesNoMore) {
  CommandRun run;
  run.environment.get().writeOutput = [](std::string_view) {
    errno = ENOSPC;
    return false;
  };
  const Result result = run.with("in.md", "x").run({"@/in.md", "-o", "html:-"});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.error, "scrivalen: cannot write to standard output: No space left on device\n");
}

TEST(Command, NamesStandardOutputInWarnings) {
  CommandRun run;
  run.with("in.md", "\xE2\x98\x83");
  const Result result = run.run({"@/in.md", "-o", "text:-", "--single-byte"});
  EXPECT_EQ(result.status, 0);
  EXPECT_TRUE(result.error.starts_with("scrivalen: warning: standard output: ")) << result.error;
}

TEST(Command, TakesSettings) {
  CommandRun run;
  EXPECT_EQ(run.with("in.md", "one two three four five six seven")
                .run({"@/in.md", "--set", "text.width=20", "--set", "title=T", "-o", "text:-"})
                .output,
            "T\n=\n\none two three four\nfive six seven\n");
  const Result wrong = run.run({"@/in.md", "--set", "paper=B9", "-o", "@/a.html"});
  EXPECT_EQ(wrong.status, 2);
  EXPECT_TRUE(wrong.error.starts_with("scrivalen: The setting \"paper\" does not take \"B9\"")) << wrong.error;
  EXPECT_EQ(run.names(), std::vector<std::string>{"in.md"});
}

TEST(Command, ShowsATitleThatIsASetting) {
  const auto shown = [](const std::vector<std::string>& options) { return textOf("a", options); };
  EXPECT_EQ(shown({"--set", "title=T"}), "T\n=\n\na\n");
  EXPECT_EQ(shown({"--set", "text.title=T"}), "T\n=\n\na\n");
  EXPECT_EQ(shown({"--set", "html.title=T", "-o", "@/a.html"}), "a\n");
  EXPECT_EQ(shown({"--set", "title="}), "a\n");
  EXPECT_EQ(shown({"--set", "property:title=T"}), "a\n");
  EXPECT_EQ(shown({"--set", "title=T", "--set", "show-title=no"}), "a\n");
  EXPECT_EQ(shown({"--set", "text.show-title=no", "--set", "text.title=T"}), "a\n");
  EXPECT_EQ(shown({"--set", "show-title=no", "--set", "text.title=T"}), "a\n");
  EXPECT_EQ(textOf("# b", {"--set", "title=T"}), "b\n=\n");
  CommandRun run;
  const Result result = run.with("in.md", "a").run({"@/in.md", "-o", "@/a.txt", "-v", "--set", "property:a.title=T"});
  EXPECT_EQ(result.error.find("a.show-title"), std::string::npos) << result.error;
}

TEST(Command, FindsTheDelimiterOfATable) {
  CommandRun run;
  run.with("in.csv", "Name;Price\nM\xC3\xBCller;1.234,56\n");
  EXPECT_EQ(run.run({"@/in.csv", "--separator", "|", "-o", "text:-"}).output, "Name|Price\nM\xC3\xBCller|1.234,56\n");
  EXPECT_EQ(run.run({"@/in.csv", "--separator", "|", "--delimiter", ",", "-o", "text:-"}).output,
            "Name;Price|\nM\xC3\xBCller;1.234|56\n");
}

TEST(Command, FailsAfterAWarningWhenStrict) {
  CommandRun run;
  run.with("in.md", "a\xFF");
  const Result quiet = run.run({"@/in.md", "--strict", "--quiet", "-o", "@/a.txt"});
  EXPECT_EQ(quiet.status, 1);
  EXPECT_EQ(quiet.error, "scrivalen: 1 warning; --strict makes it a failure\n");
  EXPECT_EQ(run.run({"@/in.md", "--strict", "--quiet", "--styles", "s", "-o", "@/a.txt"}).error,
            "scrivalen: 2 warnings; --strict makes them a failure\n");
  EXPECT_EQ(run.run({"@/none.md", "--strict", "--quiet", "--styles", "s", "-o", "@/a.txt"}).error.find("--strict"),
            std::string::npos);
  EXPECT_EQ(run.bytes("a.txt"), "a\xEF\xBF\xBD\n");
  EXPECT_EQ(run.with("in.md", "a").run({"@/in.md", "--strict", "-o", "@/a.txt"}).status, 0);
}

TEST(Command, RefusesAnInputThatIsNoText) {
  CommandRun run;
  std::string program =
      "\x7F"
      "ELF";
  for (int i = 0; i < 200; ++i) {
    program += static_cast<char>(i);
  }
  const Result result = run.with("in.md", program).run({"@/in.md", "-o", "@/a.html"});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.error, "scrivalen: '@/in.md' is not a text file; it is a program\n");
  EXPECT_EQ(run.names(), std::vector<std::string>{"in.md"});
}

TEST(Command, ReadsAnEmptyInput) {
  CommandRun run;
  EXPECT_EQ(run.with("in.md", "").run({"@/in.md", "-o", "@/a.html", "-o", "@/a.txt"}).status, 0);
  EXPECT_EQ(run.body("a.html"), "");
  EXPECT_EQ(run.bytes("a.txt"), "");
  EXPECT_EQ(run.with("in.csv", "").run({"@/in.csv", "-o", "@/b.html"}).status, 0);
  EXPECT_EQ(run.body("b.html"), "");
}

TEST(Command, PicksATitle) {
  CommandRun run;
  run.with("in.md", "# From *heading*").with("plain.notes.md", "text").with("t.csv", "a\n1\n");
  EXPECT_EQ(titleAfter(run, {"@/in.md"}), "From heading");
  EXPECT_EQ(titleAfter(run, {"@/in.md", "--title", "Given"}), "Given");
  EXPECT_EQ(titleAfter(run, {"@/plain.notes.md"}), "plain.notes");
  EXPECT_EQ(titleAfter(run, {"@/t.csv"}), "t");
  EXPECT_EQ(titleAfter(run, {"-"}), "Report");
}

TEST(Command, AcceptsAnyCharactersInTheTitle) {
  CommandRun run;
  run.with("in.md", "x");
  EXPECT_EQ(titleAfter(run, {"@/in.md", "--title", "<a> & \"b\" %BODY% €"}), "&lt;a&gt; &amp; &quot;b&quot; %BODY% €");
  EXPECT_EQ(run.body("out.html"), "<h1 class=\"title\">&lt;a&gt; &amp; \"b\" %BODY% €</h1>\n<p>x</p>");
}

TEST(Command, WritesATableOfContentsOnRequest) {
  CommandRun run;
  run.with("in.md", "# T\n\n## A & **B**\n\n## C").run({"@/in.md", "--toc", "-o", "@/a.html", "-o", "@/a.txt"});
  EXPECT_EQ(run.body("a.html"),
            "<h1 id=\"t\">T</h1>\n"
            "<nav>\n<ol>\n<li><a href=\"#a--b\">A &amp; B</a></li>\n<li><a href=\"#c\">C</a></li>\n</ol>\n</nav>\n"
            "<h2 id=\"a--b\">A &amp; <strong>B</strong></h2>\n<h2 id=\"c\">C</h2>");
  EXPECT_EQ(run.bytes("a.txt"), "T\n=\n\nA & B\nC\n\nA & B\n-----\n\nC\n-\n");
}

TEST(Command, WarnsOnceOfInvalidText) {
  CommandRun run;
  run.with("in.md",
           "a\xFF"
           "b\xFE [x]: # c\n\n[l]: \xC3\n");
  const Result result = run.run({"@/in.md", "-o", "@/a.html", "-o", "@/a.txt"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(
      result.error,
      "scrivalen: warning: '@/in.md': replaced 3 invalid characters with U+FFFD; if it is not UTF-8, see --encoding\n");
}

TEST(Command, ReadsTheEncodingThatIsGiven) {
  CommandRun run;
  run.with("in.csv", "Name;Price\nM\xFCller;5 \x80\n").with("in.md", "\xC4ra\x81");
  EXPECT_EQ(run.run({"@/in.csv", "--encoding", "cp1252", "--separator", "|", "-o", "text:-"}).output,
            "Name|Price\nMüller|5 €\n");
  const Result result = run.run({"@/in.md", "--encoding", "Windows-1252", "-o", "text:-"});
  EXPECT_EQ(result.output, "Ära\uFFFD\n");
  EXPECT_EQ(result.error, "scrivalen: warning: '@/in.md': replaced 1 invalid character with U+FFFD\n");
}

TEST(Command, FindsTheTitleThatTheWholeTextGives) {
  CommandRun run;
  const auto titleOf = [&run](std::string_view text) { return titleAfter(run.with("t.md", text), {"@/t.md"}); };
  EXPECT_EQ(titleOf("Title\n=====\n\n# Other\n"), "Title");
  EXPECT_EQ(titleOf("# A [b]\n\n[b]: https://example.org\n"), "A b");
  EXPECT_EQ(titleOf("# A [b]\n\ntext\n"), "A [b]");
  EXPECT_EQ(titleOf("<!-- # hidden\n\n# hidden\n-->\n\n# Shown\n"), "Shown");
  EXPECT_EQ(titleOf("```\n\n# code\n\n```\n\n# Shown\n"), "Shown");
  EXPECT_EQ(titleOf("#\n\ntext\r\n\r\n" + std::string(5000, 'x') + "\n\n# Far [away]"), "Far [away]");
}

TEST(Command, IsSilentWhenQuiet) {
  CommandRun run;
  const Result result = run.with("in.md", "a\xFF").run({"@/in.md", "--quiet", "--single-byte", "-o", "@/a.txt"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.error, "");
}

// The lines of a verbose run but for those about time, which ends in a number of milliseconds.
std::string withoutTimes(const std::string& error) {
  std::string lines;
  for (const std::string_view line : split(error, '\n')) {
    if (!line.ends_with(" ms")) {
      lines.append(line).append("\n");
    }
  }
  return lines;
}

TEST(Command, SaysWhatItReadsAndWrites) {
  CommandRun run;
  const Result result =
      run.with("in.md", "# A\n")
          .run({"@/in.md", "-o", "@/a.txt", "-o", "html:-", "-v", "--set", "paper=a5", "--landscape", "--title", "T"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(withoutTimes(result.error),
            "scrivalen: settings of '@/a.txt', '-': landscape='yes', title='T', show-title='yes', paper='a5'\n"
            "scrivalen: read '@/in.md' as Markdown: 4 bytes\n"
            "scrivalen: wrote '@/a.txt' as text: 4 bytes\n"
            "scrivalen: wrote '-' as html: " +
                std::to_string(result.output.size()) + " bytes\n\n");
  EXPECT_NE(result.error.find("scrivalen: '@/in.md' took "), std::string::npos);
}

TEST(Command, WarnsOfAnOptionWithoutEffect) {
  CommandRun run;
  const Result result = run.with("in.csv", "a\n").run({"@/in.csv", "-o", "@/a.txt", "--toc", "--strict"});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.error, "scrivalen: warning: --toc has no effect: no input is Markdown\n");
}

TEST(Command, SuggestsASetting) {
  CommandRun run;
  const Result result = run.with("in.md", "x").run({"@/in.md", "-o", "@/a.txt", "--set", "text.witdh=90"});
  EXPECT_EQ(result.status, 2);
  EXPECT_EQ(result.error, "scrivalen: There is no setting \"text.witdh\". Did you mean \"text.width\"?\n");
  EXPECT_EQ(run.run({"@/in.md", "-o", "@/a.txt", "--set", "color=red"}).error,
            "scrivalen: There is no setting \"color\". The documentation, in settings.md, lists them.\n");
}

TEST(Command, TakesATemplateFromAPersonsOwnFile) {
  CommandRun run;
  run.with("in.md", "x").with("page.tmpl", "<t>%TITLE%</t>%BODY%");
  EXPECT_EQ(run.run({"@/in.md", "--template", "@/page.tmpl", "-o", "@/a.html"}).error, "");
  EXPECT_EQ(run.bytes("a.html"), "<t>in</t><p>x</p>\n");
  const Result folder = run.run({"@/in.md", "--template", "@/", "-o", "@/a.html"});
  EXPECT_EQ(folder.status, 2);
  EXPECT_EQ(folder.error, "scrivalen: the template '@/' is a folder; give the path of a file\n");
}

TEST(Command, ReadsATableExportedByASpreadsheet) {
  CommandRun run;
  using namespace std::string_literals;
  run.with("in.tsv", "\xFF\xFE"s + "a\0\t\0b\0\r\0\n\0\"\0x\0\n\0y\0\"\0\t\0\xAC\x20\r\0\n\0"s);
  EXPECT_EQ(run.run({"@/in.tsv", "--separator", "\\t", "-o", "@/a.txt"}).status, 0);
  EXPECT_EQ(run.bytes("a.txt"), "a\tb\nx y\t€\n");
}

TEST(Command, ExitsWithStatusTwoAndOneLineOnAUsageError) {
  CommandRun run;
  const Result result = run.with("in.md", "x").run({"@/in.md"});
  EXPECT_EQ(result.status, 2);
  EXPECT_EQ(result.error, "scrivalen: no output given (-o FILE); see scrivalen --help\n");
  EXPECT_EQ(result.output, "");
}

TEST(Command, PrintsItsVersionAndItsHelpOnStandardOutput) {
  CommandRun run;
  const Result version = run.run({"--version"});
  EXPECT_EQ(version.status, 0);
  EXPECT_EQ(version.output, "scrivalen 1.1.0\n");
  const Result help = run.run({"--help"});
  EXPECT_EQ(help.status, 0);
  EXPECT_EQ(help.error, "");
  EXPECT_NE(help.output.find("scrivalen notes.md -o notes.html"), std::string::npos);
}

TEST(Command, ExitsWithStatusOneWhenStandardOutputCannotBeWritten) {
  CommandRun run;
  run.environment.get().writeOutput = [](std::string_view) {
    scrivalen::setLastSystemError(scrivalen::diskFullError());
    return false;
  };
  for (const char* const option : {"--help", "--version", "--list-templates"}) {
    const Result result = run.run({option});
    EXPECT_EQ(result.status, 1);
    EXPECT_TRUE(result.error.starts_with("scrivalen: cannot write to standard output: ")) << result.error;
  }
}

TEST(Command, ExitsWithStatusOneWhenTheInputCannotBeRead) {
  CommandRun run;
  const Result result = run.run({"@/missing.md", "-o", "@/a.html"});
  EXPECT_EQ(result.status, 1);
  EXPECT_TRUE(result.error.starts_with("scrivalen: cannot read '@/missing.md': ")) << result.error;
  EXPECT_EQ(run.names(), std::vector<std::string>());
}

TEST(Command, ExitsWithStatusOneWhenTheStyleSheetCannotBeRead) {
  CommandRun run;
  const Result result = run.with("in.md", "x").run({"@/in.md", "--styles", "@/no.css", "-o", "@/a.xlsx"});
  EXPECT_EQ(result.status, 1);
  EXPECT_TRUE(result.error.starts_with("scrivalen: cannot read the style sheet '@/no.css': ")) << result.error;
}

TEST(Command, ExitsWithStatusOneWhenTheReferenceCannotBeUsed) {
  CommandRun run;
  const Result result = run.with("in.md", "x").run({"@/in.md", "--reference", "@/in.md", "-o", "@/a.docx"});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.error, "scrivalen: The reference '@/in.md' cannot be used: it is not an archive (ZIP).\n");
  EXPECT_EQ(run.names(), std::vector<std::string>{"in.md"});
}

TEST(Command, ReportsTheLineOfAMalformedTableAndWritesNoOutput) {
  CommandRun run;
  const Result result = run.with("in.csv", "a\n\"b\n").run({"@/in.csv", "-o", "@/a.html", "-o", "@/a.txt"});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.error, "scrivalen: '@/in.csv', line 2: a quoted cell begins here but never ends\n");
  EXPECT_EQ(run.names(), std::vector<std::string>{"in.csv"});
}

TEST(Command, RejectsAnInvalidTimestamp) {
  CommandRun run;
  run.environment.variables["SOURCE_DATE_EPOCH"] = "yesterday";
  const Result result = run.with("in.md", "x").run({"@/in.md", "-o", "@/a.html"});
  EXPECT_EQ(result.status, 2);
  EXPECT_EQ(result.error, "scrivalen: SOURCE_DATE_EPOCH is not a number of seconds: 'yesterday'\n");
}

TEST(Command, WritesTheSameBytesTwice) {
  CommandRun run;
  run.environment.variables["SOURCE_DATE_EPOCH"] = "86400";
  run.with("in.md", "# T\n\n- a");
  EXPECT_EQ(run.run({"@/in.md", "-o", "@/a.html", "-o", "@/b.html"}).status, 0);
  EXPECT_EQ(run.bytes("a.html"), run.bytes("b.html"));
}

// Puts a template into the template folder for its lifetime. Tests run in parallel, so each has a name of its own.
class TestTemplate {
 public:
  explicit TestTemplate(std::string_view bytes) : name_("test-" + toUtf8(scrivalen::randomName())) {
    HtmlReport().MakeTemplateName(path_, L"");
    path_ += toWide(name_) + L".htm";
    scrivalen::test::writeBytes(path_, bytes);
  }
  TestTemplate(const TestTemplate&) = delete;
  TestTemplate& operator=(const TestTemplate&) = delete;
  ~TestTemplate() { scrivalen::deleteFile(path_); }

  const std::string& name() const { return name_; }

 private:
  std::string name_;
  std::wstring path_;
};

TEST(Command, FillsATemplateWithPropertiesOfAnyCharacters) {
  const TestTemplate page("<t>%TITLE% %AUTHOR% %X%</t><body>%BODY%</body>\xE2\x82\xAC");
  CommandRun run;
  const Result result = run.with("in.md", "a")
                            .run({"@/in.md", "--template", page.name(), "--title", "%AUTHOR%", "--property",
                                  "AUTHOR=<Ä> %X% %BODY%", "--property", "%X%=\\ & €", "-o", "@/a.html"});
  EXPECT_EQ(result.status, 0) << result.error;
  EXPECT_EQ(
      run.bytes("a.html"),
      "<t>%AUTHOR% &lt;Ä&gt; %X% %BODY% \\ &amp; €</t><body><h1 class=\"title\">%AUTHOR%</h1>\n<p>a</p>\n</body>€");
}

TEST(Command, ListsTheTemplates) {
  const TestTemplate page("x");
  const std::string list = CommandRun().run({"--list-templates"}).output;
  EXPECT_NE(list.find(page.name() + "\n"), std::string::npos) << list;
  EXPECT_NE(list.find("default\n"), std::string::npos) << list;
}

}  // namespace
}  // namespace scrivalen::command::test
