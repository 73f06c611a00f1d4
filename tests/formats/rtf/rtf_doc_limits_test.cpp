#include "formats/rtf/written.h"
#include "support/bytes.h"

#include <gtest/gtest.h>

#include <cstdint>

using namespace scrivalen::test;

namespace {

using Calls = std::vector<std::string>;

std::string cells(int first, int last, const std::string& shading = "") {
  std::string all;
  for (int cell = first; cell <= last; ++cell) {
    all += kBorders + shading + "\\cellx" + std::to_string(cell) + "000";
  }
  return all;
}

// The characters that a document counts as lost during an action.
struct Lost {
  std::uint64_t count;
  char32_t first;
  bool operator==(const Lost&) const = default;
};

template <typename Action>
Lost lostBy(Action action) {
  MemoryFile file;
  RTFdoc doc;
  doc.BegDoc(&file, L"T", 0);
  action(doc);
  return {doc.LostCharacters(), doc.FirstLostCharacter()};
}

const std::string kLinkFront = " {\\field{\\*\\fldinst {HYPERLINK \\\\l \"";
const std::string kLinkMiddle = "\" }}{\\fldrslt {\\cs15\\ul\\cf2 ";
const std::string kLinkBack = "}}} ";
const std::size_t kLinkWords = kLinkFront.size() + kLinkMiddle.size() + kLinkBack.size();

}  // namespace

TEST(RtfDocRows, MayHaveAnyNumberOfCells) {
  for (const int count : {9, 10, 33, 34, 99, 100, 1000}) {
    EXPECT_TRUE(
        areSameBytes(kRow + cells(1, count) + kRowRest, written([count](RTFdoc& doc) { doc.BeginRow(count, -1); })));
  }
}

TEST(RtfDocRows, ShadeAnyNumberOfCells) {
  for (const int count : {33, 34, 100}) {
    EXPECT_TRUE(areSameBytes(kRow + cells(1, count, "\\clcbpat16") + kRowRest,
                             written([count](RTFdoc& doc) { doc.BeginRow(count, 16); })));
  }
}

TEST(RtfDocRows, WriteLargeCellNumbersInFull) {
  const std::string row = written([](RTFdoc& doc) { doc.BeginRow(100, 2147483647); });
  EXPECT_NE(row.find("\\clcbpat2147483647\\cellx9000\\clbrdrt"), std::string::npos);
  EXPECT_NE(row.find("\\clcbpat2147483647\\cellx10000\\clbrdrt"), std::string::npos);
  EXPECT_NE(row.find("\\clcbpat2147483647\\cellx99000\\clbrdrt"), std::string::npos);
  EXPECT_TRUE(row.ends_with("\\clcbpat2147483647\\cellx100000\\nowidctlpar\\widctlpar\\adjustright\r\n"));
}

TEST(RtfDocRows, AreUnshadedForEveryNegativeColour) {
  EXPECT_EQ(written([](RTFdoc& doc) { doc.BeginRow(2, -2); }), kRow + cells(1, 2) + kRowRest);
  EXPECT_EQ(written([](RTFdoc& doc) { doc.BeginRow(2, -2147483647 - 1); }), kRow + cells(1, 2) + kRowRest);
}

TEST(RtfDocRows, AreTheSameOnDisk) {
  const auto row = [](RTFdoc& doc) { doc.BeginRow(1000, 6); };
  EXPECT_TRUE(areSameBytes(kRow + cells(1, 1000, "\\clcbpat6") + kRowRest, writtenOnDisk(row)));
}

TEST(RtfDocLinks, MayHaveExactly4096Bytes) {
  const std::size_t length = 4096 - kLinkWords - 4;
  const auto link = [length](RTFdoc& doc) { doc.HyperLink(longText(length).c_str(), L"name"); };
  const std::string expected = kLinkFront + "name" + kLinkMiddle + std::string(length, 'x') + kLinkBack;
  ASSERT_EQ(expected.size(), 4096u);
  EXPECT_TRUE(areSameBytes(expected, written(link)));
  EXPECT_TRUE(areSameBytes(expected, writtenOnDisk(link)));
}

TEST(RtfDocLinks, AreDroppedEntirelyAbove4096Bytes) {
  const auto link = [](RTFdoc& doc) {
    doc.write(L"before", 0);
    doc.HyperLink(longText(4096 - kLinkWords - 3).c_str(), L"name");
    doc.write(L"behind", 0);
  };
  EXPECT_EQ(written(link), "beforebehind");
  EXPECT_EQ(writtenOnDisk(link), "beforebehind");
}

TEST(RtfDocLinks, AreDroppedForALongBookmarkAlone) {
  const auto link = [](RTFdoc& doc) {
    doc.HyperLink(L"See", longText(4097).c_str());
    doc.HyperLink(L"See", longText(4096 - kLinkWords - 2).c_str());
    doc.write(L"behind", 0);
  };
  EXPECT_EQ(written(link), "behind");
  EXPECT_EQ(writtenOnDisk(link), "behind");
}

TEST(RtfDocLinks, MayHaveABookmarkThatFillsTheFragment) {
  const std::size_t length = 4096 - kLinkWords - 3;
  EXPECT_TRUE(areSameBytes(kLinkFront + std::string(length, 'x') + kLinkMiddle + "See" + kLinkBack,
                           written([length](RTFdoc& doc) { doc.HyperLink(L"See", longText(length).c_str()); })));
}

TEST(RtfDocWrite, WritesUpTo4096BytesAndDropsMoreOnDiskToo) {
  const auto texts = [](RTFdoc& doc) {
    doc.write(longText(4096).c_str(), 0);
    doc.write(longText(4097).c_str(), 0);
    doc.write(L"y", 0);
  };
  EXPECT_TRUE(areSameBytes(std::string(4096, 'x') + "y", writtenOnDisk(texts)));
}

TEST(RtfDocWrite, KeepsTheOrderOfItsFragmentsAcrossFullBuffers) {
  std::string expected;
  const auto texts = [&expected](RTFdoc& doc) {
    expected.clear();
    for (int i = 0; i < 3000; ++i) {
      const std::string number = std::to_string(i);
      doc.write((std::wstring(number.begin(), number.end()) + longText(89)).c_str(), 0);
      doc.BoldOn();
      doc.BoldOff();
      expected += number + std::string(89, 'x') + "\\b{}\\b0 ";
    }
  };
  const std::string onDisk = writtenOnDisk(texts);
  EXPECT_TRUE(areSameBytes(expected, onDisk));
  EXPECT_TRUE(areSameBytes(expected, written(texts)));
}

TEST(RtfDocWrite, CallsAnOverriddenWriteOfAReportFile) {
  struct Upper : ReportFile {
    void Write(const void* data, std::size_t size) override { bytes.append(static_cast<const char*>(data), size); }
    std::string bytes;
  } file;
  const TemporaryFolder folder;
  ASSERT_TRUE(file.Open((folder / L"a.rtf").c_str()));
  RTFdoc doc;
  doc.BegDoc(&file, L"T", 0);
  file.bytes.clear();
  doc.write(L"text", 0);
  doc.Tab();
  EXPECT_EQ(file.bytes, "text\\tab ");
  EXPECT_TRUE(file.Close());
  EXPECT_EQ(bytesOf(folder / L"a.rtf"), "");
}

TEST(RtfDocCalls, AreFourForTheHeadOfADocument) {
  CallsFile file;
  RTFdoc doc;
  doc.BegDoc(&file, L"T", 1);
  EXPECT_EQ(file.calls, (Calls{"{\\rtf\\ansi{\\info{\\title T}} \r\n", std::string(kColorTable),
                               "\\landscape\\paperw16838\\paperh11906", "\r\n{"}));
}

TEST(RtfDocCalls, AreOneForAnEntryAndOneForTheControlWordsOfItsList) {
  EXPECT_EQ(callsOf([](RTFdoc& doc) {
              doc.AddFont(0, L"A", RTFdoc::ITEM_FIRST);
              doc.AddFont(1, L"B", RTFdoc::ITEM_LAST);
            }),
            (Calls{"\\fonttbl", "{\\f0{A}}\r\n", "{\\f1{B}}\r\n", "}{"}));
  EXPECT_EQ(callsOf([](RTFdoc& doc) {
              doc.AddStyle(0, L"A", nullptr, 20, 1, L"\\qc", RTFdoc::ITEM_FIRST);
              doc.AddStyle(1, L"B", nullptr, 20, 0, L"", RTFdoc::ITEM_LAST);
            }),
            (Calls{"\\stylesheet", "{\\s0\\fs20\\b\\qc{A}}\r\n", "{\\s1\\fs20{B}}\r\n", "}\r\n{"}));
}

TEST(RtfDocCalls, AreOneForAControlWordAndItsNumber) {
  EXPECT_EQ(callsOf([](RTFdoc& doc) {
              doc.FontColorOn(6);
              doc.BackgroundColorOn(7);
              doc.FontNo(3);
              doc.FontSize(20);
            }),
            (Calls{"\\cf6 ", "\\highlight7 ", "\\f3", "\\fs20 "}));
}

TEST(RtfDocCalls, AreNoneForADroppedOrEmptyText) {
  EXPECT_EQ(callsOf([](RTFdoc& doc) {
              doc.write(longText(4097).c_str(), 0);
              doc.HyperLink(L"See", longText(4097).c_str());
              doc.write(L"", 0);
              doc.write(nullptr, 5);
            }),
            Calls{});
}

TEST(RtfDocFonts, WriteAnEntryOfExactly1024UnitsInFull) {
  const auto font = [](std::size_t length) {
    return written([length](RTFdoc& doc) { doc.AddFont(1, longText(length).c_str(), RTFdoc::ITEM_INNER); });
  };
  EXPECT_EQ(font(1015), "{\\f1{" + std::string(1015, 'x') + "}}\r\n");
  EXPECT_EQ(font(1016), "{\\f1{" + std::string(1016, 'x') + "}}\r");
  EXPECT_EQ(font(1019), "{\\f1{" + std::string(1019, 'x'));
}

TEST(RtfDocStyles, WriteAnEntryOfExactly1024UnitsInFull) {
  const auto style = [](std::size_t length) {
    return written([length](RTFdoc& doc) {
      doc.AddStyle(1, longText(length).c_str(), nullptr, 20, 1, L"\\qc", RTFdoc::ITEM_INNER);
    });
  };
  EXPECT_EQ(style(1005), "{\\s1\\fs20\\b\\qc{" + std::string(1005, 'x') + "}}\r\n");
  EXPECT_EQ(style(1006), "{\\s1\\fs20\\b\\qc{" + std::string(1006, 'x') + "}}\r");
}

TEST(RtfDocStyles, AreTruncatedInsideTheirName) {
  EXPECT_EQ(written([](RTFdoc& doc) {
              doc.AddStyle(1, longText(1500).c_str(), nullptr, 20, 0, longText(500).c_str(), RTFdoc::ITEM_LAST);
            }),
            "{\\s1\\fs20" + std::string(500, 'x') + "{" + std::string(514, 'x') + "}\r\n{");
}

TEST(RtfDocLinks, WriteABookmarkOfExactly1024UnitsInFull) {
  const auto bookmark = [](std::size_t length) {
    return written([length](RTFdoc& doc) { doc.BookMark(longText(length).c_str()); });
  };
  // 14 + 498 + 13 + 498 + 1 = 1024
  const std::string name(498, 'x');
  EXPECT_EQ(bookmark(498), "{\\*\\bkmkstart " + name + "}{\\*\\bkmkend " + name + "}");
  EXPECT_EQ(bookmark(499), "{\\*\\bkmkstart x" + name + "}{\\*\\bkmkend " + name);
}

TEST(RtfDocLoss, CountsEveryCharacterOfADroppedText) {
  EXPECT_EQ(lostBy([](RTFdoc& doc) { doc.write((L"a" + longText(4096)).c_str(), 0); }), (Lost{4097, U'a'}));
  EXPECT_EQ(lostBy([](RTFdoc& doc) { doc.HyperLink(L"See", (L"b" + longText(4096)).c_str()); }), (Lost{4100, U'b'}));
}

TEST(RtfDocLoss, CountsEachDroppedCharacterOnlyOnce) {
  EXPECT_EQ(lostBy([](RTFdoc& doc) { doc.write((L"\u0141" + longText(4096)).c_str(), 0); }), (Lost{4097, 0x141}));
}

TEST(RtfDocLoss, CountsTruncatedCharacters) {
  EXPECT_EQ(lostBy([](RTFdoc& doc) { doc.AddFont(1, (longText(1019) + L"yz").c_str(), RTFdoc::ITEM_INNER); }),
            (Lost{2, U'y'}));
  EXPECT_EQ(lostBy([](RTFdoc& doc) { doc.AddFont(1, longText(1019).c_str(), RTFdoc::ITEM_INNER); }), (Lost{0, 0}));
  EXPECT_EQ(lostBy([](RTFdoc& doc) {
              doc.AddStyle(1, L"name", nullptr, 20, 0, (longText(1015) + L"abc").c_str(), RTFdoc::ITEM_INNER);
            }),
            (Lost{3 + 4, U'a'}));
  EXPECT_EQ(lostBy([](RTFdoc& doc) { doc.BookMark(longText(600).c_str()); }), (Lost{203, U'x'}));
}

TEST(RtfDocLoss, AccumulatesAndKeepsTheFirstCharacter) {
  EXPECT_EQ(lostBy([](RTFdoc& doc) {
              doc.write(L"a\u0141\u4E2D", 0);
              doc.write((L"b" + longText(4096)).c_str(), 0);
              doc.AddFont(1, (longText(1019) + L"\u03A9").c_str(), RTFdoc::ITEM_INNER);
            }),
            (Lost{2 + 4097 + 1, 0x141}));
}

TEST(RtfDocLoss, CountsTheTitleOfTheDocument) {
  MemoryFile file;
  RTFdoc doc;
  doc.BegDoc(&file, L"a\u4E2D", 0);
  EXPECT_EQ(doc.LostCharacters(), 1u);
  EXPECT_EQ(doc.FirstLostCharacter(), 0x4E2Du);
}

TEST(RtfDocLoss, IsTheSameOnDisk) {
  EXPECT_EQ(writtenOnDisk([](RTFdoc& doc) {
              doc.write(L"a\u0141b", 0);
              doc.write(longText(4097).c_str(), 0);
              EXPECT_EQ(doc.LostCharacters(), 4098u);
              EXPECT_EQ(doc.FirstLostCharacter(), 0x141u);
            }),
            "a?b");
}

TEST(RtfDocLoss, RestartsAtZeroWithEachDocument) {
  MemoryFile file;
  RTFdoc doc;
  doc.BegDoc(&file, L"T", 0);
  doc.write(L"\u4E2D", 0);
  doc.EndDoc();
  EXPECT_EQ(doc.LostCharacters(), 1u);
  doc.BegDoc(&file, L"T", 0);
  EXPECT_EQ(doc.LostCharacters(), 0u);
  doc.write(L"\u0141", 0);
  EXPECT_EQ(doc.LostCharacters(), 1u);
  EXPECT_EQ(doc.FirstLostCharacter(), 0x141u);
}

TEST(RtfDocLoss, CountsNothingWithoutAFile) {
  RTFdoc doc;
  doc.write(L"\u4E2D", 0);
  doc.write(longText(4097).c_str(), 0);
  doc.AddFont(1, longText(3000).c_str(), RTFdoc::ITEM_INNER);
  EXPECT_EQ(doc.LostCharacters(), 0u);
}
