#pragma once

#include <span>
#include <string_view>

namespace scrivalen {

/// Finds what was probably meant by a mistyped name: the known one with the fewest letters added, left out, changed or
/// swapped, or one of which one of the two is the beginning. The case of A to Z makes no difference.
/// @return empty if no known name is similar
std::string_view mostSimilar(std::string_view mistyped, std::span<const std::string_view> known);

}  // namespace scrivalen
