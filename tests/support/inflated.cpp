#include "support/inflated.h"

#include <gtest/gtest.h>
#include <zlib.h>

namespace scrivalen::test {

std::string inflated(std::string_view compressed) {
  std::string text;
  std::string input(compressed);
  z_stream stream{};
  EXPECT_EQ(inflateInit(&stream), Z_OK);
  stream.next_in = reinterpret_cast<Bytef*>(input.data());
  stream.avail_in = static_cast<uInt>(input.size());
  std::string piece(65536, '\0');
  int state = Z_OK;
  while (state == Z_OK) {
    stream.next_out = reinterpret_cast<Bytef*>(piece.data());
    stream.avail_out = static_cast<uInt>(piece.size());
    state = inflate(&stream, Z_NO_FLUSH);
    text.append(piece, 0, piece.size() - stream.avail_out);
  }
  EXPECT_EQ(state, Z_STREAM_END);
  EXPECT_EQ(stream.avail_in, 0u);
  inflateEnd(&stream);
  return text;
}

}  // namespace scrivalen::test
