#pragma once

#include <limits>
#include <optional>
#include <string_view>

namespace scrivalen::document {

class FormatSettings;

/// The page that "paper", "landscape" and "margins" describe, in points. At least a third of the width and of the
/// height is left between the margins: wider ones are reduced.
struct Page {
  double widthPt;
  double heightPt;
  double topPt;
  double rightPt;
  double bottomPt;
  double leftPt;
};

/// @param longestSidePt  a longer side is cut to it
Page pageOf(const FormatSettings& settings, double longestSidePt = std::numeric_limits<double>::infinity());

struct Paper {
  std::string_view name;  ///< "A4"; empty for a size that the host gave
  double widthMm;
  double heightMm;
};

/// The paper of a name in any case, or of a size such as "210x297" in millimetres, 50 to 1200 each.
std::optional<Paper> paperOf(std::string_view text);

struct Margins {
  double topPt;
  double rightPt;
  double bottomPt;
  double leftPt;
};

/// One length for all margins, or four for top, right, bottom and left, each with a unit: mm, cm, in or pt. A margin is
/// at most 200 mm wide.
std::optional<Margins> marginsOf(std::string_view text);

}  // namespace scrivalen::document
