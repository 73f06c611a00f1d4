#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace scrivalen::typeset {

/// Writes the array of the operator TJ: strings and the distances between them (PDF 1.7, 9.4.3).
class GlyphArray {
 public:
  explicit GlyphArray(std::string& out) : out_(out) {}
  GlyphArray(const GlyphArray&) = delete;
  GlyphArray& operator=(const GlyphArray&) = delete;

  void add(std::string_view bytes);
  /// Moves what comes to the right, in thousandths of the size.
  void move(std::int64_t distance);
  /// Ends the array, writes operators, and begins another.
  void operators(std::string_view text);
  /// Ends the last string. Without it the array is not complete.
  void end();

 private:
  std::string& out_;
  bool isInString_ = false;
};

}  // namespace scrivalen::typeset
