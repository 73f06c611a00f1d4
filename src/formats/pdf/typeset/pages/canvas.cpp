#include "formats/pdf/typeset/pages/canvas.h"

#include "formats/pdf/typeset/file/syntax.h"

namespace scrivalen::typeset {
namespace {

constexpr Length kTenth = kPoint / 10;
constexpr std::string_view kBegin = ".1 0 0 .1 0 0 cm\n";

std::int64_t tenths(Length length) { return (length + (length < 0 ? -kTenth / 2 : kTenth / 2)) / kTenth; }

// Sets the colour of what is filled.
void appendColor(std::string& out, Rgb color) {
  const auto part = [color](unsigned shift) { return static_cast<std::int64_t>(color >> shift & 0xFF) * 1000 / 255; };
  appendThousandths(out, part(16));
  if (part(16) == part(8) && part(8) == part(0)) {
    out += " g\n";
    return;
  }
  out += ' ';
  appendThousandths(out, part(8));
  out += ' ';
  appendThousandths(out, part(0));
  out += " rg\n";
}

}  // namespace

void Canvas::begin(Length pageHeight) {
  areas_.clear();
  texts_.clear();
  height_ = pageHeight;
  hasFont_ = false;
  color_ = 0;
  wordSpace_ = 0;
  x_ = y_ = 0;
  areaColor_.reset();
}

void Canvas::move(std::int64_t x, std::int64_t y) {
  appendInteger(texts_, x - x_);
  texts_ += ' ';
  appendInteger(texts_, y - y_);
  texts_ += " Td";
  x_ = x;
  y_ = y;
}

void Canvas::text(Length x, Length baseline, FontId font, Length size, Rgb color, std::string_view bytes,
                  Length wordSpace) {
  if (!hasFont_ || font != font_ || size != size_) {
    texts_ += "/F";
    appendInteger(texts_, font);
    texts_ += ' ';
    appendInteger(texts_, tenths(size));
    texts_ += " Tf\n";
    hasFont_ = true;
    font_ = font;
    size_ = size;
  }
  if (color != color_) {
    appendColor(texts_, color);
    color_ = color;
  }
  if (tenths(wordSpace) != wordSpace_) {
    wordSpace_ = tenths(wordSpace);
    appendInteger(texts_, wordSpace_);
    texts_ += " Tw\n";
  }
  move(tenths(x), tenths(height_ - baseline));
  appendString(texts_, bytes);
  texts_ += "Tj\n";
}

void Canvas::area(Length x, Length top, Length width, Length height, Rgb color) {
  if (areaColor_ != color) {
    areas_ += areaColor_ ? "f\n" : "";
    appendColor(areas_, color);
    areaColor_ = color;
  }
  const std::int64_t left = tenths(x);
  const std::int64_t bottom = tenths(height_ - top - height);
  for (const std::int64_t number : {left, bottom, tenths(x + width) - left, tenths(height_ - top) - bottom}) {
    appendInteger(areas_, number);
    areas_ += ' ';
  }
  areas_ += "re\n";
}

void Canvas::form(Length x, Length baseline, std::string_view name) {
  if (areaColor_) {
    areas_ += "f\n";
    areaColor_.reset();
  }
  areas_ += "q 10 0 0 10 ";
  appendInteger(areas_, tenths(x));
  areas_ += ' ';
  appendInteger(areas_, tenths(height_ - baseline));
  areas_ += " cm";
  appendName(areas_, name);
  areas_ += " Do Q\n";
}

std::string_view Canvas::content() {
  content_ = kBegin;
  content_ += areas_;
  content_ += areaColor_ ? "f\n" : "";
  if (!texts_.empty()) {
    // What an area has coloured is black again.
    content_ += areas_.empty() ? "BT\n" : "0 g BT\n";
    content_ += texts_;
    content_ += "ET";
  }
  return content_;
}

}  // namespace scrivalen::typeset
