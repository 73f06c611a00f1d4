#include "formats/docx/parts/relations.h"

namespace scrivalen::document::docx {

std::string pictureRelation(std::size_t picture) { return "rIdPicture" + std::to_string(picture + 1); }

std::string picturePart(std::size_t picture, Picture::Format format) {
  std::string part = "media/image" + std::to_string(picture + 1);
  return part.append(format == Picture::Format::Png ? ".png" : ".jpeg");
}

std::string headerRelation(std::size_t header) { return "rIdHeader" + std::to_string(header + 1); }

std::string headerPart(std::size_t header) { return "header" + std::to_string(header + 1) + ".xml"; }

std::string relation(std::string_view id, std::string_view type, std::string_view target) {
  std::string xml = "<Relationship Id=\"";
  xml.append(id).append("\" Type=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships/");
  return xml.append(type).append("\" Target=\"").append(target).append("\"/>");
}

}  // namespace scrivalen::document::docx
