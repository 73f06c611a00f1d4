#include "options/command_line.h"

#include "errors.h"
#include "system/files/files.h"
#include "texts.h"

#include <gtest/gtest.h>

namespace scrivalen::command {
namespace {

Options parsed(const std::vector<std::string>& arguments) { return parseCommandLine(arguments).options; }

std::string complaint(const std::vector<std::string>& arguments) {
  try {
    parseCommandLine(arguments);
    return "";
  } catch (const UsageError& error) {
    return error.what();
  }
}

std::string formatOf(const std::string& output) {
  const Options options = parsed({"in", "-o", output});
  return std::string(options.jobs[0].outputs[0].format->name) + " " + options.jobs[0].outputs[0].name;
}

TEST(Options, AcceptTheInputAndOutputsInAnyOrder) {
  const Options options = parsed({"-o", "a.html", "in.md", "--output", "b.txt", "--output=c.xml"});
  EXPECT_EQ(options.jobs[0].input, "in.md");
  ASSERT_EQ(options.jobs[0].outputs.size(), 3u);
  EXPECT_EQ(options.jobs[0].outputs[0].name, "a.html");
  EXPECT_EQ(options.jobs[0].outputs[1].name, "b.txt");
  EXPECT_EQ(options.jobs[0].outputs[2].name, "c.xml");
}

TEST(Options, DetectAFormatByItsExtensionInAnyCase) {
  EXPECT_EQ(formatOf("a.html"), "html a.html");
  EXPECT_EQ(formatOf("a.HTM"), "html a.HTM");
  EXPECT_EQ(formatOf("dir.txt/a.b.xml"), "xml dir.txt/a.b.xml");
  EXPECT_EQ(formatOf("a.txt"), "text a.txt");
}

TEST(Options, AcceptAFormatsNameOrExtensionBeforeTheFileName) {
  EXPECT_EQ(formatOf("html:page"), "html page");
  EXPECT_EQ(formatOf("TEXT:a.html"), "text a.html");
  EXPECT_EQ(formatOf("txt:a:b"), "text a:b");
}

TEST(Options, TreatALetterBeforeAColonAsADrive) {
  EXPECT_EQ(formatOf("C:\\x.html"), "html C:\\x.html");
  EXPECT_EQ(formatOf("x:y.xml"), "xml x:y.xml");
  EXPECT_EQ(formatOf("html:C:\\x"), "html C:\\x");
}

TEST(Options, TreatAnUnknownFormatBeforeAColonAsPartOfTheName) { EXPECT_EQ(formatOf("12:30.html"), "html 12:30.html"); }

TEST(Options, RejectAWordBeforeAColonThatIsNoFormat) {
  EXPECT_EQ(complaint({"in", "-o", "htlm:x.html"}),
            "there is no format 'htlm'; did you mean 'html'? (a file of that name is './htlm:x.html')");
  EXPECT_EQ(
      complaint({"in", "-o", "bogus:x.html"}),
      "there is no format 'bogus'; use one of text, html, xml, markdown, rtf, pdf, xlsx, docx, chm (a file of that "
      "name is './bogus:x.html')");
  EXPECT_EQ(formatOf("./bogus:x.html"), "html ./bogus:x.html");
  EXPECT_EQ(formatOf("my notes: a.html"), "html my notes: a.html");
}

TEST(Options, SuggestAnExtension) {
  EXPECT_EQ(complaint({"in", "-o", "a.pfd"}), "the format of 'a.pfd' is unknown; did you mean 'a.pdf'?");
  EXPECT_EQ(complaint({"in", "-o", "a.xls"}), "the format of 'a.xls' is unknown; did you mean 'a.xlsx'?");
  EXPECT_EQ(complaint({"in", "-o", "a.doc"}), "the format of 'a.doc' is unknown; did you mean 'a.docx'?");
}

TEST(Options, RejectAnUnknownFormat) {
  EXPECT_EQ(complaint({"in", "-o", "a.pages"}),
            "the format of 'a.pages' is unknown; use .txt .html .htm .xml .md .markdown .rtf .pdf .xlsx .docx .chm, or "
            "FORMAT:FILE");
  EXPECT_NE(complaint({"in", "-o", "html"}), "");
  EXPECT_NE(complaint({"in", "-o", "a.html/b"}), "");
  EXPECT_NE(complaint({"in", "-o", "-"}), "");
}

TEST(Options, SayWhatAnOutputWithoutAFormatNeeds) {
  EXPECT_EQ(complaint({"in", "-o", "-"}), "standard output needs a format; use -o FORMAT:-, such as -o text:-");
  EXPECT_EQ(complaint({"in", "-o", "."}),
            "the output '.' is a folder; use --output-dir FOLDER --to FORMAT, or -o FILE");
  EXPECT_EQ(complaint({"in", "-o", "pdf"}),
            "the output 'pdf' has no extension; for standard output use -o pdf:-, for a file of that name -o "
            "FORMAT:FILE");
  EXPECT_EQ(complaint({"in.md", "out.pdf"}), "no output given; did you mean '-o out.pdf'?");
  EXPECT_EQ(complaint({"in.md", "other.csv"}), "no output given (-o FILE); see scrivalen --help");
}

TEST(Options, RequireTheirValues) {
  EXPECT_EQ(complaint({"a.md", "-o"}), "-o needs a value: -o FILE");
  EXPECT_EQ(complaint({"a.md", "--set"}), "--set needs a value: --set NAME=VALUE");
  EXPECT_EQ(complaint({"a.md", "-o", "a.txt", "--toc=yes"}), "--toc takes no value, not 'yes'");
  EXPECT_EQ(complaint({"a.md", "--title=a", "--title", "b"}), "--title is given twice, with 'a' and 'b'; give it once");
}

TEST(Options, FollowTheConventionsOfOtherPrograms) {
  EXPECT_EQ(parsed({"a.md", "-oa.txt"}).jobs[0].outputs[0].name, "a.txt");
  EXPECT_EQ(parsed({"a.md", "-o=a.txt"}).jobs[0].outputs[0].name, "a.txt");
  EXPECT_EQ(parsed({"a.md", "-qo", "a.txt"}).jobs[0].outputs[0].name, "a.txt");
  EXPECT_EQ(parsed({"a.md", "-o", "a.txt", "--title="}).title, "");
  EXPECT_EQ(parsed({"-", "-o", "a.txt"}).jobs[0].input, "-");
  EXPECT_EQ(complaint({"a.md", "-qx", "-o", "a.txt"}), "unknown option '-x'; see scrivalen --help");
  EXPECT_EQ(complaint({"a.md", "-output", "a.txt"}), "unknown option '-output'; did you mean '--output'?");
}

TEST(Options, TakeValuesAndInputsAsTheyAre) {
  for (const char* const value : {"{}", "[a,b]", "=a", "--title=", "--", "-output", "-5"}) {
    EXPECT_EQ(parsed({"a.md", "-o", "a.txt", "--title", value}).title, value);
    EXPECT_EQ(parsed({"a.md", "-o", "a.txt", std::string("--title=") + value}).title, value);
    EXPECT_EQ(parsed({"-o", "a.txt", "--", value}).jobs[0].input, value);
  }
  EXPECT_EQ(parsed({"[a,b]", "-o", "a.txt"}).jobs[0].input, "[a,b]");
  EXPECT_EQ(parsed({"a.md", "-o", "=a.txt"}).jobs[0].outputs[0].name, "=a.txt");
}

TEST(Options, RejectWhatBeginsWithADash) {
  EXPECT_EQ(complaint({"-5", "-o", "a.txt"}), "unknown option '-5'; see scrivalen --help");
  EXPECT_EQ(complaint({"---title=x", "-o", "a.txt"}), "unknown option '---title'; did you mean '--title'?");
  EXPECT_TRUE(complaint({"a.md", "-q-strict", "-o", "a.txt"}).starts_with("unknown option '--'"));
  EXPECT_EQ(complaint({"a.md", "-q=x", "-o", "a.txt"}), "unknown option '-='; see scrivalen --help");
  EXPECT_EQ(complaint({"a.md", "-o", "a.txt", "--toc="}), "--toc takes no value, not ''");
  EXPECT_EQ(complaint({"a.md", "-qo"}), "-o needs a value: -o FILE");
}

TEST(Options, RejectAnOutputWithoutAName) {
  EXPECT_EQ(complaint({"in", "-o", "html:"}), "the output 'html:' has no file name; use -o FILE or -o FORMAT:FILE");
}

TEST(Options, RequireAnInputAndAnOutput) {
  EXPECT_EQ(complaint({"-o", "a.txt"}), "no input given; see scrivalen --help");
  EXPECT_EQ(complaint({"in.md"}), "no output given (-o FILE); see scrivalen --help");
}

TEST(Options, RejectAnUnknownOptionAndASecondInput) {
  EXPECT_EQ(complaint({"in", "-o", "a.txt", "--titel", "x"}), "unknown option '--titel'; did you mean '--title'?");
  EXPECT_EQ(complaint({"in", "-o", "a.txt", "--outdir=x"}), "unknown option '--outdir'; see scrivalen --help");
  EXPECT_EQ(complaint({"in", "-o", "a.txt", "--output-dri=x"}),
            "unknown option '--output-dri'; did you mean '--output-dir'?");
  EXPECT_EQ(complaint({"in", "-o", "a.txt", "-toc"}), "unknown option '-toc'; did you mean '--toc'?");
  EXPECT_EQ(complaint({"in", "-o", "a.txt", "-x"}), "unknown option '-x'; see scrivalen --help");
  EXPECT_EQ(complaint({"in", "in2", "-o", "a.txt"}),
            "-o FILE takes one input, not also 'in2'; for several inputs use --output-dir FOLDER --to FORMAT");
}

TEST(Options, RejectTwoOutputsWithTheSameName) {
  EXPECT_EQ(complaint({"in", "-o", "a.txt", "-o", "b.txt", "-o", "a.txt"}), "two outputs have the name 'a.txt'");
  EXPECT_EQ(complaint({"in", "-o", "a.txt", "-o", "./a.txt"}), "the outputs 'a.txt' and './a.txt' are the same file");
  EXPECT_EQ(complaint({"in", "-o", "a.txt", "-o", "html:a.txt"}), "two outputs have the name 'a.txt'");
}

TEST(Options, RejectAnOutputThatIsTheInput) {
  EXPECT_EQ(complaint({"a.txt", "-o", "./a.txt"}),
            "the output './a.txt' is the input 'a.txt'; it would be overwritten");
}

TEST(Options, DetectTheInputsFormatByItsExtension) {
  EXPECT_EQ(parsed({"a.md", "-o", "a.txt"}).jobs[0].format, InputFormat::Markdown);
  EXPECT_EQ(parsed({"a.CSV", "-o", "a.txt"}).jobs[0].format, InputFormat::Csv);
  EXPECT_EQ(parsed({"a.tsv", "-o", "a.txt"}).jobs[0].format, InputFormat::Tsv);
  EXPECT_EQ(parsed({"a", "-o", "a.txt"}).jobs[0].format, InputFormat::Markdown);
  EXPECT_EQ(parsed({"-", "-o", "a.txt"}).jobs[0].format, InputFormat::Markdown);
  EXPECT_EQ(parsed({"./csv", "-o", "a.txt"}).jobs[0].format, InputFormat::Markdown);
}

TEST(Options, WarnOfAnInputThatIsPerhapsATable) {
  EXPECT_EQ(parsed({"a.cvs", "-o", "a.txt"}).warnings,
            std::vector<std::string>{"'a.cvs' is read as Markdown; did you mean --from csv?"});
  for (const char* const input :
       {"a.csv", "a.TSV", "a.tab", "a.md", "a.txt", "a.tex", "a", "-", "./csv", "../tsv", "x.csv/a"}) {
    EXPECT_EQ(parsed({input, "-o", "b.txt"}).warnings, std::vector<std::string>()) << input;
  }
  EXPECT_EQ(parsed({"a.cvs", "--from", "md", "-o", "a.txt"}).warnings, std::vector<std::string>());
}

TEST(Options, PreferFromToTheExtension) {
  EXPECT_EQ(parsed({"a.md", "--from", "tsv", "-o", "a.txt"}).jobs[0].format, InputFormat::Tsv);
  EXPECT_EQ(complaint({"a.md", "--from", "doc", "-o", "a.txt"}), "--from takes markdown, csv or tsv, not 'doc'");
  EXPECT_EQ(complaint({"a.md", "--from", "CVS", "-o", "a.txt"}),
            "--from takes markdown, csv or tsv, not 'CVS'; did you mean 'csv'?");
}

TEST(Options, EnclosePropertyNamesInPercentSigns) {
  const Options options =
      parsed({"a.md", "-o", "a.txt", "--property", "AUTHOR=A=B", "--property", "%X%=", "--property", "Y=1"});
  ASSERT_EQ(options.properties.size(), 3u);
  EXPECT_EQ(options.properties[0], (std::pair<std::string, std::string>("AUTHOR", "A=B")));
  EXPECT_EQ(options.properties[1], (std::pair<std::string, std::string>("X", "")));
  EXPECT_EQ(options.properties[2], (std::pair<std::string, std::string>("Y", "1")));
}

TEST(Options, RejectInvalidProperties) {
  EXPECT_EQ(complaint({"a", "-o", "a.txt", "--property", "x"}), "--property takes NAME=VALUE, not 'x'");
  EXPECT_EQ(complaint({"a", "-o", "a.txt", "--property", "=x"}), "--property takes NAME=VALUE, not '=x'");
  EXPECT_EQ(complaint({"a", "-o", "a.txt", "--property", "TITLE=x"}), "--property cannot set %TITLE%; use --title");
  EXPECT_EQ(complaint({"a", "-o", "a.txt", "--property", "%BODY%=x"}), "--property cannot set %BODY%");
}

TEST(Options, AcceptValuesThatBeginWithADash) {
  const Options options = parsed({"--title", "-5", "-o", "-a.html", "--", "-in.md"});
  EXPECT_EQ(options.title, "-5");
  EXPECT_EQ(options.jobs[0].outputs[0].name, "-a.html");
  EXPECT_EQ(options.jobs[0].input, "-in.md");
}

TEST(Options, AreSafeByDefault) {
  EXPECT_FALSE(parsed({"a.md", "-o", "a.html"}).unsafe);
  EXPECT_TRUE(parsed({"a.md", "-o", "a.html", "--unsafe"}).unsafe);
}

TEST(Options, DistinguishAnEmptyTitleFromNone) {
  EXPECT_EQ(parsed({"a", "-o", "a.txt"}).title, std::nullopt);
  EXPECT_EQ(parsed({"a", "-o", "a.txt", "--title", ""}).title, "");
}

TEST(Options, AcceptATypedEscapeForATabAsSeparator) {
  EXPECT_EQ(parsed({"a", "-o", "a.txt"}).separator, "");
  EXPECT_EQ(parsed({"a", "-o", "a.txt", "--separator", "\\t|"}).separator, "\t|");
  EXPECT_EQ(parsed({"a", "-o", "a.txt", "--separator", ";"}).separator, ";");
}

TEST(Options, AcceptFlags) {
  const Options none = parsed({"a", "-o", "a.txt"});
  EXPECT_FALSE(none.landscape || none.singleByte || none.contents || none.quiet);
  const Options all = parsed(
      {"a", "-o", "a.txt", "--landscape", "--single-byte", "--toc", "--quiet", "--styles", "s", "--reference", "r"});
  EXPECT_TRUE(all.landscape && all.singleByte && all.contents && all.quiet);
  EXPECT_EQ(all.stylesFile, "s");
  EXPECT_EQ(all.referenceFile, "r");
}

TEST(Options, FindATemplateInAnyCaseWithOrWithoutItsExtension) {
  for (const char* const name : {"Default", "default.HTM"}) {
    const std::string file = parsed({"a", "-o", "a.html", "--template", name}).templateFile;
    EXPECT_EQ(scrivalen::fileNameOf(scrivalen::widePath(file)), L"default.htm") << name;
    EXPECT_NE(file.find("tmpl"), std::string::npos) << file;
  }
}

TEST(Options, TakeSettingsOfTheDocument) {
  const Options options = parsed({"a", "-o", "a.txt", "--set", "paper=A5", "--set", "footer=a=b"});
  ASSERT_EQ(options.settings.size(), 2u);
  EXPECT_EQ(options.settings[0], (std::pair<std::string, std::string>("paper", "A5")));
  EXPECT_EQ(options.settings[1], (std::pair<std::string, std::string>("footer", "a=b")));
  EXPECT_EQ(complaint({"a", "-o", "a.txt", "--set", "paper"}), "--set takes NAME=VALUE, not 'paper'");
}

TEST(Options, TakeAnEncoding) {
  EXPECT_EQ(parsed({"a.md", "-o", "a.txt"}).encoding, InputEncoding::Default);
  EXPECT_EQ(parsed({"a.md", "-o", "a.txt", "--encoding", "Latin-1"}).encoding, InputEncoding::Latin1);
  EXPECT_EQ(complaint({"a.md", "-o", "a.txt", "--encoding", "utf-7"}),
            "--encoding takes utf-8, utf-16le, utf-16be, latin-1 or windows-1252, not 'utf-7'; did you mean 'utf-8'?");
}

TEST(Options, TakeADelimiter) {
  EXPECT_EQ(parsed({"a.csv", "-o", "a.txt"}).jobs[0].delimiter, std::nullopt);
  EXPECT_EQ(parsed({"a.tsv", "-o", "a.txt"}).jobs[0].delimiter, '\t');
  EXPECT_EQ(parsed({"a.csv", "-o", "a.txt", "--delimiter", "\\t"}).jobs[0].delimiter, '\t');
  EXPECT_EQ(parsed({"a.csv", "-o", "a.txt", "--delimiter", ":"}).jobs[0].delimiter, ':');
  for (const char* const wrong : {"ab", "", "\"", "\n", "\xC3\xA9"}) {
    EXPECT_EQ(complaint({"a.csv", "-o", "a.txt", "--delimiter", wrong}),
              std::string("--delimiter takes one ASCII character, or \\t for a tab, not '") + wrong + "'");
  }
}

TEST(Options, ShowAShortHelpWithoutArguments) {
  EXPECT_TRUE(parseCommandLine({}).printout.value_or("").starts_with("Usage: scrivalen INPUT -o FILE"));
}

TEST(Options, HaveShortNames) {
  EXPECT_TRUE(parsed({"a", "-o", "a.txt", "-q"}).quiet);
  EXPECT_TRUE(parsed({"a", "-o", "a.txt", "--strict"}).strict);
  EXPECT_EQ(parseCommandLine({"-V"}).printout, parseCommandLine({"--version"}).printout);
}

TEST(Options, TakeTheColumnsOfATable) {
  const Options options = parsed({"a.csv", "-o", "a.txt", "--columns", "name, 3 ,5-7,\"a, \"\"b\"\"\"", "--align",
                                  "l,,Right,center", "--width", "3,,0.5"});
  EXPECT_EQ(options.csv.columns, (std::vector<std::string>{"name", "3", "5-7", "a, \"b\""}));
  EXPECT_EQ(options.csv.aligns, (std::vector<Align>{Align::Left, Align::Default, Align::Right, Align::Center}));
  EXPECT_EQ(options.csv.widths, (std::vector<double>{3, 0, 0.5}));
  EXPECT_FALSE(options.csv.arePercent);
  EXPECT_TRUE(parsed({"a.csv", "-o", "a.txt", "--width", "60%,,40%"}).csv.arePercent);
}

TEST(Options, RejectColumnsThatCannotBe) {
  const auto complaintOf = [](const char* option, const char* value) {
    return complaint({"a.csv", "-o", "a.txt", option, value});
  };
  EXPECT_EQ(complaintOf("--columns", "a,,b"),
            "--columns takes names or numbers of columns, such as name,3,5-7, not 'a,,b'");
  EXPECT_EQ(complaintOf("--align", "l,middle"),
            "--align takes left, right or center (l, r, c) for each column, not 'middle'");
  for (const char* const width : {"x", "-1", "0", "1e3", "%", "1000001", "nan", "inf"}) {
    EXPECT_TRUE(complaintOf("--width", width).starts_with("--width takes shares such as 3,1,1")) << width;
  }
  EXPECT_EQ(complaintOf("--width", "3,50%"), "--width takes either shares or percents, not both: '3,50%'");
}

TEST(Options, OfCsvAreWarnedOfForMarkdown) {
  for (const std::vector<std::string>& option :
       {std::vector<std::string>{"--columns", "1"}, {"--align", "l"}, {"--width", "1"}, {"--text"}}) {
    std::vector<std::string> arguments = {"a.md", "-o", "a.txt"};
    arguments.insert(arguments.end(), option.begin(), option.end());
    EXPECT_EQ(parsed(arguments).warnings,
              std::vector<std::string>{option.front() + " has no effect: no input is CSV or TSV"});
  }
}

TEST(Options, RejectAMissingTemplate) {
  EXPECT_EQ(complaint({"a", "-o", "a.html", "--template", "../tmpl/defaults"}),
            "there is no template '../tmpl/defaults'; see scrivalen --list-templates, or give the path of a file");
  EXPECT_EQ(complaint({"a", "-o", "a.html", "--template", "defalt"}),
            "there is no template 'defalt'; did you mean 'default'?");
}

TEST(Options, RejectEmptyValues) {
  EXPECT_EQ(complaint({"", "-o", "a.txt"}),
            "the name of an input is empty; give the path of a file, or - for standard input");
  EXPECT_EQ(complaint({"a", "-o", ""}), "the output '' has no file name; use -o FILE or -o FORMAT:FILE");
  EXPECT_EQ(complaint({"a", "-o", "a.html", "--template", ""}),
            "--template has an empty value; see scrivalen --list-templates");
  EXPECT_EQ(complaint({"a", "-o", "a.xlsx", "--styles", ""}),
            "--styles has an empty value; give the path of a style sheet");
  EXPECT_EQ(complaint({"a", "-o", "a.docx", "--reference", ""}),
            "--reference has an empty value; give the path of a Word document");
  EXPECT_EQ(complaint({"a", "--output-dir", "", "--to", "html"}),
            "--output-dir has an empty value; give the path of a folder");
  EXPECT_EQ(complaint({"a.csv", "-o", "a.txt", "--align", ""}),
            "--align has an empty value; give left, right or center (l, r, c) for each column");
  EXPECT_EQ(complaint({"a.csv", "-o", "a.txt", "--width", ""}),
            "--width has an empty value; give shares such as 3,1,1 or percents such as 60%,20%,20%");
  EXPECT_EQ(complaint({"a", "--from", "", "-o", "a.txt"}), "--from takes markdown, csv or tsv, not ''");
}

TEST(Options, GiveAnEmptySeparatorItsDefault) {
  EXPECT_EQ(parsed({"a", "-o", "a.txt", "--separator", ""}).separator, "");
}

using Warnings = std::vector<std::string>;

TEST(Options, AreWarnedOfWithoutEffectOnAnyOutput) {
  EXPECT_EQ(
      parsed({"a.md", "-o", "a.txt", "--template", "default", "--styles", "s", "--landscape", "--property", "a=b"})
          .warnings,
      (Warnings{"--template has no effect: no output is html or chm", "--styles has no effect: no output is xlsx",
                "--landscape has no effect: no output is html, rtf, pdf, xlsx or docx",
                "--property has no effect: no output is html, xml, rtf, chm, pdf, xlsx or docx"}));
  EXPECT_EQ(parsed({"a.md", "-o", "a.rtf", "--reference", "r.docx"}).warnings,
            Warnings{"--reference has no effect: no output is docx"});
  EXPECT_EQ(parsed({"a.md", "-o", "a.docx", "--reference", "r.docx"}).warnings, Warnings());
  EXPECT_EQ(parsed({"a.md", "-o", "a.html", "--separator", ";", "--single-byte", "--set", "text.width=90", "--set",
                    "html.font=a.b"})
                .warnings,
            (Warnings{"--single-byte has no effect: no output is text", "--separator has no effect: no output is text",
                      "--set text.width has no effect: no output is text"}));
}

TEST(Options, AreNotWarnedOfWithoutASettingOfThatName) {
  EXPECT_EQ(parsed({"a.md", "-o", "a.txt", "--set", "pdf.papre=A4", "--set", "pdf.paper=B9"}).warnings, Warnings());
  EXPECT_EQ(parsed({"a.md", "-o", "a.txt", "--set", "pdf.paper=A4"}).warnings,
            Warnings{"--set pdf.paper has no effect: no output is pdf"});
}

TEST(Options, AreWarnedOfWithoutEffectOnAnyInput) {
  EXPECT_EQ(parsed({"a.csv", "-o", "a.html", "--toc", "--unsafe"}).warnings,
            (Warnings{"--toc has no effect: no input is Markdown", "--unsafe has no effect: no input is Markdown"}));
  EXPECT_EQ(parsed({"a.md", "-o", "a.html", "--delimiter", ";"}).warnings,
            Warnings{"--delimiter has no effect: no input is CSV or TSV"});
}

TEST(Options, AreNotWarnedOfWhereTheyHaveAnEffect) {
  EXPECT_EQ(parsed({"a.md",          "b.tsv",
                    "--output-dir",  ".",
                    "--to",          "chm,xlsx,text",
                    "--toc",         "--unsafe",
                    "--delimiter",   ";",
                    "--template",    "default",
                    "--styles",      "s",
                    "--separator",   ";",
                    "--single-byte", "--landscape",
                    "--property",    "a=b",
                    "--set",         "text.width=90",
                    "--set",         "property:a.b=c"})
                .warnings,
            Warnings());
}

TEST(Options, CannotBeQuietAndVerbose) {
  EXPECT_TRUE(parsed({"a", "-o", "a.txt", "-v"}).verbose);
  EXPECT_EQ(complaint({"a", "-o", "a.txt", "-q", "--verbose"}), "-q and -v exclude each other; use one of them");
}

TEST(Options, HaveHelpThatNamesTheDescriptionOfTheSettings) {
  const std::string help = parseCommandLine({"--help"}).printout.value_or("");
  EXPECT_TRUE(
      help.ends_with("\nThe settings that --set takes, and their values, are described in\n"
                     "docs/settings.md of the documentation.\n"))
      << help;
}

TEST(Options, GiveHelpWhateverElseIsWrong) {
  const auto help = parseCommandLine({"--help"}).printout;
  EXPECT_EQ(parseCommandLine({"a.md", "--bogus", "-h"}).printout, help);
  EXPECT_EQ(parseCommandLine({"-h", "--from=bogus", "--title"}).printout, help);
  EXPECT_EQ(parseCommandLine({"--title", "-h", "a", "-o", "b.txt"}).printout, std::nullopt);
  EXPECT_EQ(parseCommandLine({"--title", "x", "--bogus", "-h"}).printout, help);
  EXPECT_EQ(parseCommandLine({"--title=x", "--toc", "-h", "--bogus"}).printout, help);
  EXPECT_EQ(complaint({"y.csv", "--title", "-h", "--bogus"}), "unknown option '--bogus'; see scrivalen --help");
}

TEST(Options, HaveAHelpOfEightyColumnsInGroups) {
  const std::string help = parseCommandLine({"--help"}).printout.value_or("");
  std::string titles;
  std::string_view before = "-";
  for (const std::string_view line : split(help, '\n')) {
    EXPECT_LE(line.size(), 80u) << line;
    titles += before.empty() && line.ends_with(':') ? line : "";
    before = line;
  }
  EXPECT_EQ(titles, "Examples:Input:Output:Layout:Tables of CSV:Behaviour:");
}

TEST(Options, NeedNoInputForHelpVersionAndTemplates) {
  EXPECT_TRUE(parseCommandLine({"--list-templates"}).printout.has_value());
  EXPECT_EQ(parseCommandLine({"--version"}).printout, "scrivalen 1.1.0\n");
  const std::string help = parseCommandLine({"--help"}).printout.value_or("");
  for (const char* word :
       {"INPUT",    "--output",    "--from",        "--title",     "--property", "--template",  "--list-templates",
        "--styles", "--landscape", "--single-byte", "--separator", "--set",      "--delimiter", "--strict",
        "--toc",    "--columns",   "--align",       "--width",     "--text",     "--quiet",     "--version",
        "--help",   "Examples:",   "--reference"}) {
    EXPECT_NE(help.find(word), std::string::npos) << word;
  }
}

}  // namespace
}  // namespace scrivalen::command
