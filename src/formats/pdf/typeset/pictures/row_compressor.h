#pragma once

#include "output/compression/deflate.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace scrivalen::typeset {

/// Compresses the rows of an image.
class RowCompressor {
 public:
  RowCompressor();

  void add(std::string_view row) {
    waiting_ += row;
    endRow();
  }
  /// Where the bytes of a row may be appended, before endRow.
  std::string& waiting() { return waiting_; }
  void endRow() {
    if (waiting_.size() >= kMostWaiting) {
      compress();
    }
  }

  /// @return all rows, compressed
  std::string finish();

 private:
  static constexpr std::size_t kMostWaiting = 32768;

  void compress();

  Deflater deflater_;
  std::string waiting_;
  std::string compressed_;
};

}  // namespace scrivalen::typeset
