#include "support/documents/png_maker.h"

#include "support/documents/pictures.h"

#include <algorithm>
#include <cstdlib>

namespace scrivalen::test {
namespace {

int byteOf(char c) { return static_cast<unsigned char>(c); }

// Collects the plain rows of a pass, and filters them.
class Rows {
 public:
  Rows(std::string& out, int bitsPerPixel) : out_(out), pixelSize_(std::max(1, bitsPerPixel / 8)) {}

  void beginRow() {
    above_ = row_;
    row_.clear();
    bits_ = 0;
  }

  void add(unsigned sample, int depth) {
    for (int bit = depth - 1; bit >= 0; --bit) {
      if (bits_ % 8 == 0) {
        row_ += '\0';
      }
      row_.back() = static_cast<char>(byteOf(row_.back()) | static_cast<int>(sample >> bit & 1) << (7 - bits_ % 8));
      ++bits_;
    }
  }

  void endRow(int filter) {
    above_.resize(row_.size());
    out_ += static_cast<char>(filter);
    for (int i = 0; i < static_cast<int>(row_.size()); ++i) {
      out_ += static_cast<char>(byteOf(row_[static_cast<std::size_t>(i)]) - predicted(filter, i));
    }
  }

 private:
  static int at(const std::string& bytes, int i) { return i < 0 ? 0 : byteOf(bytes[static_cast<std::size_t>(i)]); }

  int predicted(int filter, int i) const {
    const int a = at(row_, i - pixelSize_);
    const int b = at(above_, i);
    const int c = at(above_, i - pixelSize_);
    const int p = a + b - c;
    switch (filter) {
      case 1: return a;
      case 2: return b;
      case 3: return (a + b) / 2;
      case 4:
        return std::abs(p - a) <= std::abs(p - b) && std::abs(p - a) <= std::abs(p - c) ? a
               : std::abs(p - b) <= std::abs(p - c)                                     ? b
                                                                                        : c;
      default: return 0;
    }
  }

  std::string& out_;
  int pixelSize_;
  int bits_ = 0;
  std::string row_;
  std::string above_;
};

struct Grid {
  std::uint32_t x, y, stepX, stepY;
};

// Appends the rows of the pixels on a grid.
void appendRows(std::string& out, const PngPicture& picture, const Grid& grid) {
  if (grid.x >= picture.width) {
    return;
  }
  const int components = picture.components();
  Rows rows(out, components * picture.depth);
  int filter = 4;
  for (std::uint32_t y = grid.y; y < picture.height; y += grid.stepY) {
    rows.beginRow();
    for (std::uint32_t x = grid.x; x < picture.width; x += grid.stepX) {
      const std::size_t pixel = std::size_t{y} * picture.width + x;
      for (std::size_t i = 0; i < static_cast<std::size_t>(components); ++i) {
        rows.add(picture.samples.at(pixel * static_cast<std::size_t>(components) + i), picture.depth);
      }
    }
    rows.endRow(filter);
    filter = (filter + 1) % 5;
  }
}

}  // namespace

int PngPicture::components() const {
  switch (colors) {
    case 2: return 3;
    case 4: return 2;
    case 6: return 4;
    default: return 1;
  }
}

std::string filteredRows(const PngPicture& picture) {
  constexpr Grid kPasses[] = {{0, 0, 8, 8}, {4, 0, 8, 8}, {0, 4, 4, 8}, {2, 0, 4, 4},
                              {0, 2, 2, 4}, {1, 0, 2, 2}, {0, 1, 1, 2}};
  std::string rows;
  if (picture.isInterlaced) {
    for (const Grid& pass : kPasses) {
      appendRows(rows, picture, pass);
    }
  } else {
    appendRows(rows, picture, {0, 0, 1, 1});
  }
  return rows;
}

std::string pngWithRows(const PngPicture& picture, std::string_view rows) {
  std::string png = "\x89PNG\r\n\x1A\n";
  std::string header = bigEndian(picture.width, 4) + bigEndian(picture.height, 4);
  for (const int byte : {picture.depth, picture.colors, 0, 0, picture.isInterlaced ? 1 : 0}) {
    header += static_cast<char>(byte);
  }
  png += pngChunk("IHDR", header);
  if (!picture.palette.empty()) {
    png += pngChunk("PLTE", picture.palette);
  }
  if (!picture.transparency.empty()) {
    png += pngChunk("tRNS", picture.transparency);
  }
  const std::string compressed = deflated(rows);
  const std::size_t size = picture.chunkSize == 0 ? compressed.size() : picture.chunkSize;
  for (std::size_t at = 0; at < compressed.size(); at += size) {
    png += pngChunk("IDAT", std::string_view(compressed).substr(at, size));
  }
  return png + pngChunk("IEND", "");
}

}  // namespace scrivalen::test
