#include "formats/pdf/typeset/pages/canvas.h"

#include "formats/pdf/typeset/file/syntax.h"

#include <algorithm>
#include <cstddef>

namespace scrivalen::typeset {
namespace {

constexpr Length kTenth = kPoint / kUnitsPerPoint;
constexpr std::string_view kArtifact = "/Artifact BMC\n";
constexpr std::string_view kEndMark = "EMC\n";
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

void appendMark(std::string& out, std::string_view role, int id) {
  Operators(out).add("/").add(role).add("<</MCID ").number(id).add(">>BDC\n");
}

// Whether the content of an array is a string alone. A parenthesis in a string has a backslash before it.
bool isOneString(std::string_view content) {
  return content.starts_with('(') && content.ends_with(')') && content.find("(", 1) == content.npos;
}

}  // namespace

void Canvas::begin(Length pageHeight) {
  areas_.clear();
  texts_.clear();
  forms_.clear();
  height_ = pageHeight;
  hasFont_ = false;
  color_ = 0;
  x_ = y_ = 0;
  areaColor_.reset();
  isTagged_ = false;
}

void Canvas::setText(FontUse font, Length size, Rgb color) {
  if (!hasFont_ || !(font == font_) || size != size_) {
    Operators operators(texts_);
    operators.add(font.composite == 0 ? "/F" : "/G").number(font.typeface);
    if (font.composite > 1) {
      operators.add(".").number(font.composite - 1);
    }
    operators.add(" ").number(tenths(size)).add(" Tf\n");
    hasFont_ = true;
    font_ = font;
    size_ = size;
  }
  if (color != color_) {
    appendColor(texts_, color);
    color_ = color;
  }
}

// Moves to the next text. @param operators  what follows the two numbers
void Canvas::moveTo(Length x, Length baseline, std::string_view operators) {
  const std::int64_t newX = tenths(x);
  const std::int64_t newY = tenths(height_ - baseline);
  Operators(texts_).number(newX - x_).add(" ").number(newY - y_).add(operators);
  x_ = newX;
  y_ = newY;
}

void Canvas::text(Length x, Length baseline, FontUse font, Length size, Rgb color, std::string_view bytes) {
  setText(font, size, color);
  moveTo(x, baseline, " Td(");
  appendEscaped(texts_, bytes);
  texts_ += ")Tj\n";
}

void Canvas::glyphs(Length x, Length baseline, FontUse font, Length size, Rgb color, std::string_view content) {
  setText(font, size, color);
  if (isOneString(content)) {
    moveTo(x, baseline, " Td");
    texts_.append(content).append("Tj\n");
  } else {
    moveTo(x, baseline, " Td[");
    texts_.append(content).append("]TJ\n");
  }
}

void Canvas::area(Length x, Length top, Length width, Length height, Rgb color) {
  if (areaColor_ != color) {
    areas_ += areaColor_ ? "f\n" : "";
    appendColor(areas_, color);
    areaColor_ = color;
  }
  const std::int64_t left = tenths(x);
  const std::int64_t bottom = tenths(height_ - top - height);
  Operators operators(areas_);
  for (const std::int64_t number : {left, bottom, tenths(x + width) - left, tenths(height_ - top) - bottom}) {
    operators.number(number).add(" ");
  }
  operators.add("re\n");
}

void Canvas::endAreas() {
  if (areaColor_) {
    areas_ += "f\n";
    areaColor_.reset();
  }
}

void Canvas::image(const PictureMatrix& matrix, std::string_view name) {
  endAreas();
  areas_ += "q ";
  for (const Length number : matrix) {
    appendThousandths(areas_, number * kUnitsPerPoint);
    areas_ += ' ';
  }
  areas_ += "cm";
  appendName(areas_, name);
  areas_ += " Do Q\n";
}

void Canvas::form(Length x, Length baseline, std::string_view name, std::int64_t scale) {
  const bool isArtifact = isTagged_ && !isFormMarked_;
  forms_ += isArtifact ? kArtifact : "";
  // The form has the colour of the last text otherwise.
  forms_ += "q 0 g ";
  appendThousandths(forms_, scale * kUnitsPerPoint);
  forms_ += " 0 0 ";
  appendThousandths(forms_, scale * kUnitsPerPoint);
  forms_ += ' ';
  appendInteger(forms_, tenths(x));
  forms_ += ' ';
  appendInteger(forms_, tenths(height_ - baseline));
  forms_ += " cm";
  appendName(forms_, name);
  forms_ += " Do Q\n";
  forms_ += isArtifact ? kEndMark : "";
}

void Canvas::beginFormMark(std::string_view role, int id) {
  appendMark(forms_, role, id);
  isFormMarked_ = true;
}

void Canvas::endFormMark() {
  forms_ += kEndMark;
  isFormMarked_ = false;
}

void Canvas::beginMark(std::string_view role, int id) { appendMark(texts_, role, id); }

// The areas are one artifact, but for such content.
void Canvas::beginImageMark(std::string_view role, int id) {
  endAreas();
  areas_ += kEndMark;
  appendMark(areas_, role, id);
}

void Canvas::endImageMark() { areas_.append(kEndMark).append(kArtifact); }

std::string_view Canvas::content() {
  const bool hasArtifact = isTagged_ && !areas_.empty();
  content_ = kBegin;
  content_ += hasArtifact ? kArtifact : "";
  content_ += areas_;
  content_ += areaColor_ ? "f\n" : "";
  content_ += hasArtifact ? kEndMark : "";
  if (!texts_.empty()) {
    // What an area has coloured is black again.
    content_ += areas_.empty() ? "BT\n" : "0 g BT\n";
    content_ += texts_;
    content_ += "ET";
  }
  if (!forms_.empty()) {
    content_ += texts_.empty() ? "" : "\n";
    content_ += forms_;
  }
  return content_;
}

}  // namespace scrivalen::typeset
