#include "formats/rtf/document/picture.h"

#include "formats/rtf/document/escape.h"
#include "text/ascii.h"

#include <algorithm>
#include <cmath>

namespace scrivalen::document::rtf {
namespace {

void writeHex(OutputBuffer& out, std::string_view bytes) {
  constexpr std::size_t kLine = 64;
  while (!bytes.empty()) {
    const std::string_view line = bytes.substr(0, kLine);
    char* at = out.reserve(2 * kLine + 1);
    for (const char c : line) {
      const auto byte = static_cast<unsigned char>(c);
      *at++ = kHexDigits[byte >> 4];
      *at++ = kHexDigits[byte & 0xF];
    }
    *at++ = '\n';
    out.advance(at);
    bytes.remove_prefix(line.size());
  }
}

// \picprop is how Word keeps a picture's description.
void writeDescription(OutputBuffer& out, std::string_view alternative) {
  if (!alternative.empty()) {
    put(out, "{\\*\\picprop{\\sp{\\sn wzDescription}{\\sv ");
    writeText(out, alternative);
    put(out, "}}}");
  }
}

constexpr int kFirstOnItsSide = 5;  // of the orientations; the ones before are only mirrored or upside down

// The size as the picture is stored: readers of RTF do not turn it.
struct Size {
  double widthPt;
  double heightPt;
};

Size sizeOf(const Picture& picture, double widthPt) {
  const double scale = widthPt > 0 ? widthPt / picture.widthPt() : 1;
  const Size size{picture.widthPt() * scale, picture.heightPt() * scale};
  return picture.orientation() >= kFirstOnItsSide ? Size{size.heightPt, size.widthPt} : size;
}

}  // namespace

bool isTurned(const Picture& picture) { return picture.orientation() != 1; }

void writePicture(OutputBuffer& out, const Picture& picture, std::string_view alternative, double widthPt, Room room) {
  constexpr double kTwips = 20;  // of a point
  const Size size = sizeOf(picture, widthPt);
  const double scale = std::min({kTwips, room.width / size.widthPt, room.height / size.heightPt});
  put(out, "{\\pict");
  writeDescription(out, alternative);
  put(out, picture.format() == Picture::Format::Png ? "\\pngblip" : "\\jpegblip");
  put(out, "\\picw", picture.width());
  put(out, "\\pich", picture.height());
  put(out, "\\picwgoal", std::max(1L, std::lround(size.widthPt * scale)));
  put(out, "\\pichgoal", std::max(1L, std::lround(size.heightPt * scale)));
  out.put('\n');
  writeHex(out, picture.bytes());
  out.put('}');
}

}  // namespace scrivalen::document::rtf
