#pragma once

#include "formats/docx/reference/style_list.h"

#include <optional>

namespace scrivalen::document::docx {

/// How the library's styles for lists, headings and text from right to left in a quote look like a quote of a
/// reference: they have its border and background, as far as it has them, instead of ours.
class QuoteLook {
 public:
  /// Changes no style.
  QuoteLook() = default;
  /// @param quote  the style of quotes in the list
  QuoteLook(const StyleList& styles, const XmlElement& quote);

  /// Changes a style of ours, if it is one of those.
  void apply(XmlElement& style) const;

 private:
  bool isKnown_ = false;
  std::optional<XmlElement> border_;
  std::optional<XmlElement> background_;
};

}  // namespace scrivalen::document::docx
