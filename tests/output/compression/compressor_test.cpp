#include "output/compression/compressor.h"
#include "support/inflated.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

using scrivalen::Compressor;
using scrivalen::test::inflated;

namespace {

std::string compressed(Compressor& compressor, std::string_view text) {
  std::string out;
  compressor.compress(text, out);
  return out;
}

// Bytes of a simple generator, which no compressor makes smaller.
std::string noise(std::size_t size) {
  std::string bytes;
  std::uint32_t state = 1;
  while (bytes.size() < size) {
    state = state * 1664525 + 1013904223;
    bytes += static_cast<char>(static_cast<unsigned char>(state >> 24));
  }
  return bytes;
}

std::string lines(std::size_t count) {
  std::string text;
  for (std::size_t i = 0; i < count; ++i) {
    text += "line " + std::to_string(i * 7919 % 1000) + "\n";
  }
  return text;
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
