#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace scrivalen::test {

/// An image in a PDF, as written by PictureWriter, read without the library.
struct PdfImage {
  std::string_view entries;  ///< of its dictionary
  std::string_view stream;   ///< its bytes, as stored
  std::uint32_t width = 0;
  std::uint32_t height = 0;
  int depth = 0;
  int components = 0;             ///< of a pixel; an index into a palette is one
  std::vector<unsigned> samples;  ///< decoded; none of a JPEG
  int mask = 0;                   ///< the number of the image with its alpha; 0: none
};

/// @param pdf  must outlive the image
/// @return none when there is no such image, its length is wrong, or its stream has not exactly the bytes that its
///   entries announce
std::optional<PdfImage> readPdfImage(std::string_view pdf, int number);

}  // namespace scrivalen::test
