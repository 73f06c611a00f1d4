#include "formats/pdf/typeset/pictures/png_interlace.h"

#include "formats/pdf/typeset/pictures/png_rows.h"

#include <cstring>

namespace scrivalen::typeset {
namespace {

// Which pixels a pass has (PNG 1.2, 2.6).
struct Pass {
  std::uint32_t x, y, stepX, stepY;
};

constexpr Pass kPasses[] = {{0, 0, 8, 8}, {4, 0, 8, 8}, {0, 4, 4, 8}, {2, 0, 4, 4},
                            {0, 2, 2, 4}, {1, 0, 2, 2}, {0, 1, 1, 2}};

std::uint32_t countOf(std::uint32_t size, std::uint32_t first, std::uint32_t step) {
  return size > first ? (size - first - 1) / step + 1 : 0;
}

// Puts the pixels of a pass at their places in a row of the picture.
void placeBytes(const char* from, std::uint32_t count, const Pass& pass, std::size_t pixelSize, char* row) {
  char* at = row + pass.x * pixelSize;
  for (std::uint32_t i = 0; i < count; ++i) {
    std::memcpy(at, from, pixelSize);
    at += pass.stepX * pixelSize;
    from += pixelSize;
  }
}

// The same for pixels of less than a byte. The row has zeros at their places.
void placeBits(const char* from, std::uint32_t count, const Pass& pass, std::size_t bits, char* row) {
  const unsigned mask = (1u << bits) - 1;
  for (std::size_t i = 0; i < count; ++i) {
    const std::size_t source = i * bits;
    const std::size_t target = (pass.x + i * pass.stepX) * bits;
    const unsigned value = static_cast<unsigned char>(from[source / 8]) >> (8 - bits - source % 8) & mask;
    const unsigned old = static_cast<unsigned char>(row[target / 8]);
    row[target / 8] = static_cast<char>(static_cast<unsigned char>(old | value << (8 - bits - target % 8)));
  }
}

}  // namespace

bool decodeInterlaced(const PngFile& file, std::string& pixels) {
  const std::size_t rowSize = file.rowSize(file.width());
  const std::size_t bits = file.bitsPerPixel();
  const std::size_t pixelSize = file.pixelSize();
  pixels.assign(rowSize * file.height(), '\0');
  PngRows rows(file.compressed());
  for (const Pass& pass : kPasses) {
    const std::uint32_t width = countOf(file.width(), pass.x, pass.stepX);
    std::string row(1 + file.rowSize(width), '\0');
    std::string above = row;
    for (std::size_t y = pass.y; width > 0 && y < file.height(); y += pass.stepY) {
      if (!rows.read(row)) {
        return false;
      }
      undoFilter(row, above, pixelSize);
      if (bits < 8) {
        placeBits(row.data() + 1, width, pass, bits, &pixels[y * rowSize]);
      } else {
        placeBytes(row.data() + 1, width, pass, pixelSize, &pixels[y * rowSize]);
      }
      row.swap(above);
    }
  }
  return rows.isAtEnd();
}

}  // namespace scrivalen::typeset
