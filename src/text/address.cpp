#include "text/address.h"

#include "text/ascii.h"
#include "text/utf.h"

#include <algorithm>
#include <array>

namespace scrivalen {
namespace {

bool isUrlCharacter(unsigned char byte) {
  constexpr std::string_view kOthers = " \"<>\\^`{|}";
  return byte > 0x1F && byte < 0x7F && kOthers.find(static_cast<char>(byte)) == kOthers.npos;
}

// WHATWG URL, 4.4: browsers remove tabs and line ends anywhere in an address, and leading controls and blanks. Skipping
// every invisible character is safe, because no other scheme contains one.
bool isInvisible(wchar_t c) {
  const auto unit = static_cast<char32_t>(c);
  return unit <= U' ' || (unit >= 0x7F && unit <= 0xA0) || unit == 0xAD || (unit >= 0x2000 && unit <= 0x200F) ||
         (unit >= 0x2028 && unit <= 0x202F) || (unit >= 0x205F && unit <= 0x206F) || unit == 0x3000 || unit == 0xFEFF;
}

// Following an address of these schemes runs a script, a macro or a command that the address holds or names, or opens a
// page with the rights of a local one. Refusing only what browsers run would not do: reports are also read in word
// processors and in the help viewer, which hand unknown schemes to the system.
constexpr std::array<std::wstring_view, 27> kRunningSchemes = {
    // scripts of browsers, and schemes that wrap another address
    L"javascript", L"vbscript", L"vbs", L"livescript", L"mocha", L"about", L"feed", L"jar", L"url", L"view-source",
    // macros and commands of LibreOffice
    L"macro", L"private", L"service", L"slot", L".uno",
    // programs of Windows and Android
    L"hcp", L"help", L"intent", L"mshelp", L"search", L"search-ms", L"shell",
    // pages inside help files, archives and programs
    L"its", L"mhtml", L"mk", L"res", L"wyciwyg"};

// Families of such schemes: each program of Windows has its own "ms-" scheme.
constexpr std::array<std::wstring_view, 2> kRunningPrefixes = {L"ms-", L"vnd.sun.star."};

bool isPartOfScheme(wchar_t c) { return isAsciiLetter(c) || isAsciiDigit(c) || c == L'+' || c == L'-' || c == L'.'; }

// The scheme in lower case, without its colon; empty if there is none.
std::wstring schemeOf(std::wstring_view address) {
  std::wstring scheme;
  for (const wchar_t c : address) {
    if (c == L':') {
      return scheme;
    }
    if (isPartOfScheme(c)) {
      scheme += asciiLower(c);
    } else if (!isInvisible(c)) {
      break;
    }
  }
  return {};
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

bool runsProgram(std::wstring_view address, AddressUse use) {
  const std::wstring scheme = schemeOf(address);
  const auto begins = [&scheme](std::wstring_view prefix) { return scheme.starts_with(prefix); };
  return (use == AddressUse::Link && scheme == L"data") ||
         std::find(kRunningSchemes.begin(), kRunningSchemes.end(), scheme) != kRunningSchemes.end() ||
         std::any_of(kRunningPrefixes.begin(), kRunningPrefixes.end(), begins);
}

bool runsProgram(std::string_view address, AddressUse use) {
  const std::size_t colon = address.find(':');
  const std::string_view scheme = address.substr(0, colon);
  if (scheme == "https" || scheme == "http" || scheme == "mailto") {
    return false;  // nearly all
  }
  return colon != address.npos && runsProgram(toWide(address.substr(0, colon + 1)), use);
}

}  // namespace scrivalen
