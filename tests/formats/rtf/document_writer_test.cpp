#include "formats/rtf/document/document_writer.h"

#include "document/pictures/picture.h"
#include "made_rtf.h"
#include "support/documents/pictures.h"

#include <gtest/gtest.h>

using namespace scrivalen::document;
using namespace scrivalen::test;

namespace {

constexpr std::string_view kNormal = "\\pard\\plain\\s0\\widctlpar\\sl264\\slmult1\\sa120\\fs22";
constexpr std::string_view kList = "\\pard\\plain\\s10\\widctlpar\\sl264\\slmult1\\sa120\\fs22";

// The text after a first paragraph, which begins the section, in paragraphs without the words of the usual styles.
std::string bodyOf(const Content& content, const SettingValues& settings = {}) {
  std::string body = rtfBodyOf(
      [&](Document& document) {
        document.paragraph("first");
        content(document);
      },
      settings);
  body = body.substr(body.find('\n') + 1);
  return replaced(replaced(std::move(body), kNormal, "NORMAL"), kList, "LIST");
}

void putItem(Document& document, std::string_view text, Task task = Task::None) {
  document.beginItem(task);
  document.text(text);
  document.end();
}

std::string paragraphWith(const Content& content) {
  return bodyOf([&](Document& document) {
    document.beginParagraph(Align::Auto);
    content(document);
    document.end();
  });
}

}  // namespace

TEST(RtfDocument, IsCompleteWithoutContent) {
  const std::string rtf = rtfOf([](Document&) {});
  EXPECT_EQ(rtf.substr(0, 47), "{\\rtf1\\ansi\\ansicpg1252\\uc1\\deff1\\deflang1033\n{");
  EXPECT_TRUE(rtf.ends_with("\\sb0 \\par\n}\n")) << rtf.substr(rtf.size() - 100);
  EXPECT_EQ(std::count(rtf.begin(), rtf.end(), '{'), std::count(rtf.begin(), rtf.end(), '}'));
}

TEST(RtfDocument, WritesAnyCharacterInAscii) {
  EXPECT_EQ(
      bodyOf([](Document& document) { document.paragraph("{a} \\ \xC3\xA9 \xE2\x82\xAC \xCE\xA9 \xF0\x9F\x98\x80"); }),
      "NORMAL \\{a\\} \\\\ \\'E9 \\'80 \\u937? \\u-10179?\\u-8704?\\par\n");
}

TEST(RtfDocument, WritesTextsOfEveryLength) {
  for (std::size_t length = 0; length < 40; ++length) {
    const std::string text = std::string(length, 'x') + '{' + std::string(length, 'y');
    EXPECT_EQ(bodyOf([&](Document& document) { document.paragraph(text); }),
              "NORMAL " + std::string(length, 'x') + "\\{" + std::string(length, 'y') + "\\par\n");
  }
}

TEST(RtfDocument, PutsAnEmptyGroupBetweenBlanks) {
  for (std::size_t length = 0; length < 20; ++length) {
    const std::string word(length, 'x');
    EXPECT_EQ(bodyOf([&](Document& document) { document.paragraph(word + "   y z  !"); }),
              "NORMAL " + word + " {} {} y z {} !\\par\n");
  }
}

TEST(RtfDocument, PutsAnEmptyGroupBetweenAllBlanksOfALongText) {
  const std::string text = "x" + std::string(20000, ' ') + "y";
  std::string expected = "NORMAL x ";
  for (int i = 1; i < 20000; ++i) {
    expected += "{} ";
  }
  EXPECT_EQ(bodyOf([&](Document& document) { document.paragraph(text); }), expected + "y\\par\n");
}

TEST(RtfDocument, WritesLongTextsInPieces) {
  std::string text;
  std::string expected;
  for (int i = 0; i < 30000; ++i) {
    text += "\xCE\xA9x";
    expected += "\\u937?x";
  }
  EXPECT_EQ(bodyOf([&](Document& document) { document.paragraph(text); }), "NORMAL " + expected + "\\par\n");
}

TEST(RtfDocument, AlignsParagraphs) {
  EXPECT_EQ(bodyOf([](Document& document) {
              for (const Align align : {Align::Left, Align::Center, Align::Right, Align::Justify}) {
                document.beginParagraph(align);
                document.end();
              }
            }),
            "NORMAL \\par\nNORMAL\\qc \\par\nNORMAL\\qr \\par\nNORMAL\\qj \\par\n");
}

TEST(RtfDocument, KeepsHeadingsWithWhatFollowsAndMarksTheirPlace) {
  EXPECT_EQ(bodyOf([](Document& document) { document.heading(2, "Prices per year"); }),
            "\\pard\\plain\\s2\\widctlpar\\keepn\\keep\\sb300\\sa100\\outlinelevel1\\b\\fs30 "
            "{\\*\\bkmkstart prices_per_year}{\\*\\bkmkend prices_per_year}Prices per year\\par\n");
}

TEST(RtfDocument, BreaksLines) {
  EXPECT_EQ(bodyOf([](Document& document) { document.paragraph("a\nb"); }), "NORMAL a\\line b\\par\n");
}

TEST(RtfDocument, FormatsSpans) {
  const auto span = [](Span kind) {
    return paragraphWith([&](Document& document) {
      document.beginSpan(kind);
      document.text("x");
      document.end();
    });
  };
  EXPECT_EQ(span(Span::Strong), "NORMAL {\\b x}\\par\n");
  EXPECT_EQ(span(Span::Emphasis), "NORMAL {\\i x}\\par\n");
  EXPECT_EQ(span(Span::Code), "NORMAL {\\noproof\\f2 x}\\par\n");
  EXPECT_EQ(span(Span::Deleted), "NORMAL {\\strike x}\\par\n");
  EXPECT_EQ(span(Span::Underlined), "NORMAL {\\ul x}\\par\n");
  EXPECT_EQ(span(Span::Superscript), "NORMAL {\\super x}\\par\n");
  EXPECT_EQ(span(Span::Subscript), "NORMAL {\\sub x}\\par\n");
}

TEST(RtfDocument, FormatsSizesAndLanguages) {
  EXPECT_EQ(paragraphWith([](Document& document) {
              document.beginSized(10.5);
              document.text("x");
              document.end();
              for (const char* tag : {"de-AT", "de-1996", "tlh"}) {
                document.beginLanguage(tag);
                document.text("x");
                document.end();
              }
            }),
            "NORMAL {\\fs21 x}{\\lang3079 x}{\\lang1031 x}{\\lang1024 x}\\par\n");
}

TEST(RtfDocument, LinksToAddressesAndPlaces) {
  EXPECT_EQ(paragraphWith([](Document& document) {
              document.beginLink("https://example.org/\"{a}\\b", "A \"title\"");
              document.text("x");
              document.end();
              document.beginLink("#there", {});
              document.text("y");
              document.end();
              document.anchor("there");
            }),
            "NORMAL {\\field{\\*\\fldinst{HYPERLINK \"https://example.org/%22\\{a\\}\\\\\\\\b\" \\\\o \"A 'title'\" "
            "\\\\t \"_self\"}}"
            "{\\fldrslt{\\ul\\cf1 x}}}{\\field{\\*\\fldinst{HYPERLINK \\\\l \"there\"}}{\\fldrslt{\\ul\\cf1 y}}}"
            "{\\*\\bkmkstart there}{\\*\\bkmkend there}\\par\n");
}

TEST(RtfDocument, CutsTheDescriptionOfALinkThatWordRefuses) {
  std::vector<Warning> warnings;
  const std::string rtf = rtfOf(
      [](Document& document) {
        document.beginParagraph(Align::Auto);
        document.beginLink("https://example.org/", std::string(261, 'd'));
        document.text("x");
        document.end();
        document.end();
      },
      {}, &warnings);
  EXPECT_NE(rtf.find("\\\\o \"" + std::string(260, 'd') + "\""), std::string::npos);
  ASSERT_EQ(warnings.size(), 1u);
  EXPECT_EQ(warnings[0].message, "descriptions of links cut at 260 characters");
}

TEST(RtfDocument, HasNoAddressThatMayRunAProgram) {
  for (const char* address : {"javascript:alert(1)", " JavaScript:x", "ms-msdt:/id", "macro:x", "data:text/html,x"}) {
    std::vector<Warning> warnings;
    const std::string rtf = rtfOf(
        [&](Document& document) {
          document.beginParagraph(Align::Auto);
          document.beginLink(address, "t");
          document.text("x");
          document.end();
          document.end();
        },
        {}, &warnings);
    EXPECT_EQ(rtf.find("HYPERLINK"), std::string::npos) << address;
    EXPECT_NE(rtf.find(" {{{x}}}\\par\n"), std::string::npos) << address;
    ASSERT_EQ(warnings.size(), 1U) << address;
    EXPECT_EQ(warnings[0].message, "the address of a link that may run a program");
  }
}

TEST(RtfDocument, ShortensNamesOfPlacesTheSameWayEverywhere) {
  const std::string id = "a place whose name is longer than Word takes";
  const std::string name = "a_place_whose_name_is__";
  const std::string body = paragraphWith([&](Document& document) {
    document.anchor(id);
    document.beginLink("#" + id, {});
    document.text("x");
    document.end();
  });
  const std::size_t begin = body.find("bkmkstart ") + 10;
  const std::string written = body.substr(begin, body.find('}', begin) - begin);
  EXPECT_EQ(written.size(), 39u);
  EXPECT_EQ(written.substr(0, name.size()), name);
  EXPECT_NE(body.find("HYPERLINK \\\\l \"" + written + "\""), std::string::npos) << body;
}

TEST(RtfDocument, HoldsAPlaceBetweenBlocksForTheNextText) {
  EXPECT_EQ(bodyOf([](Document& document) {
              document.anchor("here");
              document.paragraph("x");
            }),
            "NORMAL {\\*\\bkmkstart here}{\\*\\bkmkend here}x\\par\n");
}

TEST(RtfDocument, KeepsAPlaceAtItsEnd) {
  EXPECT_EQ(bodyOf([](Document& document) { document.anchor("here"); }),
            "NORMAL {\\*\\bkmkstart here}{\\*\\bkmkend here}\\par\n");
}

TEST(RtfDocument, IndentsQuotesWithABorder) {
  EXPECT_EQ(bodyOf([](Document& document) {
              document.beginQuote();
              document.paragraph("x");
              document.end();
            }),
            "\\pard\\plain\\s8\\widctlpar\\brdrl\\brdrs\\brdrw40\\brsp180\\brdrcf2\\sl264\\slmult1\\sa120\\fs22\\li360 "
            "x\\par\n");
}

TEST(RtfDocument, KeepsTheLinesOfCode) {
  const std::string body = bodyOf([](Document& document) {
    document.beginCode("cpp");
    document.text("int main() {\n");
    document.text("\n\treturn 0;\n}\n");
    document.end();
  });
  EXPECT_EQ(body.substr(body.find("\\noproof")),
            "\\noproof\\f2\\fs18 int main() \\{\\line \\line \\tab return 0;\\line \\}\\par\n");
}

TEST(RtfDocument, WritesARuleAsABorder) {
  EXPECT_EQ(bodyOf([](Document& document) { document.rule(); }), "NORMAL\\fs8\\brdrb\\brdrs\\brdrw10\\brdrcf2 \\par\n");
}

TEST(RtfDocument, BreaksPagesBeforeTheNextParagraph) {
  EXPECT_EQ(bodyOf([](Document& document) {
              document.pageBreak();
              document.paragraph("x");
              document.paragraph("y");
            }),
            "NORMAL\\sb0\\pagebb x\\par\nNORMAL y\\par\n");
}

TEST(RtfDocument, BreaksNoPageAtTheTopOfOne) {
  const std::string rtf = rtfOf([](Document& document) {
    document.pageBreak();
    document.paragraph("x");
    document.beginSection({}, {});
    document.pageBreak();
    document.paragraph("y");
  });
  EXPECT_EQ(rtf.find("\\pagebb"), std::string::npos);
}

TEST(RtfDocument, WritesAnEmptyPageBetweenTwoPageBreaks) {
  EXPECT_EQ(bodyOf([](Document& document) {
              document.pageBreak();
              document.pageBreak();
              document.paragraph("x");
            }),
            "NORMAL\\sb0\\pagebb \\par\nNORMAL\\sb0\\pagebb x\\par\n");
}

TEST(RtfDocument, WritesBulletsAsAListOfTheReader) {
  EXPECT_EQ(bodyOf([](Document& document) {
              document.beginList(false, 0, true);
              putItem(document, "a");
              document.beginItem(Task::None);
              document.text("b");
              document.beginList(false, 0, true);
              putItem(document, "c");
              document.end();
              document.end();
              document.end();
            }),
            "LIST\\contextualspace\\ls1\\ilvl0\\fi-440\\tx440\\li440 {\\listtext \\'95\\tab}a\\par\n"
            "LIST\\contextualspace\\ls1\\ilvl0\\fi-440\\tx440\\li440 {\\listtext \\'95\\tab}b\\par\n"
            "LIST\\contextualspace\\ls1\\ilvl1\\fi-440\\tx880\\li880 {\\listtext \\u9702?\\tab}c\\par\n");
}

TEST(RtfDocument, StartsEachNumberedListAnew) {
  const auto list = [](Document& document) {
    document.beginList(true, 1, false);
    document.beginItem(Task::None);
    document.paragraph("a");
    document.paragraph("more");
    document.end();
    document.end();
  };
  EXPECT_EQ(bodyOf([&](Document& document) {
              list(document);
              list(document);
            }),
            "LIST\\ls2\\ilvl0\\fi-440\\tx440\\li440 {\\listtext 1.\\tab}a\\par\nLIST\\li440 more\\par\n"
            "LIST\\ls3\\ilvl0\\fi-440\\tx440\\li440 {\\listtext 1.\\tab}a\\par\nLIST\\li440 more\\par\n");
}

TEST(RtfDocument, NumbersAListThatStartsElsewhereByText) {
  EXPECT_EQ(bodyOf([](Document& document) {
              document.beginList(true, 9, true);
              putItem(document, "a");
              putItem(document, "b");
              document.end();
            }),
            "LIST\\contextualspace\\fi-440\\tx440\\li440 9.\\tab a\\par\n"
            "LIST\\contextualspace\\fi-440\\tx440\\li440 10.\\tab b\\par\n");
}

TEST(RtfDocument, NumbersListsByTextWhenItsTableHasNoMore) {
  const std::string body = bodyOf([](Document& document) {
    for (int i = 0; i < 61; ++i) {
      document.beginList(true, 1, true);
      putItem(document, "a");
      document.end();
    }
  });
  EXPECT_NE(body.find("\\ls61\\"), std::string::npos);
  EXPECT_EQ(body.find("\\ls62\\"), std::string::npos);
  EXPECT_TRUE(body.ends_with("LIST\\contextualspace\\fi-440\\tx440\\li440 1.\\tab a\\par\n"));
}

TEST(RtfDocument, DeclaresEveryListThatItUses) {
  const std::string rtf = rtfOf([](Document&) {});
  for (int list = 1; list <= 61; ++list) {
    const std::string number = std::to_string(list);
    EXPECT_NE(rtf.find("\\listid" + number + "}\n"), std::string::npos) << list;
    EXPECT_NE(rtf.find("{\\listoverride\\listid" + number + "\\listoverridecount0\\ls" + number + "}"),
              std::string::npos)
        << list;
  }
}

TEST(RtfDocument, MarksTasksWithBoxes) {
  EXPECT_EQ(bodyOf([](Document& document) {
              document.beginList(false, 0, true);
              putItem(document, "a", Task::Open);
              putItem(document, "b", Task::Done);
              document.end();
            }),
            "LIST\\contextualspace\\fi-440\\tx440\\li440 \\u9744?\\tab a\\par\n"
            "LIST\\contextualspace\\fi-440\\tx440\\li440 \\u9745?\\tab b\\par\n");
}

TEST(RtfDocument, WritesAnItemWithoutText) {
  EXPECT_EQ(bodyOf([](Document& document) {
              document.beginList(false, 0, true);
              document.beginItem(Task::None);
              document.end();
              document.end();
            }),
            "LIST\\contextualspace\\ls1\\ilvl0\\fi-440\\tx440\\li440 {\\listtext \\'95\\tab}\\par\n");
}

TEST(RtfDocument, ListsContentsWithLeadersAndPageNumbers) {
  const std::string body = bodyOf([](Document& document) {
    document.beginContents();
    document.contentsItem(2, "prices", "Prices");
    document.contentsItem(1, "", "B");
    document.end();
    document.heading(2, "Prices");
  });
  EXPECT_EQ(body.substr(0, body.find('\n', body.find('\n') + 1) + 1),
            "\\pard\\plain\\s11\\widctlpar\\sa40\\fs22\\li240\\tqr\\tldot\\tx9638 "
            "{\\field{\\*\\fldinst{HYPERLINK \\\\l \"prices\"}}{\\fldrslt{Prices\\tab "
            "{\\field\\flddirty{\\*\\fldinst{PAGEREF prices \\\\h}}{\\fldrslt }}}}}\\par\n"
            "\\pard\\plain\\s11\\widctlpar\\sa40\\fs22\\li0\\tqr\\tldot\\tx9638\\sa200 B\\par\n");
}

TEST(RtfDocument, EmbedsPicturesAtMostAsWideAsTheText) {
  std::string reason;
  const auto picture = Picture::read(greyPng(2000, 1000), reason);
  ASSERT_NE(picture, nullptr) << reason;
  const std::string body = bodyOf([&](Document& document) { document.image(picture, "a {box}", 0, reason); });
  EXPECT_EQ(body.substr(0, body.find("89504E47") + 8),
            "NORMAL {\\pict{\\*\\picprop{\\sp{\\sn wzDescription}{\\sv a \\{box\\}}}}"
            "\\pngblip\\picw2000\\pich1000\\picwgoal9638\\pichgoal4819\n89504E47");
}

TEST(RtfDocument, TurnsAJpegAsItIsShown) {
  const std::string kFlipV = "{\\sp{\\sn fFlipV}{\\sv 1}}";
  const auto rotation = [](int degrees) {
    return "{\\sp{\\sn rotation}{\\sv " + std::to_string(degrees * 65536) + "}}";
  };
  const std::string kTurns[] = {
      "",           "{\\sp{\\sn fFlipH}{\\sv 1}}", rotation(180), kFlipV, rotation(90) + kFlipV,
      rotation(90), rotation(270) + kFlipV,        rotation(270)};
  for (int orientation = 1; orientation <= 8; ++orientation) {
    std::string reason;
    const auto picture = Picture::read(turnedJpeg(100, 50, orientation), reason);
    ASSERT_NE(picture, nullptr) << reason;
    std::vector<Warning> warnings;
    const std::string rtf =
        rtfOf([&](Document& document) { document.image(picture, "a box", 0, reason); }, {}, &warnings);
    const std::string properties =
        "{\\*\\picprop" + kTurns[orientation - 1] + "{\\sp{\\sn wzDescription}{\\sv a box}}}";
    EXPECT_NE(rtf.find(properties + "\\jpegblip\\picw100\\pich50\\picwgoal1500\\pichgoal750\n"), std::string::npos)
        << rtf;
    const bool isTurnedAndMirrored = orientation == 4 || orientation == 5 || orientation == 7;
    ASSERT_EQ(warnings.size(), isTurnedAndMirrored ? 1U : 0U) << orientation;
    if (isTurnedAndMirrored) {
      EXPECT_EQ(warnings[0].message, "the turn of pictures that are mirrored, in some programs");
    }
  }
}

// The text is 9,638 twips wide.
TEST(RtfDocument, MakesATurnedJpegFitAsItIsShown) {
  std::string reason;
  const auto picture = Picture::read(turnedJpeg(500, 1000, 6), reason);
  const std::string rtf = rtfOf([&](Document& document) { document.image(picture, {}, 0, reason); });
  EXPECT_NE(rtf.find("\\picw500\\pich1000\\picwgoal4819\\pichgoal9638\n"), std::string::npos) << rtf;
}

TEST(RtfDocument, WritesTheAlternativeTextOfAMissingPicture) {
  EXPECT_EQ(bodyOf([](Document& document) { document.image(nullptr, "a map", 0, "there is no map"); }),
            "NORMAL a map\\par\n");
}

TEST(RtfDocument, PassesOnItsOwnMarkupAlone) {
  EXPECT_EQ(paragraphWith([](Document& document) {
              document.raw("rtf", "{\\v x}");
              document.raw("html", "<b>");
            }),
            "NORMAL {\\v x}\\par\n");
}

TEST(RtfDocument, BeginsEachSectionOnANewPage) {
  EXPECT_EQ(bodyOf([](Document& document) {
              document.beginSection("One", "one");
              document.paragraph("x");
              document.end();
              document.paragraph("y");
            }),
            "\\pard\\plain\\sl-20\\slmult0\\fs2\\sect\\sectd\\sbkpage\\headery567\\footery567\n"
            "NORMAL\\sb0 {\\*\\bkmkstart one}{\\*\\bkmkend one}x\\par\n"
            "\\pard\\plain\\sl-20\\slmult0\\fs2\\sect\\sectd\\sbkpage\\headery567\\footery567\n"
            "NORMAL\\sb0 y\\par\n");
}

TEST(RtfDocument, BeginsItsFirstSectionOnTheFirstPage) {
  const std::string rtf = rtfOf([](Document& document) {
    document.beginSection("One", {});
    document.paragraph("x");
  });
  EXPECT_EQ(rtf.find("\\sect\\"), std::string::npos);
}
