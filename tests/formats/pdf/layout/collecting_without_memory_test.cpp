#include "formats/pdf/layout/document.h"
#include "formats/pdf/layout/made_pdf.h"
#include "scrivalen/output_file.h"
#include "support/captured_log.h"
#include "support/faults/allocation_counter.h"
#include "support/files.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

using namespace scrivalen::pdf;
using namespace scrivalen::test;

namespace {

using Extent = FailingAllocations::Extent;

struct Call {
  const char* name;
  std::function<void(CPDFdoc&)> make;
};

// Longer than any string's own buffer or spare capacity.
const std::wstring kLong = std::wstring(300, L'a');

// Every kind of call that may allocate, each with a text or a number of its own.
const std::vector<Call>& callsThatAllocate() {
  static const std::vector<Call> calls = {
      {"AddFont", [](CPDFdoc& doc) { doc.AddFont(7, PDF_COURIER); }},
      {"write", [](CPDFdoc& doc) { doc.write(kLong.c_str()); }},
      {"write in another style",
       [](CPDFdoc& doc) {
         doc.FontSize(77);
         doc.write(L"a");
       }},
      {"BookMark", [](CPDFdoc& doc) { doc.BookMark(L"a place of a long name"); }},
      {"HyperLink", [](CPDFdoc& doc) { doc.HyperLink(nullptr, L"another place of a long name"); }},
      {"AddOutlineItem", [](CPDFdoc& doc) { doc.AddOutlineItem(kLong.c_str(), L"a third place", 0); }},
      {"Paragraf", [](CPDFdoc& doc) { doc.Paragraf(0); }}};
  return calls;
}

// Calls of every kind.
void callEverything(CPDFdoc& doc) {
  for (const Call& call : callsThatAllocate()) {
    call.make(doc);
  }
  doc.BeginTable();
  doc.BeginRow(1);
  doc.BeginCell(kWhiteCell);
  doc.write(kLong.c_str());
  doc.EndCell();
  doc.EndRow();
  doc.EndTable();
}

// A document of many paragraphs, which allocates often for items and texts.
struct OpenDocument {
  OpenDocument() {
    EXPECT_TRUE(file.Open(path.c_str()));
    EXPECT_EQ(doc.BegDoc(file.Handle(), 0), 0);
    doc.AddFont(1, PDF_TIMES_ROMAN);
    doc.FontNo(1);
    for (int i = 0; i < 4; ++i) {
      paragraph(doc, kLong.c_str());
    }
  }

  const TemporaryFolder folder;
  const std::wstring path = folder / L"a.pdf";
  ReportFile file;
  CPDFdoc doc;
};

}  // namespace

TEST(PdfDocWithoutMemory, DoesNothingAfterTheFirstFailure) {
  for (const Call& call : callsThatAllocate()) {
    SCOPED_TRACE(call.name);
    OpenDocument open;
    {
      const FailingAllocations memory(1, Extent::One);
      call.make(open.doc);
      ASSERT_TRUE(memory.hasFailed());
    }
    EXPECT_EQ(allocationsOf([&] { callEverything(open.doc); }), 0u);
    EXPECT_EQ(open.doc.EndDoc(nullptr), -1);
    EXPECT_STREQ(open.doc.WriteError(), L"There is not enough memory");
    EXPECT_TRUE(open.file.Close());
    EXPECT_EQ(bytesOf(open.path), "");
  }
}

TEST(PdfDocWithoutMemory, IsReadyForTheNextDocument) {
  const FixedClock clock(0);  // each page has the time at which it was written
  OpenDocument open;
  {
    const FailingAllocations memory(1, Extent::AllFromThere);
    open.doc.Paragraf(0);
    open.doc.EndDoc(nullptr);
    ASSERT_TRUE(memory.hasFailed());
  }
  EXPECT_FALSE(open.doc.IsOpen());
  EXPECT_EQ(madeInTimes([](CPDFdoc& doc) { paragraph(doc, L"next"); }).bytes, made(open.doc, [](CPDFdoc& doc) {
                                                                                doc.AddFont(1, PDF_TIMES_ROMAN);
                                                                                doc.FontNo(1);
                                                                                paragraph(doc, L"next");
                                                                              }).bytes);
}

TEST(PdfDocWithoutMemory, KeepsTheReasonWhenASecondDocumentIsRefused) {
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

TEST(PdfDocWithoutMemory, ReportsWhyItCannotBegin) {
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

TEST(PdfDocWithoutMemory, BreaksNoPageWhenPagesCannotBeGenerated) {
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

TEST(PdfItemText, OfMoreThanFourBillionUnitsIsRefused) {
  constexpr std::size_t kTooLong = std::size_t{1} << 32;
  CPDFparagraf item;
  const std::string text = "a";
  EXPECT_THROW(item.setText(std::string_view(text.data(), kTooLong)), std::length_error);
  EXPECT_TRUE(item.hasNoText());
}
