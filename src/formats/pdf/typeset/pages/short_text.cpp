#include "formats/pdf/typeset/pages/short_text.h"

#include <limits>

namespace scrivalen::typeset {
namespace {

constexpr Length kEndless = std::numeric_limits<std::int32_t>::max();

}  // namespace

ShortText::ShortText(std::string_view text, const TextStyle& style, Shaper& shaper, bool isRightToLeft)
    : style_(style), shaper_(&shaper) {
  StyledText styled;
  styled.add(text, style);
  set_ = setText(
      styled, {.width = kEndless, .leading = 1000, .usual = style, .keepsBlanks = true, .isRightToLeft = isRightToLeft},
      shaper);
  width_ = set_.lines.front().width;
  // A line does not count the blanks at its end.
  for (; text.ends_with(' '); text.remove_suffix(1)) {
    width_ += shaper.shape(" ", {style.font, style.size}).front().width;
  }
}

void ShortText::draw(Canvas& canvas, Length left, Length baseline) const {
  const TextLine& line = set_.lines.front();
  for (std::size_t i = line.firstPiece; i < line.endPiece; ++i) {
    const TextPiece& piece = set_.pieces[i];
    canvas.glyphs(left, baseline, piece.font, style_.size, style_.color,
                  std::string_view(set_.content).substr(piece.begin, piece.end - piece.begin));
    left += piece.width;
    if (piece.missing) {
      shaper_->countMissing(*piece.missing);
    }
  }
}

}  // namespace scrivalen::typeset
