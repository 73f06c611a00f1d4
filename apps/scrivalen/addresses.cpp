#include "addresses.h"

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

}  // namespace scrivalen::command
