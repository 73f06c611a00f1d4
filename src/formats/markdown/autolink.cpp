#include "formats/markdown/autolink.h"

#include "text/ascii.h"

#include <algorithm>

namespace scrivalen::markdown {
namespace {

constexpr std::string_view kMail = "mailto:";

// A semicolon could end a character reference.
bool isPlain(std::string_view text) {
  return std::all_of(text.begin(), text.end(), [](char c) {
    return isAsciiLetter(c) || isAsciiDigit(c) || std::string_view(":/?#@.,=&%+-_").find(c) != std::string_view::npos;
  });
}

bool isWebAddress(std::string_view address) {
  return (address.starts_with("https://") || address.starts_with("http://")) && isPlain(address);
}

bool isMailAddress(std::string_view text) {
  const auto isInName = [](char c) { return isAsciiLetter(c) || isAsciiDigit(c) || c == '.' || c == '-'; };
  const std::size_t at = std::min(text.find('@'), text.size());
  const std::string_view name = text.substr(0, at);
  const std::string_view domain = text.substr(std::min(at + 1, text.size()));
  return !name.empty() && !domain.empty() && std::all_of(name.begin(), name.end(), isInName) &&
         std::all_of(domain.begin(), domain.end(), isInName) && isAsciiLetter(domain.front()) &&
         isAsciiLetter(domain.back()) && domain.find("..") == domain.npos && domain.find(".-") == domain.npos &&
         domain.find("-.") == domain.npos;
}

}  // namespace

bool isAutolink(std::string_view text, std::string_view address) {
  return text == address ? isWebAddress(address)
                         : address.starts_with(kMail) && address.substr(kMail.size()) == text && isMailAddress(text);
}

bool mayBecomeAutolink(std::string_view text, std::string_view address) {
  return address.starts_with(text) || (address.starts_with(kMail) && address.substr(kMail.size()).starts_with(text));
}

}  // namespace scrivalen::markdown
