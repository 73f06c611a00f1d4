#include "text/address.h"

#include "text/ascii.h"
#include "text/utf.h"

#include <algorithm>

namespace scrivalen {
namespace {

bool isUrlCharacter(unsigned char byte) {
  constexpr std::string_view kOthers = " \"<>\\^`{|}";
  return byte > 0x1F && byte < 0x7F && kOthers.find(static_cast<char>(byte)) == kOthers.npos;
}

}  // namespace

bool hasScheme(std::wstring_view address) {
  const std::size_t colon = address.find(L':');
  if (colon == std::wstring_view::npos || colon < 2 || !isAsciiLetter(address[0])) {
    return false;
  }
  const std::wstring_view scheme = address.substr(0, colon);
  return std::all_of(scheme.begin(), scheme.end(), [](wchar_t c) {
    return isAsciiLetter(c) || isAsciiDigit(c) || c == L'+' || c == L'-' || c == L'.';
  });
}

std::string asciiAddress(std::wstring_view address) {
  std::string result;
  for (const char c : toUtf8(address)) {
    const auto byte = static_cast<unsigned char>(c);
    if (isUrlCharacter(byte)) {
      result += c;
    } else {
      result += {'%', kHexDigits[byte >> 4], kHexDigits[byte & 0xF]};
    }
  }
  return result;
}

}  // namespace scrivalen
