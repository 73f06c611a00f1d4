#pragma once

#include "formats/pdf/typeset/pictures/png_file.h"
#include "formats/pdf/typeset/pictures/row_compressor.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace scrivalen::typeset {

/// Whether a picture has what PDF/A-1 forbids or PDF 1.4 does not have: alpha by pixel, or 16 bits a component.
bool needsFlattening(const PngFile& file);

/// The palette of a picture, its transparent colours as they are on white.
std::string flatPalette(const PngFile& file);

/// Rows as they look on white, with 8 bits a component.
class FlatRows {
 public:
  /// @param file  one that needs flattening; must outlive this object
  explicit FlatRows(const PngFile& file);

  /// @param row  filtered, with the filter's number
  void add(std::string_view row);
  std::string finish() { return rows_.finish(); }
  std::uint32_t components() const { return colors_; }

 private:
  unsigned alphaOf(std::string_view pixel) const;

  const PngFile& file_;
  const std::uint32_t colors_;  // components without alpha
  RowCompressor rows_;
  std::string plain_;
  std::string above_;
  std::string flat_;
  std::string flatAbove_;
  std::string filtered_;
};

}  // namespace scrivalen::typeset
