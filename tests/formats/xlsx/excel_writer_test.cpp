#include "formats/xlsx/excel_writer.h"

#include "formats/xlsx/workbook/cell_text.h"
#include "support/bytes.h"
#include "support/captured_log.h"
#include "support/decimal_comma.h"
#include "support/documents/workbook.h"
#include "support/files.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cstdint>
#include <initializer_list>
#include <thread>

using namespace scrivalen::test;

namespace {

constexpr const wchar_t* kType = L"String";

// A spreadsheet and the lines logged about it, with "'a'" for its path.
class Written {
 public:
  template <typename Action>
  explicit Written(Action action, const wchar_t* styles = nullptr, const scrivalen::xlsx::SheetLimits& limits = {}) {
    const CapturedLog log;
    ExcelWriter writer(limits);
    EXPECT_TRUE(writer.Begin(path().c_str(), styles));
    action(writer);
    EXPECT_TRUE(writer.End());
    EXPECT_EQ(writer.Error(), L"");
    for (const std::wstring& line : log.lines()) {
      const std::size_t at = line.find(path());
      log_.push_back(at == std::wstring::npos ? line : line.substr(0, at) + L"a" + line.substr(at + path().size()));
    }
  }

  std::wstring path() const { return folder_ / L"a.xlsx"; }
  std::string cells() const { return readCells(path()); }
  std::string all() const { return readWorkbook(path()); }
  std::string sheet() const { return workbookPart(path(), "xl/worksheets/sheet1.xml"); }
  const std::vector<std::wstring>& log() const { return log_; }

 private:
  TemporaryFolder folder_;
  std::vector<std::wstring> log_;
};

using Lines = std::vector<std::wstring>;

void writeRow(ExcelWriter& writer, std::initializer_list<const wchar_t*> cells, bool bold = false) {
  writer.Row(true);
  for (const wchar_t* cell : cells) {
    writer.SetCellValue(kType, cell, bold);
  }
  writer.Row(false);
}

void writeColored(ExcelWriter& writer, std::initializer_list<const wchar_t*> colors) {
  writer.Row(true);
  for (const wchar_t* color : colors) {
    writer.SetCellValue(kType, color, color);
  }
  writer.Row(false);
}

// The widths of the columns for a row of texts.
std::string widths(std::initializer_list<const wchar_t*> cells, const wchar_t* styles = nullptr) {
  const std::string all = Written([&](ExcelWriter& writer) { writeRow(writer, cells); }, styles).all();
  return all.substr(all.find('\n') + 1, all.find("A1 ") - all.find('\n') - 1);
}

bool contains(std::string_view text, std::string_view part) { return text.find(part) != std::string_view::npos; }

}  // namespace

TEST(ExcelWriter, WritesRowsOfCells) {
  const Written written([](ExcelWriter& writer) {
    writer.Row(true);
    writer.SetCellValue(kType, L"plain", false);
    writer.SetCellValue(kType, L"bold", true);
    writer.SetCellValue(kType, L"red", L"red");
    writer.Row(false);
    writeRow(writer, {L"0042", L"1.5", L"=1+1"});
  });
  EXPECT_EQ(written.all(),
            "[Sheet1]\n"
            "A1 \"plain\"\n"
            "B1 \"bold\" bold\n"
            "C1 \"red\" fill=FF0000\n"
            "A2 \"0042\"\n"
            "B2 \"1.5\"\n"
            "C2 \"=1+1\"\n");
  EXPECT_TRUE(written.log().empty());
}

TEST(ExcelWriter, MayWriteNothing) {
  EXPECT_EQ(Written([](ExcelWriter&) {}).all(), "[Sheet1]\n");
  EXPECT_EQ(Written([](ExcelWriter& writer) { writeRow(writer, {}); }).all(), "[Sheet1]\n");
}

TEST(ExcelWriter, KeepsThePlacesOfEmptyRowsAndCells) {
  EXPECT_EQ(Written([](ExcelWriter& writer) {
              writeRow(writer, {L"a", L"", nullptr, L"d"});
              writeRow(writer, {});
              writeRow(writer, {L"", L""});
              writeRow(writer, {L"", L"b"});
            }).cells(),
            "A1 \"a\"\nD1 \"d\"\nB4 \"b\"\n");
}

TEST(ExcelWriter, WritesEmptyCellsThatHaveAFormat) {
  EXPECT_EQ(Written([](ExcelWriter& writer) {
              writer.Row(true);
              writer.SetCellValue(kType, L"", true);
              writer.SetCellValue(kType, nullptr, L"yellow");
              writer.Row(false);
            }).cells(),
            "A1 \"\" bold\nB1 \"\" fill=FFFF00\n");
}

TEST(ExcelWriter, TreatsAnyTypeAsAString) {
  EXPECT_EQ(Written([](ExcelWriter& writer) {
              writer.Row(true);
              writer.SetCellValue(L"Number", L"1", false);
              writer.SetCellValue(nullptr, L"2", false);
              writer.SetCellValue(nullptr, L"3", L"red");
              writer.Row(false);
            }).cells(),
            "A1 \"1\"\nB1 \"2\"\nC1 \"3\" fill=FF0000\n");
}

TEST(ExcelWriter, EndsAnOpenRowWhenTheNextBegins) {
  EXPECT_EQ(Written([](ExcelWriter& writer) {
              writer.Row(true);
              writer.SetCellValue(kType, L"a", false);
              writer.Row(true);
              writer.SetCellValue(kType, L"b", false);
            }).cells(),
            "A1 \"a\"\nA2 \"b\"\n");
}

TEST(ExcelWriter, IgnoresTheEndOfARowThatIsNotOpen) {
  EXPECT_EQ(Written([](ExcelWriter& writer) {
              writer.Row(false);
              writeRow(writer, {L"a"});
              writer.Row(false);
              writer.Row(false);
              writeRow(writer, {L"b"});
            }).cells(),
            "A1 \"a\"\nA2 \"b\"\n");
}

TEST(ExcelWriter, DropsCellsOutsideARowAndLogsIt) {
  const Written written([](ExcelWriter& writer) {
    writer.SetCellValue(kType, L"before", false);
    writeRow(writer, {L"a"});
    writer.SetCellValue(kType, L"behind", L"red");
  });
  EXPECT_EQ(written.cells(), "A1 \"a\"\n");
  EXPECT_EQ(written.log(), Lines{L"'a': 2 cells dropped outside of any row."});
}

TEST(ExcelWriter, WritesEveryCharacter) {
  const Written written([](ExcelWriter& writer) {
    writeRow(writer, {L"<a&b> \"c\" 'd' &amp;", L"na\u00EFve \u20AC \u4E2D\u6587", grin().c_str(),
                      L"two\nlines\tand a tab", L"100% %s %d"});
  });
  EXPECT_EQ(written.cells(),
            "A1 \"<a&b> \"c\" 'd' &amp;\"\n"
            "B1 \"na\xC3\xAFve \xE2\x82\xAC \xE4\xB8\xAD\xE6\x96\x87\"\n"
            "C1 \"\xF0\x9F\x98\x80\"\n"
            "D1 \"two\nlines\tand a tab\"\n"
            "E1 \"100% %s %d\"\n");
  EXPECT_TRUE(written.log().empty());
}

TEST(ExcelWriter, KeepsBlanksAroundTexts) {
  const Written written([](ExcelWriter& writer) { writeRow(writer, {L" a", L"b ", L"c c"}); });
  EXPECT_EQ(written.cells(), "A1 \" a\"\nB1 \"b \"\nC1 \"c c\"\n");
  EXPECT_TRUE(contains(written.sheet(), "<t xml:space=\"preserve\"> a</t>"));
  EXPECT_TRUE(contains(written.sheet(), "<t xml:space=\"preserve\">b </t>"));
  EXPECT_TRUE(contains(written.sheet(), "<t>c c</t>"));
}

TEST(ExcelWriter, EscapesControlCharacters) {
  std::wstring text;
  for (wchar_t c = 1; c < 0x20; ++c) {
    text += c;
  }
  const Written written([&](ExcelWriter& writer) {
    writeRow(writer, {text.c_str(),
                      L"a\x01"
                      L"b"});
  });
  EXPECT_TRUE(contains(written.sheet(), "<t>a_x0001_b</t>"));
  EXPECT_TRUE(contains(written.sheet(), "_x0008_\t\n_x000B__x000C__x000D__x000E_"));
  EXPECT_TRUE(written.cells().starts_with("A1 \"" + std::string(text.begin(), text.end()) + "\"\n"));
  EXPECT_TRUE(written.log().empty());
}

TEST(ExcelWriter, WritesWhatLooksLikeAnEscapeUnchanged) {
  const Written written([](ExcelWriter& writer) { writeRow(writer, {L"_x0041_", L"_x005F_x0041_", L"_x0041\x02"}); });
  EXPECT_EQ(written.cells(), "A1 \"_x0041_\"\nB1 \"_x005F_x0041_\"\nC1 \"_x0041\x02\"\n");
  EXPECT_TRUE(contains(written.sheet(), "<t>_x005F_x0041_</t>"));
}

TEST(ExcelWriter, ReplacesCharactersThatXmlForbidsAndLogsIt) {
  const std::wstring lone = L"a" + wideUnit(0xD83D) + L"b";
  const Written written([&](ExcelWriter& writer) { writeRow(writer, {L"\uFFFE", lone.c_str()}); });
  EXPECT_EQ(written.cells(),
            "A1 \"\xEF\xBF\xBD\"\nB1 \"a\xEF\xBF\xBD"
            "b\"\n");
  EXPECT_EQ(written.log(), Lines{L"'a': 2 characters could not be written as they were given, the first is U+FFFE."});
}

TEST(ExcelWriter, CutsLongCellsAndLogsIt) {
  const Written written([](ExcelWriter& writer) {
    writeRow(writer, {L"a", longText(32767).c_str()});
    writeRow(writer, {L"a", longText(32768).c_str(), longText(100000).c_str()});
  });
  const std::string longest(32767, 'x');
  EXPECT_TRUE(areSameBytes(
      "A1 \"a\"\nB1 \"" + longest + "\"\nA2 \"a\"\nB2 \"" + longest + "\"\nC2 \"" + longest + "\"\n", written.cells()));
  EXPECT_EQ(written.log(), Lines{L"'a': 2 cells cut at 32,767 characters, the first at Sheet1!B2."});
}

TEST(ExcelWriter, AcceptsACellFullOfControlCharacters) {
  const Written written([](ExcelWriter& writer) { writeRow(writer, {std::wstring(32767, L'\x01').c_str(), L"b"}); });
  EXPECT_TRUE(areSameBytes("A1 \"" + std::string(32767, '\x01') + "\"\nB1 \"b\"\n", written.cells()));
  EXPECT_TRUE(written.log().empty());
}

TEST(ExcelWriter, DropsCellsBeyondTheLastColumnAndLogsIt) {
  const Written written([](ExcelWriter& writer) {
    for (int row = 0; row < 2; ++row) {
      writer.Row(true);
      for (int column = 0; column < 16384 + row; ++column) {
        writer.SetCellValue(kType, column < 16383 ? L"" : L"x", false);
      }
      writer.Row(false);
    }
  });
  EXPECT_EQ(written.cells(), "XFD1 \"x\"\nXFD2 \"x\"\n");
  EXPECT_EQ(written.log(), Lines{L"'a': 1 cell dropped beyond column 16,384, the first at Sheet1!XFE2."});
}

// With widths from the style sheet, a sheet begins at once. It has 400 bytes before its rows, which have 261 each.
TEST(ExcelWriterSheets, EndBeforeARowThatHasNoRoom) {
  const Written written(
      [](ExcelWriter& writer) {
        for (int row = 0; row < 3; ++row) {
          writeRow(writer, {longText(200).c_str()});
        }
      },
      L"sheet { column-width: 9 }", {.bytes = 400 + 400});
  const std::string text(200, 'x');
  EXPECT_EQ(written.all(), "[Sheet1]\nA:XFD 9.7\nA1 \"" + text + "\"\nA2 \"" + text + "\"\n[Sheet2]\nA:XFD 9.7\nA1 \"" +
                               text + "\"\n");
  EXPECT_EQ(written.log(), Lines{L"'a': a sheet holds 1,048,576 rows and 4 GB, the others are on Sheet2."});
}

TEST(ExcelWriterSheets, LeaveLongTextsOutThatHaveNoRoom) {
  const Written written(
      [](ExcelWriter& writer) {
        writeRow(writer, {longText(1500).c_str(), longText(1500).c_str(), L"short", longText(2000).c_str()});
      },
      L"sheet { column-width: 9 }", {.bytes = 10000});
  EXPECT_EQ(written.cells(), "A1 \"" + std::string(1500, 'x') + "\"\nB1 \"\"\nC1 \"short\"\nD1 \"\"\n");
  EXPECT_EQ(written.log(), Lines{L"'a': 2 cells left empty beyond the 4 GB of a sheet, the first at Sheet1!B1."});
}

TEST(ExcelWriterSheets, HaveRoomForARowOfShortTextsAtTheirEnd) {
  constexpr std::uint64_t kMostOfACell = scrivalen::xlsx::kShortText * scrivalen::xlsx::kMostOfAUnit + 100;
  EXPECT_LE(scrivalen::xlsx::SheetLimits().bytes + scrivalen::xlsx::kMostColumns * kMostOfACell,
            scrivalen::ZipWriter::kLargestEntry);
}

TEST(ExcelWriter, HidesTheWarningsForNumbersStoredAsText) {
  EXPECT_TRUE(contains(Written([](ExcelWriter& writer) { writeRow(writer, {L"1"}); }).sheet(),
                       "<ignoredError sqref=\"A1:XFD1048576\" numberStoredAsText=\"1\"/>"));
}

TEST(ExcelWriterColors, FillTheCellAndColourItsText) {
  EXPECT_EQ(Written([](ExcelWriter& writer) {
              writeColored(writer, {L"red", L"#00fF7f", L"White;DarkBlue", L"red;", L";red", L"black", L"black;white"});
            }).cells(),
            "A1 \"red\" fill=FF0000\n"
            "B1 \"#00fF7f\" fill=00FF7F\n"
            "C1 \"White;DarkBlue\" color=FFFFFF fill=00008B\n"
            "D1 \"red;\" color=FF0000\n"
            "E1 \";red\" fill=FF0000\n"
            "F1 \"black\" fill=000000\n"
            "G1 \"black;white\" color=000000 fill=FFFFFF\n");
}

TEST(ExcelWriterColors, ThatAreUnknownAreIgnoredAndLogged) {
  const Written written([](ExcelWriter& writer) {
    writeColored(writer, {L"blurple", L"blurple", L"red;rot", L"#12345", L""});
    writeColored(writer, {nullptr});
  });
  EXPECT_EQ(written.cells(),
            "A1 \"blurple\"\n"
            "B1 \"blurple\"\n"
            "C1 \"red;rot\" color=FF0000\n"
            "D1 \"#12345\"\n");
  EXPECT_EQ(written.log(),
            Lines{L"'a': 4 cells without the colour, which is not known or one too many, the first is 'blurple'."});
}

TEST(ExcelWriterColors, MayBeMany) {
  const Written written([](ExcelWriter& writer) {
    for (unsigned i = 0; i < 2000; ++i) {
      wchar_t text[] = L"#000000";
      for (unsigned digit = 0, rest = i * 8191; digit < 6; ++digit, rest /= 10) {
        text[6 - digit] = static_cast<wchar_t>(L'0' + rest % 10);
      }
      writeColored(writer, {text});
    }
  });
  EXPECT_TRUE(contains(written.cells(), "A2 \"#008191\" fill=008191\n"));
  EXPECT_TRUE(contains(written.cells(), "A2000 \"#373809\" fill=373809\n"));
  EXPECT_TRUE(written.log().empty());
}

TEST(ExcelWriterColors, BeyondTheLimitOfFontsAreLogged) {
  const Written written([](ExcelWriter& writer) {
    for (unsigned i = 0; i < 510; ++i) {
      const std::wstring number = std::to_wstring(100000 + i);
      writeColored(writer, {(L"#" + number + L";").c_str()});
    }
  });
  EXPECT_TRUE(contains(written.cells(), "A500 \"#100499;\" color=100499\n"));
  EXPECT_TRUE(contains(written.cells(), "A501 \"#100500;\"\n"));
  EXPECT_EQ(written.log(),
            Lines{L"'a': 10 cells without the colour, which is not known or one too many, the first is '#100500;'."});
}

TEST(ExcelWriterStyles, ApplyToTheirCells) {
  EXPECT_EQ(Written(
                [](ExcelWriter& writer) {
                  writeRow(writer, {L"a"}, true);
                  writeRow(writer, {L"b", L""});
                  writeColored(writer, {L"red", L"green;", L"blurple"});
                },
                L"sheet { font-family: Arial } cell { font-size: 9; background-color: #EEEEEE }"
                L"bold { font-size: 12.5; color: white; background-color: navy }")
                .cells(),
            "A1 \"a\" bold 12.5 color=FFFFFF Arial fill=000080\n"
            "A2 \"b\" 9 Arial fill=EEEEEE\n"
            "B2 \"\" 9 Arial fill=EEEEEE\n"
            "A3 \"red\" 9 Arial fill=FF0000\n"
            "B3 \"green;\" 9 color=008000 Arial fill=EEEEEE\n"
            "C3 \"blurple\" 9 Arial fill=EEEEEE\n");
}

TEST(ExcelWriterStyles, ThatAreInvalidAreLoggedAndTheOthersApplied) {
  const Written written([](ExcelWriter& writer) { writeRow(writer, {L"a"}); },
                        L"cell { colour: red; font-size: large; background-color: yellow } row {}");
  EXPECT_EQ(written.cells(), "A1 \"a\" fill=FFFF00\n");
  EXPECT_EQ(written.log(), (Lines{L"'a': the style sheet is not understood: 'cell' has no 'colour'.",
                                  L"'a': the style sheet is not understood: 'large' is no value for 'font-size'.",
                                  L"'a': the style sheet is not understood: there is no rule 'row'."}));
}

TEST(ExcelWriterStyles, FreezeRows) {
  const Written written([](ExcelWriter& writer) { writeRow(writer, {L"a"}); }, L"sheet { freeze-rows: 1 }");
  EXPECT_TRUE(
      contains(written.sheet(), "<pane ySplit=\"1\" topLeftCell=\"A2\" activePane=\"bottomLeft\" state=\"frozen\"/>"));
}

// A width in the file is 5 pixels more than its digits, which have 7 pixels each.
TEST(ExcelWriterWidths, FitTheLongestTextOfTheRowsWithSeveralCells) {
  EXPECT_EQ(widths({L"twelve chars", L"short", L"\u4E2D\u6587\u4E2D\u6587\u4E2D\u6587 wide", L"nine char"}),
            "A 12.7\nC 17.7\nD 9.7\n");
  EXPECT_EQ(Written([](ExcelWriter& writer) {
              writeRow(writer, {L"a heading that is longer than any other text"});
              writeRow(writer, {L"much longer", L""});
              writeRow(writer, {L"short", L"another long one"});
            })
                .all()
                .substr(0, 26),
            "[Sheet1]\nA 11.7\nB 16.7\nA1 ");
}

TEST(ExcelWriterWidths, AreLeftOutWhenTheTextsAreShort) { EXPECT_EQ(widths({L"eight ch", L"nine char"}), "B 9.7\n"); }

TEST(ExcelWriterWidths, AreAtMostSixty) {
  EXPECT_EQ(widths({longText(59).c_str(), longText(60).c_str(), longText(61).c_str(), longText(5000).c_str()}),
            "A 59.7\nB:D 60.7\n");
}

TEST(ExcelWriterWidths, ComeFromTheFirst500RowsWithSeveralCells) {
  const auto widthsOf = [](int rows) {
    const std::string all = Written([rows](ExcelWriter& writer) {
                              writeRow(writer, {L"a heading"});
                              for (int i = 1; i < rows; ++i) {
                                writeRow(writer, {L"a", L"b"});
                              }
                              writeRow(writer, {L"a text of some length", L"c"});
                            }).all();
    return all.substr(0, all.find("A1 "));
  };
  EXPECT_EQ(widthsOf(500), "[Sheet1]\nA 21.7\n");
  EXPECT_EQ(widthsOf(501), "[Sheet1]\n");
}

TEST(ExcelWriterWidths, ComeFromTheFirst256KiB) {
  const auto widthsOf = [](int longRows) {
    const std::wstring text = longText(32700);
    const std::string all = Written([&](ExcelWriter& writer) {
                              for (int i = 0; i < longRows; ++i) {
                                writeRow(writer, {text.c_str()});
                              }
                              writeRow(writer, {L"a text of some length", L"c"});
                            }).all();
    return all.substr(0, all.find("A1 "));
  };
  EXPECT_EQ(widthsOf(8), "[Sheet1]\nA 21.7\n");
  EXPECT_EQ(widthsOf(9), "[Sheet1]\n");
}

TEST(ExcelWriterWidths, CountTheRowThatCompletesTheSample) {
  const std::wstring text = longText(32700);
  EXPECT_EQ(widths({L"a text of some length", text.c_str(), text.c_str(), text.c_str(), text.c_str(), text.c_str(),
                    text.c_str(), text.c_str(), text.c_str(), text.c_str(), text.c_str()}),
            "A 21.7\nB:J 60.7\n");
}

TEST(ExcelWriterWidths, AreTheSameForAllColumnsWhenTheStyleSaysSo) {
  EXPECT_EQ(widths({longText(30).c_str(), L"short"}, L"sheet { column-width: 20 }"), "A:XFD 20.7\n");
}

TEST(ExcelWriterDate, ComesFromTheClock) {
  const FixedClock clock(1730815620);
  const Written written([](ExcelWriter&) {});
  const std::string core = workbookPart(written.path(), "docProps/core.xml");
  EXPECT_TRUE(contains(core, "<dcterms:created xsi:type=\"dcterms:W3CDTF\">2024-11-05T14:07:00Z</dcterms:created>"));
  EXPECT_TRUE(contains(core, "<dcterms:modified xsi:type=\"dcterms:W3CDTF\">2024-11-05T14:07:00Z</dcterms:modified>"));
}

TEST(ExcelWriterDate, NeverComesFromTheSystem) {
  for (const std::int64_t seconds : {std::int64_t{0}, INT64_MIN, INT64_MAX, std::int64_t{1} << 40}) {
    const FixedClock clock(seconds);
    const Written written([](ExcelWriter&) {});
    EXPECT_TRUE(contains(workbookPart(written.path(), "docProps/core.xml"), ">1970-01-01T00:00:00Z<")) << seconds;
  }
}

TEST(ExcelWriterBytes, AreTheSameForTheSameCallsAndTime) {
  const FixedClock clock(1730815620);
  const auto write = [](ExcelWriter& writer) {
    writeRow(writer, {L"a", L"b"}, true);
    writeColored(writer, {L"red", L"#123456;white"});
  };
  EXPECT_TRUE(areSameBytes(bytesOf(Written(write).path()), bytesOf(Written(write).path())));
}

TEST(ExcelWriterBytes, AreTheSameUnderADecimalComma) {
  const FixedClock clock(1730815620);
  const auto write = [](ExcelWriter& writer) { writeRow(writer, {L"a text of some length", L"caf\u00E0"}); };
  const wchar_t* const styles = L"cell { font-size: 9.5 }";
  const Written before(write, styles);
  const DecimalComma comma;
  const Written written(write, styles);
  EXPECT_TRUE(contains(written.sheet(), "width=\"21.71\""));
  EXPECT_EQ(written.cells(), "A1 \"a text of some length\" 9.5\nB1 \"caf\xC3\xA0\" 9.5\n");
  EXPECT_TRUE(areSameBytes(bytesOf(before.path()), bytesOf(written.path())));
}

TEST(ExcelWriterBytes, DoNotChangeTheHostsLocale) {
  const DecimalComma comma;
  const Written written([](ExcelWriter& writer) {
    writeRow(writer, {L"a"});
    EXPECT_STREQ(std::localeconv()->decimal_point, ",");
  });
  EXPECT_STREQ(std::localeconv()->decimal_point, ",");
}

TEST(ExcelWriterBytes, AreTheSameInSeveralThreads) {
  const FixedClock clock(1730815620);
  const auto write = [](ExcelWriter& writer) {
    for (int i = 0; i < 2000; ++i) {
      writeRow(writer, {L"a text of some length", L"b"});
    }
  };
  const std::string expected = bytesOf(Written(write).path());
  const TemporaryFolder folder;
  std::vector<std::thread> threads;
  for (const wchar_t* name : {L"0", L"1", L"2", L"3"}) {
    threads.emplace_back([&, name] {
      ExcelWriter writer;
      EXPECT_TRUE(writer.Begin((folder / name).c_str(), nullptr));
      write(writer);
      EXPECT_TRUE(writer.End());
    });
  }
  for (std::thread& thread : threads) {
    thread.join();
  }
  for (const wchar_t* name : {L"0", L"1", L"2", L"3"}) {
    EXPECT_TRUE(areSameBytes(expected, bytesOf(folder / name)));
  }
}
