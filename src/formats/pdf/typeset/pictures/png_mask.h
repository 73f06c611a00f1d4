#pragma once

#include "formats/pdf/typeset/pictures/png_file.h"
#include "formats/pdf/typeset/pictures/row_compressor.h"

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

namespace scrivalen::typeset {

/// Divides rows into colours and alpha. A filter predicts each byte from the bytes at the same place in other pixels,
/// so that filtered bytes can be divided as they are.
class AlphaChannel {
 public:
  /// @param alphaSize   bytes of a pixel's alpha
  /// @param colorsSize  bytes of a pixel's colours, before its alpha
  AlphaChannel(std::size_t alphaSize, std::size_t colorsSize) : alphaSize_(alphaSize), colorsSize_(colorsSize) {}

  /// @param row     filtered, with the filter's number
  /// @param colors  gets its colours
  void add(std::string_view row, RowCompressor& colors);
  /// Whether no pixel was transparent so far.
  bool isOpaque() const { return isOpaque_; }
  std::string finish() { return rows_.finish(); }

 private:
  void checkOpacity(std::string_view filtered);

  std::size_t alphaSize_;
  std::size_t colorsSize_;
  RowCompressor rows_;
  bool isOpaque_ = true;
  std::string plain_;
  std::string above_;
};

/// The alpha of pixels by their colours, in bytes: those of a palette with transparent colours, or the one colour that
/// is transparent.
class TransparentColors {
 public:
  /// @param file  of a palette or with 16 bits a component; must outlive this object
  explicit TransparentColors(const PngFile& file);

  /// @param row  filtered, with the filter's number
  void add(std::string_view row);
  /// Whether no pixel was transparent so far.
  bool isOpaque() const { return isOpaque_; }
  std::string finish() { return rows_.finish(); }

 private:
  void addIndexes(std::string& out) const;
  void addColors(std::string& out) const;

  const PngFile& file_;
  std::array<char, 256> alphas_;  // of the palette's colours
  RowCompressor rows_;
  bool isOpaque_ = true;
  std::string plain_;
  std::string above_;
};

}  // namespace scrivalen::typeset
