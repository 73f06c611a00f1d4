#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

namespace scrivalen::typeset {

/// The colour types of PNG (PNG 1.2, 4.1.1).
enum class PngColors : std::uint8_t { Gray = 0, Rgb = 2, Palette = 3, GrayAlpha = 4, RgbAlpha = 6 };

/// The parts of a PNG that matter for its pixels.
class PngFile {
 public:
  /// @param bytes  a file that document::Picture has accepted; must outlive this object
  explicit PngFile(std::string_view bytes);

  std::uint32_t width() const { return width_; }
  std::uint32_t height() const { return height_; }
  std::uint32_t depth() const { return depth_; }  ///< bits of a component, or of an index into the palette
  PngColors colors() const { return colors_; }
  bool isInterlaced() const { return isInterlaced_; }

  bool hasAlpha() const { return colors_ == PngColors::GrayAlpha || colors_ == PngColors::RgbAlpha; }
  std::uint32_t components() const;  ///< of a pixel, alpha included
  std::uint32_t bitsPerPixel() const { return components() * depth_; }
  /// In bytes, as filters count; 1 where several pixels are in a byte.
  std::size_t pixelSize() const { return bitsPerPixel() < 8 ? 1 : bitsPerPixel() / 8; }
  /// The bytes of a row of so many pixels, without its filter's number.
  std::size_t rowSize(std::uint32_t pixels) const;

  /// Three bytes a colour.
  std::string_view palette() const { return palette_; }
  /// The chunk "tRNS"; empty if it does not fit the colour type, or says that all is opaque.
  std::string_view transparency() const { return transparency_; }
  /// All rows, compressed.
  std::string_view compressed() const { return joined_.empty() ? first_ : std::string_view(joined_); }
  /// Moves these bytes to the caller if they are not in one piece in the file; else returns none.
  std::string takeJoined() { return std::move(joined_); }

 private:
  void readChunk(std::string_view type, std::string_view content);
  void readPalette(std::string_view content);
  void fitTransparency();

  std::uint32_t width_;
  std::uint32_t height_;
  std::uint32_t depth_;
  PngColors colors_;
  bool isInterlaced_;
  std::string_view palette_;
  std::string_view transparency_;
  std::string_view first_;  // of the chunks "IDAT"
  std::string joined_;      // these chunks, if there are several
};

}  // namespace scrivalen::typeset
