#pragma once

#include "output/output_buffer.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace scrivalen {

/// Escapes clean UTF-8 for markup languages. Plain characters are checked and copied sixteen at a time. U+FFFE and
/// U+FFFF, which no such language may contain (XML 1.0, 2.2), become U+FFFD and are counted.
class MarkupText {
 public:
  /// The most bytes of a line break's text.
  static constexpr std::size_t kLongestBreak = 8;

  /// The space that a text of @p size bytes needs when it is written in place; most of it stays unused.
  static constexpr std::size_t spaceFor(std::size_t size) { return size * kGrowth + kBlock; }
  /// The longest text that needs no more than @p space.
  static constexpr std::size_t longestInPlace(std::size_t space) { return (space - kBlock) / kGrowth; }

  /// Writes element content: & < > escaped, a line feed as @p lineBreak.
  void content(OutputBuffer& out, std::string_view text, std::string_view lineBreak);
  /// Writes it in place. @return the end
  char* content(char* out, std::string_view text, std::string_view lineBreak);

  /// Writes an attribute's value, without its quotation marks: & < > " escaped, a line feed as "&#10;".
  void value(OutputBuffer& out, std::string_view text);
  /// Writes it in place. @return the end
  char* value(char* out, std::string_view text);

  /// How many characters were replaced.
  std::uint64_t replaced() const { return replaced_; }

 private:
  static constexpr std::size_t kGrowth = 8;
  static constexpr std::size_t kBlock = 16;

  std::uint64_t replaced_ = 0;
};

}  // namespace scrivalen
