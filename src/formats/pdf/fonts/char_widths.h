#pragma once

#include "formats/pdf/fonts/advance_widths.h"

#include <array>
#include <cstdint>

namespace scrivalen::pdf {

/// The character widths of one font in one size.
class CharWidths {
 public:
  CharWidths() = default;
  /// Estimates widths as the classic form does, in whole points.
  /// @param average  the average character width of the font, in points
  explicit CharWidths(float average);
  /// Computes the true widths of bytes in a font, in thousandths of a point.
  /// @param size  of the font, in points
  CharWidths(const AdvanceWidths& advances, int size);

  std::int64_t of(char16_t unit) const { return unit < widths_.size() ? widths_[unit] : other_; }
  std::int64_t of(char byte) const { return widths_[static_cast<unsigned char>(byte)]; }
  /// How many units of the widths make a point.
  std::int64_t perPoint() const { return perPoint_; }

 private:
  std::array<std::int32_t, 256> widths_{};
  std::int32_t other_ = 0;
  std::int32_t perPoint_ = 1;
};

}  // namespace scrivalen::pdf
