#include "formats/pdf/layout/document.h"
#include "formats/pdf/layout/made_pdf.h"
#include "scrivalen/output_file.h"
#include "support/allocation_counter.h"
#include "support/files.h"

#include <gtest/gtest.h>

#include <array>
#include <memory_resource>
#include <new>
#include <string>
#include <vector>

using namespace scrivalen::pdf;
using namespace scrivalen::test;

namespace {

using Extent = FailingAllocations::Extent;
using Strings = std::vector<std::string>;

// Calls an action again and again, with memory that runs out a little later each time, until it is done.
// @return how often it was not
template <typename Action, typename Check>
int failuresOf(Action action, Check check) {
  for (int failures = 0;; ++failures) {
    try {
      const FailingAllocations memory(static_cast<std::size_t>(failures) + 1, Extent::One);
      action();
      return failures;
    } catch (const std::bad_alloc&) {
      const UnfailingAllocations ownMemory;
      check();
    }
  }
}

std::u16string textOf(const TextBuffer& text) {
  return text.isWide() ? std::u16string(text.units()) : std::u16string(text.bytes().begin(), text.bytes().end());
}

// Far more than fits into a string itself, and into what one has grown to.
const std::wstring kLong = std::wstring(300, L'a');

// What a document becomes when a call of it finds no memory.
template <typename Before, typename Call, typename Behind>
MadePdf madeWithFailing(Before before, Call call, Behind behind) {
  const TemporaryFolder folder;
  const std::wstring path = folder / L"a.pdf";
  ReportFile file;
  EXPECT_TRUE(file.Open(path.c_str()));
  CPDFdoc doc;
  EXPECT_EQ(doc.BegDoc(file.Handle(), 0), 0);
  doc.AddFont(1, PDF_TIMES_ROMAN);
  doc.FontNo(1);
  before(doc);
  {
    const FailingAllocations memory(1, Extent::AllFromThere);
    call(doc);
    EXPECT_TRUE(memory.hasFailed());
  }
  behind(doc);
  EXPECT_EQ(doc.EndDoc(nullptr), -1);
  EXPECT_STREQ(doc.WriteError(), L"There is not enough memory");
  EXPECT_TRUE(file.Close());
  return MadePdf(bytesOf(path));
}

}  // namespace

TEST(PdfTextWithoutMemory, IsAppendedWholeOrNotAtAll) {
  const std::wstring plainThenWide = kLong + L"\x20AC" + kLong;
  for (const std::wstring& text : {kLong, plainThenWide}) {
    TextBuffer buffer;
    buffer.append(L"before");
    EXPECT_GT(failuresOf([&] { buffer.append(text); }, [&] { EXPECT_EQ(textOf(buffer), u"before"); }), 0);
    EXPECT_EQ(textOf(buffer).size(), 6 + text.size());
    EXPECT_EQ(textOf(buffer).substr(0, 8), u"beforeaa");
  }
}

TEST(PdfTextWithoutMemory, IsAppendedToWideTextWholeOrNotAtAll) {
  TextBuffer buffer;
  buffer.append(L"\x20AC");
  EXPECT_GT(failuresOf([&] { buffer.append(kLong); }, [&] { EXPECT_EQ(textOf(buffer), u"\u20AC"); }), 0);
  EXPECT_EQ(textOf(buffer).size(), 301u);
}

TEST(PdfTextWithoutMemory, IsAppendedAsWinAnsiWholeOrNotAtAll) {
  TextBuffer buffer;
  buffer.appendWinAnsi(L"before");
  const std::wstring text = kLong + kLong;  // in several pieces
  EXPECT_GT(failuresOf([&] { buffer.appendWinAnsi(text); }, [&] { EXPECT_EQ(buffer.bytes(), "before"); }), 1);
  EXPECT_EQ(buffer.bytes().size(), 606u);
}

TEST(PdfPoolWithoutMemory, KeepsAValueWithItsNumberOrNeither) {
  Pool<_RGB_COLOR> pool;
  int failures = 0;
  for (std::uint32_t i = 0; i < 9; ++i) {
    const _RGB_COLOR color{1.0 / (i + 1), 0, 0};
    std::uint32_t index = 0;
    failures += failuresOf([&] { index = pool.indexOf(color); }, [] {});
    EXPECT_EQ(index, i);
    EXPECT_EQ(pool[index].red, color.red);
  }
  EXPECT_GT(failures, 9);
}

TEST(PdfLinksWithoutMemory, KeepALinkWithItsNameOrNeither) {
  LinkTable links;
  int failures = 0;
  for (std::size_t i = 0; i < 9; ++i) {
    const std::u16string name = u"a name of a link " + std::u16string(i, u'x');
    const auto check = [&] { EXPECT_EQ(links.entries().size(), i); };
    failures += failuresOf([&] { EXPECT_EQ(links.named(name).name, name); }, check);
    ASSERT_EQ(links.entries().size(), i + 1);
    EXPECT_EQ(links.entries().back().name, name);
  }
  EXPECT_GT(failures, 18);
}

TEST(PdfDocWithoutMemory, LeavesAParagraphOut) {
  const MadePdf pdf = madeWithFailing(
      [](CPDFdoc& doc) {
        for (int i = 0; i < 4; ++i) {  // texts so long that no room is left for another
          paragraph(doc, kLong.c_str());
        }
      },
      [](CPDFdoc& doc) { doc.Paragraf(0); }, [](CPDFdoc& doc) { paragraph(doc, L"behind"); });
  EXPECT_EQ(pdf.texts(1).back(), "behind");
}

// Where the memory of the items ends differs: some of the documents meet it.
TEST(PdfDocWithoutMemory, GivesTheTextOfALostTableToNoParagraph) {
  int lost = 0;
  for (int paragraphs = 1; paragraphs < 80; ++paragraphs) {
    const TemporaryFolder folder;
    ReportFile file;
    ASSERT_TRUE(file.Open((folder / L"a.pdf").c_str()));
    CPDFdoc doc;
    ASSERT_EQ(doc.BegDoc(file.Handle(), 0), 0);
    for (int i = 0; i < paragraphs; ++i) {
      paragraph(doc, L"p");
    }
    {
      const FailingAllocations memory(1, Extent::AllFromThere);
      doc.BeginTable();
      lost += memory.hasFailed() ? 1 : 0;
    }
    doc.BeginRow(1);
    doc.BeginCell(kWhiteCell);
    doc.write(L"x");
    doc.EndCell();
    doc.EndRow();
    doc.EndTable();
    doc.EndDoc(nullptr);
    EXPECT_TRUE(file.Close());
    EXPECT_EQ(bytesOf(folder / L"a.pdf").find("(px)"), std::string::npos) << paragraphs;
  }
  EXPECT_GT(lost, 0);
}

TEST(PdfDocWithoutMemory, LeavesTheColumnOfALostCellEmpty) {
  const MadePdf pdf = madeWithFailing(
      [](CPDFdoc& doc) {
        doc.BeginTable();
        doc.BeginRow(3);
        doc.BeginCell({1, 0, 0});
        doc.write(L"a");
        doc.EndCell();
      },
      [](CPDFdoc& doc) {
        doc.BeginCell({0, 1, 0});
      },
      [](CPDFdoc& doc) {
        doc.BeginCell({0, 0, 1});
        doc.write(L"c");
      });
  EXPECT_NE(pdf.content(1).find("F\n50 789 171 16 re\nS\n"
                                "221 789 171 16 re\nS\n"
                                "0.000000 0.000000 1.000000 rg\n392 789 171 16 re\nF\n392 789 171 16 re\nS\n"),
            std::string::npos);
}

TEST(PdfDocWithoutMemory, GivesTheTextThatItCannotKeepToNoOtherParagraph) {
  const std::wstring text = std::wstring(100000, L'\n') + L"lost";
  const MadePdf pdf =
      madeWithFailing([&](CPDFdoc& doc) { paragraph(doc, text.c_str()); }, [](CPDFdoc& doc) { doc.Paragraf(0); },
                      [](CPDFdoc& doc) {
                        doc.write(L"behind");
                        paragraph(doc, L"and on");
                      });
  EXPECT_EQ(pdf.texts(1), (Strings{"behind", "and on"}));
  EXPECT_NE(pdf.content(1).find("\n50 794 Td\n"), std::string::npos);  // below two gaps: of the second paragraph
}

TEST(PdfDocWithoutMemory, GoesOnInTheParagraphThatAnOutlineEntryInterrupted) {
  const MadePdf pdf = madeWithFailing([](CPDFdoc& doc) { paragraph(doc, L"begun, "); },
                                      [](CPDFdoc& doc) { doc.AddOutlineItem(kLong.c_str(), L"a name of a link", 0); },
                                      [](CPDFdoc& doc) { doc.write(L"ended"); });
  EXPECT_EQ(pdf.texts(1), Strings{"begun, ended"});
}

TEST(PdfDocWithoutMemory, LeavesAWriteOutWhole) {
  const MadePdf pdf = madeWithFailing([](CPDFdoc& doc) { paragraph(doc, L"begun, "); },
                                      [](CPDFdoc& doc) {
                                        doc.FontSize(30);
                                        doc.write(kLong.c_str());
                                        doc.FontSize(12);
                                      },
                                      [](CPDFdoc& doc) { doc.write(L"ended"); });
  EXPECT_EQ(pdf.texts(1), Strings{"begun, ended"});
}

TEST(PdfDocWithoutMemory, RemembersItWhenASecondDocumentIsRefused) {
  const TemporaryFolder folder;
  ReportFile file;
  ASSERT_TRUE(file.Open((folder / L"a.pdf").c_str()));
  CPDFdoc doc;
  ASSERT_EQ(doc.BegDoc(file.Handle(), 0), 0);
  {
    const FailingAllocations memory(1, Extent::One);
    doc.AddFont(1, PDF_TIMES_ROMAN);
  }
  EXPECT_EQ(doc.BegDoc(file.Handle(), 0), -1);
  EXPECT_EQ(doc.EndDoc(nullptr), -1);
  EXPECT_STREQ(doc.WriteError(), L"There is not enough memory");
  EXPECT_EQ(doc.BegDoc(file.Handle(), 0), 0);
  EXPECT_STREQ(doc.WriteError(), L"");
}

TEST(PdfDocWithoutMemory, TellsWhyItCannotBegin) {
  const TemporaryFolder folder;
  ReportFile file;
  ASSERT_TRUE(file.Open((folder / L"a.pdf").c_str()));
  CPDFdoc doc;
  {
    const FailingAllocations memory(1, Extent::One);
    EXPECT_EQ(doc.BegDoc(file.Handle(), 0), -3);
  }
  EXPECT_FALSE(doc.IsOpen());
  EXPECT_STREQ(doc.WriteError(), L"There is not enough memory");
  EXPECT_EQ(doc.EndDoc(nullptr), 0);
  EXPECT_EQ(doc.BegDoc(file.Handle(), 0), 0);
}

TEST(PdfDocWithoutMemory, BreaksNoPageWhenThePagesCouldNotBeMade) {
  class OpenSteps : public CPDFdoc {
   public:
    using CPDFdoc::GeneratePages;
  };
  const TemporaryFolder folder;
  ReportFile file;
  ASSERT_TRUE(file.Open((folder / L"a.pdf").c_str()));
  bool failed = true;
  for (std::size_t nth = 1; failed; ++nth) {
    OpenSteps doc;
    ASSERT_EQ(doc.BegDoc(file.Handle(), 0), 0);
    paragraphs(doc, 40);
    {
      const FailingAllocations memory(nth, Extent::One);
      doc.GeneratePages();
      failed = memory.hasFailed();
    }
    const auto* const page = doc.GetCurrentPage();
    doc.PageBreak();
    EXPECT_EQ(doc.GetCurrentPage(), page);
  }
}

TEST(PdfItemText, OfMoreThanFourGigaUnitsIsRefused) {
  constexpr std::size_t kTooLong = std::size_t{1} << 32;
  CPDFparagraf item;
  const std::string text = "a";
  EXPECT_THROW(item.setText(std::string_view(text.data(), kTooLong)), std::length_error);
  EXPECT_TRUE(item.hasNoText());
}
