#include "formats/docx/reference/bare_style.h"

#include "formats/docx/reference/schema.h"

#include <algorithm>
#include <initializer_list>
#include <iterator>
#include <utility>

namespace scrivalen::document::docx {
namespace {

constexpr std::string_view kBareStyles[] = {"TableText",  "TableSpace", "SectionEnd", "HorizontalLine",
                                            "SourceCode", "Header",     "Footer",     "TOC1",
                                            "TOC2",       "TOC3",       "TOC4",       "TOC5",
                                            "TOC6"};

constexpr std::string_view kSides[] = {"w:top", "w:left", "w:bottom", "w:right", "w:between", "w:bar"};

void setMissing(XmlElement& element, std::initializer_list<std::string_view> attributes) {
  for (const std::string_view name : attributes) {
    if (element.attribute(name).empty()) {
      element.setAttribute(name, "0");
    }
  }
}

// Without borders on the sides that it does not name.
void closeBorder(XmlElement& border) {
  XmlElement closed{border.name};
  for (const std::string_view side : kSides) {
    const XmlElement* const line = border.child(side);
    closed.children.push_back(line != nullptr ? *line : XmlElement{std::string(side), {{"w:val", "nil"}}});
  }
  border = std::move(closed);
}

}  // namespace

bool isBare(std::string_view id) {
  return std::find(std::begin(kBareStyles), std::end(kBareStyles), id) != std::end(kBareStyles);
}

void makeBare(XmlElement& style, const StyleList& styles) {
  const XmlElement* const below = styles.find(style.childValue("w:basedOn"));
  if (below == nullptr) {
    return;
  }
  const auto inherits = [&](std::string_view name) {
    const XmlElement* const own = style.child("w:pPr");
    return (own == nullptr || own->child(name) == nullptr) && styles.inherited(*below, "w:pPr", name) != nullptr;
  };
  const auto add = [&style](std::string_view name) -> XmlElement& {
    return childInOrder(childInOrder(style, "w:pPr"), name);
  };
  for (const std::string_view name : {"w:keepNext", "w:pageBreakBefore"}) {
    if (inherits(name)) {
      add(name).setAttribute("w:val", "0");
    }
  }
  if (inherits("w:shd")) {
    add("w:shd").attributes = {{"w:val", "clear"}, {"w:color", "auto"}, {"w:fill", "auto"}};
  }
  if (inherits("w:jc")) {
    add("w:jc").setAttribute("w:val", "left");
  }
  if (styles.inherited(*below, "w:pPr", "w:pBdr") != nullptr) {
    closeBorder(add("w:pBdr"));
  }
  for (const XmlElement* const layer : styles.propertiesOf(*below, "w:pPr")) {
    const XmlElement* const spacing = layer->child("w:spacing");
    for (const std::string_view name : {"w:before", "w:beforeAutospacing", "w:afterAutospacing"}) {
      if (spacing != nullptr && !spacing->attribute(name).empty()) {
        setMissing(add("w:spacing"), {name});
      }
    }
  }
  if (styles.inherited(*below, "w:pPr", "w:ind") != nullptr) {
    setMissing(add("w:ind"), {"w:left", "w:right", "w:firstLine"});
  }
}

}  // namespace scrivalen::document::docx
