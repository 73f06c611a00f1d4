#pragma once

#include "formats/rtf/document/prolog/color_table.h"
#include "formats/rtf/document/runs.h"
#include "output/output_buffer.h"

#include <string>
#include <string_view>

namespace scrivalen::document::rtf {

inline constexpr int kMonoFont = 2;  ///< of the table of fonts

enum class Style {
  Normal,
  Heading1,
  Heading2,
  Heading3,
  Heading4,
  Heading5,
  Heading6,
  Title,
  Quote,
  Code,
  List,
  Contents,
  Header,
  Footer
};
inline constexpr int kStyles = static_cast<int>(Style::Footer) + 1;

/// The words of each style. A paragraph repeats those of its style, as readers expect.
class StyleSheet {
 public:
  /// @param font  the number of the document's font
  StyleSheet(const ColorTable& colors, int font);

  /// As in "\s1\keepn...\b\fs36".
  std::string_view words(Style style, bool isRightToLeft = false) const {
    return isRightToLeft && style == Style::Quote ? quoteOnRight_ : words_[static_cast<int>(style)];
  }
  /// How text in the style looks.
  RunStyle run(Style style) const;
  /// The words that a paragraph of another style gets in a quote.
  std::string_view quoteBorder(bool isRightToLeft) const { return isRightToLeft ? quoteBorderOnRight_ : quoteBorder_; }
  void write(OutputBuffer& out) const;

 private:
  std::string wordsOf(Style style, std::string_view quoteBorder) const;

  const int font_;
  const std::string quoteBorder_;
  const std::string quoteBorderOnRight_;
  const std::string codeShade_;
  std::string words_[kStyles];
  std::string quoteOnRight_;
};

}  // namespace scrivalen::document::rtf
