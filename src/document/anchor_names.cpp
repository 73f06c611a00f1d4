#include "document/anchor_names.h"

#include "text/ascii.h"
#include "text/letter_case.h"
#include "text/utf.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace scrivalen::document {
namespace {

struct Range {
  char32_t first;
  char32_t last;
};

// Punctuation and symbols (Unicode 15, general categories P and S, and the controls and blanks among them).
constexpr Range kDropped[] = {
    {0x0000, 0x001F}, {0x0021, 0x002C}, {0x002E, 0x002F}, {0x003A, 0x0040}, {0x005B, 0x005E},   {0x0060, 0x0060},
    {0x007B, 0x00A9}, {0x00AB, 0x00B1}, {0x00B4, 0x00B4}, {0x00B6, 0x00B8}, {0x00BB, 0x00BB},   {0x00BF, 0x00BF},
    {0x00D7, 0x00D7}, {0x00F7, 0x00F7}, {0x2000, 0x206F}, {0x20A0, 0x20CF}, {0x2100, 0x2101},   {0x2190, 0x245F},
    {0x2500, 0x2BFF}, {0x2E00, 0x2E7F}, {0x3000, 0x3004}, {0x3008, 0x3020}, {0xFE30, 0xFE6F},   {0xFF01, 0xFF0F},
    {0xFF1A, 0xFF20}, {0xFF3B, 0xFF40}, {0xFF5B, 0xFF65}, {0xFFE0, 0xFFFF}, {0x1F000, 0x1FAFF}, {0xE0000, 0xE007F}};

// In bytes, about. Every name is kept.
constexpr std::size_t kLongestName = 1000;

constexpr bool isDropped(char32_t c) {
  return std::any_of(std::begin(kDropped), std::end(kDropped),
                     [c](const Range& range) { return c >= range.first && c <= range.last; });
}

// What an ASCII character is in a name; 0 for one that is dropped.
constexpr auto kAscii = [] {
  std::array<char, 128> characters{};
  for (char32_t c = 0; c < characters.size(); ++c) {
    const char lower = asciiLower(static_cast<char>(c));
    characters[c] = c == ' ' ? '-' : isDropped(c) ? '\0' : lower;
  }
  return characters;
}();

void appendPlainName(std::string& name, std::string_view heading) {
  const char* at = heading.data();
  const char* const end = at + heading.size();
  while (at != end && name.size() < kLongestName) {
    if (const auto byte = static_cast<unsigned char>(*at); byte < kAscii.size()) {
      ++at;
      if (kAscii[byte] != '\0') {
        name += kAscii[byte];
      }
      continue;
    }
    char32_t c = 0;
    if (!nextUtf8(at, end, c) || isDropped(c)) {
      continue;
    }
    char bytes[4];
    name.append(bytes, putUtf8(toLowerCase(c), bytes));
  }
}

}  // namespace

std::string_view AnchorNames::next(std::string_view heading) {
  name_.clear();
  appendPlainName(name_, heading);
  if (name_.empty()) {
    name_ = "section";
  }
  if (claim(name_)) {
    return name_;
  }
  const std::string plain = name_;
  do {
    name_ = plain + '-' + std::to_string(used_.find(plain)->second++);
  } while (!claim(name_));
  return name_;
}

bool AnchorNames::claim(std::string_view id) { return used_.try_emplace(std::string(id), 1).second; }

}  // namespace scrivalen::document
