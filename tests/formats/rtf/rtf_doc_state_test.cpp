#include "formats/rtf/written.h"
#include "support/bytes.h"

#include <gtest/gtest.h>

#include <exception>
#include <stdexcept>

using namespace scrivalen::test;

namespace {

// Throws the same exception on every call once it is switched on.
struct ThrowingFile : OutputFile {
  void Write(const void*, std::size_t) override {
    if (throws) {
      std::rethrow_exception(exception);
    }
  }

  bool throws = false;
  const std::exception_ptr exception = std::make_exception_ptr(std::runtime_error("disk full"));
};

// Whether an action in an open document throws the file's own exception.
template <typename Action>
bool throwsTheFilesException(Action action) {
  ThrowingFile file;
  RTFdoc doc;
  doc.BegDoc(&file, L"T", 0);
  file.throws = true;
  try {
    action(doc);
  } catch (...) {
    return std::current_exception() == file.exception;
  }
  return false;
}

std::size_t distance(const void* from, const void* to) {
  return static_cast<std::size_t>(static_cast<const char*>(to) - static_cast<const char*>(from));
}

std::string characters(std::initializer_list<int> codes) {
  return written([codes](RTFdoc& doc) {
    for (const int code : codes) {
      doc.Char(static_cast<char>(code));
    }
  });
}

}  // namespace

TEST(RtfDocState, HasItsFieldsInDeclarationOrder) {
  const RTFdoc doc;
  constexpr std::size_t kPointer = sizeof(void*);
  EXPECT_EQ(distance(&doc, &doc.file), 0u);
  EXPECT_EQ(distance(&doc, &doc.nextStyle), kPointer);
  EXPECT_EQ(distance(&doc, &doc.fieldDepth), kPointer + 4);
  EXPECT_EQ(distance(&doc, &doc.reserved[0]), kPointer + 8);
  EXPECT_EQ(distance(&doc, &doc.reserved[1]), kPointer + 12);
  EXPECT_EQ(distance(&doc, &doc.underlineDepth), kPointer + 16);
  EXPECT_EQ(distance(&doc, &doc.nextParType), kPointer + 20);
}

TEST(RtfDocState, IsClosedAtFirst) {
  const RTFdoc doc;
  EXPECT_EQ(doc.file, nullptr);
  EXPECT_EQ(doc.fieldDepth, 0);
  EXPECT_EQ(doc.LostCharacters(), 0u);
}

TEST(RtfDocState, ResetsTheReservedCountersAtTheBeginning) {
  MemoryFile file;
  RTFdoc doc;
  doc.reserved[0] = 3;
  doc.reserved[1] = -4;
  doc.BegDoc(&file, L"T", 0);
  EXPECT_EQ(doc.reserved[0], 0);
  EXPECT_EQ(doc.reserved[1], 0);
  doc.reserved[0] = 5;
  doc.reserved[1] = 6;
  doc.BegDoc(nullptr, L"T", 0);
  EXPECT_EQ(doc.reserved[0], 0);
  EXPECT_EQ(doc.reserved[1], 0);
}

TEST(RtfDocState, IsDetachedFromItsFileByANullFile) {
  MemoryFile file;
  RTFdoc doc;
  doc.BegDoc(&file, L"T", 0);
  doc.Style(4);
  doc.UnderLineOn(0);
  doc.NextParJ(RTFdoc::PAR_RIGHT);
  const std::string document = file.bytes;
  EXPECT_EQ(doc.BegDoc(nullptr, L"U", 0), 0);
  EXPECT_EQ(doc.nextStyle, -1);
  EXPECT_EQ(doc.underlineDepth, 0);
  EXPECT_EQ(doc.nextParType, RTFdoc::PAR_RIGHT);
  doc.write(L"late", 0);
  doc.EndDoc();
  EXPECT_EQ(file.bytes, document);
}

TEST(RtfDocState, IsDetachedFromAFileOnDiskByANullFile) {
  EXPECT_EQ(writtenOnDisk([](RTFdoc& doc) {
              doc.write(L"kept", 0);
              doc.BegDoc(nullptr, L"U", 0);
              doc.write(L"late", 0);
              doc.Tab();
              doc.EndDoc();
            }),
            "kept");
}

TEST(RtfDocState, WritesToTheFileThatAProgramAssigns) {
  MemoryFile other;
  EXPECT_EQ(writtenOnDisk([&other](RTFdoc& doc) {
              OutputFile* const first = doc.file;
              doc.file = &other;
              doc.write(L"other", 0);
              doc.Tab();
              doc.file = first;
              doc.write(L"first", 0);
            }),
            "first");
  EXPECT_EQ(other.bytes, "other\\tab ");
}

TEST(RtfDocCopy, CopiesTheFieldsAndSharesTheFile) {
  MemoryFile file;
  RTFdoc doc;
  doc.BegDoc(&file, L"T", 0);
  doc.Style(4);
  doc.BeginField();
  doc.reserved[0] = 7;
  doc.reserved[1] = 8;
  doc.UnderLineOn(0);
  doc.NextParJ(RTFdoc::PAR_CENTER);
  RTFdoc copy = doc;
  EXPECT_EQ(copy.file, &file);
  EXPECT_EQ(copy.nextStyle, 4);
  EXPECT_EQ(copy.fieldDepth, 1);
  EXPECT_EQ(copy.reserved[0], 7);
  EXPECT_EQ(copy.reserved[1], 8);
  EXPECT_EQ(copy.underlineDepth, 1);
  EXPECT_EQ(copy.nextParType, RTFdoc::PAR_CENTER);
  file.bytes.clear();
  copy.write(L"copy ", 0);
  doc.write(L"doc ", 0);
  copy.UnderLineOff(0);
  EXPECT_EQ(file.bytes, "copy doc \\ul0 ");
  EXPECT_EQ(doc.underlineDepth, 1);
}

TEST(RtfDocCopy, WritesToTheSameFileOnDisk) {
  EXPECT_EQ(writtenOnDisk([](RTFdoc& doc) {
              doc.write(L"a", 0);
              RTFdoc copy = doc;
              copy.write(L"b", 0);
              doc.Tab();
              copy.EndDoc();
              doc.write(L"c", 0);
            }),
            "ab\\tab }}c");
}

TEST(RtfDocWithoutAFile, DecrementsTheUnderlineCounter) {
  RTFdoc doc;
  doc.UnderLineOn(0);
  doc.UnderLineOn(0);
  doc.UnderLineOff(0);
  EXPECT_EQ(doc.underlineDepth, 1);
  doc.UnderLineOff(0);
  doc.UnderLineOff(0);
  EXPECT_EQ(doc.underlineDepth, 0);
}

TEST(RtfDocWithoutAFile, ForgetsThePendingAlignmentAtACarriageReturn) {
  RTFdoc doc;
  doc.NextParJ(RTFdoc::PAR_RIGHT);
  doc.Style(2);
  doc.SpecChar(13);
  EXPECT_EQ(doc.nextParType, RTFdoc::PAR_DEFAULT);
  EXPECT_EQ(doc.nextStyle, -1);
  doc.NextParJ(RTFdoc::PAR_CENTER);
  doc.Char('\r');
  EXPECT_EQ(doc.nextParType, RTFdoc::PAR_DEFAULT);
}

TEST(RtfDocWithoutAFile, CountsFieldsBelowZero) {
  RTFdoc doc;
  doc.EndField();
  doc.EndField();
  EXPECT_EQ(doc.fieldDepth, -2);
  doc.EndDoc();
  EXPECT_EQ(doc.fieldDepth, -2);
}

TEST(RtfDocWithoutAFile, IgnoresCallsBeforeTheFirstDocument) {
  RTFdoc doc;
  doc.AddFont(1, L"Arial", RTFdoc::ITEM_FIRST);
  doc.AddStyle(1, L"Heading", nullptr, 20, 1, L"\\qc", RTFdoc::ITEM_LAST);
  doc.BeginRow(3, 6);
  doc.HyperLink(L"See", L"sec1");
  doc.Char('x');
  EXPECT_EQ(doc.file, nullptr);
  MemoryFile file;
  doc.BegDoc(&file, L"T", 0);
  EXPECT_EQ(file.bytes,
            "{\\rtf\\ansi{\\info{\\title T}} \r\n" + std::string(kColorTable) + "\\paperw11906\\paperh16838\r\n{");
}

TEST(RtfDocEnd, LeavesThreeOpenFieldsAtMinusOneForTheNextDocument) {
  MemoryFile file;
  RTFdoc doc;
  doc.BegDoc(&file, L"T", 0);
  doc.BeginField();
  doc.BeginField();
  doc.BeginField();
  file.bytes.clear();
  doc.EndDoc();
  EXPECT_EQ(file.bytes, "}}}\n}}}\n}}");
  EXPECT_EQ(doc.fieldDepth, -1);
  doc.BegDoc(&file, L"T", 0);
  EXPECT_EQ(doc.fieldDepth, -1);
  doc.BeginField();
  file.bytes.clear();
  doc.EndDoc();
  EXPECT_EQ(file.bytes, "}}");
}

TEST(RtfDocExceptions, PropagateUnchangedFromTheFile) {
  EXPECT_TRUE(throwsTheFilesException([](RTFdoc& doc) { doc.BoldOn(); }));
  EXPECT_TRUE(throwsTheFilesException([](RTFdoc& doc) { doc.Char('x'); }));
  EXPECT_TRUE(throwsTheFilesException([](RTFdoc& doc) { doc.FontColorOn(6); }));
  EXPECT_TRUE(throwsTheFilesException([](RTFdoc& doc) { doc.FontSize(20); }));
  EXPECT_TRUE(throwsTheFilesException([](RTFdoc& doc) { doc.write(L"text", 0); }));
  EXPECT_TRUE(throwsTheFilesException([](RTFdoc& doc) { doc.HyperLink(L"text", L"name"); }));
  EXPECT_TRUE(throwsTheFilesException([](RTFdoc& doc) { doc.AddFont(1, L"name", RTFdoc::ITEM_INNER); }));
  EXPECT_TRUE(throwsTheFilesException([](RTFdoc& doc) { doc.Paragraf(RTFdoc::PAR_LEFT, 1); }));
  EXPECT_TRUE(throwsTheFilesException([](RTFdoc& doc) { doc.BeginRow(3, 6); }));
  EXPECT_TRUE(throwsTheFilesException([](RTFdoc& doc) { doc.EndDoc(); }));
}

TEST(RtfDocExceptions, PropagateFromTheHead) {
  ThrowingFile file;
  file.throws = true;
  RTFdoc doc;
  try {
    doc.BegDoc(&file, L"T", 0);
    FAIL() << "nothing raised";
  } catch (...) {
    EXPECT_EQ(std::current_exception(), file.exception);
  }
}

TEST(RtfDocExceptions, DoNotOccurForADroppedFragment) {
  EXPECT_FALSE(throwsTheFilesException([](RTFdoc& doc) { doc.write(longText(4097).c_str(), 0); }));
}

TEST(RtfDocChar, WritesControlCharactersAsBreaks) {
  EXPECT_EQ(characters({7}), "\\par\\pard\\plain ");
  EXPECT_EQ(characters({9}), "\\tab ");
  EXPECT_EQ(characters({11}), "\\line ");
  EXPECT_EQ(characters({12}), "\\page ");
  EXPECT_EQ(characters({14}), "\\page ");
}

TEST(RtfDocChar, WritesNothingForOtherControlCharacters) {
  EXPECT_EQ(characters({0, 1, 6, 8, 10, 15, 31}), "");
  EXPECT_EQ(characters({31, 32, 33}), " !");
}

TEST(RtfDocChar, EndsTheParagraphInThePendingStyleAtABell) {
  EXPECT_EQ(written([](RTFdoc& doc) {
              doc.Style(5);
              doc.NextParJ(RTFdoc::PAR_RIGHT);
              doc.Char('\a');
              doc.Char('\r');
            }),
            "\\s5\\par\\pard\\plain \\qr\\par\\pard\\plain ");
}

TEST(RtfDocNullTexts, AreEmpty) {
  EXPECT_EQ(written([](RTFdoc& doc) { doc.AddFont(1, nullptr, RTFdoc::ITEM_INNER); }), "{\\f1{}}\r\n");
  EXPECT_EQ(written([](RTFdoc& doc) { doc.HyperLink(nullptr, nullptr); }),
            " {\\field{\\*\\fldinst {HYPERLINK \\\\l \"\" }}{\\fldrslt {\\cs15\\ul\\cf2 }}} ");
  EXPECT_EQ(written([](RTFdoc& doc) { doc.BookMark(nullptr); }), "{\\*\\bkmkstart }{\\*\\bkmkend }");
  EXPECT_EQ(written([](RTFdoc& doc) { doc.write(nullptr, 7); }), "");
}

TEST(RtfDocNullTexts, MakeAnEmptyTitle) {
  MemoryFile file;
  RTFdoc doc;
  EXPECT_EQ(doc.BegDoc(&file, nullptr, 0), 1);
  EXPECT_TRUE(file.bytes.starts_with("{\\rtf\\ansi{\\info{\\title }} \r\n{\\colortbl;"));
}

TEST(RtfDocStyles, TreatEveryOtherPositionAsInner) {
  const auto style = [](int position) {
    return written([position](RTFdoc& doc) {
      doc.AddStyle(7, L"X", nullptr, 20, 0, L"", static_cast<RTFdoc::ITEM_TYPE>(position));
    });
  };
  EXPECT_EQ(style(1), "{\\s7\\fs20{X}}\r\n");
  EXPECT_EQ(style(9), "{\\s7\\fs20{X}}\r\n");
  EXPECT_EQ(style(-1), "{\\s7\\fs20{X}}\r\n");
}

TEST(RtfDocFonts, TreatANegativePositionAsInner) {
  EXPECT_EQ(written([](RTFdoc& doc) { doc.AddFont(-7, L"X", static_cast<RTFdoc::ITEM_TYPE>(-1)); }), "{\\f-7{X}}\r\n");
}

TEST(RtfDocFlags, AreOnForEveryNonZeroValue) {
  for (const int on : {1, 2, -1, 256}) {
    EXPECT_EQ(written([on](RTFdoc& doc) { doc.AddStyle(1, L"", nullptr, 20, on, L"", RTFdoc::ITEM_INNER); }),
              "{\\s1\\fs20\\b}\r\n");
    EXPECT_EQ(written([on](RTFdoc& doc) { doc.Numbers(on); }), "\\pn{");
    MemoryFile file;
    RTFdoc doc;
    doc.BegDoc(&file, L"T", on);
    EXPECT_TRUE(file.bytes.ends_with("}\\landscape\\paperw16838\\paperh11906\r\n{"));
  }
}

TEST(RtfDocFormatting, FontSizesAreSignedBytes) {
  EXPECT_EQ(written([](RTFdoc& doc) { doc.FontSize(1); }), "\\fs1 ");
  EXPECT_EQ(written([](RTFdoc& doc) { doc.FontSize(static_cast<char>(128)); }), "");
  EXPECT_EQ(written([](RTFdoc& doc) { doc.FontSize(static_cast<char>(200)); }), "");
}

TEST(RtfDocWrite, WritesANulWithinItsLength) {
  EXPECT_EQ(written([](RTFdoc& doc) { doc.write(L"a\0b", 3); }), std::string("a\0b", 3));
  EXPECT_EQ(written([](RTFdoc& doc) { doc.write(L"a\0b", 0); }), "a");
}

TEST(RtfDocument, IsFontsStylesBodyAndEnd) {
  MemoryFile file;
  RTFdoc doc;
  doc.BegDoc(&file, L"Sales", 0);
  doc.AddFont(0, L"Arial", RTFdoc::ITEM_FIRST);
  doc.AddFont(1, L"Courier", RTFdoc::ITEM_LAST);
  doc.AddStyle(0, L"Normal", nullptr, 20, 0, L"", RTFdoc::ITEM_FIRST);
  doc.AddStyle(1, L"Heading", nullptr, 32, 1, L"\\f1", RTFdoc::ITEM_LAST);
  doc.write(L"Year", 0);
  doc.Paragraf(RTFdoc::PAR_CENTER, 1);
  doc.BeginTable();
  doc.BeginRow(1, -1);
  doc.BeginCell();
  doc.write(L"42", 0);
  doc.EndCell();
  doc.EndRow();
  doc.EndTable();
  doc.EndDoc();
  EXPECT_TRUE(areSameBytes("{\\rtf\\ansi{\\info{\\title Sales}} \r\n" + std::string(kColorTable) +
                               "\\paperw11906\\paperh16838\r\n{"
                               "\\fonttbl{\\f0{Arial}}\r\n{\\f1{Courier}}\r\n}{"
                               "\\stylesheet{\\s0\\fs20{Normal}}\r\n{\\s1\\fs32\\b\\f1{Heading}}\r\n}\r\n{"
                               "Year\\s1\\qc\\par\\pard\\plain \\par " +
                               kRow + kBorders + "\\cellx1000" + kRowRest +
                               "\\intbl 42\\cell \r\n\\pard \\nowidctlpar\\widctlpar\\adjustright\\row\\pard}\r\n}}",
                           file.bytes));
}
