#pragma once

#include <algorithm>
#include <string>
#include <string_view>

// ASCII letters and digits, independent of the locale, for any character type.
namespace scrivalen {

template <typename Char>
constexpr bool isAsciiDigit(Char c) {
  return c >= '0' && c <= '9';
}

template <typename Char>
constexpr Char asciiLower(Char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<Char>(c - 'A' + 'a') : c;
}

template <typename Char>
constexpr Char asciiUpper(Char c) {
  return c >= 'a' && c <= 'z' ? static_cast<Char>(c - 'a' + 'A') : c;
}

template <typename Char>
constexpr bool isAsciiLetter(Char c) {
  return asciiLower(c) >= 'a' && asciiLower(c) <= 'z';
}

/// Returns a text with A to Z in lower case.
template <typename Char>
std::basic_string<Char> asciiLowered(std::basic_string_view<Char> text) {
  std::basic_string<Char> result(text);
  std::transform(result.begin(), result.end(), result.begin(), [](Char c) { return asciiLower(c); });
  return result;
}

inline constexpr std::string_view kHexDigits = "0123456789ABCDEF";

/// The value of a hexadecimal digit in either case; -1 for any other character.
template <typename Char>
constexpr int hexValue(Char c) {
  if (isAsciiDigit(c)) {
    return static_cast<int>(c - '0');
  }
  const Char letter = asciiLower(c);
  return letter >= 'a' && letter <= 'f' ? static_cast<int>(letter - 'a') + 10 : -1;
}

/// Compares texts ignoring the case of A to Z.
bool equalIgnoringCase(std::wstring_view a, std::wstring_view b);
bool equalIgnoringCase(std::string_view a, std::string_view b);
bool endsWithIgnoringCase(std::wstring_view text, std::wstring_view suffix);

}  // namespace scrivalen
