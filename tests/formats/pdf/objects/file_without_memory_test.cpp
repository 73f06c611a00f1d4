#include "formats/pdf/objects/file_on_disk.h"
#include "formats/pdf/objects/sample.h"
#include "output/reason.h"
#include "support/bytes.h"
#include "support/captured_log.h"
#include "support/documents/pdf_structure.h"
#include "support/faults/allocation_counter.h"

#include <gtest/gtest.h>

#include <new>
#include <stdexcept>
#include <string>
#include <vector>

using namespace PDFStuffer;
using namespace scrivalen::test;
using scrivalen::Reason;

namespace {

using Extent = FailingAllocations::Extent;

}  // namespace

TEST(PdfFileWithoutMemory, EndsWithTheLastObjectThatIsWhole) {
  const FixedClock clock(0);
  FileOnDisk good;
  fillSample(good.pdf);
  const std::string expected = good.saved();
  bool failed = true;
  for (std::size_t nth = 1; failed; ++nth) {
    FileOnDisk file;
    fillSample(file.pdf);
    ASSERT_TRUE(file.pdf.beginSave());
    bool raised = false;
    try {
      const FailingAllocations memory(nth, Extent::One);
      failed = true;
      file.pdf.endSave();
      failed = memory.hasFailed();
    } catch (const std::bad_alloc&) {
      raised = true;
    }
    const std::string bytes = file.closed();
    EXPECT_EQ(raised, bytes != expected) << nth;
    EXPECT_TRUE(expected.starts_with(bytes)) << nth;
    EXPECT_TRUE(file.pdf.isWhole());
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
