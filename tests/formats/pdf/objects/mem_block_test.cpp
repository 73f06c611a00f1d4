#include "formats/pdf/objects/mem_block.h"

#include <gtest/gtest.h>

#include <limits>
#include <type_traits>

using namespace PDFStuffer;

namespace {

// More than any machine has, so the block does not even ask the allocator.
constexpr std::uint64_t kImpossible = std::uint64_t{1} << 63;

static_assert(std::has_virtual_destructor_v<CPDFMemBlock>);
static_assert(!std::is_copy_constructible_v<CPDFMemBlock>);

}  // namespace

TEST(PdfMemBlock, IsEmptyAtFirst) {
  const CPDFMemBlock block;
  EXPECT_EQ(block.data, nullptr);
  EXPECT_EQ(block.size, 0u);
  EXPECT_EQ(block.free, 0u);
  EXPECT_EQ(block.length(), 0u);
  EXPECT_EQ(block.text(), "");
  EXPECT_EQ(block.form(), Form::Classic);
  EXPECT_FALSE(block.isConforming());
}

TEST(PdfMemBlock, HasTheGivenForm) { EXPECT_TRUE(CPDFMemBlock(Form::Conforming).isConforming()); }

TEST(PdfMemBlock, GrowsByTwiceTheMissingBytes) {
  CPDFMemBlock block;
  block.Append("abc");
  EXPECT_EQ(block.size, 6u);
  EXPECT_EQ(block.free, 3u);
  block.Append("defgh");
  EXPECT_EQ(block.size, 10u);
  EXPECT_EQ(block.free, 2u);
  EXPECT_EQ(block.text(), "abcdefgh");
}

TEST(PdfMemBlock, DoesNotGrowForTextThatFits) {
  CPDFMemBlock block;
  block.Append("abc");
  block.Append("def");
  EXPECT_EQ(block.size, 6u);
  EXPECT_EQ(block.free, 0u);
  EXPECT_EQ(block.text(), "abcdef");
}

TEST(PdfMemBlock, GrowsByTwoForASingleCharacter) {
  CPDFMemBlock block;
  block.Append("/");
  EXPECT_EQ(block.size, 2u);
  EXPECT_EQ(block.free, 1u);
}

TEST(PdfMemBlock, CountsCodeUnitsOfWideTextWhenItGrows) {
  CPDFMemBlock block;
  block.Append(u"abc");
  EXPECT_EQ(block.size, 6u);
  EXPECT_EQ(block.free, 3u);
  EXPECT_EQ(block.length(), 3u);
  EXPECT_EQ(block.text(), "abc");
}

TEST(PdfMemBlock, IgnoresNullAndEmptyTexts) {
  CPDFMemBlock block;
  block.Append(std::string_view());
  block.Append(std::u16string_view());
  block.Append("");
  block.Append(u"");
  block.AppendBlock(CPDFMemBlock());
  EXPECT_EQ(block.data, nullptr);
  EXPECT_EQ(block.size, 0u);
}

TEST(PdfMemBlock, KeepsTheLowByteOfEachCodeUnit) {
  CPDFMemBlock block;
  block.Append(u"\u00E9\u0141\u20AC");
  EXPECT_EQ(block.text(), "\xE9\x41\xAC");
}

TEST(PdfMemBlock, KeepsALowByteForEachHalfOfASurrogatePair) {
  CPDFMemBlock block;
  block.Append(u"\U0001F600");
  EXPECT_EQ(block.text(), std::string_view("\x3D\x00", 2));
}

TEST(PdfMemBlock, IncreasesBothCountsWhenItReserves) {
  CPDFMemBlock block;
  block.Append("abc");
  block.Reserve(10);
  EXPECT_EQ(block.size, 16u);
  EXPECT_EQ(block.free, 13u);
  EXPECT_EQ(block.text(), "abc");
}

TEST(PdfMemBlock, AppendsABlockByTheSameRule) {
  CPDFMemBlock part;
  part.Append("four");
  CPDFMemBlock whole;
  whole.Append("a");
  whole.AppendBlock(part);
  EXPECT_EQ(whole.size, 8u);
  EXPECT_EQ(whole.free, 3u);
  EXPECT_EQ(whole.text(), "afour");
  EXPECT_EQ(part.text(), "four");
}

// Two blocks that grow in turn cannot grow in place.
TEST(PdfMemBlock, IsNotCopiedForEachGrowthOfALongText) {
  CPDFMemBlock block;
  CPDFMemBlock neighbour;
  const char* memory = nullptr;
  int moves = 0;
  for (int i = 0; i < 10000; ++i) {
    block.Append("12345");
    neighbour.Append("12345");
    moves += block.data.get() == memory ? 0 : 1;
    memory = block.data.get();
  }
  EXPECT_LE(moves, 20);
  EXPECT_EQ(block.size, 50000u);
  EXPECT_EQ(block.length(), 50000u);
}

TEST(PdfMemBlock, GrowsByItsCountsAndNotByItsMemory) {
  CPDFMemBlock block;
  block.Append("0123456789");
  block.Append("0123456789a");
  EXPECT_EQ(block.size, 22u);
  block.Rewind();
  EXPECT_EQ(block.size, 22u);
  EXPECT_EQ(block.free, 22u);
  block.Append("0123456789012345678901");
  block.Append("x");
  EXPECT_EQ(block.size, 24u);
  EXPECT_EQ(block.free, 1u);
}

TEST(PdfMemBlock, KeepsItsMemoryWhenRewound) {
  CPDFMemBlock block;
  block.Append("abc");
  const char* const memory = block.data.get();
  block.Rewind();
  EXPECT_EQ(block.text(), "");
  block.Append("xy");
  EXPECT_EQ(block.data.get(), memory);
  EXPECT_EQ(block.size, 6u);
  EXPECT_EQ(block.text(), "xy");
}

TEST(PdfMemBlockWithoutMemory, StaysEmptyWhenItWasEmpty) {
  CPDFMemBlock block;
  block.Reserve(kImpossible);
  EXPECT_EQ(block.data, nullptr);
  EXPECT_EQ(block.size, 0u);
  EXPECT_EQ(block.free, 0u);
  block.Append("abc");
  EXPECT_EQ(block.text(), "abc");
}

TEST(PdfMemBlockWithoutMemory, StillCountsTheReservedBytes) {
  CPDFMemBlock block;
  block.Append("abc");
  const char* const memory = block.data.get();
  block.Reserve(kImpossible);
  EXPECT_EQ(block.size, kImpossible + 6);
  EXPECT_EQ(block.free, kImpossible + 3);
  EXPECT_EQ(block.data.get(), memory);
  EXPECT_EQ(block.text(), "abc");
}

TEST(PdfMemBlockWithoutMemory, DropsAndCountsTextThatDoesNotFit) {
  CPDFMemBlock block;
  block.Append("abc");
  block.Reserve(kImpossible);
  block.Append("de");
  EXPECT_EQ(block.text(), "abcde");
  block.Append("fgh");
  block.Append(u"i");
  EXPECT_EQ(block.text(), "abcde");
  EXPECT_EQ(block.length(), 9u);
  EXPECT_EQ(block.free, kImpossible - 3);
}

TEST(PdfMemBlockWithoutMemory, AppendsOnlyTheBytesThatItHasKept) {
  CPDFMemBlock block;
  block.Append("abc");
  block.Reserve(kImpossible);
  block.Append("too long for it");
  CPDFMemBlock whole;
  whole.AppendBlock(block);
  EXPECT_EQ(whole.text(), "abc");
}

TEST(PdfMemBlockWithoutMemory, FillsDroppedBytesWithZerosWhenMemoryReturns) {
  CPDFMemBlock block;
  block.Append("abc");
  block.Reserve(kImpossible);
  block.Append("lost text");
  block.Reserve(kImpossible);  // wraps the counts back to their earlier values
  block.Reserve(20);
  block.Append("z");
  EXPECT_EQ(block.text(), std::string_view("abc\0\0\0\0\0\0\0\0\0z", 13));
}

TEST(PdfMemBlockWithoutMemory, WorksAgainWhenRewound) {
  CPDFMemBlock block;
  block.Append("abc");
  block.Reserve(kImpossible);
  block.Append("lost text");
  block.Rewind();
  EXPECT_EQ(block.text(), "");
  block.Append("another text");
  EXPECT_EQ(block.text(), "another text");
}
