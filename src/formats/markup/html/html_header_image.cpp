#include "formats/markup/html/html_header_image.h"

#include "document/pictures/base64.h"
#include "document/pictures/header_image.h"
#include "formats/markup/html/html_markup.h"

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

void appendLength(std::string& text, std::string_view attribute, double points) {
  text.append(" ").append(attribute).append("='");
  appendNumber(text, points, 2);
  text += "pt'";
}

}  // namespace

// A picture in generated content has its own size. Only as part of a drawing can it have another one.
std::string htmlHeaderImage(const FormatSettings& settings, OutputWarnings& warnings) {
  const HeaderImage image = headerImageOf(settings, warnings);
  if (!image.picture) {
    return {};
  }
  std::string result = "url(\"data:image/svg+xml,%3Csvg xmlns='http://www.w3.org/2000/svg'";
  appendLength(result, "width", image.widthPt);
  appendLength(result, "height", image.heightPt);
  result.append("%3E%3Cimage width='100%25' height='100%25' href='data:").append(image.picture->mediaType());
  result.append(";base64,").append(base64Of(image.picture->bytes()));
  return result.append("'/%3E%3C/svg%3E\")");
}

}  // namespace scrivalen::document
