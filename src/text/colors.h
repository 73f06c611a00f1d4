#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace scrivalen {

/// A colour as red, green and blue, 8 bits each: 0xRRGGBB.
using Rgb = std::uint32_t;

/// The colour that a text names: `#RRGGBB`, or a name in any case. Nothing for any other text.
std::optional<Rgb> colorOf(std::string_view text);
std::optional<Rgb> colorOf(std::wstring_view text);

}  // namespace scrivalen
