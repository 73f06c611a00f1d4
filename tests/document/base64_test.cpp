#include "document/pictures/base64.h"

#include "formats/markup/html/html_page_maker.h"

namespace scrivalen::document {
namespace {

std::string base64(std::string_view bytes) {
  MemorySink memory;
  OutputBuffer out(memory);
  putBase64(out, bytes);
  out.flush();
  return memory.bytes;
}

// RFC 4648, 10
TEST(Base64, EncodesTheExamplesOfItsStandard) {
  EXPECT_EQ(base64(""), "");
  EXPECT_EQ(base64("f"), "Zg==");
  EXPECT_EQ(base64("fo"), "Zm8=");
  EXPECT_EQ(base64("foo"), "Zm9v");
  EXPECT_EQ(base64("foob"), "Zm9vYg==");
  EXPECT_EQ(base64("fooba"), "Zm9vYmE=");
  EXPECT_EQ(base64("foobar"), "Zm9vYmFy");
}

TEST(Base64, EncodesEveryBit) { EXPECT_EQ(base64("\xFB\xFF\xBF\x80"), "+/+/gA=="); }

TEST(Base64, EncodesMoreThanTheBufferHolds) {
  std::string expected;
  for (std::size_t i = 0; i < 100'000; ++i) {
    expected += "Zm9v";
  }
  std::string bytes;
  for (std::size_t i = 0; i < 100'000; ++i) {
    bytes += "foo";
  }
  EXPECT_EQ(base64(bytes + "f"), expected + "Zg==");
}

}  // namespace
}  // namespace scrivalen::document
