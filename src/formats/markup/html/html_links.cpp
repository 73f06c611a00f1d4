#include "formats/markup/html/html_links.h"

#include "text/ascii.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace scrivalen::document {
namespace {

bool isWhiteSpace(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\f' || c == '\r'; }

// The part of a URL decides which characters it may contain.
enum class AddressPart { Authority, Path, Fragment };

// Whether a character is no URL code point; the bytes of those above U+0080 are.
bool isForbidden(char c, AddressPart part) {
  constexpr std::string_view kNowhere = " \"<>\\^`{|}\x7F";
  constexpr std::string_view kInHosts = "[]";
  return static_cast<unsigned char>(c) < 0x20 || kNowhere.find(c) != kNowhere.npos ||
         (part != AddressPart::Authority && kInHosts.find(c) != kInHosts.npos) ||
         (part == AddressPart::Fragment && c == '#');
}

// Characters that may be anywhere in an address, and mean nothing that decides about others.
constexpr auto kPlain = [] {
  std::array<bool, 256> plain{};
  for (unsigned c = 0; c < 128; ++c) {
    const auto character = static_cast<char>(c);
    plain[c] = isAsciiLetter(character) || isAsciiDigit(character) ||
               std::string_view("-._~/:?=&+,;@!$'()*").find(character) != std::string_view::npos;
  }
  return plain;
}();

bool isPlain(std::string_view address) {
  return std::all_of(address.begin(), address.end(), [](char c) { return kPlain[static_cast<unsigned char>(c)]; });
}

constexpr char kIdEscape = '~';

void appendEncoded(std::string& result, char escape, char c) {
  const auto byte = static_cast<unsigned char>(c);
  result += {escape, kHexDigits[byte >> 4], kHexDigits[byte & 0xF]};
}

// Whether a text begins with an escape and two hexadecimal digits.
bool isEscape(std::string_view text) { return text.size() >= 3 && hexValue(text[1]) >= 0 && hexValue(text[2]) >= 0; }

std::string_view trimmed(std::string_view text) {
  const auto isDropped = [](char c) { return static_cast<unsigned char>(c) <= ' '; };
  const auto first = std::find_if_not(text.begin(), text.end(), isDropped);
  text.remove_prefix(static_cast<std::size_t>(first - text.begin()));
  while (!text.empty() && isDropped(text.back())) {
    text.remove_suffix(1);
  }
  return text;
}

// The end of the host in "scheme://host/path" and "//host/path"; 0 without one.
std::size_t endOfAuthority(std::string_view address) {
  const std::size_t slashes = address.find("//");
  const std::size_t other = address.find_first_of("/?#");
  if (slashes == address.npos || other < slashes || (slashes > 0 && address[slashes - 1] != ':')) {
    return 0;
  }
  return std::min(address.find_first_of("/?#", slashes + 2), address.size());
}

}  // namespace

// Browsers look for an id that is equal to the fragment as it stands, and only then decode that. So no id may look as
// if a URL had encoded it: it would be found for the id that it stands for.
std::string htmlId(std::string_view id) {
  std::string result;
  for (std::size_t i = 0; i < id.size(); ++i) {
    const char c = id[i];
    const bool looksEncoded = (c == kIdEscape || c == '%') && isEscape(id.substr(i));
    if (isWhiteSpace(c) || looksEncoded) {
      appendEncoded(result, kIdEscape, c);
    } else {
      result += c;
    }
  }
  return result;
}

std::string htmlPlace(std::string_view id) {
  std::string result = "#";
  for (const char c : htmlId(id)) {
    if (c == '%' || isForbidden(c, AddressPart::Fragment)) {
      appendEncoded(result, '%', c);
    } else {
      result += c;
    }
  }
  return result;
}

std::string htmlAddress(std::string_view address) {
  if (address.starts_with('#')) {
    return htmlPlace(address.substr(1));
  }
  if (isPlain(address)) {
    return std::string(address);
  }
  address = trimmed(address);
  const std::size_t path = endOfAuthority(address);
  AddressPart part = path == 0 ? AddressPart::Path : AddressPart::Authority;
  std::string result;
  for (std::size_t i = 0; i < address.size(); ++i) {
    const char c = address[i];
    part = i == path && part == AddressPart::Authority ? AddressPart::Path : part;
    if (c == '\n' || c == '\r' || c == '\t') {
      continue;
    }
    if (c == '%' ? !isEscape(address.substr(i)) : isForbidden(c, part)) {
      appendEncoded(result, '%', c);
    } else {
      result += c;
    }
    part = c == '#' ? AddressPart::Fragment : part;
  }
  return result;
}

}  // namespace scrivalen::document
