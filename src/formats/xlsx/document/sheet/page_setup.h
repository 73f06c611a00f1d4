#pragma once

#include "document/model/warnings.h"
#include "document/settings/settings.h"
#include "formats/xlsx/document/sheet/header_picture.h"

#include <string>
#include <string_view>

namespace scrivalen::xlsx {

/// How the sheets of a workbook are printed.
class PageSetup {
 public:
  /// @param settings, warnings  not owned; must outlive this object
  PageSetup(const document::FormatSettings& settings, document::OutputWarnings& warnings);

  /// Whether columns of this width, in points, are printed on landscape pages: if the settings say so, or if they say
  /// nothing and the columns would be much smaller otherwise.
  bool isLandscape(double widthPt) const;
  /// The elements that say so, up to the header and footer.
  std::string xml(bool isLandscape) const;
  const HeaderPicture& headerPicture() const { return picture_; }

 private:
  HeaderPicture picture_;
  double textWidthPt_;  // upright
  std::string margins_;
  std::string paper_;
  std::string running_;
  bool isLandscapeSet_;
  bool isLandscape_;
};

}  // namespace scrivalen::xlsx
