#include "formats/xlsx/document/sheet/header_picture.h"

#include "document/pictures/drawing_turn.h"
#include "formats/xlsx/workbook/decimal_text.h"
#include "formats/xlsx/workbook/relations.h"

#include <algorithm>
#include <utility>

namespace scrivalen::xlsx {
namespace {

// The pictures of headers cannot be turned. One on its side gets its stored proportions in the room that it has.
void setStoredSize(document::HeaderImage& image) {
  const double scale = std::min(1.0, image.heightPt / image.widthPt);
  std::swap(image.widthPt, image.heightPt);
  image.widthPt *= scale;
  image.heightPt *= scale;
}

}  // namespace

HeaderPicture::HeaderPicture(const document::FormatSettings& settings, document::OutputWarnings& warnings)
    : image_(document::headerImageOf(settings, warnings)) {
  if (image_.picture && document::isOnItsSide(image_.picture->orientation())) {
    setStoredSize(image_);
  }
  if (image_.picture && image_.picture->orientation() != 1) {
    warnings.add(document::WarningCode::SomethingLeftOut, "the turn of the header's picture, which is shown as stored");
  }
}

std::string_view HeaderPicture::extension() const { return document::Picture::extensionOf(image_.picture->format()); }

void HeaderPicture::writeImage(ZipWriter& zip, const std::string& file) const {
  zip.addStored("xl/media/" + file, image_.picture->bytes());
}

// The shape's id says its place: the left of the header.
void HeaderPicture::writeDrawing(ZipWriter& zip, std::size_t sheet, const std::string& file) const {
  const std::string number = std::to_string(sheet);
  const std::string name = std::string("vmlDrawing").append(number).append(".vml");
  std::string vml(
      "<xml xmlns:v=\"urn:schemas-microsoft-com:vml\" xmlns:o=\"urn:schemas-microsoft-com:office:office\" "
      "xmlns:x=\"urn:schemas-microsoft-com:office:excel\"><o:shapelayout v:ext=\"edit\"><o:idmap v:ext=\"edit\" "
      "data=\"");
  vml.append(number).append(
      "\"/></o:shapelayout><v:shapetype id=\"_x0000_t75\" coordsize=\"21600,21600\" o:spt=\"75\" "
      "o:preferrelative=\"t\" path=\"m0,0l0,21600,21600,21600,21600,0xe\" filled=\"f\" stroked=\"f\">"
      "<v:stroke joinstyle=\"miter\"/><v:path o:extrusionok=\"f\" gradientshapeok=\"t\" o:connecttype=\"rect\"/>"
      "<o:lock v:ext=\"edit\" aspectratio=\"t\"/></v:shapetype><v:shape id=\"LH\" o:spid=\"_x0000_s");
  vml.append(std::to_string(sheet * 1024 + 1));
  vml.append("\" type=\"#_x0000_t75\" style=\"position:absolute;margin-left:0;margin-top:0;width:");
  vml.append(decimalText(image_.widthPt, 2)).append("pt;height:").append(decimalText(image_.heightPt, 2));
  vml.append(
      "pt;z-index:1\"><v:imagedata o:relid=\"rId1\" o:title=\"\"/><o:lock v:ext=\"edit\" "
      "rotation=\"t\"/></v:shape></xml>");
  zip.addEntry("xl/drawings/" + name, vml);
  zip.addEntry(std::string("xl/drawings/_rels/").append(name).append(".rels"),
               relationsXml({{"image", std::string("../media/").append(file)}}));
}

}  // namespace scrivalen::xlsx
