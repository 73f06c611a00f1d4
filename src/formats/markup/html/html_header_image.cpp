#include "formats/markup/html/html_header_image.h"

#include "document/clean_text.h"
#include "document/pictures/base64.h"
#include "document/pictures/picture_file.h"
#include "document/settings/page.h"
#include "formats/markup/html/html_markup.h"

#include <algorithm>
#include <utility>

namespace scrivalen::document {
namespace {

struct Base64Sink : ByteSink {
  bool take(const char* data, std::size_t size) override {
    bytes.append(data, size);
    return true;
  }
  std::string bytes;
};

std::string base64Of(std::string_view bytes) {
  Base64Sink sink;
  OutputBuffer out(sink);
  putBase64(out, bytes);
  out.flush();
  return std::move(sink.bytes);
}

std::string lineOf(std::string_view path) {
  std::string line;
  Replaced replaced;
  appendClean(line, path, TextKind::Line, replaced);
  return line;
}

// How much smaller the picture has to be. Space is left for the edge that printers leave blank, and for the text of the
// header beside the picture.
double scaleOf(const Picture& picture, const Page& page) {
  constexpr double kShareOfMargin = 0.6;
  constexpr double kShareOfWidth = 0.5;
  const double height = page.topPt * kShareOfMargin;
  const double width = (page.widthPt - page.leftPt - page.rightPt) * kShareOfWidth;
  return std::min({1.0, height / picture.heightPt(), width / picture.widthPt()});
}

void appendLength(std::string& text, std::string_view attribute, double points) {
  text.append(" ").append(attribute).append("='");
  appendNumber(text, points, 2);
  text += "pt'";
}

}  // namespace

// A picture in generated content has its own size. Only as part of a drawing can it have another one.
std::string htmlHeaderImage(const FormatSettings& settings, OutputWarnings& warnings) {
  const std::string_view path = settings.text("header-image");
  if (path.empty()) {
    return {};
  }
  std::string reason;
  const auto picture = readPictureFile(path, reason);
  if (!picture) {
    warnings.add(WarningCode::SomethingLeftOut,
                 "cannot use the picture '" + lineOf(path) + "' of the header: " + reason);
    return {};
  }
  const double scale = scaleOf(*picture, pageOf(settings));
  std::string result = "url(\"data:image/svg+xml,%3Csvg xmlns='http://www.w3.org/2000/svg'";
  appendLength(result, "width", picture->widthPt() * scale);
  appendLength(result, "height", picture->heightPt() * scale);
  result.append("%3E%3Cimage width='100%25' height='100%25' href='data:").append(picture->mediaType());
  result.append(";base64,").append(base64Of(picture->bytes()));
  return result.append("'/%3E%3C/svg%3E\")");
}

}  // namespace scrivalen::document
