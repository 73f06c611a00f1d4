#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace scrivalen {

/// A part of a text in the zlib format (RFC 1950) that was compressed without the parts before it.
struct DeflatedPiece {
  std::string bytes;
  std::uint32_t checksum = 1;  ///< of the part (Adler-32)
  std::size_t size = 0;        ///< of the part
};

/// Compresses the parts of a text in any order. The text is kBegin, the pieces in their order, and endOfPieces(). The
/// level is fixed, so that the same part gives the same bytes with the same zlib.
class PieceDeflater {
 public:
  static constexpr std::string_view kBegin = "\x78\x5E";

  /// @param level  1 (fast) to 9 (small)
  explicit PieceDeflater(int level);
  PieceDeflater(const PieceDeflater&) = delete;
  PieceDeflater& operator=(const PieceDeflater&) = delete;
  ~PieceDeflater();

  /// @param part  of less than 4 GiB
  DeflatedPiece compress(std::string_view part);

 private:
  struct State;

  std::unique_ptr<State> state_;
};

/// The checksum of a text that goes on with a piece. @param checksum  of the text before it; 1 for the first piece
std::uint32_t checksumWith(std::uint32_t checksum, const DeflatedPiece& piece);
/// What follows the last piece. @param checksum  of the whole text
std::string endOfPieces(std::uint32_t checksum);

}  // namespace scrivalen
