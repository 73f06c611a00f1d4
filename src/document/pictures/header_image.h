#pragma once

#include "document/model/warnings.h"
#include "document/pictures/picture.h"
#include "document/settings/settings.h"

#include <memory>

namespace scrivalen::document {

/// The picture of the setting "header-image" with the size that the page's top margin has room for.
struct HeaderImage {
  std::shared_ptr<const Picture> picture;  ///< null: none
  double widthPt = 0;                      ///< as shown, at most half of the text's width
  double heightPt = 0;                     ///< as shown, at most kHeaderImageShare of the top margin
};

/// Leaves space for the edge of the paper, which printers leave blank, and for a descending line of text.
inline constexpr double kHeaderImageShare = 0.6;

/// @param warnings  gets one when there is no such picture
HeaderImage headerImageOf(const FormatSettings& settings, OutputWarnings& warnings);

}  // namespace scrivalen::document
