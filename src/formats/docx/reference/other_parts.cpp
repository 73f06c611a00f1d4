#include "formats/docx/reference/other_parts.h"

#include "formats/docx/reference/schema.h"
#include "formats/docx/xml.h"

#include <string_view>
#include <utility>

namespace scrivalen::document::docx {
namespace {

XmlElement plainFill() { return {"a:solidFill", {}, {{"a:schemeClr", {{"val", "phClr"}}}}}; }

void removePictures(XmlElement& element) {
  for (XmlElement& child : element.children) {
    if (child.name == "a:blipFill") {
      child = plainFill();
    }
    removePictures(child);
  }
  element.removeChildren("a:extLst");
}

std::string partText(XmlElement root, std::string_view prefix, std::string_view uri) {
  root.attributes.insert(root.attributes.begin(), {joined({"xmlns:", prefix}), std::string(uri)});
  return joined({kXmlStart, xmlText(root), "\n"});
}

}  // namespace

std::string themePart(XmlElement theme) {
  XmlElement* const elements = theme.child("a:themeElements");
  if (elements == nullptr || elements->child("a:clrScheme") == nullptr || elements->child("a:fontScheme") == nullptr ||
      elements->child("a:fmtScheme") == nullptr) {
    return {};
  }
  removePictures(*elements);
  XmlElement kept{theme.name};
  kept.setAttribute("name", theme.attribute("name"));
  kept.children.push_back(std::move(*elements));
  return partText(std::move(kept), "a", "http://schemas.openxmlformats.org/drawingml/2006/main");
}

std::string fontsPart(XmlElement fonts) {
  putInSchemaOrder(fonts);
  return partText(std::move(fonts), "w", "http://schemas.openxmlformats.org/wordprocessingml/2006/main");
}

}  // namespace scrivalen::document::docx
