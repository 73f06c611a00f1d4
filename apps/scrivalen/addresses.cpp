#include "addresses.h"

#include "text/ascii.h"

namespace scrivalen::command {
namespace {

// Whether a link's text already shows its address, as in <https://example.org> and <me@example.org>.
bool showsAddress(std::wstring_view text, std::wstring_view address) {
  for (const std::wstring_view prefix : {L"", L"mailto:", L"http://", L"https://"}) {
    if (address.size() == prefix.size() + text.size() && address.starts_with(prefix) && address.ends_with(text)) {
      return true;
    }
  }
  return false;
}

// WHATWG URL, 4.4: browsers remove tabs and line ends anywhere in an address, and leading controls and blanks. Skipping
// every invisible character is safe, because no other scheme contains one.
bool isInvisible(wchar_t c) {
  const auto unit = static_cast<char32_t>(c);
  return unit <= U' ' || (unit >= 0x7F && unit <= 0xA0) || unit == 0xAD || (unit >= 0x2000 && unit <= 0x200F) ||
         (unit >= 0x2028 && unit <= 0x202F) || (unit >= 0x205F && unit <= 0x206F) || unit == 0x3000 || unit == 0xFEFF;
}

// Whether an address begins with a scheme. The scheme is in lower case and includes its colon.
bool startsWithScheme(std::wstring_view address, std::wstring_view scheme) {
  for (const wchar_t c : address) {
    if (isInvisible(c)) {
      continue;
    }
    if (scrivalen::asciiLower(c) != scheme.front()) {
      return false;
    }
    scheme.remove_prefix(1);
    if (scheme.empty()) {
      return true;
    }
  }
  return false;
}

}  // namespace

std::wstring withAddress(std::wstring_view text, std::wstring_view address) {
  std::wstring result(text);
  if (address.empty() || address.starts_with(L'#') || showsAddress(text, address)) {
    return result;
  }
  if (text.empty()) {
    return std::wstring(address);
  }
  return result.append(L" (").append(address).append(L")");
}

bool runsProgram(std::wstring_view address, AddressUse use) {
  return startsWithScheme(address, L"javascript:") || startsWithScheme(address, L"vbscript:") ||
         (use == AddressUse::Link && startsWithScheme(address, L"data:"));
}

}  // namespace scrivalen::command
