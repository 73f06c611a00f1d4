#include "api/decimal_text.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace scrivalen::api {
namespace {

using Limbs = std::array<std::uint32_t, 4>;  // the most significant first

Limbs limbsOf(std::uint64_t high, std::uint64_t low) {
  return {static_cast<std::uint32_t>(high >> 32), static_cast<std::uint32_t>(high),
          static_cast<std::uint32_t>(low >> 32), static_cast<std::uint32_t>(low)};
}

// Divides by ten and returns the remainder.
char nextDigit(Limbs& limbs) {
  std::uint64_t rest = 0;
  for (std::uint32_t& limb : limbs) {
    const std::uint64_t part = rest << 32 | limb;
    limb = static_cast<std::uint32_t>(part / 10);
    rest = part % 10;
  }
  return static_cast<char>('0' + rest);
}

std::string digitsOf(std::uint64_t high, std::uint64_t low) {
  Limbs limbs = limbsOf(high, low);
  std::string digits;
  do {
    digits += nextDigit(limbs);
  } while (std::any_of(limbs.begin(), limbs.end(), [](std::uint32_t limb) { return limb != 0; }));
  std::reverse(digits.begin(), digits.end());
  return digits;
}

}  // namespace

std::string decimalText(std::uint64_t high, std::uint64_t low, int scale) {
  const bool isNegative = high >> 63 != 0;
  if (isNegative) {
    low = ~low + 1;
    high = ~high + (low == 0 ? 1 : 0);
  }
  std::string text = digitsOf(high, low);
  if (scale > 0) {
    const auto decimals = static_cast<std::size_t>(scale);
    if (text.size() <= decimals) {
      text.insert(0, decimals + 1 - text.size(), '0');
    }
    text.insert(text.size() - decimals, 1, '.');
  } else if (text != "0") {
    text.append(static_cast<std::size_t>(-scale), '0');
  }
  return isNegative ? "-" + text : text;
}

}  // namespace scrivalen::api
