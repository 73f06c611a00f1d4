#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

namespace scrivalen {

/// A colour as red, green and blue, 8 bits each: 0xRRGGBB.
using Rgb = std::uint32_t;

struct NamedColor {
  std::string_view name;
  Rgb color;
};

/// The names that are known, in lower case and sorted. Several may have the same colour.
std::span<const NamedColor> namedColors();

/// The colour that a text names: `#RRGGBB`, or a name in any case. Nothing for any other text.
std::optional<Rgb> colorOf(std::string_view text);
std::optional<Rgb> colorOf(std::wstring_view text);

}  // namespace scrivalen
