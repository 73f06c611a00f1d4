#include "document/pictures/bytes.h"
#include "document/pictures/facts.h"

#include <cstddef>
#include <iterator>

namespace scrivalen::document {
namespace {

constexpr std::string_view kSignature = "\x89PNG\r\n\x1A\n";
constexpr std::size_t kChunkHead = 8;       // length and type
constexpr std::size_t kChunkOverhead = 12;  // also the checksum
constexpr std::size_t kHeaderSize = 13;

// The bit depths of each colour type (PNG 1.2, 4.1.1), a bit for each.
constexpr std::uint32_t kDepths[] = {1 | 2 | 4 | 8 | 16, 0, 8 | 16, 1 | 2 | 4 | 8, 8 | 16, 0, 8 | 16};
constexpr std::uint32_t kPaletteColors = 3;

bool isHeader(const Bytes& header) {
  const std::uint32_t depth = header.byte(8);
  const std::uint32_t colors = header.byte(9);
  const bool isDepth = depth == 1 || depth == 2 || depth == 4 || depth == 8 || depth == 16;
  return isDepth && colors < std::size(kDepths) && (kDepths[colors] & depth) != 0 && header.byte(10) == 0 &&
         header.byte(11) == 0 && header.byte(12) <= 1;
}

void readResolution(const Bytes& chunk, PictureFacts& facts) {
  constexpr double kMetresPerInch = 0.0254;
  constexpr std::uint32_t kPerMetre = 1;
  if (chunk.byte(8) == kPerMetre) {
    facts.dotsPerInchX = chunk.four(0) * kMetresPerInch;
    facts.dotsPerInchY = chunk.four(4) * kMetresPerInch;
  }
}

}  // namespace

bool isPng(std::string_view bytes) { return bytes.starts_with(kSignature); }

std::string_view readPng(std::string_view bytes, PictureFacts& facts) {
  const Bytes file(bytes);
  const Bytes header(file.part(kSignature.size() + kChunkHead, kHeaderSize));
  if (file.four(kSignature.size()) != kHeaderSize || !file.has(kSignature.size() + 4, "IHDR") || !isHeader(header)) {
    return "is a PNG without a valid header";
  }
  facts.width = header.four(0);
  facts.height = header.four(4);
  bool hasPalette = header.byte(9) != kPaletteColors;
  bool hasPixels = false;
  std::size_t at = kSignature.size();
  while (file.size() - at >= kChunkOverhead && file.size() - at - kChunkOverhead >= file.four(at)) {
    const std::size_t size = file.four(at);
    if (file.has(at + 4, "IEND")) {
      return hasPixels ? "" : "is a PNG without pixels";
    }
    hasPalette = hasPalette || file.has(at + 4, "PLTE");
    if (file.has(at + 4, "IDAT")) {
      if (!hasPalette) {
        return "is a PNG without its palette";
      }
      hasPixels = true;
    }
    if (file.has(at + 4, "pHYs")) {
      readResolution(Bytes(file.part(at + kChunkHead, size)), facts);
    }
    at += kChunkOverhead + size;
  }
  return "is a PNG that ends early";
}

}  // namespace scrivalen::document
