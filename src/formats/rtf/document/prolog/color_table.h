#pragma once

#include "output/output_buffer.h"
#include "text/colors.h"

#include <array>
#include <cstddef>
#include <vector>

namespace scrivalen::document::rtf {

// What the library itself colours.
inline constexpr Rgb kLinkColor = 0x0B5CAD;
inline constexpr Rgb kLineColor = 0xB8C0C8;
inline constexpr Rgb kShadeColor = 0xF1F3F5;
inline constexpr Rgb kHeaderColor = 0xE6EAEE;

/// The colours of a document. Its table comes before the text, so it is the same for all documents: those
/// above, the colours that have names, and a cube of five shades each of red, green and blue.
class ColorTable {
 public:
  ColorTable();

  void write(OutputBuffer& out) const;
  /// The number of the colour that is nearest. 0 is that of the reader.
  int indexOf(Rgb color) const;
  std::size_t size() const { return colors_.size(); }

 private:
  struct Known {
    Rgb color = 0;
    int index = 0;
  };

  int nearest(Rgb color) const;

  std::vector<Rgb> colors_;
  mutable std::array<Known, 64> known_;  // by the colour's hash; index 0: none
};

}  // namespace scrivalen::document::rtf
