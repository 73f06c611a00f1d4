#include "formats/pdf/typeset/pages/running_part.h"

#include <algorithm>
#include <cstddef>

namespace scrivalen::typeset {
namespace {

constexpr std::string_view kEllipsis = "\u2026";

Length shownWidth(std::string_view text, const TextStyle& style, Shaper& shaper) {
  return ShortText(text, style, shaper).width();
}

// The longest beginning, with an ellipsis, that is no wider than the width; at least the ellipsis.
std::string cutToWidth(const std::string& text, Length width, const TextStyle& style, Shaper& shaper) {
  std::size_t fitting = 0;
  std::size_t tooLong = text.size();
  while (fitting + 1 < tooLong) {
    const std::size_t middle = fitting + (tooLong - fitting) / 2;
    if (shownWidth(cutToBytes(text, middle + kEllipsis.size()), style, shaper) <= width) {
      fitting = middle;
    } else {
      tooLong = middle;
    }
  }
  return cutToBytes(text, fitting + kEllipsis.size());
}

}  // namespace

std::string cutToBytes(std::string_view text, std::size_t most) {
  if (text.size() <= most) {
    return std::string(text);
  }
  std::size_t end = most - std::min(most, kEllipsis.size());
  while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0) == 0x80) {
    --end;
  }
  while (end > 0 && text[end - 1] == ' ') {
    --end;
  }
  return std::string(text.substr(0, end)).append(kEllipsis);
}

std::string RunningPart::text() const {
  std::string all;
  for (const Piece& piece : pieces) {
    all += piece.text;
  }
  return all;
}

void RunningPart::shorten(Length width, const TextStyle& style, Shaper& shaper) {
  for (;;) {
    const Length excess = shownWidth(text(), style, shaper) - width;
    if (excess <= 0) {
      return;
    }
    Piece* longest = nullptr;
    for (Piece& piece : pieces) {
      if (!piece.isNumber() && !piece.isCut && (longest == nullptr || piece.text.size() > longest->text.size())) {
        longest = &piece;
      }
    }
    if (longest == nullptr) {
      return;
    }
    longest->text = cutToWidth(longest->text, shownWidth(longest->text, style, shaper) - excess, style, shaper);
    longest->isCut = true;
  }
}

}  // namespace scrivalen::typeset
