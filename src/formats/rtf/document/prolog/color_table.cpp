#include "formats/rtf/document/prolog/color_table.h"

#include "formats/rtf/document/escape.h"

#include <algorithm>
#include <iterator>

namespace scrivalen::document::rtf {
namespace {

constexpr Rgb kOwnColors[] = {kLinkColor, kLineColor, kShadeColor, kHeaderColor};
constexpr Rgb kShades[] = {0x00, 0x40, 0x80, 0xC0, 0xFF};

int part(Rgb color, int shift) { return static_cast<int>(color >> shift & 0xFF); }

int distance(Rgb a, Rgb b) {
  int sum = 0;
  for (const int shift : {16, 8, 0}) {
    const int difference = part(a, shift) - part(b, shift);
    sum += difference * difference;
  }
  return sum;
}

}  // namespace

ColorTable::ColorTable() {
  for (const NamedColor& named : namedColors()) {
    colors_.push_back(named.color);
  }
  for (const Rgb red : kShades) {
    for (const Rgb green : kShades) {
      for (const Rgb blue : kShades) {
        colors_.push_back(red << 16 | green << 8 | blue);
      }
    }
  }
  std::sort(colors_.begin(), colors_.end());
  colors_.erase(std::unique(colors_.begin(), colors_.end()), colors_.end());
  colors_.insert(colors_.begin(), std::begin(kOwnColors), std::end(kOwnColors));
}

void ColorTable::write(OutputBuffer& out) const {
  put(out, "{\\colortbl;");
  for (const Rgb color : colors_) {
    put(out, "\\red", part(color, 16));
    put(out, "\\green", part(color, 8));
    put(out, "\\blue", part(color, 0));
    out.put(';');
  }
  put(out, "}\n");
}

int ColorTable::indexOf(Rgb color) const {
  Known& known = known_[(color * 2654435761U) >> 26];
  if (known.index == 0 || known.color != color) {
    known = {color, nearest(color)};
  }
  return known.index;
}

int ColorTable::nearest(Rgb color) const {
  const auto found = std::min_element(colors_.begin(), colors_.end(),
                                      [color](Rgb a, Rgb b) { return distance(a, color) < distance(b, color); });
  return static_cast<int>(found - colors_.begin()) + 1;
}

}  // namespace scrivalen::document::rtf
