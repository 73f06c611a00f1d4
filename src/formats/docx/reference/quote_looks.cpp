#include "formats/docx/reference/quote_looks.h"

#include "formats/docx/reference/schema.h"

#include <utility>

namespace scrivalen::document::docx {
namespace {

constexpr std::string_view kFromRight = "QuoteRightToLeft";

std::optional<XmlElement> copyOf(const XmlElement* element) {
  return element == nullptr ? std::nullopt : std::optional(*element);
}

// A border that is not there would be inherited.
XmlElement mirrored(const XmlElement& border) {
  XmlElement result{border.name, border.attributes};
  for (const std::string_view side : {"w:top", "w:left", "w:bottom", "w:right", "w:between", "w:bar"}) {
    const std::string_view other = side == "w:left" ? "w:right" : side == "w:right" ? "w:left" : side;
    const XmlElement* const line = border.child(other);
    if (line != nullptr) {
      result.children.push_back({std::string(side), line->attributes});
    } else if (side != other && border.child(side) != nullptr) {
      result.children.push_back({std::string(side), {{"w:val", "nil"}}});
    }
  }
  return result;
}

void replaceIn(XmlElement& properties, std::string_view name, const std::optional<XmlElement>& element) {
  properties.removeChildren(name);
  if (element) {
    insertInOrder(properties, *element);
  }
}

}  // namespace

QuoteLook::QuoteLook(const StyleList& styles, const XmlElement& quote)
    : isKnown_(true),
      border_(copyOf(styles.inherited(quote, "w:pPr", "w:pBdr"))),
      background_(copyOf(styles.inherited(quote, "w:pPr", "w:shd"))) {}

// What is based on the quote has its background.
void QuoteLook::apply(XmlElement& style) const {
  const std::string_view id = idOf(style);
  if (!isKnown_) {
    return;
  }
  if (id == kFromRight) {
    replaceIn(childInOrder(style, "w:pPr"), "w:pBdr", border_ ? std::optional(mirrored(*border_)) : std::nullopt);
  } else if (id == "QuoteList" || id.starts_with("QuoteHeading")) {
    XmlElement& properties = childInOrder(style, "w:pPr");
    replaceIn(properties, "w:pBdr", border_);
    replaceIn(properties, "w:shd", background_);
  }
}

}  // namespace scrivalen::document::docx
