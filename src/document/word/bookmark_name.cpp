#include "document/word/bookmark_name.h"

#include "text/ascii.h"
#include "text/case_folding/case_folding.h"
#include "text/utf.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>

namespace scrivalen::document {
namespace {

constexpr std::size_t kLongestBookmark = 40;
constexpr int kHashBits = 64;
constexpr std::string_view kBeforeHash = "__";     // is in no other name
constexpr std::string_view kBeforeOthers = "at_";  // comes before what is no letter
constexpr std::size_t kKept = kLongestBookmark - kBeforeHash.size() - kHashBits / 4;

// What LibreOffice numbers by itself. It does not find the page of a bookmark of such a name.
constexpr std::string_view kNumbered[] = {"drawing", "figure", "illustration", "table", "text"};

struct SymbolRange {
  char32_t first;
  char32_t last;
};

// Blocks of punctuation and symbols that are not ASCII.
constexpr SymbolRange kSymbolRanges[] = {
    {0x0080, 0x00A9}, {0x00AB, 0x00B4}, {0x00B6, 0x00B9}, {0x00BB, 0x00BF}, {0x00D7, 0x00D7},  {0x00F7, 0x00F7},
    {0x2000, 0x2BFF}, {0x2E00, 0x2E7F}, {0x3000, 0x3004}, {0x3007, 0x3020}, {0xE000, 0xF8FF},  {0xFE00, 0xFE6F},
    {0xFEFF, 0xFF20}, {0xFF3B, 0xFF40}, {0xFF5B, 0xFF65}, {0xFFE0, 0xFFFF}, {0x1F000, 0x1FAFF}};

bool isNameLetter(char32_t c) {
  if (c < 0x80) {
    return isAsciiLetter(c);
  }
  return c < 0xE0000 && std::none_of(std::begin(kSymbolRanges), std::end(kSymbolRanges),
                                     [c](const SymbolRange& range) { return c >= range.first && c <= range.last; });
}

template <typename Take>
void forEachCharacter(std::string_view id, Take take) {
  const char* at = id.data();
  while (at != id.data() + id.size()) {
    char32_t c = 0;
    nextUtf8(at, id.data() + id.size(), c);
    take(c);
  }
}

void append(std::string& name, char32_t c) {
  char bytes[4];
  name.append(bytes, putUtf8(c, bytes));
}

// The name of an id that no other one can share: it is in lower case, and each underscore is a hyphen. Empty for
// others.
std::string nameInLowerCase(std::string_view id) {
  std::string name;
  std::size_t units = 0;
  bool isInLowerCase = true;
  forEachCharacter(id, [&](char32_t c) {
    const bool isLetter = isNameLetter(c) && foldCase(c) == c;
    const bool isFurther = isAsciiDigit(c) || (c == '-' && !name.ends_with('_'));
    isInLowerCase = isInLowerCase && (isLetter || (isFurther && !name.empty()));
    units += unitsOf(c);
    append(name, c == '-' ? '_' : c);
  });
  return isInLowerCase && units <= kLongestBookmark ? name : std::string();
}

// The beginning of an id, as far as a name holds it.
std::string readablePart(std::string_view id) {
  std::string part;
  std::size_t units = 0;
  forEachCharacter(id, [&](char32_t c) {
    const bool isLetter = isNameLetter(c);
    if (part.empty() && !isLetter) {
      part = kBeforeOthers;
      units = part.size();
    }
    const char32_t kept = isLetter ? foldCase(c) : isAsciiDigit(c) ? c : U'_';
    units += unitsOf(kept);
    if (units <= kKept && !(kept == '_' && part.ends_with('_'))) {
      append(part, kept);
    }
  });
  part.resize(part.find_last_not_of('_') + 1);
  return part.empty() ? std::string(kBeforeOthers) : part;
}

// FNV-1a.
std::uint64_t hashOf(std::string_view text) {
  std::uint64_t hash = 0xCBF29CE484222325;
  for (const char c : text) {
    hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001B3;
  }
  return hash;
}

}  // namespace

std::string bookmarkName(std::string_view id) {
  std::string name = nameInLowerCase(id);
  if (!name.empty() && std::find(std::begin(kNumbered), std::end(kNumbered), name) == std::end(kNumbered)) {
    return name;
  }
  name = readablePart(id).append(kBeforeHash);
  const std::uint64_t hash = hashOf(id);
  for (int shift = kHashBits - 4; shift >= 0; shift -= 4) {
    name += kHexDigits[hash >> shift & 0xF];
  }
  return name;
}

}  // namespace scrivalen::document
