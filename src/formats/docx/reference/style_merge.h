#pragma once

#include "formats/docx/reference/style_list.h"

#include <string>
#include <string_view>
#include <vector>

namespace scrivalen::document::docx {

/// A style of ours whose paragraphs miss a number or bullet.
struct MissedNumber {
  std::string id;      ///< of ours
  std::string source;  ///< the name of the reference's style that says it
};

/// What is merged.
struct StyleMerge {
  StyleList styles;  ///< those of the reference, with the ids that the library has for their names
  std::vector<MissedNumber> missed;
};

/// The style of a reference whose look one of ours with this name has: that of the same name, or else one that has the
/// name as an alias. Null without one.
const XmlElement* matchingStyle(const StyleList& reference, std::string_view type, std::string_view name);

/// Merges the styles of a reference with those that the library writes. A style that both have looks as in the
/// reference, but keeps the library's id, its tabs, which depend on the width of the page, and its level of a heading.
/// The library's other styles come after those of the reference.
StyleMerge mergedStyles(StyleList reference, const StyleList& own);

}  // namespace scrivalen::document::docx
