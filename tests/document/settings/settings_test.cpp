#include "document/settings/settings.h"

#include "document/settings/definitions.h"

#include <scrivalen/scrivalen.h>

#include <gtest/gtest.h>

namespace scrivalen::document {
namespace {

// Settings that a test makes, and a value as a format sees it.
class Made {
 public:
  Made& set(std::string_view name, std::string_view value) {
    std::string reason;
    EXPECT_TRUE(settings.set(name, value, reason)) << reason;
    return *this;
  }
  std::string text(std::string_view format, std::string_view name) const {
    return std::string(FormatSettings(settings, format).text(name));
  }

  Settings settings;
};

std::string taken(std::string_view name, std::string_view value) { return Made().set(name, value).text("pdf", name); }

std::string reasonFor(std::string_view name, std::string_view value) {
  Settings settings;
  std::string reason;
  EXPECT_FALSE(settings.set(name, value, reason)) << name << " " << value;
  return reason;
}

bool isTaken(std::string_view name, std::string_view value) {
  std::string reason;
  return Settings().set(name, value, reason);
}

TEST(Settings, HaveDefaults) {
  const Made made;
  EXPECT_EQ(made.text("html", "title"), "");
  EXPECT_EQ(made.text("html", "language"), "en");
  EXPECT_EQ(made.text("pdf", "paper"), "A4");
  EXPECT_EQ(made.text("pdf", "margins"), "20mm");
  EXPECT_EQ(made.text("text", "encoding"), "utf-8");
  EXPECT_EQ(made.text("text", "width"), "80");
  EXPECT_EQ(made.text("pdf", "numbers"), "1234.5");
  EXPECT_EQ(made.text("pdf", "dates"), "yyyy-mm-dd");
  EXPECT_FALSE(FormatSettings(made.settings, "pdf").flag("landscape"));
  EXPECT_FALSE(FormatSettings(made.settings, "pdf").isSet("title"));
}

TEST(Settings, TakeTheirOwnDefaults) {
  for (const SettingDefinition& definition : settingDefinitions()) {
    std::string value(definition.usual);
    if (!value.empty()) {
      EXPECT_TRUE(definition.take(value)) << definition.name;
      EXPECT_EQ(value, definition.usual);
    }
  }
}

TEST(Settings, AreForAllFormatsOrForOne) {
  Made made;
  made.set("title", "All").set("pdf.title", "One");
  EXPECT_EQ(made.text("html", "title"), "All");
  EXPECT_EQ(made.text("pdf", "title"), "One");
  EXPECT_TRUE(FormatSettings(made.settings, "html").isSet("title"));
}

TEST(Settings, OfAFormatComeFirstInAnyOrder) {
  Made made;
  made.set("pdf.title", "One").set("title", "All");
  EXPECT_EQ(made.text("pdf", "title"), "One");
}

TEST(Settings, OfAnotherFormatAreNotSet) {
  Made made;
  made.set("rtf.title", "One");
  EXPECT_EQ(made.text("pdf", "title"), "");
  EXPECT_FALSE(FormatSettings(made.settings, "pdf").isSet("title"));
}

TEST(Settings, GivenAgainReplaceTheEarlierValue) {
  Made made;
  made.set("title", "a").set("pdf.title", "b").set("title", "c").set("pdf.title", "");
  EXPECT_EQ(made.text("html", "title"), "c");
  EXPECT_EQ(made.text("pdf", "title"), "");
}

TEST(Settings, KeepTheEarlierValueWhenAnotherIsRefused) {
  Made made;
  made.set("paper", "A5");
  std::string reason;
  EXPECT_FALSE(made.settings.set("paper", "B7", reason));
  EXPECT_EQ(made.text("pdf", "paper"), "A5");
}

TEST(Settings, CollectFontFiles) {
  Made made;
  made.set("font-file", "a.ttf").set("pdf.font-file", "b.ttf").set("font-file", "c.ttf");
  EXPECT_EQ(FormatSettings(made.settings, "pdf").all("font-file"),
            (std::vector<std::string_view>{"a.ttf", "b.ttf", "c.ttf"}));
  EXPECT_EQ(FormatSettings(made.settings, "rtf").all("font-file"), (std::vector<std::string_view>{"a.ttf", "c.ttf"}));
}

TEST(Settings, CollectPropertiesByTheirNames) {
  Made made;
  made.set("property:Project", "a").set("pdf.property:Acme.Id", "b").set("property:PROJECT", "c");
  made.set("pdf.property:project", "d");
  using Properties = std::vector<std::pair<std::string_view, std::string_view>>;
  EXPECT_EQ(FormatSettings(made.settings, "pdf").properties(), (Properties{{"Project", "d"}, {"Acme.Id", "b"}}));
  EXPECT_EQ(FormatSettings(made.settings, "docx").properties(), (Properties{{"Project", "c"}}));
}

TEST(Settings, TakeAPropertyWithADotInItsName) {
  Made made;
  made.set("property:a.b", "1");
  EXPECT_EQ(FormatSettings(made.settings, "docx").properties()[0].first, "a.b");
}

TEST(Settings, RefuseUnknownNames) {
  EXPECT_EQ(reasonFor("colour", "x"), "There is no setting \"colour\".");
  EXPECT_EQ(reasonFor("foo.title", "x"), "There is no setting \"foo.title\".");
  EXPECT_EQ(reasonFor("pdf.", "x"), "There is no setting \"pdf.\".");
  EXPECT_EQ(reasonFor("pdf.pdf.title", "x"), "There is no setting \"pdf.pdf.title\".");
  EXPECT_EQ(reasonFor("property:", "x"), "There is no setting \"property:\".");
  EXPECT_EQ(reasonFor("Title", "x"), "There is no setting \"Title\". Did you mean \"title\"?");
  EXPECT_EQ(reasonFor("papre", "A4"), "There is no setting \"papre\". Did you mean \"paper\"?");
  EXPECT_EQ(reasonFor("xlsx.stles", "a"), "There is no setting \"xlsx.stles\". Did you mean \"xlsx.styles\"?");
  EXPECT_EQ(reasonFor("", "x"), "There is no setting \"\".");
}

TEST(Settings, RefuseNamesOfPropertiesThatAreNoLineOfText) {
  EXPECT_EQ(reasonFor("property:a\nb", "x"),
            "The name of a property has 1 to 255 bytes of UTF-8 without control characters, unlike "
            "\"property:a\uFFFDb\".");
  EXPECT_FALSE(isTaken("property:\xFF", "x"));
  EXPECT_TRUE(isTaken("property:" + std::string(255, 'a'), "x"));
  EXPECT_FALSE(isTaken("property:" + std::string(256, 'a'), "x"));
}

TEST(Settings, RefuseAFormatThatMakesNoUseOfThem) {
  EXPECT_EQ(reasonFor("pdf.encoding", "utf-16"),
            "The setting \"encoding\" cannot be set for \"pdf\" alone, only for text.");
  EXPECT_EQ(reasonFor("rtf.template", "a.htm"),
            "The setting \"template\" cannot be set for \"rtf\" alone, only for html and chm.");
  EXPECT_EQ(reasonFor("text.paper", "A4"),
            "The setting \"paper\" cannot be set for \"text\" alone, only for html, rtf, pdf, xlsx and docx.");
  EXPECT_EQ(reasonFor("pdf.numbers", "1,234.5"),
            "The setting \"numbers\" cannot be set for \"pdf\" alone, only for xlsx.");
}

TEST(Settings, SayWhichValuesTheyTake) {
  EXPECT_EQ(reasonFor("text.encoding", "ebcdic"),
            "The setting \"text.encoding\" does not take \"ebcdic\". It takes utf-8, utf-16 or latin-1.");
  EXPECT_EQ(reasonFor("width", "12"),
            "The setting \"width\" does not take \"12\". It takes a whole number from 20 to 10000.");
}

TEST(Settings, QuoteAtMostTheBeginningOfALongValue) {
  EXPECT_EQ(reasonFor("tagged", std::string(100, 'a') + "\n"),
            "The setting \"tagged\" does not take \"" + std::string(60, 'a') + "...\". It takes yes or no.");
}

TEST(Settings, TurnLineBreaksIntoBlanks) {
  EXPECT_EQ(taken("title", "a\r\nb\nc\rd\te"), "a b c d e");
  EXPECT_EQ(taken("author", "a\x01z"), "a\uFFFDz");
  EXPECT_EQ(taken("property:x", "a\nb"), "a b");
}

TEST(Settings, KeepTheTabsOfASeparator) {
  EXPECT_EQ(taken("separator", "\t| "), "\t| ");
  EXPECT_FALSE(isTaken("separator", ";\n"));
}

TEST(Settings, KeepThePathsOfFilesAsTheyAre) {
  EXPECT_EQ(taken("header-image", "a\n\xFF"), "a\n\xFF");
  EXPECT_EQ(taken("template", ""), "");
  EXPECT_FALSE(isTaken("font-file", ""));
}

TEST(Settings, KnowWhichOfThemArePaths) {
  EXPECT_TRUE(Settings::isPath("header-image"));
  EXPECT_TRUE(Settings::isPath("pdf.font-file"));
  EXPECT_TRUE(Settings::isPath("html.template"));
  EXPECT_FALSE(Settings::isPath("title"));
  EXPECT_FALSE(Settings::isPath("path"));
}

TEST(Settings, TakeFlagsInManyWords) {
  for (const std::string_view yes : {"yes", "Yes", "true", "1"}) {
    EXPECT_EQ(taken("landscape", yes), "yes");
  }
  for (const std::string_view no : {"no", "FALSE", "0"}) {
    EXPECT_EQ(taken("tagged", no), "no");
  }
  EXPECT_FALSE(isTaken("landscape", ""));
  EXPECT_FALSE(isTaken("landscape", "on"));
}

TEST(Settings, TakeLanguageTags) {
  for (const std::string_view tag : {"en", "de-AT", "zh-Hans-CN", "sl-rozaj-biske-1994", "x-klingon"}) {
    EXPECT_EQ(taken("language", tag), tag);
  }
  for (const std::string_view tag : {"", "en_US", "-en", "en-", "en--us", "1en", "abcdefghi", "en us", "d\u00E9"}) {
    EXPECT_FALSE(isTaken("language", tag)) << tag;
  }
}

TEST(Settings, TakeNumbersInTheirRange) {
  EXPECT_EQ(FormatSettings(Made().set("width", "0120").settings, "text").number("width"), 120);
  EXPECT_TRUE(isTaken("width", "20"));
  EXPECT_TRUE(isTaken("width", "10000"));
  for (const std::string_view width : {"", "19", "10001", "80 ", "+80", "80.0", "99999999999"}) {
    EXPECT_FALSE(isTaken("width", width)) << width;
  }
}

TEST(Settings, TakeTheirWordsInAnyCase) {
  EXPECT_EQ(taken("encoding", "Latin-1"), "latin-1");
  EXPECT_EQ(taken("widths", "EQUAL"), "equal");
  EXPECT_EQ(taken("standard", "A-2u"), "a-2u");
  EXPECT_EQ(taken("paper", "LETTER"), "Letter");
  EXPECT_EQ(taken("paper", "100X150.5"), "100x150.5");
}

TEST(Settings, TakeNumbersAndDatesOfPeople) {
  EXPECT_EQ(taken("numbers", "1 234,5"), "1 234,5");
  EXPECT_FALSE(isTaken("numbers", "1'234.5"));
  EXPECT_EQ(taken("dates", "dd.mm.yyyy"), "dd.mm.yyyy");
  EXPECT_FALSE(isTaken("dates", "dd.mm.yy"));
}

std::int64_t clockOf(std::string_view value) {
  const Made made = Made().set("clock", value);
  return FormatSettings(made.settings, "pdf").clock();
}

TEST(Settings, TakeTheClockAsSecondsOrAsATime) {
  EXPECT_EQ(clockOf("0"), 0);
  EXPECT_EQ(clockOf("-1"), -1);
  EXPECT_EQ(clockOf("2001-09-09 01:46:40"), 1'000'000'000);
  EXPECT_EQ(clockOf("2001-09-09T01:46:40Z"), 1'000'000'000);
  EXPECT_EQ(clockOf("9999-12-31 23:59:59"), 253'402'300'799);
}

TEST(Settings, RefuseAClockThatIsNoTime) {
  for (const std::string_view value : {"", "now", "2001-02-29 00:00:00", "2001-01-01", "2001-01-01 24:00:00",
                                       "253402300800", "0000-12-31 23:59:59", "1.5", "99999999999999999999"}) {
    EXPECT_FALSE(isTaken("clock", value)) << value;
  }
}

std::int64_t tickingClock() {
  static std::int64_t seconds = 1000;
  return ++seconds;
}

TEST(Settings, TakeTheLibrarysClockOnceWhereNoneIsSet) {
  SetClockHandler(&tickingClock);
  const Settings settings;
  const FormatSettings forPdf(settings, "pdf");
  const std::int64_t first = forPdf.clock();
  EXPECT_EQ(first, 1001);
  EXPECT_EQ(forPdf.clock(), first);
  SetClockHandler(nullptr);
}

}  // namespace
}  // namespace scrivalen::document
