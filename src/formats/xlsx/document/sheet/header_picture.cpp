#include "formats/xlsx/document/sheet/header_picture.h"

#include "formats/xlsx/workbook/relations.h"

#include <cmath>

namespace scrivalen::xlsx {
namespace {

constexpr int kPerPoint = 100;

std::string pointText(double points) {
  const long hundredths = std::lround(points * kPerPoint);
  const long rest = hundredths % kPerPoint;
  return std::to_string(hundredths / kPerPoint)
      .append(rest < 10 ? ".0" : ".")
      .append(std::to_string(rest))
      .append("pt");
}

}  // namespace

HeaderPicture::HeaderPicture(const document::FormatSettings& settings, document::OutputWarnings& warnings)
    : image_(document::headerImageOf(settings, warnings)) {
  if (image_.picture && image_.picture->orientation() != 1) {
    warnings.add(document::WarningCode::SomethingLeftOut, "the turn of the header's picture, which is shown as stored");
  }
}

std::string_view HeaderPicture::extension() const {
  return image_.picture->format() == document::Picture::Format::Png ? ".png" : ".jpeg";
}

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
  vml.append(pointText(image_.widthPt)).append(";height:").append(pointText(image_.heightPt));
  vml.append(
      ";z-index:1\"><v:imagedata o:relid=\"rId1\" o:title=\"\"/><o:lock v:ext=\"edit\" "
      "rotation=\"t\"/></v:shape></xml>");
  zip.addEntry("xl/drawings/" + name, vml);
  zip.addEntry(std::string("xl/drawings/_rels/").append(name).append(".rels"),
               relationsXml({{"image", std::string("../media/").append(file)}}));
}

}  // namespace scrivalen::xlsx
