#pragma once

#include "formats/pdf/typeset/pages/canvas.h"
#include "formats/pdf/typeset/text/paragraph.h"

#include <string_view>

namespace scrivalen::typeset {

/// A text in one line, with the blanks at its end, in the order in which its scripts are read.
class ShortText {
 public:
  /// @param text    clean UTF-8 without line feeds
  /// @param shaper         not owned; must outlive this object
  /// @param isRightToLeft  whatever its first letter is
  ShortText(std::string_view text, const TextStyle& style, Shaper& shaper, bool isRightToLeft = false);

  Length width() const { return width_; }
  /// @param left  where it begins
  void draw(Canvas& canvas, Length left, Length baseline) const;

 private:
  TextStyle style_;
  Shaper* shaper_;
  SetText set_;
  Length width_ = 0;
};

}  // namespace scrivalen::typeset
