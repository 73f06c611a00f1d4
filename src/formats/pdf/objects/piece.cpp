#include "formats/pdf/objects/piece.h"

#include <limits>

namespace PDFStuffer {

Piece& Piece::padded(std::uint64_t value, std::size_t width) {
  const std::string digits = std::to_string(value);
  text_.append(width > digits.size() ? width - digits.size() : 0, '0');
  return text(digits);
}

std::string fixed(double value, int decimals) {
  char digits[std::numeric_limits<double>::max_exponent10 + 40];
  return {digits, std::to_chars(digits, digits + sizeof digits, value, std::chars_format::fixed, decimals).ptr};
}

}  // namespace PDFStuffer
