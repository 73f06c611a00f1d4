#include "text/address.h"

#include "text/ascii.h"

#include <algorithm>

namespace scrivalen {

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

}  // namespace scrivalen
