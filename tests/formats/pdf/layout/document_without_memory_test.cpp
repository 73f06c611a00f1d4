#include "scrivalen/output_file.h"
#include "scrivalen/pdf_doc.h"
#include "support/bytes.h"
#include "support/captured_log.h"
#include "support/documents/pdf_structure.h"
#include "support/faults/out_of_memory.h"
#include "support/files.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

using namespace scrivalen::test;

namespace {

using Problems = std::vector<std::string>;

constexpr _RGB_COLOR kRed{1, 0, 0};
constexpr _RGB_COLOR kYellow{1, 1, 0};

void chooseFont(CPDFdoc& doc, int font, int size) {
  doc.FontNo(font);
  doc.FontSize(size);
}

void addTable(CPDFdoc& doc) {
  doc.BeginTable();
  for (const wchar_t* const text : {L"Bolt", L"A washer that takes more than a line of its cell\nand another", L""}) {
    doc.BeginRow(2);
    doc.BeginCell(kYellow);
    doc.write(text);
    doc.EndCell();
    doc.BeginCell(kRed);
    doc.HyperLink(L"to the end", L"end");
    doc.EndCell();
    doc.EndRow();
  }
  doc.EndTable();
}

void addChapter(CPDFdoc& doc, const wchar_t* name, int level) {
  doc.AddOutlineItem(name, name, level);
  chooseFont(doc, 1, 20);
  doc.BoldOn();
  doc.ColorOn(kRed);
  doc.Paragraf(0);
  doc.BookMark(name);
  doc.write(name);
  doc.BoldOff();
  doc.ColorOff();
  chooseFont(doc, 2, 12);
  doc.Paragraf(1);
  doc.write(L"A text of some words, ");
  doc.write(L"continued behind them.");
}

// A document of two pages, with a link that crosses the page break.
void fill(CPDFdoc& doc) {
  doc.AddFont(1, PDF_TIMES_ROMAN);
  doc.AddFont(2, PDF_HELVETICA);
  addChapter(doc, L"One", 0);
  addTable(doc);
  addChapter(doc, L"One and a half", 1);
  chooseFont(doc, 1, 200);
  doc.Paragraf(0);
  doc.write(L"1");
  chooseFont(doc, 1, 12);
  doc.Paragraf(0);
  doc.HyperLink(L"A link\n\n\n\n\n\n\nthat goes\n\n\n\n\n\n\nover the end\n\n\n\n\n\n\nof the page", L"One");
  doc.Paragraf(0);
  doc.BookMark(L"end");
  doc.write(L"The end");
  doc.AddOutlineItem(L"End", L"end", 0);
}

struct Attempt {
  int begun = 0;
  int result = 0;
  bool failed = false;
  bool failedWhileCollecting = false;
  std::wstring reason;
  std::string bytes;
};

struct DocumentWithoutMemory : testing::TestWithParam<std::tuple<Extent, int>> {
  Attempt attempt(std::size_t nth) {
    ReportFile file;
    EXPECT_TRUE(file.Open(path.c_str()));
    doc.SetConforming(conforming);
    Attempt result;
    {
      const FailingAllocations memory(nth, extent);
      result.begun = doc.BegDoc(file.Handle(), 0);
      fill(doc);
      result.failedWhileCollecting = memory.hasFailed();
      result.result = doc.EndDoc(nullptr);
      result.failed = memory.hasFailed();
    }
    EXPECT_TRUE(file.Close());
    result.reason = doc.WriteError();
    result.bytes = bytesOf(path);
    return result;
  }

  void expectGood(const Attempt& made) const {
    EXPECT_EQ(made.begun, 0);
    EXPECT_EQ(made.result, 0);
    EXPECT_EQ(made.reason, L"");
    EXPECT_TRUE(areSameBytes(good, made.bytes));
  }

  const Extent extent = std::get<0>(GetParam());
  const int conforming = std::get<1>(GetParam());
  const FixedClock clock{0};
  const UnfailingLog log;
  const TemporaryFolder folder;
  const std::wstring path = folder / L"a.pdf";
  CPDFdoc doc;
  const std::string good = attempt(0).bytes;
};

std::size_t countOf(std::string_view words, std::string_view bytes) {
  std::size_t count = 0;
  for (auto at = bytes.find(words); at != bytes.npos; at = bytes.find(words, at + 1)) {
    ++count;
  }
  return count;
}

std::string nameOf(const testing::TestParamInfo<DocumentWithoutMemory::ParamType>& test) {
  const auto& [extent, conforming] = test.param;
  return std::string(extent == Extent::One ? "OneFails" : "AllFail") + (conforming ? "Conforming" : "Classic");
}

}  // namespace

TEST_P(DocumentWithoutMemory, IsCompleteOrReportsWhyNot) {
  EXPECT_TRUE(good.ends_with("%%EOF"));
  EXPECT_EQ(PdfStructure(good, conforming != 0).problems(), Problems());
  EXPECT_EQ(countOf("/Type /Page\r\n", good), 2u);
  EXPECT_EQ(countOf("/Type /Annot\r\n", good), 5u);
  runOutOfMemory([this](std::size_t nth) {
    SCOPED_TRACE(nth);
    const Attempt made = attempt(nth);
    if (made.begun == 0 && made.result == 0) {
      expectGood(made);
    } else {
      EXPECT_TRUE(made.failed);
      EXPECT_EQ(made.begun, made.result == 0 ? -3 : 0);
      EXPECT_EQ(made.result, made.begun == 0 ? -1 : 0);
      EXPECT_NE(made.reason, L"");
      EXPECT_FALSE(doc.IsOpen());
      EXPECT_LT(made.bytes.size(), good.size());
      EXPECT_TRUE(areSameBytes(good.substr(0, made.bytes.size()), made.bytes));
      EXPECT_TRUE(made.bytes.empty() || !made.failedWhileCollecting);
    }
    EXPECT_EQ(UnfailingLog::lines(), std::vector<std::wstring>());
    expectGood(attempt(0));
    return made.failed && !HasFailure();
  });
}

INSTANTIATE_TEST_SUITE_P(Pdf, DocumentWithoutMemory,
                         testing::Combine(testing::Values(Extent::One, Extent::AllFromThere), testing::Values(0, 1)),
                         nameOf);
