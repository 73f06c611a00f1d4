#pragma once

#include "document/settings/page.h"

namespace scrivalen::document {

inline constexpr double kTwipsPerPoint = 20;

/// Whether a page is as the settings have it, or turned to landscape for a wide table.
enum class Orientation { Upright, Turned };

/// The page in twips.
struct PageTwips {
  explicit PageTwips(const Page& page);
  int textWidth() const { return width - left - right; }
  int textHeight() const { return height - top - bottom; }

  int width, height, top, right, bottom, left;
};

}  // namespace scrivalen::document
