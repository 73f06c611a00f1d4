#include "formats/document_formats.h"
#include "formats/pdf/typeset/fonts/sample_fonts.h"
#include "support/documents/made_document.h"
#include "support/files.h"
#include "support/pdf/pdf_pages.h"
#include "system/files/files.h"

#include <gtest/gtest.h>

using namespace scrivalen::test;

namespace scrivalen::typeset {
namespace {

class FontDocument : public MadeDocument {
 public:
  FontDocument() : MadeDocument(*documentFormatOf("pdf")) {}

  /// Writes a font into a file and gives its path to the document.
  void addFont(std::wstring_view name, const std::string& bytes, std::string_view index = "") {
    writeBytes(folder_ / name, bytes);
    EXPECT_EQ(set("font-file", narrowPath(folder_ / name).append(index)), document::Status::Ok);
  }
  void addParagraph(std::string_view content) {
    beginParagraph(document::Align::Auto);
    text(content);
    end();
  }
  /// The names of the fonts of a paragraph's texts.
  std::vector<std::string> fontsOf(std::string_view content) {
    addParagraph(content);
    const PdfPages pages(bytes());
    EXPECT_EQ(pages.problems(), std::vector<std::string>());
    std::vector<std::string> fonts;
    for (const PdfText& text : pages.texts()) {
      if (fonts.empty() || fonts.back() != text.font) {
        fonts.push_back(text.font);
      }
    }
    return fonts;
  }
  /// What is wrong with the font, which keeps the document from being written.
  std::string problem() {
    addParagraph("x");
    EXPECT_EQ(bytes(), "");
    const std::string error(this->error());
    const std::size_t end = error.find("': ");
    return end == std::string::npos ? error : error.substr(end + 3);
  }

 private:
  TemporaryFolder folder_;
};

using Names = std::vector<std::string>;

TEST(FontSetting, ChoosesTheFamily) {
  FontDocument document;
  document.set("font", "Times New Roman");
  EXPECT_EQ(document.fontsOf("text"), Names{"LiberationSerif"});
}

TEST(FontSetting, WithAnUnknownNameIsAWarningThatListsTheKnownOnes) {
  FontDocument document;
  document.addFont(L"roman.otf", postScriptFont());
  document.set("font", "Palatino");
  EXPECT_EQ(document.fontsOf("text"), Names{"LiberationSans"});
  EXPECT_EQ(document.warnings(),
            "1 x the font 'Palatino' is not among 'Liberation Serif', 'Liberation Sans', 'Liberation Mono', 'DejaVu "
            "Sans', 'Nimbus Roman'; the setting \"font-file\" adds a font\n");
}

TEST(FontSetting, MayNameAFontOfAFile) {
  FontDocument document;
  document.addFont(L"roman.otf", postScriptFont());
  document.set("font", "Nimbus Roman");
  EXPECT_EQ(document.fontsOf("text"), Names{"NimbusRoman-Regular"});
}

TEST(FontFileSetting, AddsLettersThatTheFamilyLacks) {
  FontDocument document;
  document.addFont(L"bold.ttf", bundledFont("DejaVuSans-Bold.ttf"));
  EXPECT_EQ(document.fontsOf("text Ա"), (Names{"LiberationSans", "DejaVuSans-Bold"}));
}

TEST(FontFileSetting, ChoosesAFontOfACollectionByItsNumber) {
  FontDocument document;
  document.addFont(L"two.ttc", collectionOf({bundledFont(kSansFont), bundledFont("DejaVuSans-Bold.ttf")}), "#1");
  document.set("font", "DejaVu Sans");
  EXPECT_EQ(document.fontsOf("text"), Names{"DejaVuSans-Bold"});
}

TEST(FontFileSetting, FailsWithTheNameOfAFileThatIsNoFont) {
  FontDocument document;
  document.addFont(L"letter.ttf", "# Dear Sir or Madam,\n\nPlease");
  document.addParagraph("x");
  EXPECT_EQ(document.bytes(), "");
  const std::string error(document.error());
  EXPECT_TRUE(error.starts_with("cannot use the font file '")) << error;
  EXPECT_TRUE(error.ends_with("letter.ttf': it is no TrueType or OpenType font")) << error;
}

TEST(FontFileSetting, FailsWithoutTheFile) {
  FontDocument document;
  TemporaryFolder folder;
  document.set("font-file", narrowPath(folder / L"none.ttf"));
  EXPECT_NE(document.problem(), "");
}

TEST(FontFileSetting, FailsWithAFileThatIsCutOff) {
  FontDocument document;
  document.addFont(L"a.ttf", bundledFont(kSansFont).substr(0, 50000));
  EXPECT_EQ(document.problem(), "the file is cut off");
}

TEST(FontFileSetting, FailsWithANumberThatNoCollectionHas) {
  FontDocument document;
  document.addFont(L"a.ttf", bundledFont(kSansFont), "#4294967296");
  EXPECT_EQ(document.problem(), "it is no collection and has no font of so large a number");
  FontDocument other;
  other.addFont(L"two.ttc", collectionOf({bundledFont(kSansFont), bundledFont("DejaVuSans-Bold.ttf")}), "#4294967296");
  EXPECT_EQ(other.problem(), "the collection has the fonts 0 to 1");
}

TEST(FontFileSetting, FailsWithAnEmptyCollection) {
  FontDocument document;
  document.addFont(L"none.ttc", collectionOf({}));
  EXPECT_EQ(document.problem(), "the collection has no fonts");
}

TEST(FontFileSetting, FailsWithANumberThatTheCollectionDoesNotHave) {
  FontDocument document;
  document.addFont(L"a.ttf", bundledFont(kSansFont), "#1");
  EXPECT_EQ(document.problem(), "it is no collection and has no font 1");
}

TEST(FontFileSetting, FailsWithAFontThatMayNotBeEmbedded) {
  for (const auto& [fsType, problem] : {std::pair(0x0002u, "its licence does not allow to embed it"),
                                        std::pair(0x0100u, "its licence allows to embed it only whole"),
                                        std::pair(0x0200u, "its licence allows to embed it only as bitmaps")}) {
    FontDocument document;
    document.addFont(L"a.ttf", withEmbedding(bundledFont(kSansFont), fsType));
    EXPECT_EQ(document.problem(), problem);
  }
}

TEST(MissingGlyphs, KeepTheirText) {
  FontDocument document;
  document.addParagraph("a漢字b");
  EXPECT_EQ(PdfPages(document.bytes()).lines(), Names{"a漢字b"});
}

TEST(MissingGlyphs, AreAWarningThatNamesTheScriptAndTheSetting) {
  FontDocument document;
  document.addParagraph("漢字 漢字 ");
  document.addParagraph("漢 \U0001F9FF \u0F40");
  EXPECT_EQ(
      document.warnings(),
      "1 x characters such as U+1F9FF that no font has, drawn as empty boxes; the setting \"font-file\" adds a font\n"
      "5 x characters of the script Han that no font has, drawn as empty boxes; the setting \"font-file\" adds a "
      "font\n"
      "1 x characters of the script Tibetan that no font has, drawn as empty boxes; the setting \"font-file\" "
      "adds a font\n");
}

TEST(MissingGlyphs, AreCountedInTablesAndRunningLinesToo) {
  FontDocument document;
  document.set("footer", "漢");
  document.beginTable({document::Column()}, "");
  document.addRow({"漢字"});
  document.end();
  EXPECT_TRUE(document.warnings().starts_with("3 x characters of the script Han ")) << document.warnings();
}

}  // namespace
}  // namespace scrivalen::typeset
