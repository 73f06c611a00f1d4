#include "formats/pdf/typeset/pictures/jpeg_data.h"

#include "document/pictures/bytes.h"

#include <cstddef>
#include <cstdint>
#include <optional>

namespace scrivalen::typeset {
namespace {

using document::Bytes;

// Markers (ITU-T T.81, table B.1).
constexpr std::uint32_t kBaseline = 0xC0;
constexpr std::uint32_t kProgressive = 0xC2;
constexpr std::uint32_t kFirstAlone = 0xD0;
constexpr std::uint32_t kScan = 0xDA;
constexpr std::uint32_t kApp0 = 0xE0;
constexpr std::uint32_t kApp14 = 0xEE;
constexpr std::uint32_t kFill = 0xFF;
constexpr std::uint32_t kTemporary = 0x01;

constexpr std::uint32_t kNoTransform = 0;

// What the segments before the first scan say about the colours.
struct Colors {
  std::uint32_t width = 0;
  std::uint32_t height = 0;
  std::uint32_t components = 0;
  bool areNamedRgb = false;
  bool isJfif = false;
  std::optional<std::uint32_t> adobeTransform;
};

void readFrame(const Bytes& segment, Colors& colors) {
  constexpr std::size_t kFirst = 6;
  constexpr std::size_t kComponent = 3;
  colors.height = segment.two(1);
  colors.width = segment.two(3);
  colors.components = segment.byte(5);
  colors.areNamedRgb = segment.byte(kFirst) == 'R' && segment.byte(kFirst + kComponent) == 'G' &&
                       segment.byte(kFirst + 2 * kComponent) == 'B';
}

void readSegment(std::uint32_t marker, const Bytes& segment, Colors& colors) {
  constexpr std::size_t kAdobeSize = 12;
  if (marker >= kBaseline && marker <= kProgressive) {
    readFrame(segment, colors);
  } else if (marker == kApp0) {
    colors.isJfif = colors.isJfif || segment.has(0, std::string_view("JFIF\0", 5));
  } else if (marker == kApp14 && segment.has(0, "Adobe") && segment.size() >= kAdobeSize) {
    colors.adobeTransform = segment.byte(kAdobeSize - 1);
  }
}

Colors colorsOf(std::string_view jpeg) {
  const Bytes file(jpeg);
  Colors colors;
  std::size_t at = 2;
  while (at < file.size() && file.byte(at + 1) != kScan) {
    const std::uint32_t marker = file.byte(at + 1);
    if (marker == kFill) {
      ++at;
    } else if (marker == kTemporary || (marker >= kFirstAlone && marker < kScan)) {
      at += 2;
    } else {
      const std::size_t size = file.two(at + 2);
      readSegment(marker, Bytes(file.part(at + 4, size < 2 ? 0 : size - 2)), colors);
      at += 2 + size;
    }
  }
  return colors;
}

// Readers of PDF take three components for YCbCr unless a marker or an entry says otherwise (PDF 1.7, table 13).
// Decoders of JPEG also recognise RGB by the components' names, but never in a file with JFIF's marker.
bool isRgb(const Colors& colors) {
  if (colors.components != 3 || colors.isJfif) {
    return false;
  }
  return colors.adobeTransform ? *colors.adobeTransform == kNoTransform : colors.areNamedRgb;
}

std::string_view spaceOf(std::uint32_t components) {
  switch (components) {
    case 1: return "/DeviceGray";
    case 3: return "/DeviceRGB";
    case 4: return "/DeviceCMYK";
    default: return "";
  }
}

}  // namespace

std::string_view encodeJpeg(std::string_view jpeg, PictureData& data, bool hasCmyk) {
  const Colors colors = colorsOf(jpeg);
  const std::string_view space = spaceOf(colors.components);
  if (space.empty()) {
    return "is a kind of JPEG that most programs do not show";
  }
  if (colors.components == 4 && !hasCmyk) {
    return "is a JPEG with colours for printing (CMYK), which a file for archives in sRGB cannot have";
  }
  constexpr std::uint32_t kDepth = 8;
  std::string& entries = data.colors.entries;
  entries = imageEntries(colors.width, colors.height, space, kDepth);
  entries += "/Filter/DCTDecode";
  if (isRgb(colors)) {
    entries += "/DecodeParms<</ColorTransform 0>>";
  }
  // Programs that write this marker store CMYK inverted.
  if (colors.components == 4 && colors.adobeTransform) {
    entries += "/Decode[1 0 1 0 1 0 1 0]";
  }
  data.colors.source = jpeg;
  return "";
}

}  // namespace scrivalen::typeset
