#include "output/compression/deflated_pieces.h"

#include <zlib.h>

#include <array>
#include <cstddef>
#include <new>

namespace scrivalen {
namespace {

constexpr int kWithoutHeader = -15;  // and with a window of 32 KiB
constexpr int kPieceMemory = 8;
constexpr std::size_t kPieceStep = 16384;

}  // namespace

struct PieceDeflater::State {
  z_stream stream{};
  std::array<char, kPieceStep> output;
};

PieceDeflater::PieceDeflater(int level) : state_(std::make_unique<State>()) {
  if (deflateInit2(&state_->stream, level, Z_DEFLATED, kWithoutHeader, kPieceMemory, Z_DEFAULT_STRATEGY) != Z_OK) {
    throw std::bad_alloc();
  }
}

PieceDeflater::~PieceDeflater() { deflateEnd(&state_->stream); }

// A full flush ends a piece at a whole byte, and nothing after it refers to what is before.
DeflatedPiece PieceDeflater::compress(std::string_view part) {
  // zlib takes its input as not const, but does not change it.
  auto* const input = reinterpret_cast<Bytef*>(const_cast<char*>(part.data()));
  const auto size = static_cast<uInt>(part.size());
  DeflatedPiece piece;
  piece.size = part.size();
  piece.checksum = static_cast<std::uint32_t>(adler32(piece.checksum, input, size));
  z_stream& stream = state_->stream;
  deflateReset(&stream);
  stream.next_in = input;
  stream.avail_in = size;
  do {
    stream.next_out = reinterpret_cast<Bytef*>(state_->output.data());
    stream.avail_out = static_cast<uInt>(kPieceStep);
    deflate(&stream, Z_FULL_FLUSH);
    piece.bytes.append(state_->output.data(), kPieceStep - stream.avail_out);
  } while (stream.avail_out == 0);
  return piece;
}

std::uint32_t checksumWith(std::uint32_t checksum, const DeflatedPiece& piece) {
  return static_cast<std::uint32_t>(adler32_combine(checksum, piece.checksum, static_cast<z_off_t>(piece.size)));
}

std::string endOfPieces(std::uint32_t checksum) {
  std::string end("\x03\x00", 2);  // an empty block, which is the last one
  for (int shift = 24; shift >= 0; shift -= 8) {
    end += static_cast<char>(static_cast<unsigned char>(checksum >> shift));
  }
  return end;
}

}  // namespace scrivalen
