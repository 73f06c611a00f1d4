#include "formats/rtf/written.h"
#include "support/bytes.h"

#include <gtest/gtest.h>

#include <utility>

using namespace scrivalen::test;

namespace {

struct Escaped {
  std::wstring text;
  std::string bytes;
};

const Escaped& escaped() {
  static const Escaped all = {L"{\u03A9\\\u4E2D}" + grin() + L"\n\uFF21\u20ACz",
                              "\\{\\u937?\\\\\\u20013?\\}\\u-10179?\\u-8704?\\line \\u-223?\x80z"};
  return all;
}

std::string conforming(const std::wstring& text) {
  return written([&text](RTFdoc& doc) { doc.write(text.c_str(), static_cast<int>(text.size())); }, 1);
}

}  // namespace

TEST(ConformingRtf, EscapesAtEveryPositionInAText) {
  const std::pair<std::wstring, std::string> specials[] = {{L"{", "\\{"},
                                                           {L"}", "\\}"},
                                                           {L"\\", "\\\\"},
                                                           {L"\n", "\\line "},
                                                           {L"\u20AC", "\x80"},
                                                           {L"\u00E9", "\xE9"},
                                                           {L"\u0141", "\\u321?"},
                                                           {L"\u4E2D", "\\u20013?"},
                                                           {grin(), "\\u-10179?\\u-8704?"}};
  for (const auto& [character, bytes] : specials) {
    for (std::size_t length = 7; length <= 17; ++length) {
      for (std::size_t place = 0; place < length; ++place) {
        EXPECT_EQ(conforming(longText(place) + character + longText(length - place - 1)),
                  std::string(place, 'x') + bytes + std::string(length - place - 1, 'x'));
      }
    }
  }
}

TEST(ConformingRtf, EscapesAcrossTheEndOfAFragment) {
  for (std::size_t length = 4096 - 60; length <= 4097; ++length) {
    const std::wstring text = longText(length) + escaped().text;
    const auto write = [&text](RTFdoc& doc) { doc.write(text.c_str(), 0); };
    EXPECT_TRUE(areSameBytes(std::string(length, 'x') + escaped().bytes, written(write, 1))) << length;
  }
}

TEST(ConformingRtf, EscapesAcrossTheEndOfAFragmentOnDisk) {
  std::string expected;
  const auto write = [&expected](RTFdoc& doc) {
    expected.clear();
    for (std::size_t length = 4096 - 60; length <= 4097; ++length) {
      doc.write((longText(length) + escaped().text).c_str(), 0);
      expected += std::string(length, 'x') + escaped().bytes;
    }
  };
  const std::string onDisk = writtenOnDisk(write, 1);
  EXPECT_TRUE(areSameBytes(expected, onDisk));
}

TEST(ConformingRtf, NeverSplitsAnEscape) {
  for (std::size_t length = 4096 - 8; length <= 4096; ++length) {
    const std::wstring text = longText(length) + L"\u4E2D\u4E2D";
    const auto calls = callsOf([&text](RTFdoc& doc) { doc.write(text.c_str(), 0); }, 1);
    const std::string first = std::string(length, 'x') + (length + 8 <= 4096 ? "\\u20013?" : "");
    const std::string second = length + 8 <= 4096 ? "\\u20013?" : "\\u20013?\\u20013?";
    EXPECT_EQ(calls, (std::vector<std::string>{first, second})) << length;
  }
}

TEST(ConformingRtf, WritesAtMost4096BytesPerCall) {
  const auto calls = callsOf([](RTFdoc& doc) { doc.write(longText(10000).c_str(), 0); }, 1);
  EXPECT_EQ(calls, (std::vector<std::string>{std::string(4096, 'x'), std::string(4096, 'x'), std::string(1808, 'x')}));
}

TEST(ConformingRtf, WritesALineFeedAsALineBreak) { EXPECT_EQ(conforming(L"a\nb\r\nc\td"), "a\\line b\r\\line c\td"); }

TEST(ConformingRtf, WritesALoneSurrogateAsItsCodeUnit) {
  EXPECT_EQ(conforming(L"a" + wideUnit(0xD800) + L"b"), "a\\u-10240?b");
  EXPECT_EQ(conforming(L"a" + wideUnit(0xDC00)), "a\\u-9216?");
  EXPECT_EQ(conforming(wideUnit(0xDC00) + wideUnit(0xD800)), "\\u-9216?\\u-10240?");
}

TEST(ConformingRtf, AcceptsSurrogatePairsForAnySizeOfWideCharacters) {
  EXPECT_EQ(conforming(wideUnit(0xD83D) + wideUnit(0xDE00)), "\\u-10179?\\u-8704?");
}

TEST(RtfDocWrite, CountsASurrogatePairAsOneLostCharacter) {
  MemoryFile file;
  RTFdoc doc;
  doc.BegDoc(&file, L"T", 0);
  file.bytes.clear();
  doc.write((wideUnit(0xD83D) + wideUnit(0xDE00)).c_str(), 0);
  EXPECT_EQ(file.bytes, "??");
  EXPECT_EQ(doc.LostCharacters(), 1u);
  EXPECT_EQ(doc.FirstLostCharacter(), 0x1F600u);
}

TEST(ConformingRtf, WritesAnUnusedByteOfTheCodePageUnchanged) { EXPECT_EQ(conforming(L"\u0081\u009D"), "\x81\x9D"); }

TEST(ConformingRtf, ReplacesDoubleQuotesInBookmarks) {
  EXPECT_EQ(written([](RTFdoc& doc) { doc.BookMark(L"\"a\"\"b\""); }, 1),
            "{\\*\\bkmkstart 'a''b'}{\\*\\bkmkend 'a''b'}");
  EXPECT_EQ(written([](RTFdoc& doc) { doc.HyperLink(L"\"See\"", L"a\"{b"); }, 1),
            " {\\field{\\*\\fldinst {HYPERLINK \\\\l \"a'\\{b\" }}{\\fldrslt {\\cs15\\ul\\cf2 \"See\"}}} ");
}

TEST(RtfDocLinks, KeepTheDoubleQuotesOfTheirBookmark) {
  EXPECT_EQ(written([](RTFdoc& doc) { doc.BookMark(L"\"a\""); }), "{\\*\\bkmkstart \"a\"}{\\*\\bkmkend \"a\"}");
  EXPECT_EQ(written([](RTFdoc& doc) { doc.HyperLink(L"See", L"\"a\""); }),
            " {\\field{\\*\\fldinst {HYPERLINK \\\\l \"\"a\"\" }}{\\fldrslt {\\cs15\\ul\\cf2 See}}} ");
}

TEST(ConformingRtf, WritesLinksOfAnyLength) {
  const std::string name(5000, 'x');
  const auto link = [](RTFdoc& doc) { doc.HyperLink(longText(5000).c_str(), longText(5000).c_str()); };
  const std::string expected =
      " {\\field{\\*\\fldinst {HYPERLINK \\\\l \"" + name + "\" }}{\\fldrslt {\\cs15\\ul\\cf2 " + name + "}}} ";
  EXPECT_TRUE(areSameBytes(expected, written(link, 1)));
  EXPECT_TRUE(areSameBytes(expected, writtenOnDisk(link, 1)));
}

TEST(ConformingRtf, WritesFontsAndStylesOfAnyLength) {
  EXPECT_EQ(written([](RTFdoc& doc) { doc.AddFont(1, longText(5000).c_str(), RTFdoc::ITEM_INNER); }, 1),
            "{\\f1{" + std::string(5000, 'x') + "}}\r\n");
  for (const std::size_t length : {1023u, 1024u, 1025u, 4096u, 10000u}) {
    EXPECT_TRUE(areSameBytes("{\\s1\\fs20\\b" + std::string(length, 'x') + "{" + std::string(5000, 'x') + "}}\r\n",
                             written(
                                 [length](RTFdoc& doc) {
                                   doc.AddStyle(1, longText(5000).c_str(), nullptr, 20, 1, longText(length).c_str(),
                                                RTFdoc::ITEM_INNER);
                                 },
                                 1)));
  }
}

TEST(ConformingRtf, LeavesTheControlWordsOfAStyleUnchanged) {
  EXPECT_EQ(written([](RTFdoc& doc) { doc.AddStyle(1, L"{a}", nullptr, 20, 0, L"\\qc{}", RTFdoc::ITEM_INNER); }, 1),
            "{\\s1\\fs20\\qc{}{\\{a\\}}}\r\n");
}

TEST(ConformingRtf, LosesNoCharactersOfTextsOfAnyLength) {
  MemoryFile file;
  RTFdoc doc;
  doc.SetConforming(1);
  doc.BegDoc(&file, longText(5000).c_str(), 0);
  doc.write(longText(5000).c_str(), 0);
  doc.AddFont(1, longText(5000).c_str(), RTFdoc::ITEM_INNER);
  doc.BookMark(longText(5000).c_str());
  doc.HyperLink(longText(5000).c_str(), longText(5000).c_str());
  EXPECT_EQ(doc.LostCharacters(), 0u);
}

TEST(ConformingRtf, EndsWithTheNextClassicDocument) {
  MemoryFile file;
  RTFdoc doc;
  doc.SetConforming(1);
  doc.BegDoc(&file, L"T", 0);
  doc.SetConforming(0);
  file.bytes.clear();
  doc.write(L"{", 0);
  EXPECT_EQ(file.bytes, "\\{");
  doc.EndDoc();
  doc.BegDoc(&file, L"T", 0);
  file.bytes.clear();
  doc.write(L"{", 0);
  EXPECT_EQ(file.bytes, "{");
}

namespace {

struct Word {
  void (*write)(RTFdoc& doc);
  std::string bytes;
};

// Every operation whose classic bytes end in a control word without a delimiter.
std::vector<Word> wordsWithoutEnd() {
  return {{[](RTFdoc& doc) { doc.StrikeOn(); }, "\\strike"}, {[](RTFdoc& doc) { doc.OutlineOn(); }, "\\outl"},
          {[](RTFdoc& doc) { doc.ShadowOn(); }, "\\shad"},   {[](RTFdoc& doc) { doc.SmallOn(); }, "\\scaps"},
          {[](RTFdoc& doc) { doc.CapsOn(); }, "\\caps"},     {[](RTFdoc& doc) { doc.FontNo(3); }, "\\f3"},
          {[](RTFdoc& doc) { doc.FontNo(-3); }, "\\f-3"},    {[](RTFdoc& doc) { doc.Numbers(0); }, "}\\pn0"}};
}

}  // namespace

TEST(ConformingRtf, NeverMergesAControlWordWithTheTextAfterIt) {
  for (const Word& word : wordsWithoutEnd()) {
    for (const std::wstring text : {L"strike", L"0", L"-1", L" a", L"'E9", L";"}) {
      const auto write = [&](RTFdoc& doc) {
        word.write(doc);
        doc.write(text.c_str(), 0);
      };
      const std::string bytes(text.begin(), text.end());
      EXPECT_EQ(written(write, 1), word.bytes + " " + bytes);
      EXPECT_EQ(writtenOnDisk(write, 1), word.bytes + " " + bytes);
      EXPECT_EQ(written(write, 0), word.bytes + bytes);
    }
  }
}

TEST(ConformingRtf, NeverMergesAControlWordWithACharacterAfterIt) {
  for (const Word& word : wordsWithoutEnd()) {
    EXPECT_EQ(written(
                  [&word](RTFdoc& doc) {
                    word.write(doc);
                    doc.Char('a');
                  },
                  1),
              word.bytes + " a");
  }
}

// Text after any two operations must not become part of a control word.
TEST(ConformingRtf, KeepsTheTextBetweenAnyTwoOperations) {
  const std::vector<Word> words = wordsWithoutEnd();
  std::string expected;
  const std::string document = written(
      [&](RTFdoc& doc) {
        for (const Word& first : words) {
          for (const Word& second : words) {
            first.write(doc);
            second.write(doc);
            doc.write(L"1a ", 0);
            expected += first.bytes + " " + second.bytes + " 1a ";
          }
        }
      },
      1);
  EXPECT_TRUE(areSameBytes(expected, document));
}

TEST(ConformingRtf, UsesWindows1252OnEverySystem) {
  std::wstring text;
  std::string bytes;
  for (unsigned c = 0xA0; c <= 0xFF; ++c) {
    text += static_cast<wchar_t>(c);
    bytes += static_cast<char>(c);
  }
  EXPECT_EQ(conforming(text), bytes);
  EXPECT_EQ(conforming(L"\u20AC\u201A\u0178"), "\x80\x82\x9F");
  EXPECT_EQ(conforming(L"\u0416\u05D0"), "\\u1046?\\u1488?");
}

TEST(ConformingRtf, CountsCharactersLostInTheControlWordsOfAStyle) {
  MemoryFile file;
  RTFdoc doc;
  doc.SetConforming(1);
  doc.BegDoc(&file, L"T", 0);
  file.bytes.clear();
  doc.AddStyle(1, L"\u0416", nullptr, 20, 0, (L"\\e9\u00E9\u0416" + grin()).c_str(), RTFdoc::ITEM_INNER);
  EXPECT_EQ(file.bytes, "{\\s1\\fs20\\e9\xE9???{\\u1046?}}\r\n");
  EXPECT_EQ(doc.LostCharacters(), 2u);
  EXPECT_EQ(doc.FirstLostCharacter(), 0x416u);
}
