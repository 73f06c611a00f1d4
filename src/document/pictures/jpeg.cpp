#include "document/pictures/bytes.h"
#include "document/pictures/facts.h"

#include <algorithm>
#include <cstddef>

namespace scrivalen::document {
namespace {

constexpr std::string_view kEndsEarly = "is a JPEG that ends early";
constexpr double kCentimetresPerInch = 2.54;

// Markers (ITU-T T.81, table B.1).
constexpr std::uint32_t kTemporary = 0x01;
constexpr std::uint32_t kBaseline = 0xC0;
constexpr std::uint32_t kProgressive = 0xC2;
constexpr std::uint32_t kLastFrame = 0xCF;
constexpr std::uint32_t kHuffmanTables = 0xC4;
constexpr std::uint32_t kReserved = 0xC8;
constexpr std::uint32_t kArithmeticTables = 0xCC;
constexpr std::uint32_t kFirstRestart = 0xD0;
constexpr std::uint32_t kLastRestart = 0xD7;
constexpr std::uint32_t kEnd = 0xD9;
constexpr std::uint32_t kScan = 0xDA;
constexpr std::uint32_t kApp0 = 0xE0;
constexpr std::uint32_t kApp1 = 0xE1;

bool isAlone(std::uint32_t marker) {
  return marker == kTemporary || (marker >= kFirstRestart && marker <= kLastRestart);
}

bool isFrame(std::uint32_t marker) {
  return marker >= kBaseline && marker <= kLastFrame && marker != kHuffmanTables && marker != kReserved &&
         marker != kArithmeticTables;
}

// A segment with "JFIF" (JFIF 1.02): its density comes before that of EXIF, which cameras make up.
void readJfif(const Bytes& segment, PictureFacts& facts) {
  const std::uint32_t unit = segment.byte(7);
  if (!segment.has(0, std::string_view("JFIF\0", 5)) || (unit != 1 && unit != 2)) {
    return;
  }
  const double perInch = unit == 1 ? 1 : kCentimetresPerInch;
  facts.dotsPerInchX = segment.two(8) * perInch;
  facts.dotsPerInchY = segment.two(10) * perInch;
}

double fractionAt(const Bytes& tiff, std::size_t at) {
  const std::uint32_t divisor = tiff.four(at + 4);
  return divisor == 0 ? 0 : static_cast<double>(tiff.four(at)) / divisor;
}

// The first directory of EXIF (TIFF 6.0, section 2).
void readDirectory(const Bytes& tiff, PictureFacts& facts) {
  constexpr std::size_t kEntry = 12;
  const std::size_t directory = tiff.four(4);
  double x = 0;
  double y = 0;
  double perInch = 1;
  const std::size_t count = tiff.two(directory);
  for (std::size_t i = 0; i < count && directory + 2 + i * kEntry < tiff.size(); ++i) {
    const std::size_t entry = directory + 2 + i * kEntry;
    const std::uint32_t value = tiff.two(entry + 8);
    switch (tiff.two(entry)) {
      case 0x0112: facts.orientation = value >= 1 && value <= 8 ? static_cast<int>(value) : 1; break;
      case 0x011A: x = fractionAt(tiff, tiff.four(entry + 8)); break;
      case 0x011B: y = fractionAt(tiff, tiff.four(entry + 8)); break;
      case 0x0128: perInch = value == 2 ? 1 : value == 3 ? kCentimetresPerInch : 0; break;
      default: break;
    }
  }
  if (facts.dotsPerInchX == 0 || facts.dotsPerInchY == 0) {
    facts.dotsPerInchX = x * perInch;
    facts.dotsPerInchY = y * perInch;
  }
}

void readExif(const Bytes& segment, PictureFacts& facts) {
  constexpr std::string_view kExif("Exif\0\0", 6);
  if (!segment.has(0, kExif)) {
    return;
  }
  const std::string_view tiff = segment.part(kExif.size(), segment.size());
  const bool isLittleEndian = tiff.starts_with(std::string_view("II*\0", 4));
  if (isLittleEndian || tiff.starts_with(std::string_view("MM\0*", 4))) {
    readDirectory(Bytes(tiff, isLittleEndian), facts);
  }
}

std::string_view readFrame(std::uint32_t marker, const Bytes& segment, PictureFacts& facts) {
  const std::uint32_t components = segment.byte(5);
  if (segment.size() < 6 + 3 * components) {
    return "is a JPEG with a broken frame";
  }
  const bool isShown =
      marker <= kProgressive && segment.byte(0) == 8 && (components == 1 || components == 3 || components == 4);
  if (!isShown) {
    return "is a kind of JPEG that most programs do not show";
  }
  facts.height = segment.two(1);
  facts.width = segment.two(3);
  return "";
}

constexpr std::size_t kFirstComponent = 6;
constexpr std::size_t kComponentSize = 3;

// The blocks of 8 x 8 samples of all components, of which one may have more than others (ITU-T T.81, A.1.1).
std::uint64_t blocksOf(const Bytes& frame) {
  const auto components = [&frame](auto visit) {
    for (std::size_t i = 0; i < frame.byte(5); ++i) {
      const std::uint32_t sampling = frame.byte(kFirstComponent + i * kComponentSize + 1);
      visit(sampling >> 4, sampling & 0xF);
    }
  };
  std::uint64_t mostX = 1;
  std::uint64_t mostY = 1;
  components([&](std::uint64_t x, std::uint64_t y) {
    mostX = std::max(mostX, x);
    mostY = std::max(mostY, y);
  });
  constexpr std::uint64_t kSide = 8;
  const auto blocks = [](std::uint64_t size, std::uint64_t sampling, std::uint64_t most) {
    return (size * sampling + most * kSide - 1) / (most * kSide);
  };
  std::uint64_t count = 0;
  components([&](std::uint64_t x, std::uint64_t y) {
    count += blocks(frame.two(3), x, mostX) * blocks(frame.two(1), y, mostY);
  });
  return count;
}

// Huffman codes have one bit at least, and each block has one, whatever its scans (F.1.2, G.1.2).
bool mayHold(std::string_view scans, std::uint64_t blocks) { return blocks <= std::uint64_t{scans.size()} * 8; }

bool hasEnd(std::string_view scans) { return scans.rfind("\xFF\xD9") != std::string_view::npos; }

std::string_view readSegment(std::uint32_t marker, const Bytes& segment, PictureFacts& facts) {
  if (isFrame(marker)) {
    return facts.width > 0 ? "is a JPEG with two frames" : readFrame(marker, segment, facts);
  }
  if (marker == kApp0) {
    readJfif(segment, facts);
  } else if (marker == kApp1) {
    readExif(segment, facts);
  }
  return "";
}

}  // namespace

bool isJpeg(std::string_view bytes) { return bytes.starts_with("\xFF\xD8\xFF"); }

std::string_view readJpeg(std::string_view bytes, PictureFacts& facts) {
  const Bytes file(bytes);
  std::size_t at = 2;
  std::uint64_t blocks = 0;
  while (at < file.size()) {
    if (file.byte(at) != 0xFF) {
      return "is a JPEG with bytes between its segments";
    }
    const std::uint32_t marker = file.byte(at + 1);
    if (marker == 0xFF || isAlone(marker)) {
      at += marker == 0xFF ? 1 : 2;
      continue;
    }
    const std::size_t size = file.two(at + 2);
    if (marker == kEnd || size < 2 || file.size() - at - 2 < size) {
      return kEndsEarly;
    }
    if (marker == kScan) {
      const std::string_view scans = bytes.substr(at);
      facts.isTooShort = !mayHold(scans, blocks);
      return facts.width == 0 ? "is a JPEG without a frame" : hasEnd(scans) ? "" : kEndsEarly;
    }
    const Bytes segment(file.part(at + 4, size - 2));
    blocks = isFrame(marker) ? blocksOf(segment) : blocks;
    const std::string_view wrong = readSegment(marker, segment, facts);
    if (!wrong.empty()) {
      return wrong;
    }
    at += 2 + size;
  }
  return kEndsEarly;
}

}  // namespace scrivalen::document
