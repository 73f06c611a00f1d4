#pragma once

#include <cstddef>
#include <string_view>

namespace scrivalen::typeset {

// The numbers of a composite font are its codes (PDF 1.7, 9.7.6.2). Below 256 they are one byte each, which is enough
// for the letters of most documents; the others are two, of which the first one is no number.
inline constexpr unsigned kFirstNumber = 0x40;
inline constexpr unsigned kFirstOfTwoBytes = 0x100;
inline constexpr unsigned kEndOfNumbers = kFirstNumber << 8;

/// The first number of a font. In one of PostScript all are two bytes: its glyphs have CIDs of their own, which MuPDF
/// drops where they are not codes, too.
constexpr unsigned firstNumberOf(bool isPostScript) { return isPostScript ? kFirstOfTwoBytes : kFirstNumber; }

/// A number as a text has it.
class CodeBytes {
 public:
  explicit CodeBytes(unsigned number)
      : bytes_{static_cast<char>(static_cast<unsigned char>(number >> 8)),
               static_cast<char>(static_cast<unsigned char>(number & 0xFF))},
        isOne_(number < kFirstOfTwoBytes) {}

  std::string_view view() const { return isOne_ ? std::string_view(bytes_ + 1, 1) : std::string_view(bytes_, 2); }

 private:
  char bytes_[2];
  bool isOne_;
};

}  // namespace scrivalen::typeset
