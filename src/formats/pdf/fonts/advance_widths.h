#pragma once

#include "scrivalen/pdf_doc.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace scrivalen::pdf {

/// The first code that draws something.
inline constexpr std::size_t kFirstCode = 32;

/// How far each code from kFirstCode on moves the pen, in thousandths of the font's size.
using AdvanceWidths = std::array<std::uint16_t, 256 - kFirstCode>;

/// The widths of the standard font in which a conforming document draws a face.
const AdvanceWidths& advanceWidths(PDF_STANDARD_FONT_FACE face);

}  // namespace scrivalen::pdf
