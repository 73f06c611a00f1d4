#include "output/compression/compressor.h"
#include "output/compression/deflate.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <random>
#include <string>
#include <string_view>

namespace scrivalen {
namespace {

std::string longText() {
  std::mt19937 random(1);
  std::string text;
  for (int i = 0; i < 400'000; ++i) {
    text += static_cast<char>('a' + random() % 20);
  }
  return text;
}

std::string compressed(std::string_view text) {
  std::string out;
  Compressor(6).compress(text, out);
  return out;
}

// @param step  how many bytes are read at once
std::string inflated(Inflater& inflater, std::size_t step) {
  std::string text;
  std::string part(step, '\0');
  while (const std::size_t size = inflater.read(part.data(), step)) {
    text.append(part, 0, size);
  }
  return text;
}

TEST(Inflater, ReadsInStepsOfAnySize) {
  const std::string text = longText();
  const std::string bytes = compressed(text);
  for (const std::size_t step : {std::size_t{7}, std::size_t{1000}, text.size(), text.size() * 2}) {
    Inflater inflater(bytes);
    EXPECT_EQ(inflated(inflater, step), text);
    EXPECT_TRUE(inflater.isAtEnd());
    EXPECT_EQ(inflater.used(), bytes.size());
  }
}

TEST(Inflater, IgnoresWhatComesAfterTheText) {
  const std::string bytes = compressed("text");
  const std::string longer = bytes + "more";
  Inflater inflater(longer);
  EXPECT_EQ(inflated(inflater, 100), "text");
  EXPECT_TRUE(inflater.isAtEnd());
  EXPECT_EQ(inflater.used(), bytes.size());
}

TEST(Inflater, KnowsATextThatIsCutOffOrBroken) {
  const std::string bytes = compressed("a text of some bytes, some bytes");
  for (std::size_t size = 0; size < bytes.size(); ++size) {
    Inflater inflater(std::string_view(bytes).substr(0, size));
    inflated(inflater, 10);
    EXPECT_FALSE(inflater.isAtEnd()) << size;
    EXPECT_EQ(inflater.read(std::string(1, '\0').data(), 1), 0u);
  }
  for (std::size_t at = 0; at < bytes.size(); ++at) {
    std::string broken = bytes;
    broken[at] = static_cast<char>(broken[at] ^ 0x01);
    Inflater inflater(broken);
    EXPECT_FALSE(inflated(inflater, 10) == "a text of some bytes, some bytes" && inflater.isAtEnd()) << at;
  }
}

}  // namespace
}  // namespace scrivalen
