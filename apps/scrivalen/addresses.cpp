#include "addresses.h"

namespace scrivalen::command {
namespace {

// Whether a link's text already shows its address, as in <https://example.org> and <me@example.org>.
bool showsAddress(std::string_view text, std::string_view address) {
  for (const std::string_view prefix : {"", "mailto:", "http://", "https://"}) {
    if (address.size() == prefix.size() + text.size() && address.starts_with(prefix) && address.ends_with(text)) {
      return true;
    }
  }
  return false;
}

}  // namespace

std::string withAddress(std::string_view text, std::string_view address) {
  std::string result(text);
  if (address.empty() || address.starts_with('#') || showsAddress(text, address)) {
    return result;
  }
  if (text.empty()) {
    return std::string(address);
  }
  return result.append(" (").append(address).append(")");
}

}  // namespace scrivalen::command
