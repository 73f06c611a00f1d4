#include "document/pictures/header_image.h"

#include "document/clean_text.h"
#include "document/pictures/picture_file.h"
#include "document/settings/page.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>

namespace scrivalen::document {
namespace {

std::string lineOf(std::string_view path) {
  std::string line;
  Replaced replaced;
  appendClean(line, path, TextKind::Line, replaced);
  return line;
}

// How much smaller the picture has to be. The text of the header is beside it.
double scaleOf(const Picture& picture, const Page& page) {
  constexpr double kShareOfWidth = 0.5;
  const double height = page.topPt * kHeaderImageShare;
  const double width = (page.widthPt - page.leftPt - page.rightPt) * kShareOfWidth;
  return std::min({1.0, height / picture.heightPt(), width / picture.widthPt()});
}

}  // namespace

HeaderImage headerImageOf(const FormatSettings& settings, OutputWarnings& warnings) {
  const std::string_view path = settings.text("header-image");
  if (path.empty()) {
    return {};
  }
  std::string reason;
  auto picture = readPictureFile(path, reason);
  if (!picture) {
    warnings.add(WarningCode::SomethingLeftOut,
                 "cannot use the picture '" + lineOf(path) + "' of the header: " + reason);
    return {};
  }
  const double scale = scaleOf(*picture, pageOf(settings));
  return {picture, picture->widthPt() * scale, picture->heightPt() * scale};
}

}  // namespace scrivalen::document
