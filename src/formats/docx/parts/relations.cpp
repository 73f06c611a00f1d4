#include "formats/docx/parts/relations.h"

#include "formats/docx/xml.h"

namespace scrivalen::document::docx {

std::string pictureRelation(std::size_t picture) { return joined({"rIdPicture", std::to_string(picture + 1)}); }

std::string picturePart(std::size_t picture, Picture::Format format) {
  return joined({"media/image", std::to_string(picture + 1), Picture::extensionOf(format)});
}

std::string headerRelation(std::size_t header) { return joined({"rIdHeader", std::to_string(header + 1)}); }

std::string headerPart(std::size_t header) { return joined({"header", std::to_string(header + 1), ".xml"}); }

std::string relation(std::string_view id, std::string_view type, std::string_view target) {
  return joined({"<Relationship Id=\"", id,
                 "\" Type=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships/", type, "\" Target=\"",
                 target, "\"/>"});
}

}  // namespace scrivalen::document::docx
