#include "scrivalen/rtf_doc.h"

#include "formats/rtf/written.h"
#include "support/bytes.h"

#include <gtest/gtest.h>

#include <stdexcept>

using namespace scrivalen::test;

namespace {

const std::string kHeadOfT = "{\\rtf\\ansi{\\info{\\title T}} \r\n" + std::string(kColorTable);

RTFdoc::ParType alignment(int number) { return static_cast<RTFdoc::ParType>(number); }

}  // namespace

TEST(RtfDoc, FramesAPortraitDocument) {
  MemoryFile file;
  RTFdoc doc;
  EXPECT_EQ(doc.BegDoc(&file, L"T", 0), 1);
  EXPECT_EQ(file.bytes, kHeadOfT + "\\paperw11906\\paperh16838\r\n{");
  file.bytes.clear();
  doc.EndDoc();
  EXPECT_EQ(file.bytes, "}}");
}

TEST(RtfDoc, FramesALandscapeDocument) {
  MemoryFile file;
  RTFdoc doc;
  doc.BegDoc(&file, L"T", 1);
  doc.EndDoc();
  EXPECT_EQ(file.bytes, kHeadOfT + "\\landscape\\paperw16838\\paperh11906\r\n{}}");
}

TEST(RtfDoc, RefusesANullFile) {
  RTFdoc doc;
  EXPECT_EQ(doc.BegDoc(nullptr, L"T", 0), 0);
  EXPECT_EQ(doc.file, nullptr);
  EXPECT_EQ(doc.nextStyle, -1);
}

TEST(RtfDoc, UpdatesItsCountersWithoutAFile) {
  RTFdoc doc;
  doc.BeginField();
  doc.BeginField();
  doc.EndField();
  doc.UnderLineOn(1);
  doc.Style(4);
  doc.NextParJ(RTFdoc::PAR_RIGHT);
  doc.write(L"lost", 0);
  doc.EndDoc();
  EXPECT_EQ(doc.fieldDepth, 1);
  EXPECT_EQ(doc.underlineDepth, 1);
  EXPECT_EQ(doc.nextStyle, 4);
  EXPECT_EQ(doc.nextParType, RTFdoc::PAR_RIGHT);
  doc.Paragraf(RTFdoc::PAR_LEFT, -1);
  EXPECT_EQ(doc.nextStyle, -1);
}

TEST(RtfDoc, ResetsAllButTheFieldDepthAtTheStart) {
  MemoryFile file;
  RTFdoc doc;
  doc.BeginField();
  doc.UnderLineOn(0);
  doc.Style(3);
  doc.NextParJ(RTFdoc::PAR_CENTER);
  doc.BegDoc(&file, L"T", 0);
  EXPECT_EQ(doc.fieldDepth, 1);
  EXPECT_EQ(doc.underlineDepth, 0);
  EXPECT_EQ(doc.nextStyle, -1);
  EXPECT_EQ(doc.nextParType, RTFdoc::PAR_DEFAULT);
}

TEST(RtfDoc, ForgetsTheFileAtTheEnd) {
  MemoryFile file;
  RTFdoc doc;
  doc.BegDoc(&file, L"T", 0);
  doc.EndDoc();
  const std::string document = file.bytes;
  doc.write(L"late", 0);
  doc.EndDoc();
  EXPECT_EQ(file.bytes, document);
  EXPECT_EQ(doc.file, nullptr);
}

TEST(RtfDoc, WritesTheTitleUnchanged) {
  MemoryFile file;
  RTFdoc doc;
  doc.BegDoc(&file, L"{\\b}", 0);
  EXPECT_TRUE(file.bytes.starts_with("{\\rtf\\ansi{\\info{\\title {\\b}}} \r\n{\\colortbl"));
}

TEST(RtfDoc, TruncatesTheTitlesFragmentAt1024Units) {
  MemoryFile file;
  RTFdoc doc;
  doc.BegDoc(&file, std::wstring(2000, L'x').c_str(), 0);
  const std::string front = "{\\rtf\\ansi{\\info{\\title ";
  EXPECT_TRUE(file.bytes.starts_with(front + std::string(1024 - front.size(), 'x') + "{\\colortbl;"));
}

TEST(RtfDoc, WritesATitlesFragmentOfExactly1024UnitsInFull) {
  MemoryFile file;
  RTFdoc doc;
  const std::string front = "{\\rtf\\ansi{\\info{\\title ";
  const std::string back = "}} \r\n";
  const std::size_t length = 1024 - front.size() - back.size();
  doc.BegDoc(&file, std::wstring(length, L'x').c_str(), 0);
  EXPECT_TRUE(file.bytes.starts_with(front + std::string(length, 'x') + back + "{\\colortbl;"));
}

TEST(RtfDoc, CountsACharacterAboveFFFFAsTwoUnits) {
  MemoryFile file;
  RTFdoc doc;
  const std::string front = "{\\rtf\\ansi{\\info{\\title ";
  const std::wstring title = std::wstring(1023 - front.size(), L'x') + grin() + L"y";
  doc.BegDoc(&file, title.c_str(), 0);
  EXPECT_TRUE(file.bytes.starts_with(front + std::string(1023 - front.size(), 'x') + "?{\\colortbl;"));
}

TEST(RtfDoc, KeepsTheOldBufferSizeAsAConstant) { EXPECT_EQ(RTFdoc::OBUF_SIZE, 102400); }

TEST(RtfDoc, PropagatesExceptionsOfTheFile) {
  struct Raising : OutputFile {
    void Write(const void*, std::size_t) override { throw std::runtime_error("disk full"); }
  } file;
  RTFdoc doc;
  EXPECT_THROW(doc.BegDoc(&file, L"T", 0), std::runtime_error);
  EXPECT_THROW(doc.write(L"x", 0), std::runtime_error);
}

TEST(RtfDoc, WritesEachFragmentInOneCall) {
  struct Counting : OutputFile {
    void Write(const void*, std::size_t) override { ++calls; }
    int calls = 0;
  } file;
  RTFdoc doc;
  doc.BegDoc(&file, L"T", 0);
  file.calls = 0;
  doc.write(L"a text of some length", 0);
  EXPECT_EQ(file.calls, 1);
  doc.HyperLink(L"text", L"name");
  EXPECT_EQ(file.calls, 2);
  doc.BookMark(L"name");
  EXPECT_EQ(file.calls, 3);
}

TEST(RtfDocFonts, OpenTheTableAndCloseItAroundTheirEntries) {
  EXPECT_EQ(written([](RTFdoc& doc) {
              doc.AddFont(0, L"Arial", RTFdoc::ITEM_FIRST);
              doc.AddFont(1, L"Times New Roman", RTFdoc::ITEM_INNER);
              doc.AddFont(2, L"Courier", RTFdoc::ITEM_LAST);
            }),
            "\\fonttbl{\\f0{Arial}}\r\n{\\f1{Times New Roman}}\r\n{\\f2{Courier}}\r\n}{");
}

TEST(RtfDocFonts, LeaveTheGroupOpenAfterASingleFirstEntry) {
  EXPECT_EQ(written([](RTFdoc& doc) {
              doc.AddFont(0, L"Arial", RTFdoc::ITEM_FIRST);
              doc.EndDoc();
            }),
            "\\fonttbl{\\f0{Arial}}\r\n}}");
}

TEST(RtfDocFonts, TreatEveryOtherPositionAsInner) {
  EXPECT_EQ(written([](RTFdoc& doc) { doc.AddFont(7, L"X", static_cast<RTFdoc::ITEM_TYPE>(9)); }), "{\\f7{X}}\r\n");
}

TEST(RtfDocFonts, TruncateTheirEntryAt1024Units) {
  EXPECT_EQ(written([](RTFdoc& doc) { doc.AddFont(1, std::wstring(3000, L'x').c_str(), RTFdoc::ITEM_INNER); }),
            "{\\f1{" + std::string(1019, 'x'));
}

TEST(RtfDocStyles, OpenTheSheetAndCloseItAroundTheirEntries) {
  EXPECT_EQ(written([](RTFdoc& doc) {
              doc.AddStyle(1, L"Heading", L"ignored", 32, 1, L"\\qc", RTFdoc::ITEM_FIRST);
              doc.AddStyle(2, L"", nullptr, 20, 0, L"", RTFdoc::ITEM_INNER);
              doc.AddStyle(3, nullptr, nullptr, 18, 0, nullptr, RTFdoc::ITEM_LAST);
            }),
            "\\stylesheet{\\s1\\fs32\\b\\qc{Heading}}\r\n{\\s2\\fs20}\r\n{\\s3\\fs18}\r\n}\r\n{");
}

TEST(RtfDocStyles, TruncateTheirEntryAt1024Units) {
  EXPECT_EQ(written([](RTFdoc& doc) {
              doc.AddStyle(1, L"name", nullptr, 20, 0, std::wstring(3000, L'x').c_str(), RTFdoc::ITEM_INNER);
            }),
            "{\\s1\\fs20" + std::string(1024 - 9, 'x'));
}

TEST(RtfDocEnd, ClosesOneOpenFieldAndEndsAtMinusOne) {
  MemoryFile file;
  RTFdoc doc;
  doc.BegDoc(&file, L"T", 0);
  doc.BeginField();
  file.bytes.clear();
  doc.EndDoc();
  EXPECT_EQ(file.bytes, "}}}\n}}");
  EXPECT_EQ(doc.fieldDepth, -1);
}

TEST(RtfDocEnd, ClosesThreeOpenFieldsInTwoRounds) {
  EXPECT_EQ(written([](RTFdoc& doc) {
              doc.BeginField();
              doc.BeginField();
              doc.BeginField();
              doc.EndDoc();
            }),
            "{\\field{\\*\\fldinst {{\\field{\\*\\fldinst {{\\field{\\*\\fldinst {}}}\n}}}\n}}");
}

TEST(RtfDocEnd, ClosesTwoOpenFieldsInOneRound) {
  MemoryFile file;
  RTFdoc doc;
  doc.BegDoc(&file, L"T", 0);
  doc.BeginField();
  doc.BeginField();
  file.bytes.clear();
  doc.EndDoc();
  EXPECT_EQ(file.bytes, "}}}\n}}");
  EXPECT_EQ(doc.fieldDepth, 0);
}

TEST(RtfDocChar, PutsABackslashBeforeABraceOrABackslash) {
  EXPECT_EQ(written([](RTFdoc& doc) { doc.Char('{'); }), "\\{");
  EXPECT_EQ(written([](RTFdoc& doc) { doc.Char('}'); }), "\\}");
  EXPECT_EQ(written([](RTFdoc& doc) { doc.Char('\\'); }), "\\\\");
}

TEST(RtfDocChar, WritesHighBytesInHexadecimal) {
  EXPECT_EQ(written([](RTFdoc& doc) {
              doc.Char('\xE9');
              doc.Char('\x80');
              doc.Char('\xFF');
            }),
            "\\'E9\\'80\\'FF");
}

TEST(RtfDocChar, WritesOtherBytesUnchanged) {
  EXPECT_EQ(written([](RTFdoc& doc) {
              for (const char c : {' ', 'A', 'z', '~', '\x7F'}) {
                doc.Char(c);
              }
            }),
            " Az~\x7F");
}

TEST(RtfDocChar, EndsTheParagraphAtACarriageReturnAndDropsALineFeed) {
  EXPECT_EQ(written([](RTFdoc& doc) { doc.Char('\r'); }), "\\ql\\par\\pard\\plain ");
  EXPECT_EQ(written([](RTFdoc& doc) { doc.Char('\n'); }), "");
}

TEST(RtfDocChar, DoesNothingForAWideCharacter) {
  EXPECT_EQ(written([](RTFdoc& doc) { doc.Char(L'A'); }), "");
}

TEST(RtfDocSpecChar, MapsControlCharactersToBreaks) {
  const auto special = [](wchar_t c) { return written([c](RTFdoc& doc) { doc.SpecChar(c); }); };
  EXPECT_EQ(special(7), "\\par\\pard\\plain ");
  EXPECT_EQ(special(8), "");
  EXPECT_EQ(special(9), "\\tab ");
  EXPECT_EQ(special(10), "");
  EXPECT_EQ(special(11), "\\line ");
  EXPECT_EQ(special(12), "\\page ");
  EXPECT_EQ(special(13), "\\ql\\par\\pard\\plain ");
  EXPECT_EQ(special(14), "\\page ");
}

TEST(RtfDocSpecChar, WritesNothingForAnyOtherCharacter) {
  EXPECT_EQ(written([](RTFdoc& doc) {
              for (unsigned c = 0; c <= 0xFFFF; c = c == 6 ? 15 : c + 1) {
                doc.SpecChar(static_cast<wchar_t>(c));
              }
            }),
            "");
}

TEST(RtfDocSpecChar, EndsTheParagraphInThePendingAlignmentOnce) {
  EXPECT_EQ(written([](RTFdoc& doc) {
              doc.NextParJ(RTFdoc::PAR_RIGHT);
              doc.Style(2);
              doc.SpecChar(13);
              doc.SpecChar(13);
            }),
            "\\s2\\qr\\par\\pard\\plain \\ql\\par\\pard\\plain ");
}

TEST(RtfDocSpecChar, EndsTheParagraphWithoutAlignmentAtABell) {
  EXPECT_EQ(written([](RTFdoc& doc) {
              doc.Style(5);
              doc.NextParJ(RTFdoc::PAR_RIGHT);
              doc.SpecChar(7);
            }),
            "\\s5\\par\\pard\\plain ");
}

TEST(RtfDocWrite, WritesTextUnchanged) {
  EXPECT_EQ(written([](RTFdoc& doc) { doc.write(L"{\\b x}\r\n\u00E9\u20AC", 0); }), "{\\b x}\r\n\xE9\x80");
}

TEST(RtfDocWrite, WritesTheGivenLengthOrUpToTheNul) {
  EXPECT_EQ(written([](RTFdoc& doc) { doc.write(L"abcdef", 3); }), "abc");
  EXPECT_EQ(written([](RTFdoc& doc) { doc.write(L"abcdef", 0); }), "abcdef");
  EXPECT_EQ(written([](RTFdoc& doc) { doc.write(L"abcdef", -1); }), "abcdef");
  EXPECT_EQ(written([](RTFdoc& doc) { doc.write(nullptr, 0); }), "");
}

TEST(RtfDocWrite, ReplacesCharactersOutsideTheCodePage) {
  EXPECT_EQ(written([](RTFdoc& doc) { doc.write((L"a\u0141b" + grin() + L"c").c_str(), 0); }), "a?b??c");
}

TEST(RtfDocWrite, CountsCharactersOutsideTheCodePage) {
  MemoryFile file;
  RTFdoc doc;
  doc.BegDoc(&file, L"T", 0);
  EXPECT_EQ(doc.LostCharacters(), 0u);
  doc.write(L"\u0141 and \u4E2D", 0);
  EXPECT_EQ(doc.LostCharacters(), 2u);
  EXPECT_EQ(doc.FirstLostCharacter(), 0x141u);
}

TEST(RtfDocWrite, WritesUpTo4096BytesAndDropsMore) {
  EXPECT_EQ(written([](RTFdoc& doc) { doc.write(std::wstring(4096, L'x').c_str(), 0); }), std::string(4096, 'x'));
  EXPECT_EQ(written([](RTFdoc& doc) { doc.write(std::wstring(4097, L'x').c_str(), 0); }), "");
}

TEST(RtfDocWrite, DropsALinkOfMoreThan4096Bytes) {
  EXPECT_EQ(written([](RTFdoc& doc) { doc.HyperLink(std::wstring(4096, L'x').c_str(), L"name"); }), "");
}

struct Word {
  const char* name;
  void (RTFdoc::*operation)();
  const char* bytes;
};

class RtfDocWords : public testing::TestWithParam<Word> {};

TEST_P(RtfDocWords, WriteTheirLiteral) {
  EXPECT_EQ(written([](RTFdoc& doc) { (doc.*GetParam().operation)(); }), GetParam().bytes);
}

INSTANTIATE_TEST_SUITE_P(
    All, RtfDocWords,
    testing::Values(
        Word{"BoldOn", &RTFdoc::BoldOn, "\\b{"}, Word{"BoldOff", &RTFdoc::BoldOff, "}\\b0 "},
        Word{"ItalicOn", &RTFdoc::ItalicOn, "\\i{"}, Word{"ItalicOff", &RTFdoc::ItalicOff, "}\\i0 "},
        Word{"StrikeOn", &RTFdoc::StrikeOn, "\\strike"}, Word{"StrikeOff", &RTFdoc::StrikeOff, "\\strike0 "},
        Word{"OutlineOn", &RTFdoc::OutlineOn, "\\outl"}, Word{"OutlineOff", &RTFdoc::OutlineOff, "\\outl0 "},
        Word{"ShadowOn", &RTFdoc::ShadowOn, "\\shad"}, Word{"ShadowOff", &RTFdoc::ShadowOff, "\\shad0 "},
        Word{"SmallOn", &RTFdoc::SmallOn, "\\scaps"}, Word{"SmallOff", &RTFdoc::SmallOff, "\\scaps0 "},
        Word{"CapsOn", &RTFdoc::CapsOn, "\\caps"}, Word{"CapsOff", &RTFdoc::CapsOff, "\\caps0 "},
        Word{"ScriptOff", &RTFdoc::ScriptOff, "\\nosupersub "}, Word{"FontColorOff", &RTFdoc::FontColorOff, "\\cf0 "},
        Word{"BackgroundColorOff", &RTFdoc::BackgroundColorOff, "\\highlight0 "},
        Word{"PageBreak", &RTFdoc::PageBreak, "\\page "}, Word{"Tab", &RTFdoc::Tab, "\\tab "},
        Word{"LineBreak", &RTFdoc::LineBreak, "\\line "},
        Word{"BeginField", &RTFdoc::BeginField, "{\\field{\\*\\fldinst {"},
        Word{"MiddleField", &RTFdoc::MiddleField, "}}{\\fldrslt {"}, Word{"EndField", &RTFdoc::EndField, "}}}\n"},
        Word{"BeginTable", &RTFdoc::BeginTable, "\\par "}, Word{"EndTable", &RTFdoc::EndTable, ""},
        Word{"BeginCell", &RTFdoc::BeginCell, "\\intbl "}, Word{"EndCell", &RTFdoc::EndCell, "\\cell \r\n"},
        Word{"EndRow", &RTFdoc::EndRow, "\\pard \\nowidctlpar\\widctlpar\\adjustright\\row\\pard}\r\n"}),
    [](const testing::TestParamInfo<Word>& word) { return std::string(word.param.name); });

TEST(RtfDocFormatting, FontSizeWritesOnlyPositiveHalfPoints) {
  EXPECT_EQ(written([](RTFdoc& doc) { doc.FontSize(20); }), "\\fs20 ");
  EXPECT_EQ(written([](RTFdoc& doc) { doc.FontSize(127); }), "\\fs127 ");
  EXPECT_EQ(written([](RTFdoc& doc) { doc.FontSize(0); }), "");
  EXPECT_EQ(written([](RTFdoc& doc) { doc.FontSize(static_cast<char>(-1)); }), "");
}

TEST(RtfDocFormatting, UnderlinesAreCounted) {
  EXPECT_EQ(written([](RTFdoc& doc) {
              doc.UnderLineOn(1);
              doc.UnderLineOn(2);
              doc.UnderLineOff(1);
              doc.UnderLineOff(1);
              doc.UnderLineOff(1);
            }),
            "\\ul \\ul \\ul0 \\ul0 ");
}

TEST(RtfDocFormatting, ScriptOnKnowsTwoKinds) {
  EXPECT_EQ(written([](RTFdoc& doc) { doc.ScriptOn(0); }), "");
  EXPECT_EQ(written([](RTFdoc& doc) { doc.ScriptOn(1); }), "\\super ");
  EXPECT_EQ(written([](RTFdoc& doc) { doc.ScriptOn(2); }), "\\sub ");
  EXPECT_EQ(written([](RTFdoc& doc) { doc.ScriptOn(3); }), "");
}

TEST(RtfDocFormatting, NumbersFollowTheirControlWords) {
  EXPECT_EQ(written([](RTFdoc& doc) {
              doc.FontColorOn(6);
              doc.BackgroundColorOn(17);
              doc.FontNo(3);
              doc.FontColorOn(-2147483647 - 1);
            }),
            "\\cf6 \\highlight17 \\f3\\cf-2147483648 ");
}

TEST(RtfDocFormatting, NumberingOpensAndClosesItsGroup) {
  EXPECT_EQ(written([](RTFdoc& doc) {
              doc.Numbers(1);
              doc.Numbers(0);
            }),
            "\\pn{}\\pn0");
}

TEST(RtfDocFormatting, SomeMembersDoNothing) {
  EXPECT_EQ(written([](RTFdoc& doc) {
              doc.List('x');
              doc.writeT(L"text", 4);
              doc.Style(1);
              doc.NextParJ(RTFdoc::PAR_CENTER);
            }),
            "");
}

TEST(RtfDocParagraf, UsesThePendingStyleOnce) {
  EXPECT_EQ(written([](RTFdoc& doc) {
              doc.Style(3);
              doc.Paragraf(RTFdoc::PAR_CENTER, -1);
              doc.Paragraf(RTFdoc::PAR_CENTER, -1);
            }),
            "\\s3\\qc\\par\\pard\\plain \\qc\\par\\pard\\plain ");
}

TEST(RtfDocParagraf, UsesAGivenStyleAndForgetsThePendingOne) {
  EXPECT_EQ(written([](RTFdoc& doc) {
              doc.Style(3);
              doc.Paragraf(RTFdoc::PAR_LEFT, 0);
              doc.Paragraf(RTFdoc::PAR_LEFT, -1);
            }),
            "\\s0\\ql\\par\\pard\\plain \\ql\\par\\pard\\plain ");
}

TEST(RtfDocParagraf, WritesTheAlignmentOfItsType) {
  const auto paragraph = [](int type) { return written([type](RTFdoc& doc) { doc.Paragraf(alignment(type), -1); }); };
  EXPECT_EQ(paragraph(0), "\\ql\\par\\pard\\plain ");
  EXPECT_EQ(paragraph(1), "\\ql\\par\\pard\\plain ");
  EXPECT_EQ(paragraph(2), "\\qc\\par\\pard\\plain ");
  EXPECT_EQ(paragraph(3), "\\qr\\par\\pard\\plain ");
  EXPECT_EQ(paragraph(4), "\\qj\\par\\pard\\plain ");
  EXPECT_EQ(paragraph(5), "\\par\\pard\\plain ");
  EXPECT_EQ(paragraph(-1), "\\par\\pard\\plain ");
}

TEST(RtfDocLinks, JumpToABookmark) {
  EXPECT_EQ(written([](RTFdoc& doc) { doc.HyperLink(L"See", L"sec1"); }),
            " {\\field{\\*\\fldinst {HYPERLINK \\\\l \"sec1\" }}{\\fldrslt {\\cs15\\ul\\cf2 See}}} ");
}

TEST(RtfDocLinks, NameAnEmptyBookmark) {
  EXPECT_EQ(written([](RTFdoc& doc) { doc.BookMark(L"sec1"); }), "{\\*\\bkmkstart sec1}{\\*\\bkmkend sec1}");
}

TEST(RtfDocLinks, TruncateABookmarkAt1024Units) {
  const std::string front = "{\\*\\bkmkstart ";
  EXPECT_EQ(written([](RTFdoc& doc) { doc.BookMark(std::wstring(2000, L'x').c_str()); }),
            front + std::string(1024 - front.size(), 'x'));
}

TEST(RtfDocRows, HaveCellsOfAThousandTwips) {
  const std::string borders = kBorders;
  EXPECT_EQ(written([](RTFdoc& doc) { doc.BeginRow(3, -1); }),
            kRow + borders + "\\cellx1000" + borders + "\\cellx2000" + borders + "\\cellx3000" + kRowRest);
}

TEST(RtfDocRows, ShadeEveryCellInTheirColour) {
  const std::string borders = kBorders;
  EXPECT_EQ(written([](RTFdoc& doc) { doc.BeginRow(2, 6); }),
            kRow + borders + "\\clcbpat6\\cellx1000" + borders + "\\clcbpat6\\cellx2000" + kRowRest);
  EXPECT_EQ(written([](RTFdoc& doc) { doc.BeginRow(1, 0); }), kRow + borders + "\\clcbpat0\\cellx1000" + kRowRest);
}

TEST(RtfDocRows, MayHaveNoCells) {
  EXPECT_EQ(written([](RTFdoc& doc) { doc.BeginRow(0, -1); }), std::string(kRow) + kRowRest);
  EXPECT_EQ(written([](RTFdoc& doc) { doc.BeginRow(-4, 3); }), std::string(kRow) + kRowRest);
}

TEST(RtfDocBalance, UnmatchedEndsWriteTheirBraces) {
  EXPECT_EQ(written([](RTFdoc& doc) {
              doc.BoldOff();
              doc.ItalicOff();
              doc.EndField();
              doc.UnderLineOff(0);
            }),
            "}\\b0 }\\i0 }}}\n");
}

TEST(ConformingRtf, EscapesTexts) {
  EXPECT_EQ(written([](RTFdoc& doc) { doc.write(L"a{b}\\c \u00E9\u20AC", 0); }, 1), "a\\{b\\}\\\\c \xE9\x80");
}

TEST(ConformingRtf, WritesCharactersOutsideTheCodePageAsSignedUnits) {
  EXPECT_EQ(written([](RTFdoc& doc) { doc.write((L"\u03A9\u4E2D\uFF21" + grin()).c_str(), 0); }, 1),
            "\\u937?\\u20013?\\u-223?\\u-10179?\\u-8704?");
}

TEST(ConformingRtf, LosesNoCharacters) {
  MemoryFile file;
  RTFdoc doc;
  doc.SetConforming(1);
  doc.BegDoc(&file, L"\u4E2D", 0);
  doc.write(L"\u4E2D", 0);
  EXPECT_EQ(doc.LostCharacters(), 0u);
}

TEST(ConformingRtf, EscapesTheTitle) {
  MemoryFile file;
  RTFdoc doc;
  doc.SetConforming(1);
  doc.BegDoc(&file, L"{\u4E2D}", 0);
  EXPECT_TRUE(file.bytes.starts_with("{\\rtf\\ansi{\\info{\\title \\{\\u20013?\\}}} \r\n{\\colortbl;"));
}

TEST(ConformingRtf, WritesTextsOfAnyLength) {
  EXPECT_EQ(written([](RTFdoc& doc) { doc.write(std::wstring(100000, L'x').c_str(), 0); }, 1),
            std::string(100000, 'x'));
  std::string braces;
  for (int i = 0; i < 10000; ++i) {
    braces += "\\{";
  }
  EXPECT_EQ(written([](RTFdoc& doc) { doc.write(std::wstring(10000, L'{').c_str(), 0); }, 1), braces);
}

TEST(ConformingRtf, WritesTitlesAndBookmarksOfAnyLength) {
  const std::string name(5000, 'x');
  EXPECT_EQ(written([](RTFdoc& doc) { doc.BookMark(std::wstring(5000, L'x').c_str()); }, 1),
            "{\\*\\bkmkstart " + name + "}{\\*\\bkmkend " + name + "}");
}

TEST(ConformingRtf, EscapesLinksAndBookmarks) {
  EXPECT_EQ(written([](RTFdoc& doc) { doc.BookMark(L"a{b\u03A9"); }, 1),
            "{\\*\\bkmkstart a\\{b\\u937?}{\\*\\bkmkend a\\{b\\u937?}");
  EXPECT_EQ(written([](RTFdoc& doc) { doc.HyperLink(L"{see}", L"a{b\\"); }, 1),
            " {\\field{\\*\\fldinst {HYPERLINK \\\\l \"a\\{b\\\\\" }}{\\fldrslt {\\cs15\\ul\\cf2 \\{see\\}}}} ");
}

TEST(ConformingRtf, BeginsWithTheNextDocument) {
  MemoryFile file;
  RTFdoc doc;
  doc.BegDoc(&file, L"T", 0);
  doc.SetConforming(1);
  file.bytes.clear();
  doc.write(L"{", 0);
  EXPECT_EQ(file.bytes, "{");
  doc.EndDoc();
  doc.BegDoc(&file, L"T", 0);
  file.bytes.clear();
  doc.write(L"{", 0);
  EXPECT_EQ(file.bytes, "\\{");
}
