#include "formats/pdf/typeset/pictures/png_file.h"

#include "document/pictures/bytes.h"

#include <algorithm>

namespace scrivalen::typeset {
namespace {

using document::Bytes;

constexpr std::size_t kSignature = 8;
constexpr std::size_t kChunkHead = 8;       // length and type
constexpr std::size_t kChunkOverhead = 12;  // also the checksum
constexpr std::size_t kBytesPerColor = 3;

}  // namespace

PngFile::PngFile(std::string_view bytes) {
  const Bytes file(bytes);
  const Bytes header(file.part(kSignature + kChunkHead, 13));
  width_ = header.four(0);
  height_ = header.four(4);
  depth_ = header.byte(8);
  colors_ = static_cast<PngColors>(header.byte(9));
  isInterlaced_ = header.byte(12) != 0;
  std::size_t at = kSignature;
  while (at < file.size() && !file.has(at + 4, "IEND")) {
    const std::size_t size = file.four(at);
    readChunk(file.part(at + 4, 4), file.part(at + kChunkHead, size));
    at += kChunkOverhead + size;
  }
  fitTransparency();
}

std::uint32_t PngFile::components() const {
  switch (colors_) {
    case PngColors::Gray:
    case PngColors::Palette: return 1;
    case PngColors::GrayAlpha: return 2;
    case PngColors::Rgb: return 3;
    case PngColors::RgbAlpha: break;
  }
  return 4;
}

std::size_t PngFile::rowSize(std::uint32_t pixels) const {
  return static_cast<std::size_t>((std::uint64_t{pixels} * bitsPerPixel() + 7) / 8);
}

void PngFile::readChunk(std::string_view type, std::string_view content) {
  if (type == "IDAT") {
    if (first_.empty()) {
      first_ = content;
    } else {
      joined_ += joined_.empty() ? first_ : std::string_view();
      joined_ += content;
    }
  } else if (type == "PLTE" && palette_.empty()) {
    readPalette(content);
  } else if (type == "tRNS" && first_.empty()) {
    transparency_ = content;
  }
}

void PngFile::readPalette(std::string_view content) {
  if (content.size() % kBytesPerColor == 0) {
    palette_ = content.substr(0, kBytesPerColor << std::min(depth_, 8u));
  }
}

void PngFile::fitTransparency() {
  const auto keepIf = [this](bool fits) { transparency_ = fits ? transparency_ : std::string_view(); };
  switch (colors_) {
    case PngColors::Gray: keepIf(transparency_.size() == 2); break;
    case PngColors::Rgb: keepIf(transparency_.size() == 6); break;
    case PngColors::Palette: {
      transparency_ = transparency_.substr(0, palette_.size() / kBytesPerColor);
      transparency_ = transparency_.substr(0, transparency_.find_last_not_of('\xFF') + 1);
      break;
    }
    case PngColors::GrayAlpha:
    case PngColors::RgbAlpha: keepIf(false); break;
  }
}

}  // namespace scrivalen::typeset
