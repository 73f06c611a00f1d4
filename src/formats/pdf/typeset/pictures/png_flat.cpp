#include "formats/pdf/typeset/pictures/png_flat.h"

#include "formats/pdf/typeset/pictures/png_rows.h"

#include <cstddef>

namespace scrivalen::typeset {
namespace {

constexpr unsigned kFull = 255;

char onWhite(unsigned component, unsigned alpha) {
  const unsigned mixed = (component * alpha + kFull * (kFull - alpha) + kFull / 2) / kFull;
  return static_cast<char>(static_cast<unsigned char>(mixed));
}

}  // namespace

bool needsFlattening(const PngFile& file) { return file.hasAlpha() || file.depth() > 8; }

std::string flatPalette(const PngFile& file) {
  std::string palette(file.palette());
  for (std::size_t i = 0; i < palette.size() && i / 3 < file.transparency().size(); ++i) {
    palette[i] = onWhite(static_cast<unsigned char>(palette[i]), static_cast<unsigned char>(file.transparency()[i / 3]));
  }
  return palette;
}

FlatRows::FlatRows(const PngFile& file)
    : file_(file), colors_(file.components() - (file.hasAlpha() ? 1 : 0)), flatAbove_(1 + file.width() * colors_, '\0') {}

// The first byte of a component of two is what 8 bits show of it.
unsigned FlatRows::alphaOf(std::string_view pixel) const {
  if (file_.hasAlpha()) {
    return static_cast<unsigned char>(pixel[colors_ * file_.depth() / 8]);
  }
  return pixel == file_.transparency() ? 0 : kFull;
}

void FlatRows::add(std::string_view row) {
  plain_ = row;
  above_.resize(plain_.size());
  undoFilter(plain_, above_, file_.pixelSize());
  const std::size_t componentSize = file_.depth() / 8;
  flat_.assign(1, '\0');
  for (std::size_t at = 1; at < plain_.size(); at += file_.pixelSize()) {
    const unsigned alpha = alphaOf(std::string_view(plain_).substr(at, file_.pixelSize()));
    for (std::size_t i = 0; i < colors_; ++i) {
      flat_ += onWhite(static_cast<unsigned char>(plain_[at + i * componentSize]), alpha);
    }
  }
  applyFilter(flat_, flatAbove_, colors_, filtered_);
  rows_.add(filtered_);
  flat_.swap(flatAbove_);
  plain_.swap(above_);
}

}  // namespace scrivalen::typeset
