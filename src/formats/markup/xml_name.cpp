#include "formats/markup/xml_name.h"

#include "text/utf.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <iterator>

using namespace scrivalen;

namespace scrivalen::formats {
namespace {

struct Range {
  char32_t first, last;
};

// XML 1.0, 2.3: NameStartChar without the colon, and the additional characters of NameChar.
constexpr Range kFirstCharacters[] = {{U'A', U'Z'},     {U'_', U'_'},     {U'a', U'z'},      {0xC0, 0xD6},
                                      {0xD8, 0xF6},     {0xF8, 0x2FF},    {0x370, 0x37D},    {0x37F, 0x1FFF},
                                      {0x200C, 0x200D}, {0x2070, 0x218F}, {0x2C00, 0x2FEF},  {0x3001, 0xD7FF},
                                      {0xF900, 0xFDCF}, {0xFDF0, 0xFFFD}, {0x10000, 0xEFFFF}};
constexpr Range kOtherCharacters[] = {{U'-', U'.'}, {U'0', U'9'}, {0xB7, 0xB7}, {0x300, 0x36F}, {0x203F, 0x2040}};

template <typename Ranges>
constexpr bool isAmong(const Ranges& ranges, char32_t c) {
  return std::any_of(std::begin(ranges), std::end(ranges),
                     [c](const Range& range) { return range.first <= c && c <= range.last; });
}

constexpr bool canBegin(char32_t c) { return isAmong(kFirstCharacters, c); }
constexpr bool canFollow(char32_t c) { return canBegin(c) || isAmong(kOtherCharacters, c); }

// Whether an ASCII character can follow: nearly all names are ASCII, and the same few are written for every cell.
constexpr auto kAsciiCanFollow = [] {
  std::array<bool, 0x80> can = {};
  for (char32_t c = 0; c < can.size(); ++c) {
    can[c] = canFollow(c);
  }
  return can;
}();

}  // namespace

bool isXmlName(std::wstring_view text) {
  const wchar_t* at = text.data();
  const wchar_t* const end = at + text.size();
  if (at == end || !canBegin(nextCharacter(at, end))) {
    return false;
  }
  at = std::find_if_not(at, end, [](wchar_t c) {
    const auto value = static_cast<std::uint32_t>(c);
    return value < kAsciiCanFollow.size() && kAsciiCanFollow[value];
  });
  while (at != end) {
    if (!canFollow(nextCharacter(at, end))) {
      return false;
    }
  }
  return true;
}

void repairXmlName(std::wstring_view text, const std::function<void(std::wstring_view)>& put) {
  constexpr std::wstring_view kInstead = L"_";
  const wchar_t* at = text.data();
  const wchar_t* const end = at + text.size();
  if (at == end) {
    put(kInstead);
  }
  while (at != end) {
    const wchar_t* const start = at;
    const char32_t c = nextCharacter(at, end);
    if (start == text.data() && canFollow(c) && !canBegin(c)) {
      put(kInstead);
    }
    put(canFollow(c) ? std::wstring_view(start, static_cast<std::size_t>(at - start)) : kInstead);
  }
}

std::wstring repairedXmlName(std::wstring_view text) {
  std::wstring name;
  repairXmlName(text, [&name](std::wstring_view piece) { name += piece; });
  return name;
}

}  // namespace scrivalen::formats
