#include "made_rtf.h"

#include <gtest/gtest.h>

using namespace scrivalen::document;
using namespace scrivalen::test;

namespace {

constexpr std::string_view kNormal = "\\pard\\plain\\s0\\widctlpar\\sl264\\slmult1\\sa120\\fs22";
constexpr std::string_view kShalom = "\u05E9\u05DC\u05D5\u05DD";

// The text after a first paragraph, with short names for what every run and paragraph of its kind has.
std::string bodyOf(const Content& content, const SettingValues& settings = {}) {
  std::string body = rtfBodyOf(
      [&](Document& document) {
        document.paragraph("first");
        content(document);
      },
      settings);
  body = body.substr(body.find('\n') + 1);
  body = replaced(std::move(body), kNormal, "NORMAL");
  body = replaced(std::move(body), "\\u1513?\\u1500?\\u1493?\\u1501?", "SHALOM");
  body = replaced(std::move(body), "{\\ltrch\\rtlch\\f1\\fs22 ", "{RIGHT ");
  return replaced(std::move(body), "\\rtlch\\af1\\afs22\\ltrch", "LEFT");
}

std::string shalom(std::string_view before, std::string_view after) {
  return std::string(before).append(kShalom).append(after);
}

void putRow(Document& document, const std::vector<std::string>& cells) {
  document.beginRow(false);
  for (const std::string& cell : cells) {
    document.cell(cell);
  }
  document.end();
}

}  // namespace

TEST(RtfDirection, OfAParagraphIsThatOfItsFirstLetter) {
  EXPECT_EQ(bodyOf([](Document& document) {
              document.paragraph(shalom("(1) ", " a."));
              document.paragraph(shalom("1. a ", "!"));
              document.paragraph("42");
            }),
            "NORMAL\\rtlpar\\qrLEFT {RIGHT (1) SHALOM }{LEFT a}{RIGHT .}\\par\n"
            "NORMAL {LEFT 1. a }{RIGHT SHALOM}{LEFT !}\\par\n"
            "NORMAL 42\\par\n");
}

TEST(RtfDirection, OfAParagraphWithoutLettersIsThatOfTheDocument) {
  EXPECT_EQ(bodyOf([](Document& document) { document.paragraph("42"); }, {{"language", "he"}}),
            "NORMAL\\rtlpar\\qrLEFT {RIGHT 42}\\par\n");
  EXPECT_EQ(bodyOf([](Document& document) { document.paragraph("a"); }, {{"language", "he"}}), "NORMAL a\\par\n");
}

TEST(RtfDirection, IsDecidedByALanguageBeforeTheFirstLetter) {
  EXPECT_EQ(bodyOf([](Document& document) {
              document.beginParagraph(Align::Auto);
              document.text("1 ");
              document.beginLanguage("he");
              document.text("2");
              document.end();
              document.end();
            }),
            "NORMAL\\rtlpar\\qrLEFT {RIGHT 1 }{\\lang1037 {\\ltrch\\rtlch\\f1\\fs22\\lang1037 2}}\\par\n");
}

TEST(RtfDirection, WaitsForTheFirstLetterInSpans) {
  EXPECT_EQ(bodyOf([](Document& document) {
              document.beginParagraph(Align::Auto);
              document.beginSpan(Span::Strong);
              document.beginSpan(Span::Emphasis);
              document.text(kShalom);
              document.end();
              document.end();
              document.beginSized(10);
              document.text(kShalom);
              document.end();
              document.end();
            }),
            "NORMAL\\rtlpar\\qrLEFT {\\b {\\i {\\ltrch\\rtlch\\f1\\fs22\\b\\i SHALOM}}}"
            "{\\fs20 {\\ltrch\\rtlch\\f1\\fs20 SHALOM}}\\par\n");
}

TEST(RtfDirection, IsDecidedAfterALongTextWithoutLetters) {
  const std::string digits(10000, '1');
  EXPECT_EQ(bodyOf([&](Document& document) {
              document.beginParagraph(Align::Auto);
              document.text(digits);
              document.text("2");
              document.text(kShalom);
              document.end();
            }),
            "NORMAL " + digits + "2{RIGHT SHALOM}\\par\n");
}

TEST(RtfDirection, TurnsAlignmentAndIndents) {
  EXPECT_EQ(bodyOf([](Document& document) {
              for (const Align align : {Align::Left, Align::Center, Align::Right, Align::Justify}) {
                document.beginParagraph(align);
                document.text(kShalom);
                document.end();
              }
            }),
            "NORMAL\\rtlpar\\qlLEFT {RIGHT SHALOM}\\par\nNORMAL\\rtlpar\\qcLEFT {RIGHT SHALOM}\\par\n"
            "NORMAL\\rtlpar\\qrLEFT {RIGHT SHALOM}\\par\nNORMAL\\rtlpar\\qjLEFT {RIGHT SHALOM}\\par\n");
  const std::string item = bodyOf([](Document& document) {
    document.beginList(true, 1, true);
    document.beginItem(Task::None);
    document.text(kShalom);
  });
  EXPECT_NE(item.find("\\ls2\\ilvl0\\fi-440\\tx440\\li440\\ri0\\rin0\\lin440\\rtlpar\\qrLEFT {\\listtext 1.\\tab}"),
            std::string::npos)
      << item;
}

TEST(RtfDirection, PutsTheBorderOfAQuoteOnTheRight) {
  const std::string quote = bodyOf([](Document& document) {
    document.beginQuote();
    document.paragraph(kShalom);
    document.beginList(false, 0, true);
    document.beginItem(Task::None);
    document.text(kShalom);
  });
  EXPECT_EQ(
      replaced(quote, "\\brdrl\\brdrnone\\brdrr\\brdrs\\brdrw40\\brsp180\\brdrcf2", "BORDER"),
      "\\pard\\plain\\s8\\widctlparBORDER\\sl264\\slmult1\\sa120\\fs22\\li360\\ri0\\rin0\\lin360\\rtlpar\\qrLEFT "
      "{RIGHT SHALOM}\\par\n"
      "\\pard\\plain\\s10\\widctlpar\\sl264\\slmult1\\sa120\\fs22BORDER\\contextualspace\\ls1\\ilvl0\\fi-440\\tx800"
      "\\li800\\ri0\\rin0\\lin800\\rtlpar\\qrLEFT {\\listtext \\'95\\tab}{RIGHT SHALOM}\\par\n");
}

TEST(RtfDirection, OfCodeIsFromTheLeft) {
  const std::string code = bodyOf(
      [](Document& document) {
        document.beginCode({});
        document.text(kShalom);
        document.end();
      },
      {{"language", "ar"}});
  EXPECT_EQ(code.find("\\rtlpar"), std::string::npos);
  EXPECT_NE(code.find("\\noproof\\f2\\fs18 {\\ltrch\\rtlch\\f2\\fs18 SHALOM}\\par"), std::string::npos) << code;
}

TEST(RtfDirection, OfHeadingsAndContentsIsThatOfTheirText) {
  const std::string body = bodyOf([](Document& document) {
    document.beginContents();
    document.contentsItem(2, "here", kShalom);
    document.contentsItem(1, "", "last");
    document.end();
    document.heading(1, kShalom);
  });
  EXPECT_NE(body.find("\\fs22\\rtlpar\\qr\\li240\\ri0\\rin0\\lin240\\tqr\\tldot\\tx9638LEFT "
                      "{\\field{\\*\\fldinst{HYPERLINK \\\\l \"here\"}}{\\fldrslt{{RIGHT SHALOM}{RIGHT \\tab "),
            std::string::npos)
      << body;
  EXPECT_NE(body.find("\\b\\fs36\\rtlpar\\qr\\rtlch\\af1\\afs36\\ab\\ltrch "), std::string::npos) << body;
  EXPECT_NE(body.find("{\\ltrch\\rtlch\\f1\\fs36\\b SHALOM}\\par\n"), std::string::npos) << body;
}

TEST(RtfDirection, OfATableIsThatOfTheDocument) {
  const std::string table = bodyOf(
      [](Document& document) {
        document.beginTable({}, {});
        putRow(document, {"a", std::string(kShalom), "1"});
        document.end();
      },
      {{"language", "ar"}});
  EXPECT_TRUE(table.starts_with("\\trowd\\rtlrow\\taprtl\\trgaph80\\trleft0\\trkeep")) << table;
  EXPECT_NE(table.find("\\cellx9638\\pard\\plain\\intbl\\sb30\\sa30\\fs20\\ltrpar\\qr a\\cell\n"
                       "\\rtlpar\\qr {\\ltrch\\rtlch\\f1\\fs20 SHALOM}\\cell\n"
                       "\\rtlpar\\qr {\\ltrch\\rtlch\\f1\\fs20 1}\\cell\n\\row\n"),
            std::string::npos)
      << table;
}

TEST(RtfDirection, OfACellIsThatOfItsText) {
  const std::string table = bodyOf([](Document& document) {
    document.beginTable({}, {});
    putRow(document, {"a", shalom("1 ", "")});
    putRow(document, {"b", "2"});
    document.end();
  });
  EXPECT_EQ(table.find("\\rtlrow"), std::string::npos);
  EXPECT_NE(table.find("\\ltrpar\\ql a\\cell\n\\rtlpar\\ql {\\ltrch\\rtlch\\f1\\fs20 1 SHALOM}\\cell\n\\row\n"),
            std::string::npos)
      << table;
  EXPECT_NE(table.find("\\fs20\\ql b\\cell\n2\\cell\n\\row\n"), std::string::npos) << table;
}

TEST(RtfDirection, IsStatedByTheDocumentAndItsHeader) {
  const std::string rtf = rtfOf([](Document&) {}, {{"language", "ar"}, {"header", kShalom}});
  EXPECT_NE(rtf.find("\\deflang1025\\adeflang1025\n"), std::string::npos);
  EXPECT_NE(rtf.find("\n\\rtldoc\n"), std::string::npos);
  EXPECT_NE(linesWith("{\\header", rtf).find("\\tab \\tab {\\ltrch\\rtlch\\f1\\fs18 \\u1513?"), std::string::npos);
  EXPECT_EQ(rtfOf([](Document&) {}).find("rtl"), std::string::npos);
}
