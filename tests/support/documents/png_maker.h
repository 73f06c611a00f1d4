#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace scrivalen::test {

/// A picture to make a PNG of.
struct PngPicture {
  std::uint32_t width = 1;
  std::uint32_t height = 1;
  int colors = 0;  ///< the colour type, as in the file
  int depth = 8;
  bool isInterlaced = false;
  std::string palette{};
  std::string transparency{};       ///< the chunk "tRNS"; empty: none
  std::vector<unsigned> samples{};  ///< of each pixel its components, row by row
  std::size_t chunkSize = 0;        ///< of the chunks of pixels; 0: one chunk for all

  int components() const;
};

/// The rows, each filtered, with another filter than the one above it.
std::string filteredRows(const PngPicture& picture);

/// A file with these rows, whatever they are. The picture's samples are not used.
std::string pngWithRows(const PngPicture& picture, std::string_view rows);

inline std::string makePng(const PngPicture& picture) { return pngWithRows(picture, filteredRows(picture)); }

}  // namespace scrivalen::test
