#include "formats/pdf/objects/file_on_disk.h"
#include "formats/pdf/objects/sample.h"
#include "output/reason.h"
#include "support/allocation_counter.h"
#include "support/bytes.h"
#include "support/captured_log.h"
#include "support/pdf_structure.h"

#include <gtest/gtest.h>

#include <new>
#include <stdexcept>
#include <string>
#include <vector>

using namespace PDFStuffer;
using namespace scrivalen::test;
using scrivalen::platform::Reason;

namespace {

using Extent = FailingAllocations::Extent;

// Every object stands in the table at its number, and the next one gets the next.
bool isNumberedThroughout(const CPDFFile& pdf) {
  for (std::size_t i = 0; i < pdf.objects.size(); ++i) {
    if (pdf.objects[i]->objectNumber != i + 1) {
      return false;
    }
  }
  return pdf.nextObjectNumber == pdf.objects.size() + 1;
}

// Calls an action again and again, with memory that runs out a little later each time, until it is done. What it adds
// to the file it adds whole or not at all.
template <typename Action>
void expectAllOrNothing(CPDFFile& pdf, Action action) {
  const std::size_t before = pdf.objects.size();
  std::size_t nth = 1;
  for (bool done = false; !done; ++nth) {
    try {
      const FailingAllocations memory(nth, Extent::One);
      action(pdf);
      done = true;
    } catch (const std::bad_alloc&) {
      ASSERT_EQ(pdf.objects.size(), before) << nth;
    }
    ASSERT_TRUE(isNumberedThroughout(pdf)) << nth;
  }
  EXPECT_GT(nth, 2u);
  EXPECT_GT(pdf.objects.size(), before);
}

}  // namespace

TEST(PdfFileWithoutMemory, NumbersNothingThatItCannotMake) {
  CPDFFile pdf(nullptr, Form::Classic);
  pdf.AddAnnotation();
  for (int i = 0; i < 9; ++i) {  // some of them where the registry is full, one page with room for itself alone
    expectAllOrNothing(pdf, [](CPDFFile& file) { file.AddPage(u"a page of a name"); });
    expectAllOrNothing(pdf, [](CPDFFile& file) { file.AddAnnotation(); });
    expectAllOrNothing(pdf, [](CPDFFile& file) { file.CreateOutlines(); });
    expectAllOrNothing(pdf, [](CPDFFile& file) { file.make<CPDFOutLine>(); });
    expectAllOrNothing(pdf, [](CPDFFile& file) { file.AddStandardFont(u"a font of a name", PDF_COURIER); });
  }
  EXPECT_EQ(pdf.pages->children.size(), 9u);
  EXPECT_EQ(pdf.fonts.size(), 9u);
}

TEST(PdfFileWithoutMemory, HasATableOfWhatItCouldMake) {
  FileOnDisk file;
  fillSample(file.pdf);
  {
    const FailingAllocations memory(3, Extent::One);
    EXPECT_THROW(file.pdf.AddPage(u"lost"), std::bad_alloc);
  }
  file.pdf.AddPage(u"behind it")->AddFont(*file.pdf.fonts.front().font);
  const std::string bytes = file.saved();
  EXPECT_EQ(PdfStructure(bytes, false).problems(), std::vector<std::string>());
  EXPECT_EQ(PdfStructure(bytes, false).pageCount(), 3u);
}

TEST(PdfFileWithoutMemory, TellsSoWhateverOfAnObjectIsMissing) {
  const FixedClock clock(0);
  FileOnDisk good;
  fillSample(good.pdf);
  const std::string expected = good.saved();
  bool failed = true;
  for (std::size_t nth = 1; failed; ++nth) {
    FileOnDisk file;
    fillSample(file.pdf);
    ASSERT_TRUE(file.pdf.beginSave());
    {
      const FailingAllocations memory(nth, Extent::One);
      file.pdf.endSave();
      failed = memory.hasFailed();
    }
    const std::string bytes = file.closed();
    EXPECT_EQ(file.pdf.isWhole(), bytes == expected) << nth;
    EXPECT_EQ(file.pdf.writeError(), file.pdf.isWhole() ? L"" : L"There is not enough memory") << nth;
    EXPECT_TRUE(bytes.ends_with("%%EOF"));
  }
}

TEST(PdfFileWithoutMemory, WritesNothingWithoutRoomForItsBuffer) {
  FileOnDisk file;
  {
    const FailingAllocations memory(1, Extent::AllFromThere);
    EXPECT_THROW(file.pdf.beginSave(), std::bad_alloc);
  }
  EXPECT_EQ(file.closed(), "");
}

// A block that finds no memory to spare takes what it needs.
TEST(PdfMemBlockWithoutMemory, MakesDoWithLess) {
  CPDFMemBlock block;
  block.Append("kept");
  {
    const FailingAllocations memory(1, Extent::One);
    block.Append(", and so is this");
  }
  EXPECT_TRUE(block.isWhole());
}

TEST(PdfMemBlockWithoutMemory, TellsThatItIsNotWhole) {
  CPDFMemBlock block;
  {
    const FailingAllocations memory(1, Extent::AllFromThere);
    block.Append("lost");
  }
  EXPECT_FALSE(block.isWhole());
  CPDFMemBlock taker;
  taker.AppendBlock(block);
  EXPECT_FALSE(taker.isWhole());
}

TEST(ReasonOfAFailure, IsTheFirstOne) {
  Reason reason;
  EXPECT_TRUE(reason.empty());
  EXPECT_STREQ(reason.c_str(), L"");
  reason.keep(L"first");
  reason.keep(L"second");
  EXPECT_STREQ(reason.c_str(), L"first");
  reason.clear();
  EXPECT_TRUE(reason.empty());
  reason.keep(L"third");
  EXPECT_EQ(reason.text(), L"third");
}

TEST(ReasonOfAFailure, IsNeverWithoutAText) {
  Reason reason;
  reason.keep(L"");
  EXPECT_STREQ(reason.c_str(), L"The reason is not known");
}

TEST(ReasonOfAFailure, IsCutAtItsRoom) {
  Reason reason;
  reason.keep(longText(600));
  EXPECT_EQ(reason.text(), longText(511));
  EXPECT_EQ(reason.c_str()[511], L'\0');
}

TEST(ReasonOfAFailure, IsWhatWasRaised) {
  const auto raisedBy = [](auto raise) {
    Reason reason;
    try {
      raise();
    } catch (...) {
      const FailingAllocations memory(1, Extent::One);
      reason.keepRaised();
    }
    return std::wstring(reason.text());
  };
  EXPECT_EQ(raisedBy([] { throw std::bad_alloc(); }), L"There is not enough memory");
  EXPECT_EQ(raisedBy([] { throw std::runtime_error("bad"); }), L"bad");
  EXPECT_EQ(raisedBy([] { throw std::runtime_error("too long to stand in a string itself"); }),
            L"The reason is not known");
  EXPECT_EQ(raisedBy([] { throw 1; }), L"The reason is not known");
}

TEST(ReasonOfAFailure, StandsInTheRoomThereIs) {
  std::wstring text = longText(20);
  const std::size_t room = text.capacity();
  const std::wstring longer = longText(10 * room);
  {
    const FailingAllocations memory(1, Extent::AllFromThere);
    scrivalen::platform::assignWhatFits(text, longer);
  }
  EXPECT_EQ(text, longText(room));
  scrivalen::platform::assignWhatFits(text, longer);
  EXPECT_EQ(text, longer);
}
