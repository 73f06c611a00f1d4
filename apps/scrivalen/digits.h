#pragma once

#include <charconv>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace scrivalen::command {

/// A number as text, without memory of its own.
class Digits {
 public:
  explicit Digits(std::uint64_t number)
      : size_(static_cast<std::size_t>(std::to_chars(digits_, digits_ + sizeof digits_, number).ptr - digits_)) {}

  std::string_view text() const { return {digits_, size_}; }

 private:
  char digits_[20];
  std::size_t size_;
};

}  // namespace scrivalen::command
