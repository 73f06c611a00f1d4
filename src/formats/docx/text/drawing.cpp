#include "formats/docx/text/drawing.h"

#include "formats/docx/xml.h"

#include <algorithm>
#include <cmath>

namespace scrivalen::document::docx {
namespace {

constexpr int kFirstOnItsSide = 5;  // of the orientations; the ones before are only mirrored or upside down
constexpr double kEmusPerPoint = 12700;
constexpr double kEmusPerTwip = 635;

struct Extent {
  std::int64_t width;
  std::int64_t height;
};

Extent extentOf(const Picture& picture, double widthPt, Room room) {
  double width = picture.widthPt();
  double height = picture.heightPt();
  if (picture.orientation() >= kFirstOnItsSide) {
    std::swap(width, height);
  }
  const double scale = kEmusPerPoint * (widthPt > 0 ? widthPt / picture.widthPt() : 1);
  const double fitting = std::min({scale, room.width * kEmusPerTwip / width, room.height * kEmusPerTwip / height});
  return {std::max(1LL, std::llround(width * fitting)), std::max(1LL, std::llround(height * fitting))};
}

void writeExtent(OutputBuffer& out, std::string_view element, Extent extent) {
  put(out, element);
  put(out, " cx=\"", extent.width, "\"");
  put(out, " cy=\"", extent.height, "\"/>");
}

}  // namespace

bool isTurned(const Picture& picture) { return picture.orientation() != 1; }

void writeDrawing(OutputBuffer& out, const Picture& picture, const Drawing& drawing, Room room) {
  const Extent extent = extentOf(picture, drawing.widthPt, room);
  put(out, "<w:drawing><wp:inline distT=\"0\" distB=\"0\" distL=\"0\" distR=\"0\">");
  writeExtent(out, "<wp:extent", extent);
  put(out, "<wp:docPr id=\"", drawing.number, "\" name=\"Picture ");
  put(out, {}, drawing.number, "\"");
  if (!drawing.alternative.empty()) {
    put(out, " descr=\"");
    putValue(out, drawing.alternative);
    put(out, "\"");
  }
  put(out,
      "/><wp:cNvGraphicFramePr><a:graphicFrameLocks noChangeAspect=\"1\"/></wp:cNvGraphicFramePr>"
      "<a:graphic><a:graphicData uri=\"http://schemas.openxmlformats.org/drawingml/2006/picture\"><pic:pic>"
      "<pic:nvPicPr>");
  put(out, "<pic:cNvPr id=\"", drawing.number, "\" name=\"Picture ");
  put(out, {}, drawing.number, "\"/><pic:cNvPicPr/></pic:nvPicPr><pic:blipFill><a:blip r:embed=\"");
  put(out, drawing.relation);
  put(out, "\"/><a:stretch><a:fillRect/></a:stretch></pic:blipFill><pic:spPr><a:xfrm><a:off x=\"0\" y=\"0\"/>");
  writeExtent(out, "<a:ext", extent);
  put(out,
      "</a:xfrm><a:prstGeom prst=\"rect\"><a:avLst/></a:prstGeom></pic:spPr></pic:pic></a:graphicData></a:graphic>"
      "</wp:inline></w:drawing>");
}

}  // namespace scrivalen::document::docx
