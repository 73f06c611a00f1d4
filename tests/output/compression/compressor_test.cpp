#include "output/compression/compressor.h"
#include "output/compression/sample_texts.h"
#include "support/inflated.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <string_view>

using scrivalen::Compressor;
using scrivalen::test::inflated;
using scrivalen::test::lines;
using scrivalen::test::noise;

namespace {

std::string compressed(Compressor& compressor, std::string_view text) {
  std::string out;
  compressor.compress(text, out);
  return out;
}

}  // namespace

TEST(Compressor, IsReadByZlib) {
  Compressor compressor(3);
  EXPECT_EQ(inflated(compressed(compressor, "one two two two three")), "one two two two three");
}

TEST(Compressor, TakesAnEmptyText) {
  Compressor compressor(3);
  EXPECT_EQ(inflated(compressed(compressor, {})), "");
}

TEST(Compressor, CompressesEachTextOnItsOwn) {
  Compressor compressor(6);
  const std::string first = compressed(compressor, "the same text");
  EXPECT_EQ(inflated(compressed(compressor, "another text")), "another text");
  EXPECT_EQ(compressed(compressor, "the same text"), first);
}

TEST(Compressor, AppendsToWhatIsThere) {
  Compressor compressor(3);
  std::string out = "before";
  compressor.compress("text", out);
  EXPECT_EQ(out.substr(0, 6), "before");
  EXPECT_EQ(inflated(out.substr(6)), "text");
}

TEST(Compressor, TakesLongTexts) {
  Compressor compressor(1);
  const std::string text = lines(100'000);
  const std::string small = compressed(compressor, text);
  EXPECT_LT(small.size(), text.size() / 4);
  EXPECT_TRUE(inflated(small) == text);
}

TEST(Compressor, TakesTextsThatGrow) {
  Compressor compressor(9);
  const std::string text = noise(300'000);
  const std::string large = compressed(compressor, text);
  EXPECT_GT(large.size(), text.size());
  EXPECT_TRUE(inflated(large) == text);
}

TEST(Compressor, IsSmallerAtAHigherLevel) {
  Compressor fast(1);
  Compressor small(9);
  const std::string text = lines(10'000);
  EXPECT_LT(compressed(small, text).size(), compressed(fast, text).size());
}
