#pragma once

#include "scrivalen/pdf_doc.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace scrivalen::pdf {

/// The first code that draws something.
inline constexpr std::size_t kFirstCode = 32;

/// The advance width of each code from kFirstCode on, in thousandths of the font's size.
using AdvanceWidths = std::array<std::uint16_t, 256 - kFirstCode>;

/// The widths of the standard font that a conforming document uses for a face.
const AdvanceWidths& advanceWidths(PDF_STANDARD_FONT_FACE face);

}  // namespace scrivalen::pdf
