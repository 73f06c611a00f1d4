#include "formats/rtf/document/picture.h"

#include "document/pictures/drawing_turn.h"
#include "formats/rtf/document/escape.h"
#include "text/ascii.h"

#include <algorithm>
#include <cmath>
#include <utility>

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

// How a shape is mirrored and then turned; a degree is 65,536.
std::string_view turnOf(int orientation) {
  constexpr std::string_view kTurns[] = {"",
                                         "{\\sp{\\sn fFlipH}{\\sv 1}}",
                                         "{\\sp{\\sn rotation}{\\sv 11796480}}",
                                         "{\\sp{\\sn fFlipV}{\\sv 1}}",
                                         "{\\sp{\\sn rotation}{\\sv 5898240}}{\\sp{\\sn fFlipV}{\\sv 1}}",
                                         "{\\sp{\\sn rotation}{\\sv 5898240}}",
                                         "{\\sp{\\sn rotation}{\\sv 17694720}}{\\sp{\\sn fFlipV}{\\sv 1}}",
                                         "{\\sp{\\sn rotation}{\\sv 17694720}}"};
  return kTurns[std::clamp(orientation, 1, 8) - 1];
}

// \picprop is how Word keeps the properties that a picture in the text shares with shapes. Readers that do not know it
// show the picture as it is stored.
void writeProperties(OutputBuffer& out, int orientation, std::string_view alternative) {
  const std::string_view turn = turnOf(orientation);
  if (turn.empty() && alternative.empty()) {
    return;
  }
  put(out, "{\\*\\picprop");
  put(out, turn);
  if (!alternative.empty()) {
    put(out, "{\\sp{\\sn wzDescription}{\\sv ");
    writeText(out, alternative);
    put(out, "}}");
  }
  out.put('}');
}

}  // namespace

void warnOfTurn(const Picture& picture, OutputWarnings& warnings) {
  const int orientation = picture.orientation();
  if (orientation == 4 || orientation == 5 || orientation == 7) {
    warnings.add(WarningCode::SomethingLeftOut, "the turn of pictures that are mirrored, in some programs");
  }
}

void writePicture(OutputBuffer& out, const Picture& picture, std::string_view alternative, double widthPt, Room room) {
  constexpr double kTwips = 20;  // of a point
  auto [width, height] = picture.shownSize(widthPt);
  const double scale = std::min({kTwips, room.width / width, room.height / height});
  if (isOnItsSide(picture.orientation())) {
    std::swap(width, height);
  }
  put(out, "{\\pict");
  writeProperties(out, picture.orientation(), alternative);
  put(out, picture.format() == Picture::Format::Png ? "\\pngblip" : "\\jpegblip");
  put(out, "\\picw", picture.width());
  put(out, "\\pich", picture.height());
  put(out, "\\picwgoal", std::max(1L, std::lround(width * scale)));
  put(out, "\\pichgoal", std::max(1L, std::lround(height * scale)));
  out.put('\n');
  writeHex(out, picture.bytes());
  out.put('}');
}

}  // namespace scrivalen::document::rtf
