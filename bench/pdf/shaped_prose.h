#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace scrivalen::bench {

/// Invented prose in Arabic and Devanagari letters, a paragraph of 100 words each in turn, from 4,000 words of each
/// script.
class ShapedProse {
 public:
  ShapedProse();
  /// The next paragraph, as UTF-8. Valid until the next call.
  const std::string& nextParagraph();

 private:
  std::uint32_t random(std::uint32_t count);

  std::uint32_t state_ = 1;
  std::vector<std::string> words_[2];
  unsigned paragraph_ = 0;
  std::string text_;
};

/// Each writes paragraphs of 10 points into a PDF of A4 pages. @return the reason of a failure; empty on success
std::string writeProseWithLibrary(long paragraphs, const std::string& file);
std::string writeProseWithPango(long paragraphs, const std::string& file);

}  // namespace scrivalen::bench
