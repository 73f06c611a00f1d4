#include "formats/docx/reference/schema.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <utility>

namespace scrivalen::document::docx {
namespace {

struct ElementOrder {
  std::string_view element;
  std::string_view children;  // in their order, each with a blank before and after it
};

// Elements that are not here keep their children. Not here are directions, which the text decides.
constexpr ElementOrder kOrders[] = {
    {"w:style",
     " w:name w:aliases w:basedOn w:next w:link w:autoRedefine w:hidden w:uiPriority w:semiHidden w:unhideWhenUsed "
     "w:qFormat w:locked w:pPr w:rPr w:tblPr w:trPr w:tcPr w:tblStylePr "},
    {"w:pPr",
     " w:keepNext w:keepLines w:pageBreakBefore w:framePr w:widowControl w:numPr w:suppressLineNumbers w:pBdr w:shd "
     "w:tabs w:suppressAutoHyphens w:kinsoku w:wordWrap w:overflowPunct w:topLinePunct w:autoSpaceDE w:autoSpaceDN "
     "w:adjustRightInd w:snapToGrid w:spacing w:ind w:contextualSpacing w:mirrorIndents w:suppressOverlap w:jc "
     "w:textDirection w:textAlignment w:textboxTightWrap w:outlineLvl "},
    {"w:rPr",
     " w:rFonts w:b w:bCs w:i w:iCs w:caps w:smallCaps w:strike w:dstrike w:outline w:shadow w:emboss w:imprint "
     "w:noProof w:snapToGrid w:vanish w:webHidden w:color w:spacing w:w w:kern w:position w:sz w:szCs w:highlight w:u "
     "w:effect w:bdr w:shd w:fitText w:vertAlign w:cs w:em w:lang w:eastAsianLayout w:specVanish w:oMath "},
    {"w:tblPr",
     " w:tblStyleRowBandSize w:tblStyleColBandSize w:jc w:tblCellSpacing w:tblInd w:tblBorders w:shd w:tblCellMar "},
    {"w:trPr", " w:cantSplit w:trHeight w:tblHeader w:tblCellSpacing w:jc "},
    {"w:tcPr", " w:tcBorders w:shd w:noWrap w:tcMar w:textDirection w:tcFitText w:vAlign "},
    {"w:tblStylePr", " w:pPr w:rPr w:tblPr w:trPr w:tcPr "},
    {"w:docDefaults", " w:rPrDefault w:pPrDefault "},
    {"w:rPrDefault", " w:rPr "},
    {"w:pPrDefault", " w:pPr "},
    {"w:latentStyles", " w:lsdException "}};

constexpr std::string_view kRepeated[] = {"w:tblStylePr", "w:lsdException"};

const ElementOrder* orderOf(std::string_view element) {
  const auto* const found = std::find_if(std::begin(kOrders), std::end(kOrders),
                                         [&](const ElementOrder& order) { return order.element == element; });
  return found == std::end(kOrders) ? nullptr : found;
}

// npos for one that is not in the order.
std::size_t rankOf(const ElementOrder& order, std::string_view child) {
  return order.children.find(std::string(" ").append(child).append(" "));
}

bool mayRepeat(std::string_view name) {
  return std::find(std::begin(kRepeated), std::end(kRepeated), name) != std::end(kRepeated);
}

}  // namespace

void putInSchemaOrder(XmlElement& element) {
  const ElementOrder* const order = orderOf(element.name);
  if (order == nullptr) {
    return;
  }
  auto& children = element.children;
  std::erase_if(children, [&](const XmlElement& child) {
    return rankOf(*order, child.name) == std::string_view::npos || child.name == "w:lang";
  });
  std::stable_sort(children.begin(), children.end(), [&](const XmlElement& a, const XmlElement& b) {
    return rankOf(*order, a.name) < rankOf(*order, b.name);
  });
  const auto end = std::unique(children.begin(), children.end(), [](const XmlElement& a, const XmlElement& b) {
    return a.name == b.name && !mayRepeat(a.name);
  });
  children.erase(end, children.end());
  for (XmlElement& child : children) {
    putInSchemaOrder(child);
  }
}

XmlElement& insertInOrder(XmlElement& parent, XmlElement child) {
  const ElementOrder* const order = orderOf(parent.name);
  auto at = parent.children.end();
  if (order != nullptr) {
    const std::size_t rank = rankOf(*order, child.name);
    at = std::find_if(parent.children.begin(), parent.children.end(),
                      [&](const XmlElement& other) { return rankOf(*order, other.name) > rank; });
  }
  return *parent.children.insert(at, std::move(child));
}

XmlElement& childInOrder(XmlElement& parent, std::string_view name) {
  XmlElement* const known = parent.child(name);
  return known != nullptr ? *known : insertInOrder(parent, {std::string(name)});
}

}  // namespace scrivalen::document::docx
