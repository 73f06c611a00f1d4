#pragma once

#include <cstdint>
#include <string_view>

namespace scrivalen::document {

/// What the first bytes of a picture say about it.
struct PictureFacts {
  std::uint32_t width = 0;  // in pixels, as stored
  std::uint32_t height = 0;
  double dotsPerInchX = 0;  // 0: not stated
  double dotsPerInchY = 0;
  int orientation = 1;      // as in EXIF, 1 to 8
  bool isTooShort = false;  // its bytes cannot be so many pixels, however well they are compressed
};

bool isPng(std::string_view bytes);
bool isJpeg(std::string_view bytes);

/// Each reads a picture that begins as one of its format. Returns what is wrong with it, as the end of a sentence "The
/// picture ..."; empty if nothing is.
std::string_view readPng(std::string_view bytes, PictureFacts& facts);
std::string_view readJpeg(std::string_view bytes, PictureFacts& facts);

}  // namespace scrivalen::document
