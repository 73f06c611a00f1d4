#include "formats/docx/reference/xml_element.h"

#include "formats/docx/xml.h"

#include <algorithm>

namespace scrivalen::document::docx {
const XmlElement* XmlElement::child(std::string_view childName) const {
  const auto found =
      std::find_if(children.begin(), children.end(), [&](const XmlElement& one) { return one.name == childName; });
  return found == children.end() ? nullptr : &*found;
}

XmlElement* XmlElement::child(std::string_view childName) {
  return const_cast<XmlElement*>(static_cast<const XmlElement&>(*this).child(childName));
}

std::string_view XmlElement::attribute(std::string_view attributeName) const {
  const auto found = std::find_if(attributes.begin(), attributes.end(),
                                  [&](const XmlAttribute& one) { return one.name == attributeName; });
  return found == attributes.end() ? std::string_view() : found->value;
}

std::string_view XmlElement::childValue(std::string_view childName) const {
  const XmlElement* const found = child(childName);
  return found == nullptr ? std::string_view() : found->attribute("w:val");
}

void XmlElement::setAttribute(std::string_view attributeName, std::string_view value) {
  const auto found = std::find_if(attributes.begin(), attributes.end(),
                                  [&](const XmlAttribute& one) { return one.name == attributeName; });
  if (found == attributes.end()) {
    attributes.push_back({std::string(attributeName), std::string(value)});
  } else {
    found->value = value;
  }
}

void XmlElement::removeAttribute(std::string_view attributeName) {
  std::erase_if(attributes, [&](const XmlAttribute& one) { return one.name == attributeName; });
}

void XmlElement::removeChildren(std::string_view childName) {
  std::erase_if(children, [&](const XmlElement& one) { return one.name == childName; });
}

// Recursion ends: readXml limits the depth of elements.
void writeXml(OutputBuffer& out, const XmlElement& element) {
  put(out, "<");
  put(out, element.name);
  for (const XmlAttribute& attribute : element.attributes) {
    put(out, " ");
    put(out, attribute.name);
    put(out, "=\"");
    putValue(out, attribute.value);
    put(out, "\"");
  }
  if (element.children.empty()) {
    return put(out, "/>");
  }
  put(out, ">");
  for (const XmlElement& child : element.children) {
    writeXml(out, child);
  }
  put(out, "</");
  put(out, element.name);
  put(out, ">");
}

std::string xmlText(const XmlElement& element) {
  TextSink sink;
  OutputBuffer out(sink);
  writeXml(out, element);
  out.flush();
  return sink.text;
}

}  // namespace scrivalen::document::docx
