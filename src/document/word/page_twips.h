#pragma once

#include "document/model/warnings.h"
#include "document/settings/page.h"
#include "document/settings/settings.h"

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

/// The page that the settings describe, no side of which is longer than Word's limit.
/// @param warnings  gets one about paper that is cut
PageTwips wordPageOf(const FormatSettings& settings, OutputWarnings& warnings);

}  // namespace scrivalen::document
