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
  deflater.begin();
  deflater.add(text, out);
  deflater.end(out);
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
