#pragma once

#include "formats/pdf/typeset/fonts/font_file.h"

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace scrivalen::test {

inline constexpr std::string_view kSerifFont = "LiberationSerif-Regular.ttf";
inline constexpr std::string_view kSansFont = "LiberationSans-Regular.ttf";
inline constexpr std::string_view kDejaVuFont = "DejaVuSans.ttf";

/// A font that comes with the library.
std::string bundledFont(std::string_view name);
/// A font of PostScript with the family "Nimbus Roman", of Debian's package fonts-urw-base35.
std::string postScriptFont();

/// A font of Devanagari, of Debian's package fonts-lohit-deva.
std::string devanagariFont();

/// Where a table of a font of one file begins, and its length. Fails the test if the font has none.
struct TablePlace {
  std::size_t at = 0;
  std::size_t size = 0;
};
TablePlace tableOf(std::string_view font, std::string_view tag);
/// A font with another value of fsType (OS/2).
std::string withEmbedding(std::string font, unsigned fsType);
/// A font whose table has another name.
std::string withoutTable(std::string font, std::string_view tag);
/// A collection (OpenType 1.9, "TTC header").
std::string collectionOf(const std::vector<std::string>& fonts);

/// Reads a font, which fails the test if it is none.
std::unique_ptr<typeset::FontFile> readFont(std::string data, unsigned index = 0);

}  // namespace scrivalen::test
