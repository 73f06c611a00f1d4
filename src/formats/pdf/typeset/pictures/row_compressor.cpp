#include "formats/pdf/typeset/pictures/row_compressor.h"

#include <utility>

namespace scrivalen::typeset {
namespace {

// What programs that write PNG use by default: each picture is compressed only once.
constexpr int kPictureLevel = 6;

}  // namespace

RowCompressor::RowCompressor() : deflater_(kPictureLevel) { deflater_.begin(); }

void RowCompressor::compress() {
  deflater_.add(waiting_, compressed_);
  waiting_.clear();
}

std::string RowCompressor::finish() {
  compress();
  deflater_.end(compressed_);
  return std::move(compressed_);
}

}  // namespace scrivalen::typeset
