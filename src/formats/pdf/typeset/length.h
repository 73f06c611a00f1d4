#pragma once

#include <cmath>
#include <cstdint>

namespace scrivalen::typeset {

/// A distance on the page, in thousandths of a point. Whole numbers add up to the same sum everywhere.
using Length = std::int64_t;

inline constexpr Length kPoint = 1000;

/// The content of pages is in tenths of a point, so that most of its numbers are whole and short.
inline constexpr std::int64_t kUnitsPerPoint = 10;

inline Length lengthOf(double points) { return std::llround(points * static_cast<double>(kPoint)); }

/// A font has its measures in thousandths of its size.
constexpr Length scaled(std::int64_t thousandths, Length size) { return thousandths * size / 1000; }

}  // namespace scrivalen::typeset
