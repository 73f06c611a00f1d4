#pragma once

#include "output/output_buffer.h"

#include <string>
#include <string_view>
#include <vector>

namespace scrivalen::document::docx {

struct XmlAttribute {
  std::string name;
  std::string value;
};

/// An element with its attributes and elements, without text. Names have the prefix that readXml gives their namespace.
struct XmlElement {
  std::string name;
  std::vector<XmlAttribute> attributes = {};
  std::vector<XmlElement> children = {};

  /// The first child of a name; null without one.
  const XmlElement* child(std::string_view childName) const;
  XmlElement* child(std::string_view childName);
  /// An attribute's value; empty without one.
  std::string_view attribute(std::string_view attributeName) const;
  /// The attribute "w:val" of the first child of a name; empty without one.
  std::string_view childValue(std::string_view childName) const;

  void setAttribute(std::string_view attributeName, std::string_view value);
  void removeAttribute(std::string_view attributeName);
  void removeChildren(std::string_view childName);
};

/// Writes an element.
void writeXml(OutputBuffer& out, const XmlElement& element);
/// The same as a text.
std::string xmlText(const XmlElement& element);

}  // namespace scrivalen::document::docx
