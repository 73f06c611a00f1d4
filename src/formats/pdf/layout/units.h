#pragma once

#include <cstdint>

namespace scrivalen::pdf {

/// Whole points, in 64 bits so that no font size set by a host overflows.
using Points = std::int64_t;

inline constexpr Points kLeftMargin = 50;
inline constexpr Points kBottomLimit = 30;
inline constexpr Points kTopMargin = 30;
inline constexpr Points kSideMargins = 80;

/// The paper. Its height is deliberately not A4's 842 points.
struct Paper {
  std::int32_t width = 595;
  std::int32_t height = 840;

  Points top() const { return height - kTopMargin; }
  Points usableWidth() const { return width - kSideMargins; }
};

inline constexpr Paper kPortrait{595, 840};
inline constexpr Paper kLandscape{840, 595};

}  // namespace scrivalen::pdf
