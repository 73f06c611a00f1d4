#include "formats/xlsx/excel_formats.h"

#include "text/utf.h"

#include <cmath>
#include <limits>

namespace scrivalen {
namespace {

using xlsx::CellFormat;
using xlsx::Family;
using xlsx::Font;

constexpr double kHundredths = 100;
constexpr std::size_t kAnyFills = std::numeric_limits<std::size_t>::max();

/// @param family  of the font, if the style names one
CellFormat formatOf(const CellStyle& style, Family family) {
  CellFormat format;
  format.font.family = style.fontFamily ? family : Family::Usual;
  if (style.fontSize) {
    format.font.size = static_cast<std::uint16_t>(std::lround(*style.fontSize * kHundredths));
  }
  format.font.color = style.color.value_or(xlsx::kNoColor);
  format.fill = style.background.value_or(xlsx::kNoColor);
  return format;
}

CellFormat usualFormat() { return formatOf({}, Family::Usual); }

// The fonts of cells without a format, of bold and of plain cells, and one for each font colour.
std::size_t mostFontsBeside(const CellFormat& plain) {
  constexpr std::size_t kMostColors = 500;
  return kMostColors + (plain.font == usualFormat().font ? 2 : 3);
}

}  // namespace

ExcelFormats::ExcelFormats(const SheetStyle& style)
    : plainFormat_(formatOf(style.cell, Family::Body)), formats_(mostFontsBeside(plainFormat_), 0, kAnyFills) {
  formats_.setFamily(Family::Body, toUtf8(style.cell.fontFamily.value_or(L"")));
  formats_.setFamily(Family::Header, toUtf8(style.bold.fontFamily.value_or(L"")));
  formats_.setUsual(usualFormat());
  CellFormat bold = formatOf(style.bold, Family::Header);
  bold.font.flags |= Font::Bold;
  plain_ = formats_.add(plainFormat_);
  bold_ = formats_.add(bold);
}

std::uint32_t ExcelFormats::colored(const std::wstring& colors) {
  const auto known = byText_.find(colors);
  const Entry entry = known != byText_.end() ? known->second : make(colors);
  if (known == byText_.end() && byText_.size() < kMostTexts) {
    byText_.emplace(colors, entry);
  }
  if (!entry.isUnderstood) {
    refuse(colors);
  }
  return entry.format;
}

ExcelFormats::Entry ExcelFormats::make(const std::wstring& colors) {
  const CellColors wanted = readColors(colors);
  CellFormat format = plainFormat_;
  format.font.color = wanted.color.value_or(format.font.color);
  format.fill = wanted.background.value_or(format.fill);
  if (!formats_.takes(format)) {
    return {plain_, false};
  }
  return {formats_.add(format), wanted.isUnderstood};
}

void ExcelFormats::refuse(const std::wstring& colors) {
  if (refused_++ == 0) {
    firstRefused_ = colors;
  }
}

}  // namespace scrivalen
