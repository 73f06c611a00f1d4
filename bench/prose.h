#pragma once

#include <string>

namespace scrivalen::bench {

inline constexpr int kParagraphsOfASection = 20;

/// Invented prose, the same for every writer: sections of 20 paragraphs of 600 characters each.
class Prose {
 public:
  /// The heading of the next section. Valid until the next call.
  const std::wstring& nextHeading();
  /// The next paragraph. Valid until the next call.
  const std::wstring& nextParagraph();

 private:
  unsigned section_ = 0;
  unsigned paragraph_ = 0;
  std::wstring text_;
};

}  // namespace scrivalen::bench
