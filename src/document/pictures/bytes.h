#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace scrivalen::document {

/// The numbers in a file. Past its end there are only zeros, so a reader need not check each offset.
class Bytes {
 public:
  explicit Bytes(std::string_view bytes, bool isLittleEndian = false)
      : bytes_(bytes), isLittleEndian_(isLittleEndian) {}

  std::size_t size() const { return bytes_.size(); }
  std::uint32_t byte(std::size_t at) const { return at < size() ? static_cast<unsigned char>(bytes_[at]) : 0u; }
  std::uint32_t two(std::size_t at) const {
    return isLittleEndian_ ? byte(at) | byte(at + 1) << 8 : byte(at) << 8 | byte(at + 1);
  }
  std::uint32_t four(std::size_t at) const {
    return isLittleEndian_ ? two(at) | two(at + 2) << 16 : two(at) << 16 | two(at + 2);
  }
  bool has(std::size_t at, std::string_view text) const {
    return at <= size() && bytes_.substr(at, text.size()) == text;
  }
  std::string_view part(std::size_t at, std::size_t size) const {
    return at <= bytes_.size() ? bytes_.substr(at, size) : std::string_view();
  }

 private:
  std::string_view bytes_;
  bool isLittleEndian_;
};

}  // namespace scrivalen::document
