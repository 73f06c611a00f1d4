#pragma once

#include <array>
#include <cstdint>

namespace scrivalen::pdf {

/// How wide the characters of one font in one size are taken to be, in points.
class CharWidths {
 public:
  CharWidths() = default;
  /// @param average  the average width of the font's characters, in points
  explicit CharWidths(float average);

  std::int64_t of(char16_t unit) const { return unit < widths_.size() ? widths_[unit] : other_; }
  std::int64_t of(char byte) const { return widths_[static_cast<unsigned char>(byte)]; }

 private:
  std::array<std::int32_t, 256> widths_{};
  std::int32_t other_ = 0;
};

}  // namespace scrivalen::pdf
