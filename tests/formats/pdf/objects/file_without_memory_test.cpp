#include "formats/pdf/objects/file_on_disk.h"
#include "formats/pdf/objects/sample.h"
#include "output/failure_reason.h"
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

TEST(PdfFileWithoutMemory, EndsAfterTheLastCompleteObject) {
  const FixedClock clock(0);
  FileOnDisk good;
  fillSample(good.pdf);
  const std::string expected = good.saved();
  bool failed = true;
  for (std::size_t nth = 1; failed; ++nth) {
    FileOnDisk file;
    fillSample(file.pdf);
    ASSERT_TRUE(file.pdf.beginSave());
    bool threw = false;
    try {
      const FailingAllocations memory(nth, Extent::One);
      failed = true;
      file.pdf.endSave();
      failed = memory.hasFailed();
    } catch (const std::bad_alloc&) {
      threw = true;
    }
    const std::string bytes = file.closed();
    EXPECT_EQ(threw, bytes != expected) << nth;
    EXPECT_TRUE(expected.starts_with(bytes)) << nth;
    EXPECT_EQ(file.pdf.writeError(), L"");
  }
}

TEST(PdfFileWithoutMemory, WritesNothingWithoutMemoryForItsBuffer) {
  FileOnDisk file;
  {
    const FailingAllocations memory(1, Extent::AllFromThere);
    EXPECT_THROW(file.pdf.beginSave(), std::bad_alloc);
  }
  EXPECT_EQ(file.closed(), "");
}

// A block falls back to the size it needs when there is no memory for spare room.
TEST(PdfMemBlockWithoutMemory, AllocatesOnlyWhatItNeeds) {
  CPDFMemBlock block;
  block.Append("kept");
  {
    const FailingAllocations memory(1, Extent::One);
    block.Append(", and so is this");
  }
  EXPECT_TRUE(block.isWhole());
}

TEST(PdfMemBlockWithoutMemory, ReportsThatItIsIncomplete) {
  CPDFMemBlock block;
  {
    const FailingAllocations memory(1, Extent::AllFromThere);
    block.Append("lost");
  }
  EXPECT_FALSE(block.isWhole());
  CPDFMemBlock target;
  target.AppendBlock(block);
  EXPECT_FALSE(target.isWhole());
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

TEST(ReasonOfAFailure, IsNeverEmpty) {
  Reason reason;
  reason.keep(L"");
  EXPECT_STREQ(reason.c_str(), L"The reason is not known");
}

TEST(ReasonOfAFailure, IsTruncatedToItsCapacity) {
  Reason reason;
  reason.keep(longText(600));
  EXPECT_EQ(reason.text(), longText(511));
  EXPECT_EQ(reason.c_str()[511], L'\0');
}

TEST(ReasonOfAFailure, ComesFromTheException) {
  const auto reasonOf = [](auto action) {
    Reason reason;
    try {
      action();
    } catch (...) {
      const FailingAllocations memory(1, Extent::One);
      reason.keepException();
    }
    return std::wstring(reason.text());
  };
  EXPECT_EQ(reasonOf([] { throw std::bad_alloc(); }), L"There is not enough memory");
  EXPECT_EQ(reasonOf([] { throw std::runtime_error("bad"); }), L"bad");
  EXPECT_EQ(reasonOf([] { throw std::runtime_error("too long to stand in a string itself"); }),
            L"The reason is not known");
  EXPECT_EQ(reasonOf([] { throw 1; }), L"The reason is not known");
}
