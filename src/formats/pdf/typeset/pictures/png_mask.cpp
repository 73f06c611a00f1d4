#include "formats/pdf/typeset/pictures/png_mask.h"

#include "formats/pdf/typeset/pictures/png_rows.h"

#include <algorithm>

namespace scrivalen::typeset {
namespace {

constexpr char kOpaque = '\xFF';
constexpr char kTransparent = '\0';

bool isAllOpaque(std::string_view alphas) { return alphas.find_first_not_of(kOpaque) == alphas.npos; }

}  // namespace

void AlphaChannel::add(std::string_view row, RowCompressor& colors) {
  std::string& colorBytes = colors.waiting();
  std::string& alphaBytes = rows_.waiting();
  const std::size_t begin = alphaBytes.size();
  colorBytes += row[0];
  alphaBytes += row[0];
  for (std::size_t at = 1; at < row.size(); at += colorsSize_ + alphaSize_) {
    colorBytes.append(row.data() + at, colorsSize_);
    alphaBytes.append(row.data() + at + colorsSize_, alphaSize_);
  }
  if (isOpaque_) {
    checkOpacity(std::string_view(alphaBytes).substr(begin));
  }
  colors.endRow();
  rows_.endRow();
}

void AlphaChannel::checkOpacity(std::string_view filtered) {
  plain_ = filtered;
  above_.resize(plain_.size());
  undoFilter(plain_, above_, alphaSize_);
  isOpaque_ = isAllOpaque(std::string_view(plain_).substr(1));
  plain_.swap(above_);
}

TransparentColors::TransparentColors(const PngFile& file) : file_(file) {
  alphas_.fill(kOpaque);
  if (file.colors() == PngColors::Palette) {
    std::copy(file.transparency().begin(), file.transparency().end(), alphas_.begin());
  }
}

void TransparentColors::add(std::string_view row) {
  plain_ = row;
  above_.resize(plain_.size());
  undoFilter(plain_, above_, file_.pixelSize());
  std::string& out = rows_.waiting();
  const std::size_t begin = out.size();
  if (file_.colors() == PngColors::Palette) {
    addIndexes(out);
  } else {
    addColors(out);
  }
  isOpaque_ = isOpaque_ && isAllOpaque(std::string_view(out).substr(begin));
  rows_.endRow();
  plain_.swap(above_);
}

void TransparentColors::addIndexes(std::string& out) const {
  const std::size_t bits = file_.depth();
  const unsigned mask = (1u << bits) - 1;
  for (std::size_t x = 0; x < file_.width(); ++x) {
    const auto byte = static_cast<unsigned char>(plain_[1 + x * bits / 8]);
    out += alphas_[byte >> (8 - bits - x * bits % 8) & mask];
  }
}

// The chunk "tRNS" has its components in two bytes each, as rows with 16 bits do.
void TransparentColors::addColors(std::string& out) const {
  const std::string_view key = file_.transparency();
  for (std::size_t at = 1; at < plain_.size(); at += key.size()) {
    out += std::string_view(plain_).substr(at, key.size()) == key ? kTransparent : kOpaque;
  }
}

}  // namespace scrivalen::typeset
