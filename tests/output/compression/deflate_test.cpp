#include "output/compression/deflate.h"
#include "support/inflated.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

using scrivalen::Deflater;
using scrivalen::test::inflated;

namespace {

std::string compressed(Deflater& deflater, std::string_view text) {
  std::string out;
  deflater.compress(text, out);
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

TEST(Deflater, IsReadByZlib) {
  Deflater deflater(3);
  EXPECT_EQ(inflated(compressed(deflater, "one two two two three")), "one two two two three");
}

TEST(Deflater, TakesAnEmptyText) {
  Deflater deflater(3);
  EXPECT_EQ(inflated(compressed(deflater, {})), "");
}

TEST(Deflater, CompressesEachTextOnItsOwn) {
  Deflater deflater(6);
  const std::string first = compressed(deflater, "the same text");
  EXPECT_EQ(inflated(compressed(deflater, "another text")), "another text");
  EXPECT_EQ(compressed(deflater, "the same text"), first);
}

TEST(Deflater, AppendsToWhatIsThere) {
  Deflater deflater(3);
  std::string out = "before";
  deflater.compress("text", out);
  EXPECT_EQ(out.substr(0, 6), "before");
  EXPECT_EQ(inflated(out.substr(6)), "text");
}

TEST(Deflater, TakesTextsLargerThanItsSteps) {
  Deflater deflater(1);
  const std::string text = lines(100'000);
  const std::string small = compressed(deflater, text);
  EXPECT_LT(small.size(), text.size() / 4);
  EXPECT_TRUE(inflated(small) == text);
}

TEST(Deflater, TakesTextsThatGrow) {
  Deflater deflater(9);
  const std::string text = noise(300'000);
  const std::string large = compressed(deflater, text);
  EXPECT_GT(large.size(), text.size());
  EXPECT_TRUE(inflated(large) == text);
}

TEST(Deflater, IsSmallerAtAHigherLevel) {
  Deflater fast(1);
  Deflater small(9);
  const std::string text = lines(10'000);
  EXPECT_LT(compressed(small, text).size(), compressed(fast, text).size());
}

TEST(Deflater, TakesATextInPartsOfAnySize) {
  Deflater deflater(6);
  const std::string text = noise(150'000) + lines(30'000);
  for (const std::size_t step : {std::size_t{1000}, std::size_t{65'536}, text.size()}) {
    std::string out = "before";
    deflater.begin();
    for (std::size_t at = 0; at < text.size(); at += step) {
      deflater.add(std::string_view(text).substr(at, step), out);
    }
    deflater.end(out);
    EXPECT_EQ(out.substr(0, 6), "before");
    EXPECT_TRUE(inflated(out.substr(6)) == text);
  }
}

TEST(Deflater, TakesATextWithoutParts) {
  Deflater deflater(6);
  std::string out;
  deflater.begin();
  deflater.end(out);
  EXPECT_EQ(inflated(out), "");
}

TEST(Deflater, WritesNothingAroundRawBytes) {
  Deflater zlib(6);
  Deflater raw(6, scrivalen::DeflateFormat::Raw);
  const std::string all = compressed(zlib, "one two two two three");
  EXPECT_EQ(compressed(raw, "one two two two three"), all.substr(2, all.size() - 2 - 4));
}
