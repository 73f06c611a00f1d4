#include "formats/pdf/typeset/pictures/png_rows.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>

namespace scrivalen::typeset {
namespace {

enum class Filter : std::uint8_t { None, Sub, Up, Average, Paeth };

constexpr char kLastFilter = static_cast<char>(Filter::Paeth);

int byteOf(char c) { return static_cast<unsigned char>(c); }

char charOf(int byte) { return static_cast<char>(static_cast<unsigned char>(byte)); }

// Which of its neighbours a byte is predicted to be like (PNG 1.2, 6.6).
int paeth(int left, int above, int aboveLeft) {
  const int toLeft = std::abs(above - aboveLeft);
  const int toAbove = std::abs(left - aboveLeft);
  const int toAboveLeft = std::abs(left + above - 2 * aboveLeft);
  if (toLeft <= toAbove && toLeft <= toAboveLeft) {
    return left;
  }
  return toAbove <= toAboveLeft ? above : aboveLeft;
}

// Adds to each byte what is predicted from those on the left, above, and above on the left.
template <typename Predict>
void addPredicted(std::string& row, std::string_view above, std::size_t pixelSize, Predict predict) {
  const std::size_t begin = std::min(row.size(), 1 + pixelSize);
  for (std::size_t i = 1; i < begin; ++i) {
    row[i] = charOf(byteOf(row[i]) + predict(0, byteOf(above[i]), 0));
  }
  for (std::size_t i = begin; i < row.size(); ++i) {
    const std::size_t left = i - pixelSize;
    row[i] = charOf(byteOf(row[i]) + predict(byteOf(row[left]), byteOf(above[i]), byteOf(above[left])));
  }
}

}  // namespace

bool PngRows::read(std::string& row) {
  std::size_t size = 0;
  while (size < row.size()) {
    if (left_.empty()) {
      fill();
      if (left_.empty()) {
        return false;
      }
    }
    const std::size_t part = std::min(left_.size(), row.size() - size);
    std::memcpy(row.data() + size, left_.data(), part);
    left_.remove_prefix(part);
    size += part;
  }
  return static_cast<unsigned char>(row[0]) <= kLastFilter;
}

bool PngRows::isAtEnd() {
  if (left_.empty()) {
    fill();
  }
  return left_.empty() && inflater_.isAtEnd();
}

void PngRows::fill() { left_ = std::string_view(buffer_).substr(0, inflater_.read(buffer_.data(), buffer_.size())); }

void undoFilter(std::string& row, std::string_view above, std::size_t pixelSize) {
  switch (static_cast<Filter>(row[0])) {
    case Filter::None: break;
    case Filter::Sub: addPredicted(row, above, pixelSize, [](int left, int, int) { return left; }); break;
    case Filter::Up: addPredicted(row, above, pixelSize, [](int, int up, int) { return up; }); break;
    case Filter::Average:
      addPredicted(row, above, pixelSize, [](int left, int up, int) { return (left + up) / 2; });
      break;
    case Filter::Paeth: addPredicted(row, above, pixelSize, paeth); break;
  }
  row[0] = static_cast<char>(Filter::None);
}

void applyFilter(std::string_view row, std::string_view above, std::size_t pixelSize, std::string& filtered) {
  filtered.resize(row.size());
  filtered[0] = static_cast<char>(Filter::Paeth);
  for (std::size_t i = 1; i < row.size(); ++i) {
    const bool hasLeft = i > pixelSize;
    const int left = hasLeft ? byteOf(row[i - pixelSize]) : 0;
    const int aboveLeft = hasLeft ? byteOf(above[i - pixelSize]) : 0;
    filtered[i] = charOf(byteOf(row[i]) - paeth(left, byteOf(above[i]), aboveLeft));
  }
}

}  // namespace scrivalen::typeset
