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

// Elements that are not here have no children. Directions are not known, because the text decides them.
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
    {"w:latentStyles", " w:lsdException "},
    {"w:numPr", " w:ilvl w:numId "},
    {"w:pBdr", " w:top w:left w:bottom w:right w:between w:bar "},
    {"w:tabs", " w:tab "},
    {"w:tblBorders", " w:top w:left w:start w:bottom w:right w:end w:insideH w:insideV "},
    {"w:tcBorders", " w:top w:left w:start w:bottom w:right w:end w:insideH w:insideV w:tl2br w:tr2bl "},
    {"w:tblCellMar", " w:top w:left w:start w:bottom w:right w:end "},
    {"w:tcMar", " w:top w:left w:start w:bottom w:right w:end "},
    {"w:fonts", " w:font "},
    {"w:font", " w:altName w:panose1 w:charset w:family w:notTrueType w:pitch w:sig "}};

constexpr std::string_view kRepeated[] = {"w:tblStylePr", "w:lsdException", "w:tab", "w:font"};

struct KnownAttributes {
  std::string_view element;
  std::string_view names;  // each with a blank before and after it
};

constexpr std::string_view kValue = " w:val ";
constexpr std::string_view kWidth = " w:w w:type ";
constexpr std::string_view kBorder =
    " w:val w:color w:themeColor w:themeTint w:themeShade w:sz w:space w:shadow w:frame ";

// Elements with others than a value. Those with children that are not here have none.
constexpr KnownAttributes kAttributes[] = {
    {"w:style", " w:type w:styleId w:default w:customStyle "},
    {"w:tblStylePr", " w:type "},
    {"w:latentStyles", " w:defLockedState w:defUIPriority w:defSemiHidden w:defUnhideWhenUsed w:defQFormat w:count "},
    {"w:lsdException", " w:name w:locked w:uiPriority w:semiHidden w:unhideWhenUsed w:qFormat "},
    {"w:framePr",
     " w:dropCap w:lines w:w w:h w:vSpace w:hSpace w:wrap w:hAnchor w:vAnchor w:x w:xAlign w:y w:yAlign w:hRule "
     "w:anchorLock "},
    {"w:ind",
     " w:start w:startChars w:end w:endChars w:left w:leftChars w:right w:rightChars w:hanging w:hangingChars "
     "w:firstLine w:firstLineChars "},
    {"w:tab", " w:val w:leader w:pos "},
    {"w:shd",
     " w:val w:color w:themeColor w:themeTint w:themeShade w:fill w:themeFill w:themeFillTint w:themeFillShade "},
    {"w:rFonts", " w:hint w:ascii w:hAnsi w:eastAsia w:cs w:asciiTheme w:hAnsiTheme w:eastAsiaTheme w:cstheme "},
    {"w:color", " w:val w:themeColor w:themeTint w:themeShade "},
    {"w:u", " w:val w:color w:themeColor w:themeTint w:themeShade "},
    {"w:bdr", kBorder},
    {"w:fitText", " w:val w:id "},
    {"w:eastAsianLayout", " w:id w:combine w:combineBrackets w:vert w:vertCompress "},
    {"w:trHeight", " w:val w:hRule "},
    {"w:tblInd", kWidth},
    {"w:tblCellSpacing", kWidth},
    {"w:font", " w:name "},
    {"w:charset", " w:val w:characterSet "},
    {"w:sig", " w:usb0 w:usb1 w:usb2 w:usb3 w:csb0 w:csb1 "}};

// The same for elements whose attributes depend on the element around them: "" is any of its children.
struct AttributesInside {
  std::string_view parent;
  std::string_view element;
  std::string_view names;
};

constexpr AttributesInside kAttributesInside[] = {
    {"w:pPr", "w:spacing",
     " w:before w:beforeLines w:beforeAutospacing w:after w:afterLines w:afterAutospacing w:line w:lineRule "},
    {"w:pBdr", "", kBorder},
    {"w:tblBorders", "", kBorder},
    {"w:tcBorders", "", kBorder},
    {"w:tblCellMar", "", kWidth},
    {"w:tcMar", "", kWidth}};

const ElementOrder* orderOf(std::string_view element) {
  const auto* const found = std::find_if(std::begin(kOrders), std::end(kOrders),
                                         [&](const ElementOrder& order) { return order.element == element; });
  return found == std::end(kOrders) ? nullptr : found;
}

std::string_view attributesOf(std::string_view parent, std::string_view element) {
  const auto* const inside =
      std::find_if(std::begin(kAttributesInside), std::end(kAttributesInside), [&](const AttributesInside& one) {
        return one.parent == parent && (one.element.empty() || one.element == element);
      });
  if (inside != std::end(kAttributesInside)) {
    return inside->names;
  }
  const auto* const known = std::find_if(std::begin(kAttributes), std::end(kAttributes),
                                         [&](const KnownAttributes& one) { return one.element == element; });
  if (known != std::end(kAttributes)) {
    return known->names;
  }
  return orderOf(element) == nullptr ? kValue : std::string_view();
}

// npos for a word that is not among them.
std::size_t placeOf(std::string_view words, std::string_view word) {
  return words.find(std::string(" ").append(word).append(" "));
}

bool hasWord(std::string_view words, std::string_view word) { return placeOf(words, word) != words.npos; }

std::size_t rankOf(const ElementOrder& order, std::string_view child) { return placeOf(order.children, child); }

bool mayRepeat(std::string_view name) {
  return std::find(std::begin(kRepeated), std::end(kRepeated), name) != std::end(kRepeated);
}

void sortChildren(XmlElement& element, const ElementOrder& order) {
  auto& children = element.children;
  std::erase_if(children, [&](const XmlElement& child) {
    return !hasWord(order.children, child.name) || child.name == "w:lang";
  });
  std::stable_sort(children.begin(), children.end(), [&](const XmlElement& a, const XmlElement& b) {
    return rankOf(order, a.name) < rankOf(order, b.name);
  });
  const auto end = std::unique(children.begin(), children.end(), [](const XmlElement& a, const XmlElement& b) {
    return a.name == b.name && !mayRepeat(a.name);
  });
  children.erase(end, children.end());
}

void putInOrder(XmlElement& element, std::string_view parent) {
  const std::string_view names = attributesOf(parent, element.name);
  std::erase_if(element.attributes, [&](const XmlAttribute& attribute) { return !hasWord(names, attribute.name); });
  const ElementOrder* const order = orderOf(element.name);
  if (order == nullptr) {
    return element.children.clear();
  }
  sortChildren(element, *order);
  for (XmlElement& child : element.children) {
    putInOrder(child, element.name);
  }
  // Tabs are at least one.
  std::erase_if(element.children,
                [](const XmlElement& child) { return child.name == "w:tabs" && child.children.empty(); });
}

}  // namespace

void putInSchemaOrder(XmlElement& element) { putInOrder(element, {}); }

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
