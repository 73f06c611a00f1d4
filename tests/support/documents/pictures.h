#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace scrivalen::test {

/// A number with its most significant byte first, as PNG and JPEG have it.
std::string bigEndian(std::uint32_t number, int bytes);

/// Bytes in the zlib format.
std::string deflated(std::string_view bytes);

/// A PNG chunk, with its length and checksum.
std::string pngChunk(std::string_view type, std::string_view data);
/// A PNG, whole or not, with the right checksum for each of its chunks. Any other file stays as it is.
std::string withChecksums(std::string png);
/// A grey PNG that every reader shows.
/// @param chunks  come between the header and the pixels
std::string greyPng(std::uint32_t width, std::uint32_t height, std::string_view chunks = {});

/// A JPEG segment, with its length.
std::string jpegSegment(int marker, std::string_view data);
/// A JPEG in medium grey that every reader shows.
/// @param segments  come before the frame
std::string greyJpeg(std::uint32_t width, std::uint32_t height, std::string_view segments = {});
/// The same with EXIF of one entry, the orientation.
std::string turnedJpeg(std::uint32_t width, std::uint32_t height, int orientation);

}  // namespace scrivalen::test
