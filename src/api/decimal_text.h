#pragma once

#include <cstdint>
#include <string>

namespace scrivalen::api {

/// A decimal number of 128 bits in two's complement, exactly: "-12.50".
/// @param scale  how many of its digits are after the point; negative: how many zeros come after its last digit
std::string decimalText(std::uint64_t high, std::uint64_t low, int scale);

}  // namespace scrivalen::api
