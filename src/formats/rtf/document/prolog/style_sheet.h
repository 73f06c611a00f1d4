#pragma once

#include "formats/rtf/document/prolog/color_table.h"
#include "output/output_buffer.h"

#include <string>
#include <string_view>

namespace scrivalen::document::rtf {

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
  explicit StyleSheet(const ColorTable& colors);

  /// As in "\s1\keepn...\b\fs36".
  std::string_view words(Style style) const { return words_[static_cast<int>(style)]; }
  /// The words that a paragraph of another style gets in a quote.
  std::string_view quoteBorder() const { return quoteBorder_; }
  void write(OutputBuffer& out) const;

 private:
  std::string words_[kStyles];
  std::string quoteBorder_;
};

}  // namespace scrivalen::document::rtf
