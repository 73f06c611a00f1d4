#include "writing/data_address.h"

#include "text/ascii.h"

#include <cstddef>
#include <cstdint>

namespace scrivalen::command {
namespace {

constexpr std::string_view kScheme = "data:";
constexpr std::string_view kMark = ";base64";
constexpr std::string_view kDigits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

}  // namespace

bool isDataAddress(std::string_view address) {
  return scrivalen::equalIgnoringCase(address.substr(0, kScheme.size()), kScheme);
}

std::optional<std::string> dataOf(std::string_view address) {
  const std::size_t comma = address.find(',');
  if (comma == address.npos || comma < kMark.size() ||
      !scrivalen::equalIgnoringCase(address.substr(comma - kMark.size(), kMark.size()), kMark)) {
    return std::nullopt;
  }
  std::string data;
  std::uint32_t bits = 0;
  int count = 0;  // of bits that are not in the data yet
  for (const char c : address.substr(comma + 1)) {
    const std::size_t value = kDigits.find(c);
    if (value == kDigits.npos) {
      if (c == ' ' || c == '\n') {
        continue;
      }
      return c == '=' ? std::optional(data) : std::nullopt;
    }
    bits = bits << 6 | static_cast<std::uint32_t>(value);
    count += 6;
    if (count >= 8) {
      count -= 8;
      data += static_cast<char>(bits >> count & 0xFF);
    }
  }
  return data;
}

}  // namespace scrivalen::command
