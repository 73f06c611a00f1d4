#include "made_rtf.h"

#include "formats/rtf/document/prolog/color_table.h"
#include "support/documents/pictures.h"
#include "support/files.h"
#include "system/files/files.h"

#include <gtest/gtest.h>

using namespace scrivalen;
using namespace scrivalen::document;
using namespace scrivalen::test;

namespace {

std::string prologOf(const SettingValues& settings) {
  return rtfOf([](Document&) {}, settings);
}

bool has(const std::string& rtf, std::string_view part) { return rtf.find(part) != std::string::npos; }

}  // namespace

TEST(RtfProlog, StatesProperties) {
  EXPECT_EQ(linesWith("{\\info", prologOf({{"title", "A {title}"},
                                           {"author", "\xC3\x85sa"},
                                           {"subject", "s"},
                                           {"keywords", "k, l"},
                                           {"property:Customer", "C"}})),
            "{\\info{\\title A \\{title\\}}{\\subject s}{\\author \\'C5sa}{\\keywords k, l}"
            "{\\creatim\\yr2026\\mo1\\dy31\\hr23\\min59}}\n");
  EXPECT_EQ(linesWith("{\\*\\userprops", prologOf({{"property:Customer", "C"}})),
            "{\\*\\userprops{\\propname Customer}\\proptype30{\\staticval C}}\n");
}

TEST(RtfProlog, StatesThePaper) {
  EXPECT_EQ(linesWith("\\paperw", prologOf({})),
            "\\paperw11906\\paperh16838\\margl1134\\margr1134\\margt1134\\margb1134\\widowctrl\n");
  EXPECT_EQ(linesWith("\\paperw", prologOf({{"landscape", "yes"}, {"margins", "10mm 20mm 30mm 40mm"}})),
            "\\paperw16838\\paperh11906\\margl2268\\margr1134\\margt567\\margb1701\\landscape\\widowctrl\n");
}

// Word's limit is 22 inches, 558.8 millimetres.
TEST(RtfProlog, HasNoPaperThatWordRefuses) {
  std::vector<Warning> warnings;
  const auto paperOf = [&warnings](std::string_view paper) {
    warnings.clear();
    return linesWith("\\paperw",
                     rtfOf([](Document& document) { document.paragraph("x"); }, {{"paper", paper}}, &warnings));
  };
  EXPECT_EQ(paperOf("558.8x558.8"),
            "\\paperw31680\\paperh31680\\margl1134\\margr1134\\margt1134\\margb1134\\widowctrl\n");
  EXPECT_TRUE(warnings.empty());
  EXPECT_EQ(paperOf("558.9x500"),
            "\\paperw31680\\paperh28346\\margl1134\\margr1134\\margt1134\\margb1134\\landscape\\widowctrl\n");
  ASSERT_EQ(warnings.size(), 1u);
  EXPECT_EQ(warnings[0].message, "paper longer than 22 inches, Word's limit, is cut to that");
}

TEST(RtfProlog, StatesTheLanguage) {
  EXPECT_TRUE(has(prologOf({{"language", "de"}}), "\\deflang1031\n"));
  EXPECT_TRUE(has(prologOf({{"language", "pt-BR"}}), "\\deflang1046\n"));
  EXPECT_TRUE(has(prologOf({{"language", "ar-EG"}}), "\\deflang3073\\adeflang3073\n"));
  EXPECT_TRUE(has(prologOf({{"language", "sr"}}), "\\deflang10266\n"));
  EXPECT_TRUE(has(prologOf({{"language", "tlh"}}), "\\deflang1033\n"));
}

TEST(RtfProlog, TakesAFontOrAKindOfFont) {
  EXPECT_TRUE(has(prologOf({{"font", "serif"}}), "\\deff0\\"));
  EXPECT_TRUE(has(prologOf({{"font", "Sans"}}), "\\deff1\\"));
  EXPECT_TRUE(has(prologOf({{"font", "mono"}}), "\\deff2\\"));
  const std::string own = prologOf({{"font", "Gill {Sans};"}});
  EXPECT_TRUE(has(own, "\\deff3\\"));
  EXPECT_TRUE(has(own, "{\\f3\\fnil\\fcharset0\\fprq2 Gill \\{Sans\\} ;}}\n"));
}

TEST(RtfProlog, CutsTheNameOfAFontThatWordRefuses) {
  std::vector<Warning> warnings;
  const std::string rtf = rtfOf([](Document&) {}, {{"font", "The name of a font, 31 letters, and more"}}, &warnings);
  EXPECT_TRUE(has(rtf, "{\\f3\\fnil\\fcharset0\\fprq2 The name of a font, 31 letters,;}}\n"));
  ASSERT_EQ(warnings.size(), 1u);
  EXPECT_EQ(warnings[0].code, WarningCode::TextCut);
  EXPECT_EQ(warnings[0].message, "the name of a font cut at 31 characters");
}

TEST(RtfProlog, HasStylesWithOutlineLevels) {
  const std::string rtf = prologOf({});
  EXPECT_EQ(linesWith(" heading 1;", rtf),
            "{\\s1\\widctlpar\\keepn\\keep\\sb360\\sa120\\outlinelevel0\\b\\fs36\\sbasedon0\\snext0 heading 1;}\n");
  for (const char* style : {" Normal;}", " heading 6;}", " Title;}", " Quote;}", " Code;}", " List Paragraph;}"}) {
    EXPECT_TRUE(has(rtf, style)) << style;
  }
}

TEST(RtfProlog, HasHeadersWithFieldsAndTabStops) {
  const std::string rtf = prologOf({{"title", "T"}, {"header", "{title}|{date}|x"}, {"footer", "||{page}/{pages}"}});
  EXPECT_EQ(linesWith("{\\header", rtf),
            "{\\header\\pard\\plain\\s12\\widctlpar\\fs18\\tqc\\tx4819\\tqr\\tx9638 T\\tab 2026-01-31\\tab x\\par}\n");
  EXPECT_EQ(linesWith("{\\footer", rtf),
            "{\\footer\\pard\\plain\\s13\\widctlpar\\fs18\\tqc\\tx4819\\tqr\\tx9638 \\tab \\tab "
            "{\\field{\\*\\fldinst PAGE}{\\fldrslt 1}}/{\\field{\\*\\fldinst NUMPAGES}{\\fldrslt 1}}\\par}\n");
}

TEST(RtfProlog, HasAHeaderFromRightToLeftInSuchALanguage) {
  const TemporaryFolder folder;
  writeBytes(folder / L"logo", greyPng(4, 2));
  const std::string rtf = prologOf({{"language", "he"},
                                    {"header", "\xD7\x90|b|c"},
                                    {"header-image", narrowPath(folder / L"logo")},
                                    {"footer", "d"}});
  const std::string looks = "\\widctlpar\\fs18\\rtlpar\\qr\\tqc\\tx4819\\tqr\\tx9638\\rtlch\\af1\\afs18\\ltrch ";
  const std::string left = "{\\rtlch\\af1\\afs18\\ltrch ";
  EXPECT_EQ(linesWith("{\\header", rtf),
            "{\\header\\pard\\plain\\s12" + looks + left + "c}\\tab " + left + "b}\\tab " +
                "{\\ltrch\\rtlch\\f1\\fs18 \\u1488?} {\\pict\\pngblip\\picw4\\pich2\\picwgoal60\\pichgoal30\n");
  EXPECT_EQ(linesWith("{\\footer", rtf), "{\\footer\\pard\\plain\\s13" + looks + "\\tab \\tab " + left + "d}\\par}\n");
}

TEST(RtfProlog, HasAPictureBeforeTheLeftPartOfTheHeader) {
  const TemporaryFolder folder;
  writeBytes(folder / L"logo", greyPng(4, 2));
  const std::string rtf = prologOf({{"header-image", narrowPath(folder / L"logo")}, {"header", "x||y"}});
  EXPECT_EQ(linesWith("{\\header", rtf),
            "{\\header\\pard\\plain\\s12\\widctlpar\\fs18\\tqc\\tx4819\\tqr\\tx9638 "
            "{\\pict\\pngblip\\picw4\\pich2\\picwgoal60\\pichgoal30\n");
  EXPECT_TRUE(has(rtf, "\n} x\\tab \\tab y\\par}\n"));
  EXPECT_TRUE(has(rtf, "\\sectd\\sbkpage\\headery227\\footery567\n"));
}

TEST(RtfProlog, HasAHeaderOfAPictureAlone) {
  const TemporaryFolder folder;
  writeBytes(folder / L"logo", greyJpeg(8, 8));
  const std::string rtf = prologOf({{"header-image", narrowPath(folder / L"logo")}});
  EXPECT_TRUE(has(rtf, "\\tx9638 {\\pict\\jpegblip\\picw8\\pich8\\picwgoal120\\pichgoal120\nFFD8"));
  EXPECT_TRUE(has(rtf, "\n}\\par}\n"));
}

TEST(RtfProlog, FitsThePictureIntoTheTopMargin) {
  const auto sizeOf = [](const std::string& picture) {
    const TemporaryFolder folder;
    writeBytes(folder / L"logo", picture);
    const std::string rtf = prologOf(
        {{"header-image", narrowPath(folder / L"logo")}, {"margins", "60pt 50pt 50pt 50pt"}, {"paper", "Letter"}});
    const std::size_t begin = rtf.find("\\picwgoal");
    return rtf.substr(begin, rtf.find('\n', begin) - begin);
  };
  EXPECT_EQ(sizeOf(greyPng(400, 200)), "\\picwgoal1440\\pichgoal720");
  EXPECT_EQ(sizeOf(greyPng(2048, 8)), "\\picwgoal5120\\pichgoal20");
}

TEST(RtfProlog, WarnsOfAPictureForTheHeaderThatCannotBeUsed) {
  const TemporaryFolder folder;
  const std::string path = narrowPath(folder / L"none.png");
  std::vector<Warning> warnings;
  const std::string rtf = rtfOf([](Document&) {}, {{"header-image", path}}, &warnings);
  EXPECT_FALSE(has(rtf, "\\header\\"));
  EXPECT_TRUE(has(rtf, "\\headery567\\"));
  ASSERT_EQ(warnings.size(), 1U);
  EXPECT_EQ(warnings[0].code, WarningCode::SomethingLeftOut);
  EXPECT_TRUE(warnings[0].message.starts_with("cannot use the picture '" + path + "' of the header: "))
      << warnings[0].message;
}

TEST(RtfProlog, RepeatsThePictureOnlyWhereTheHeaderNamesSections) {
  const TemporaryFolder folder;
  writeBytes(folder / L"logo", greyPng(4, 2));
  const auto picturesWith = [&](std::string_view header, std::string_view footer) {
    const std::string rtf = rtfOf(
        [](Document& document) {
          document.beginSection("One", {});
          document.end();
          document.beginSection("Two", {});
          document.end();
        },
        {{"header-image", narrowPath(folder / L"logo")}, {"header", header}, {"footer", footer}});
    return linesWith("{\\pict", rtf).size() / linesWith("{\\pict", rtf).find_first_of('\n');
  };
  EXPECT_EQ(picturesWith("x", "{section}"), 1U);
  EXPECT_EQ(picturesWith("{section}", "x"), 2U);
}

TEST(RtfProlog, NamesEachSectionInItsHeader) {
  const std::string rtf = rtfOf(
      [](Document& document) {
        document.beginSection("One", {});
        document.end();
        document.beginSection("Two", {});
        document.end();
      },
      {{"header", "{section}"}});
  EXPECT_EQ(replaced(linesWith("{\\header", rtf),
                     "{\\header\\pard\\plain\\s12\\widctlpar\\fs18\\tqc\\tx4819\\tqr\\tx9638 ", ""),
            "One\\tab \\tab \\par}\nTwo\\tab \\tab \\par}\n");
}

TEST(RtfColorTable, HasNamedColorsAndTheNearestForOthers) {
  const rtf::ColorTable colors;
  EXPECT_LE(colors.size(), 255u);
  EXPECT_NE(colors.indexOf(0xFF0000), colors.indexOf(0xEE0000 - 0x200000));
  EXPECT_EQ(colors.indexOf(0x6495ED), colors.indexOf(0x6494EE));
  EXPECT_EQ(colors.indexOf(0xFE0101), colors.indexOf(0xFF0000));
}

TEST(RtfColorTable, IsWrittenBeforeTheText) {
  const std::string rtf = rtfOf([](Document& document) {
    document.beginParagraph(Align::Auto);
    document.beginColored(0xFF0000, 0xFFFF00);
    document.text("x");
    document.end();
    document.end();
  });
  const rtf::ColorTable colors;
  EXPECT_TRUE(has(rtf, "{\\colortbl;\\red11\\green92\\blue173;"));
  const std::string back = std::to_string(colors.indexOf(0xFFFF00));
  EXPECT_TRUE(has(
      rtf, "{\\cf" + std::to_string(colors.indexOf(0xFF0000)) + "\\chshdng0\\chcbpat" + back + "\\cb" + back + " x}"));
}
