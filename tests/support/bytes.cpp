#include "support/bytes.h"

#include "text/utf.h"

#include <algorithm>

namespace scrivalen::test {
namespace {

constexpr std::size_t kShown = 80;

// An excerpt of the contents, with invisible characters escaped as in C++.
std::string shown(std::string_view bytes) {
  constexpr std::string_view kHex = "0123456789ABCDEF";
  std::string text;
  for (const char c : bytes.substr(0, kShown)) {
    const auto value = static_cast<unsigned char>(c);
    if (c == '\r') {
      text += "\\r";
    } else if (c == '\n') {
      text += "\\n";
    } else if (value < 0x20 || value == 0x7F) {
      text += {'\\', 'x', kHex[value >> 4], kHex[value & 15]};
    } else {
      text += c;
    }
  }
  return text + (bytes.size() > kShown ? "..." : "");
}

unsigned unitAt(std::string_view bytes, std::size_t at) {
  return static_cast<unsigned char>(bytes[at]) | static_cast<unsigned>(static_cast<unsigned char>(bytes[at + 1])) << 8;
}

}  // namespace

testing::AssertionResult areSameBytes(std::string_view expected, std::string_view actual) {
  if (expected == actual) {
    return testing::AssertionSuccess();
  }
  const auto differing = std::mismatch(expected.begin(), expected.end(), actual.begin(), actual.end()).first;
  const auto at = static_cast<std::size_t>(differing - expected.begin());
  const auto line = std::count(expected.begin(), differing, '\n') + 1;
  return testing::AssertionFailure() << "first difference at byte " << at << ", line " << line << " (expected "
                                     << expected.size() << " bytes, got " << actual.size()
                                     << ")\nexpected: " << shown(expected.substr(at))
                                     << "\n     got: " << shown(actual.substr(at));
}

std::string fromMarkedUtf16(std::string_view bytes) {
  EXPECT_EQ(bytes.substr(0, 2), "\xFF\xFE");
  EXPECT_EQ(bytes.size() % 2, 0u);
  std::wstring text;
  for (std::size_t at = 2; at + 1 < bytes.size(); at += 2) {
    text += static_cast<wchar_t>(unitAt(bytes, at));
  }
  std::string utf8;
  scrivalen::appendUtf8(utf8, text);
  return utf8;
}

std::wstring wideUnit(unsigned value) { return std::wstring(1, static_cast<wchar_t>(value)); }

std::wstring grin() {
  std::wstring text;
  scrivalen::appendCharacter(text, 0x1F600);
  return text;
}

std::wstring longText(std::size_t count) { return std::wstring(count, L'x'); }

}  // namespace scrivalen::test
