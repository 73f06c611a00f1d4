#include "formats/xlsx/document/sheet/pictures.h"

#include "document/pictures/drawing_turn.h"
#include "formats/xlsx/workbook/cell_text.h"

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

namespace scrivalen::xlsx {
namespace {

constexpr double kEmuPerPoint = 12700;

std::string emu(double points) { return std::to_string(std::llround(points * kEmuPerPoint)); }

// However thin it is, a picture is there.
std::string extentXml(double width, double height) {
  constexpr double kLeast = 1 / kEmuPerPoint;
  return std::string("cx=\"")
      .append(emu(std::max(width, kLeast)))
      .append("\" cy=\"")
      .append(emu(std::max(height, kLeast)))
      .append("\"");
}

void appendElement(std::string& out, std::string_view name, const std::string& content) {
  out.append("<xdr:").append(name).append(">").append(content).append("</xdr:").append(name).append(">");
}

}  // namespace

// Excel and LibreOffice take the anchor of a picture on its side for the box that it is shown in.
void SheetPictures::add(std::uint32_t row, std::uint32_t column, double topPt, PlacedPicture picture) {
  const int orientation = picture.picture->orientation();
  const bool isOnItsSide = document::isOnItsSide(orientation);
  const std::string image = std::to_string(waiting_.add(*picture.picture) + 1);
  const std::string number = std::to_string(++count_);
  std::string from;
  appendElement(from, "col", std::to_string(column));
  appendElement(from, "colOff", emu(0));
  appendElement(from, "row", std::to_string(row));
  appendElement(from, "rowOff", emu(topPt));
  anchors_.append("<xdr:oneCellAnchor>");
  appendElement(anchors_, "from", from);
  const std::string shown = extentXml(picture.width, picture.height);
  const std::string stored = isOnItsSide ? extentXml(picture.height, picture.width) : shown;
  anchors_.append("<xdr:ext ").append(shown).append("/><xdr:pic><xdr:nvPicPr><xdr:cNvPr id=\"");
  anchors_.append(std::to_string(count_ + 1)).append("\" name=\"Picture ").append(number).append("\" descr=\"");
  appendXml(anchors_, picture.text);
  anchors_.append(
      "\"/><xdr:cNvPicPr><a:picLocks noChangeAspect=\"1\"/></xdr:cNvPicPr></xdr:nvPicPr><xdr:blipFill>"
      "<a:blip r:embed=\"rId");
  anchors_.append(image).append("\"/><a:stretch><a:fillRect/></a:stretch></xdr:blipFill><xdr:spPr><a:xfrm");
  anchors_.append(document::drawingTurn(orientation)).append("><a:off x=\"0\" y=\"0\"/><a:ext ").append(stored);
  anchors_.append(
      "/></a:xfrm><a:prstGeom prst=\"rect\"><a:avLst/></a:prstGeom></xdr:spPr></xdr:pic><xdr:clientData/>"
      "</xdr:oneCellAnchor>");
}

void SheetPictures::write(ZipWriter& zip, std::size_t drawing, std::size_t& images) {
  const std::string name = "drawing" + std::to_string(drawing) + ".xml";
  std::string xml(
      "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n"
      "<xdr:wsDr xmlns:xdr=\"http://schemas.openxmlformats.org/drawingml/2006/spreadsheetDrawing\" "
      "xmlns:a=\"http://schemas.openxmlformats.org/drawingml/2006/main\" "
      "xmlns:r=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships\">");
  zip.addEntry("xl/drawings/" + name, xml.append(anchors_).append("</xdr:wsDr>"));
  std::vector<Relation> relations;
  for (std::size_t i = 0; i < waiting_.size(); ++i) {
    const std::string file = std::string("image")
                                 .append(std::to_string(++images))
                                 .append(document::Picture::extensionOf(waiting_.format(i)));
    zip.addStored("xl/media/" + file, waiting_.read(i));
    relations.push_back({"image", "../media/" + file});
  }
  zip.addEntry("xl/drawings/_rels/" + name + ".rels", relationsXml(relations));
}

}  // namespace scrivalen::xlsx
