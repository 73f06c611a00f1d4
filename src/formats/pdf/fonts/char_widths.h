#pragma once

#include "formats/pdf/fonts/advance_widths.h"

#include <array>
#include <cstdint>

namespace scrivalen::pdf {

/// How wide the characters of one font in one size are taken to be.
class CharWidths {
 public:
  CharWidths() = default;
  /// The estimates of the classic form, in whole points.
  /// @param average  the average width of the font's characters, in points
  explicit CharWidths(float average);
  /// The true widths of bytes in a font, in thousandths of a point.
  /// @param size  of the font, in points
  CharWidths(const AdvanceWidths& advances, int size);

  std::int64_t of(char16_t unit) const { return unit < widths_.size() ? widths_[unit] : other_; }
  std::int64_t of(char byte) const { return widths_[static_cast<unsigned char>(byte)]; }
  /// How many of the widths' units are a point.
  std::int64_t perPoint() const { return perPoint_; }

 private:
  std::array<std::int32_t, 256> widths_{};
  std::int32_t other_ = 0;
  std::int32_t perPoint_ = 1;
};

}  // namespace scrivalen::pdf
