#include "output/compression/deflated_pieces.h"
#include "support/inflated.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

using scrivalen::checksumWith;
using scrivalen::DeflatedPiece;
using scrivalen::endOfPieces;
using scrivalen::PieceDeflater;
using scrivalen::test::inflated;

namespace {

std::string joined(const std::vector<DeflatedPiece>& pieces) {
  std::string text(PieceDeflater::kBegin);
  std::uint32_t checksum = 1;
  for (const DeflatedPiece& piece : pieces) {
    text += piece.bytes;
    checksum = checksumWith(checksum, piece);
  }
  return text + endOfPieces(checksum);
}

}  // namespace

TEST(DeflatedPieces, AreOneText) {
  PieceDeflater deflater(3);
  const std::vector<DeflatedPiece> pieces{deflater.compress("one two two two "), deflater.compress("two three")};
  EXPECT_EQ(inflated(joined(pieces)), "one two two two two three");
}

TEST(DeflatedPieces, AreJoinedInAnotherOrder) {
  PieceDeflater deflater(3);
  const DeflatedPiece last = deflater.compress("the same words, again");
  const DeflatedPiece first = deflater.compress("the same words, ");
  EXPECT_EQ(inflated(joined({first, last})), "the same words, the same words, again");
  EXPECT_EQ(deflater.compress("the same words, ").bytes, first.bytes);
}

TEST(DeflatedPieces, MayBeNone) { EXPECT_EQ(inflated(joined({})), ""); }

TEST(DeflatedPieces, MayBeLongAndGrow) {
  PieceDeflater deflater(6);
  std::string noise;
  for (std::uint32_t state = 1; noise.size() < 100'000;) {
    state = state * 1664525 + 1013904223;
    noise += static_cast<char>(static_cast<unsigned char>(state >> 24));
  }
  const std::vector<DeflatedPiece> pieces{deflater.compress(noise), deflater.compress(std::string(100'000, 'x')),
                                          deflater.compress(noise)};
  EXPECT_GT(pieces[0].bytes.size(), noise.size());
  EXPECT_LT(pieces[1].bytes.size(), 1000u);
  EXPECT_TRUE(inflated(joined(pieces)) == noise + std::string(100'000, 'x') + noise);
}
