#include "formats/docx/text/drawing.h"

#include "document/pictures/drawing_turn.h"
#include "formats/docx/xml.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <utility>

namespace scrivalen::document::docx {
namespace {

constexpr double kEmusPerPoint = 12700;
constexpr double kEmusPerTwip = 635;

// What identifies a drawing, and in it the picture.
constexpr std::string_view kDrawingStart = "<wp:docPr id=\"";
constexpr std::string_view kPictureStart = "<pic:cNvPr id=\"";
constexpr std::string_view kNameStart = "\" name=\"Picture ";

void writeIdentity(OutputBuffer& out, std::string_view start, std::int64_t number) {
  put(out, start, number, kNameStart);
  put(out, {}, number, "\"");
}

// Appends a text up to a start tag and its identity, which gets this number. Returns what is after that.
std::string_view appendIdentity(std::string& out, std::string_view text, std::string_view start, std::int64_t number) {
  const auto dropNumber = [&text] {
    const std::size_t end = text.find_first_not_of("0123456789");
    text.remove_prefix(std::min(end, text.size()));
  };
  const std::size_t before = text.find(start) + start.size();
  out.append(text.substr(0, before)).append(std::to_string(number)).append(kNameStart).append(std::to_string(number));
  text.remove_prefix(before);
  dropNumber();
  text.remove_prefix(kNameStart.size());
  dropNumber();
  return text;
}

struct Extent {
  std::int64_t width;
  std::int64_t height;
};

// As shown.
Extent extentOf(const Picture& picture, double widthPt, Room room) {
  const auto [width, height] = picture.shownSize(widthPt);
  const double fitting =
      std::min({kEmusPerPoint, room.width * kEmusPerTwip / width, room.height * kEmusPerTwip / height});
  return {std::max(1LL, std::llround(width * fitting)), std::max(1LL, std::llround(height * fitting))};
}

void writeExtent(OutputBuffer& out, std::string_view element, Extent extent) {
  put(out, element);
  put(out, " cx=\"", extent.width, "\"");
  put(out, " cy=\"", extent.height, "\"/>");
}

// What a picture on its side has above and below, or beside, the extent of the stored one, as Word writes it.
void writeEffectExtent(OutputBuffer& out, Extent stored) {
  const std::int64_t more = (stored.width - stored.height) / 2;
  const std::int64_t beside = std::max<std::int64_t>(-more, 0);
  const std::int64_t above = std::max<std::int64_t>(more, 0);
  put(out, "<wp:effectExtent l=\"", beside, "\"");
  put(out, " t=\"", above, "\"");
  put(out, " r=\"", beside, "\"");
  put(out, " b=\"", above, "\"/>");
}

}  // namespace

void writeDrawing(OutputBuffer& out, const Picture& picture, const Drawing& drawing, Room room) {
  Extent extent = extentOf(picture, drawing.widthPt, room);
  if (isOnItsSide(picture.orientation())) {
    std::swap(extent.width, extent.height);
  }
  put(out, "<w:drawing><wp:inline distT=\"0\" distB=\"0\" distL=\"0\" distR=\"0\">");
  writeExtent(out, "<wp:extent", extent);
  if (isOnItsSide(picture.orientation())) {
    writeEffectExtent(out, extent);
  }
  writeIdentity(out, kDrawingStart, drawing.number);
  if (!drawing.alternative.empty()) {
    put(out, " descr=\"");
    putValue(out, drawing.alternative);
    put(out, "\"");
  }
  put(out,
      "/><wp:cNvGraphicFramePr><a:graphicFrameLocks noChangeAspect=\"1\"/></wp:cNvGraphicFramePr>"
      "<a:graphic><a:graphicData uri=\"http://schemas.openxmlformats.org/drawingml/2006/picture\"><pic:pic>"
      "<pic:nvPicPr>");
  writeIdentity(out, kPictureStart, drawing.number);
  put(out, "/><pic:cNvPicPr/></pic:nvPicPr><pic:blipFill><a:blip r:embed=\"");
  put(out, drawing.relation);
  put(out, "\"/><a:stretch><a:fillRect/></a:stretch></pic:blipFill><pic:spPr><a:xfrm");
  put(out, drawingTurn(picture.orientation()));
  put(out, "><a:off x=\"0\" y=\"0\"/>");
  writeExtent(out, "<a:ext", extent);
  put(out,
      "</a:xfrm><a:prstGeom prst=\"rect\"><a:avLst/></a:prstGeom></pic:spPr></pic:pic></a:graphicData></a:graphic>"
      "</wp:inline></w:drawing>");
}

void renumberDrawings(std::string& markup, std::int64_t& last) {
  if (markup.find(kDrawingStart) == std::string::npos) {
    return;
  }
  std::string renumbered;
  std::string_view rest = markup;
  while (rest.find(kDrawingStart) != std::string_view::npos) {
    rest = appendIdentity(renumbered, rest, kDrawingStart, ++last);
    rest = appendIdentity(renumbered, rest, kPictureStart, last);
  }
  markup = renumbered.append(rest);
}

}  // namespace scrivalen::document::docx
