#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

namespace scrivalen::typeset {

/// The numbers (CIDs) by which PDF finds the glyphs of a font of PostScript (PDF 1.7, 9.7.4.2; Adobe Technical Note
/// 5176): of a CID-keyed font, those of its charset.
/// @param cff  the table "CFF "
/// @return one for each glyph; empty if they are the numbers of the glyphs, as in a font that is not CID-keyed
std::vector<std::uint16_t> cidsOf(std::string_view cff);

}  // namespace scrivalen::typeset
