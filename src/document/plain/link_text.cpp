#include "document/plain/link_text.h"

#include <algorithm>
#include <iterator>

namespace scrivalen::document {
namespace {

// Whether a link's text already shows its address, as in <https://example.org> and <me@example.org>.
bool showsAddress(std::string_view text, std::string_view address) {
  constexpr std::string_view kPrefixes[] = {"", "mailto:", "http://", "https://"};
  return std::any_of(std::begin(kPrefixes), std::end(kPrefixes), [&](std::string_view prefix) {
    return address.starts_with(prefix) && address.substr(prefix.size()) == text;
  });
}

}  // namespace

std::string withAddress(std::string_view text, std::string_view address) {
  if (address.empty() || address.starts_with('#') || showsAddress(text, address)) {
    return std::string(text);
  }
  if (text.empty()) {
    return std::string(address);
  }
  return std::string(text).append(" (").append(address).append(")");
}

}  // namespace scrivalen::document
