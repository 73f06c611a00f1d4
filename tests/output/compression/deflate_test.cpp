#include "output/compression/deflate.h"
#include "output/compression/sample_texts.h"
#include "support/inflated.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <string_view>

using scrivalen::Deflater;
using scrivalen::test::inflated;
using scrivalen::test::lines;
using scrivalen::test::noise;

namespace {

std::string compressed(Deflater& deflater, std::string_view text) {
  std::string out;
  deflater.begin();
  deflater.add(text, out);
  deflater.end(out);
  return out;
}

}  // namespace

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

TEST(Deflater, MakesTextsHardlyLongerWithLessMemory) {
  Deflater usual(3);
  Deflater small(3, scrivalen::DeflateFormat::Zlib, 6);
  const std::string text = lines(30'000);
  const std::string bytes = compressed(small, text);
  EXPECT_NE(bytes, compressed(usual, text));
  EXPECT_LT(bytes.size(), compressed(usual, text).size() * 105 / 100);
  EXPECT_TRUE(inflated(bytes) == text);
}

TEST(Deflater, WritesNothingAroundRawBytes) {
  Deflater zlib(6);
  Deflater raw(6, scrivalen::DeflateFormat::Raw);
  const std::string all = compressed(zlib, "one two two two three");
  EXPECT_EQ(compressed(raw, "one two two two three"), all.substr(2, all.size() - 2 - 4));
}
