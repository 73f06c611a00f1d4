#include "document/pictures/bytes.h"
#include "document/pictures/facts.h"
#include "output/compression/crc.h"
#include "output/compression/deflate.h"

#include <cstddef>
#include <iterator>
#include <string>

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

// The bytes of all pixels, of which each component has its bits. Filters and passes add to them.
std::uint64_t pixelBytes(const Bytes& header) {
  constexpr std::uint32_t kComponents[] = {1, 0, 3, 1, 2, 0, 4};  // of each colour type
  const std::uint64_t bits = std::uint64_t{kComponents[header.byte(9)]} * header.byte(8);
  return (std::uint64_t{header.four(0)} * header.four(4) * bits + 7) / 8;
}

// Zlib makes at most 258 bytes of two bits. A picture of a few bytes is left to its decoder.
bool mayInflateTo(std::uint64_t size, std::uint64_t compressed) {
  constexpr std::uint64_t kMostPerByte = 1032;
  return size <= (compressed + 1) * kMostPerByte;
}

// What readers need to know for the pixels, and refuse where it is damaged or of a kind that they do not know: its name
// begins with a capital (PNG 1.2, 3.3).
bool isCritical(const Bytes& file, std::size_t chunk) { return (file.byte(chunk + 4) & 0x20) == 0; }

bool isKnown(const Bytes& file, std::size_t chunk) {
  return file.has(chunk + 4, "IHDR") || file.has(chunk + 4, "PLTE") || file.has(chunk + 4, "IDAT");
}

bool hasItsChecksum(const Bytes& file, std::size_t chunk) {
  const std::size_t size = file.four(chunk);
  return crc32Of(file.part(chunk + 4, size + 4)) == file.four(chunk + kChunkHead + size);
}

// Readers go by the checksum that zlib has for all pixels, which takes longer, rather than by those of the chunks.
bool arePixelsWhole(const std::string& compressed) {
  constexpr std::uint64_t kMost = std::uint64_t{64'000'000} * 9;  // 8 bytes a pixel and the filters
  Inflater inflater(compressed);
  std::string part(65536, '\0');
  std::uint64_t size = 0;
  while (size <= kMost && inflater.read(part.data(), part.size()) == part.size()) {
    size += part.size();
  }
  return inflater.isAtEnd();
}

std::string joinedPixels(const Bytes& file) {
  std::string joined;
  for (std::size_t at = kSignature.size(); !file.has(at + 4, "IEND"); at += kChunkOverhead + file.four(at)) {
    joined += file.has(at + 4, "IDAT") ? file.part(at + kChunkHead, file.four(at)) : std::string_view();
  }
  return joined;
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
  std::uint64_t compressed = 0;
  bool isHeaderDamaged = false;
  bool arePixelsDamaged = false;
  std::size_t at = kSignature.size();
  while (file.size() - at >= kChunkOverhead && file.size() - at - kChunkOverhead >= file.four(at)) {
    const std::size_t size = file.four(at);
    if (file.has(at + 4, "IEND")) {
      facts.isTooShort = !mayInflateTo(pixelBytes(header), compressed);
      if (!hasPixels || isHeaderDamaged) {
        return hasPixels ? "is a PNG with a wrong checksum" : "is a PNG without pixels";
      }
      return arePixelsDamaged && !arePixelsWhole(joinedPixels(file)) ? "is a PNG with broken pixels" : "";
    }
    if (isCritical(file, at)) {
      if (!isKnown(file, at)) {
        return "is a kind of PNG that most programs do not show";
      }
      bool& isDamaged = file.has(at + 4, "IDAT") ? arePixelsDamaged : isHeaderDamaged;
      isDamaged = isDamaged || !hasItsChecksum(file, at);
    }
    hasPalette = hasPalette || file.has(at + 4, "PLTE");
    if (file.has(at + 4, "IDAT")) {
      if (!hasPalette) {
        return "is a PNG without its palette";
      }
      hasPixels = true;
      compressed += size;
    }
    if (file.has(at + 4, "pHYs")) {
      readResolution(Bytes(file.part(at + kChunkHead, size)), facts);
    }
    at += kChunkOverhead + size;
  }
  return "is a PNG that ends early";
}

}  // namespace scrivalen::document
