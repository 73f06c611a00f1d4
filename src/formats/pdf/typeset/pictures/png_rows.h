#pragma once

#include "output/compression/deflate.h"

#include <cstddef>
#include <string>
#include <string_view>

// The rows of a PNG: the number of a filter, then the filtered bytes (PNG 1.2, 6).
namespace scrivalen::typeset {

/// Decompresses rows.
class PngRows {
 public:
  /// @param compressed  must outlive this object
  explicit PngRows(std::string_view compressed) : inflater_(compressed), buffer_(kBuffer, '\0') {}

  /// Reads as many bytes as @p row has.
  /// @return false when there are too few, or the filter is none that PNG has
  bool read(std::string& row);
  /// Whether all bytes have been read, and their checksum is right.
  bool isAtEnd();
  /// How many compressed bytes have been used.
  std::size_t used() const { return inflater_.used(); }

 private:
  // Rows may be of one byte, but a call of zlib for each would be slow.
  static constexpr std::size_t kBuffer = 65536;

  void fill();

  Inflater inflater_;
  std::string buffer_;
  std::string_view left_;  // in the buffer
};

/// Replaces filtered bytes by the plain ones.
/// @param above      the plain row above, as long as this one; of the first row zeros
/// @param pixelSize  in bytes; 1 where several pixels are in a byte
void undoFilter(std::string& row, std::string_view above, std::size_t pixelSize);

/// Filters a plain row with the filter that is best for photographs. The parameters are those of undoFilter.
/// @param filtered  set to the row with the filter's number
void applyFilter(std::string_view row, std::string_view above, std::size_t pixelSize, std::string& filtered);

}  // namespace scrivalen::typeset
