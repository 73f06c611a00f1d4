#include "formats/help/document/project.h"

#include <gtest/gtest.h>

namespace scrivalen::help {
namespace {

struct Made {
  explicit Made(std::string_view title, const char* language = "en") {
    document::OutputWarnings output(warnings, 0);
    const WindowsLanguage& known = languageOf(language);
    bytes =
        projectFile({title, known, {"topic1.htm", "topic2.htm"}, {"picture1.png"}}, CodePage(known.codePage), output);
  }

  document::Warnings warnings;
  std::string bytes;
};

}  // namespace

TEST(HelpProjectFile, NamesItsFilesAndItsLanguage) {
  const Made made("Größe", "de-AT");
  EXPECT_EQ(made.bytes,
            "[OPTIONS]\n"
            "Compatibility=1.0\n"
            "Compiled file=report.chm\n"
            "Contents file=report.hhc\n"
            "Default topic=topic1.htm\n"
            "Display compile progress=No\n"
            "Full-text search=Yes\n"
            "Language=0xC07 German (Austria)\n"
            "Title=Gr\xF6\xDF"
            "e\n"
            "[FILES]\n"
            "topic1.htm\n"
            "topic2.htm\n"
            "picture1.png\n");
  EXPECT_TRUE(made.warnings.all().empty());
}

TEST(HelpProjectFile, WarnsOfLettersOfTheTitleThatItCannotHold) {
  const Made made("Größe", "ru");
  EXPECT_NE(made.bytes.find("\nTitle=Gr??e\n"), std::string::npos) << made.bytes;
  ASSERT_EQ(made.warnings.all().size(), 1u);
  EXPECT_EQ(made.warnings.all()[0].count, 2u);
  EXPECT_EQ(made.warnings.all()[0].code, document::WarningCode::CharactersReplaced);
}

TEST(HelpContentsFile, NestsItsEntriesByLevel) {
  EXPECT_EQ(contentsFile({{1, "A", "topic1.htm"}, {2, "B", "topic2.htm"}, {1, "C", "topic3.htm"}}, CodePage(1252)),
            "<!DOCTYPE HTML PUBLIC \"-//IETF//DTD HTML//EN\">\n"
            "<HTML>\n"
            "<HEAD>\n"
            "<!-- Sitemap 1.0 -->\n"
            "</HEAD>\n"
            "<BODY>\n"
            "<OBJECT type=\"text/site properties\">\n"
            "<param name=\"ImageType\" value=\"Folder\">\n"
            "</OBJECT>\n"
            "<UL>\n"
            "<LI><OBJECT type=\"text/sitemap\">\n"
            "<param name=\"Name\" value=\"A\">\n"
            "<param name=\"Local\" value=\"topic1.htm\">\n"
            "</OBJECT>\n"
            "<UL>\n"
            "<LI><OBJECT type=\"text/sitemap\">\n"
            "<param name=\"Name\" value=\"B\">\n"
            "<param name=\"Local\" value=\"topic2.htm\">\n"
            "</OBJECT>\n"
            "</UL>\n"
            "<LI><OBJECT type=\"text/sitemap\">\n"
            "<param name=\"Name\" value=\"C\">\n"
            "<param name=\"Local\" value=\"topic3.htm\">\n"
            "</OBJECT>\n"
            "</UL>\n"
            "</BODY>\n"
            "</HTML>\n");
}

TEST(HelpContentsFile, HasAListForEachLevelThatIsThereAndClosesThemAll) {
  std::string lists;
  for (const char c :
       contentsFile({{2, "<U", "a"}, {3, "b", "b"}, {5, "c", "c"}, {1, "d", "d"}, {2, "e", "e"}}, CodePage(1252))) {
    lists += c;
  }
  std::string shape;
  for (std::size_t at = 0; at < lists.size(); ++at) {
    const std::string_view rest = std::string_view(lists).substr(at);
    shape += rest.starts_with("<UL>") ? "(" : rest.starts_with("</UL>") ? ")" : rest.starts_with("<LI>") ? "." : "";
  }
  EXPECT_EQ(shape, "(.(.(.)).(.))");
}

TEST(HelpContentsFile, EscapesNamesAndRefersToLettersThatTheCodePageLacks) {
  const std::string file = contentsFile({{1, "</OBJECT> \"a\" & Größe 日", "topic1.htm"}}, CodePage(1252));
  EXPECT_NE(file.find("value=\"&lt;/OBJECT&gt; &quot;a&quot; &amp; Gr\xF6\xDF"
                      "e &#26085;\">\n"),
            std::string::npos)
      << file;
}

TEST(HelpContentsFile, MayBeEmpty) {
  EXPECT_TRUE(contentsFile({}, CodePage(1252)).ends_with("</OBJECT>\n</BODY>\n</HTML>\n"));
}

}  // namespace scrivalen::help
