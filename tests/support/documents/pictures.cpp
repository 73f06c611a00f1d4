#include "support/documents/pictures.h"

#include <zlib.h>

#include <cstddef>

namespace scrivalen::test {
namespace {

const Bytef* bytesOf(std::string_view text) { return reinterpret_cast<const Bytef*>(text.data()); }

// A table whose only code, the bit 0, means the value 0.
std::string huffmanTable(char classAndId) {
  std::string table(1, classAndId);
  table += '\1';
  table.append(15, '\0');
  return table + '\0';
}

}  // namespace

std::string bigEndian(std::uint32_t number, int bytes) {
  std::string result;
  for (int shift = 8 * (bytes - 1); shift >= 0; shift -= 8) {
    result += static_cast<char>(static_cast<unsigned char>(number >> shift));
  }
  return result;
}

std::string deflated(std::string_view bytes) {
  uLongf size = compressBound(static_cast<uLong>(bytes.size()));
  std::string result(size, '\0');
  compress(reinterpret_cast<Bytef*>(result.data()), &size, bytesOf(bytes), static_cast<uLong>(bytes.size()));
  result.resize(size);
  return result;
}

std::string pngChunk(std::string_view type, std::string_view content) {
  const std::string body = std::string(type) + std::string(content);
  const auto checksum = static_cast<std::uint32_t>(crc32(0, bytesOf(body), static_cast<uInt>(body.size())));
  return bigEndian(static_cast<std::uint32_t>(content.size()), 4) + body + bigEndian(checksum, 4);
}

std::string withChecksums(std::string png) {
  const auto sizeAt = [&png](std::size_t at) {
    std::size_t size = 0;
    for (std::size_t i = 0; i < 4; ++i) {
      size = size << 8 | static_cast<unsigned char>(png[at + i]);
    }
    return size;
  };
  std::size_t at = std::string_view(png).starts_with("\x89PNG") ? 8 : png.size();
  while (at + 12 <= png.size() && sizeAt(at) <= png.size() - at - 12) {
    const std::size_t size = sizeAt(at);
    const std::string chunk = pngChunk(png.substr(at + 4, 4), std::string_view(png).substr(at + 8, size));
    png.replace(at, chunk.size(), chunk);
    at += chunk.size();
  }
  return png;
}

std::string greyPng(std::uint32_t width, std::uint32_t height, std::string_view chunks) {
  const std::string header = bigEndian(width, 4) + bigEndian(height, 4) + std::string("\x08\0\0\0\0", 5);
  const std::string row = std::string(1, '\0') + std::string(width, '\x80');
  std::string rows;
  for (std::uint32_t y = 0; y < height; ++y) {
    rows += row;
  }
  return "\x89PNG\r\n\x1A\n" + pngChunk("IHDR", header) + std::string(chunks) + pngChunk("IDAT", deflated(rows)) +
         pngChunk("IEND", "");
}

std::string jpegSegment(int marker, std::string_view content) {
  std::string segment = "\xFF";
  segment += static_cast<char>(static_cast<unsigned char>(marker));
  return segment + bigEndian(static_cast<std::uint32_t>(content.size() + 2), 2) + std::string(content);
}

std::string greyJpeg(std::uint32_t width, std::uint32_t height, std::string_view segments) {
  const std::string frame = "\x08" + bigEndian(height, 2) + bigEndian(width, 2) + std::string("\x01\x01\x11\x00", 4);
  // Of each block of 8 x 8 pixels two bits: no difference to the block before it, and no more coefficients.
  const std::size_t blocks = std::size_t{(width + 7) / 8} * ((height + 7) / 8);
  std::string scan(blocks / 4, '\0');
  if (blocks % 4 != 0) {
    scan += static_cast<char>(static_cast<unsigned char>(0xFF >> (blocks % 4 * 2)));
  }
  return "\xFF\xD8" + std::string(segments) + jpegSegment(0xDB, std::string(1, '\0') + std::string(64, '\1')) +
         jpegSegment(0xC0, frame) + jpegSegment(0xC4, huffmanTable('\0')) + jpegSegment(0xC4, huffmanTable('\x10')) +
         jpegSegment(0xDA, std::string("\x01\x01\x00\x00\x3F\x00", 6)) + scan + "\xFF\xD9";
}

// Least significant byte first.
std::string turnedJpeg(std::uint32_t width, std::uint32_t height, int orientation) {
  const std::string exif = std::string("Exif\0\0II*\0\x08\0\0\0\x01\0\x12\x01\x03\0\x01\0\0\0", 24) +
                           static_cast<char>(orientation) + std::string(7, '\0');
  return greyJpeg(width, height, jpegSegment(0xE1, exif));
}

}  // namespace scrivalen::test
