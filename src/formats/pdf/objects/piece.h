#pragma once

#include <charconv>
#include <cstdint>
#include <string>
#include <string_view>

namespace PDFStuffer {

/// A short piece of PDF text, built from words and numbers independently of the locale.
class Piece {
 public:
  Piece& text(std::string_view words) {
    text_ += words;
    return *this;
  }

  template <typename Integer>
  Piece& number(Integer value) {
    char digits[24];
    text_.append(digits, std::to_chars(digits, digits + sizeof digits, value).ptr);
    return *this;
  }

  /// A number with leading zeros.
  Piece& padded(std::uint64_t value, std::size_t width);

  std::string_view view() const { return text_; }

 private:
  std::string text_;
};

/// A real number as "%.*f" prints it in the C locale.
std::string fixed(double value, int decimals);

}  // namespace PDFStuffer
