#include "text/letter_case.h"

#include "text/ascii.h"

#include <algorithm>
#include <iterator>

namespace scrivalen {
namespace {

// Lower-case letters `first`, `first + step`, ... up to `last` (Unicode 15, UnicodeData.txt, simple upper-case
// mapping).
struct LowerCaseRange {
  int first;
  int last;
  int step;
  int distance;  // to the upper-case letter
};

constexpr LowerCaseRange kLowerCaseRanges[] = {
    {L'a', L'z', 1, -32},
    // Latin-1
    {0x00E0, 0x00F6, 1, -32},
    {0x00F8, 0x00FE, 1, -32},
    {0x00FF, 0x00FF, 1, 121},
    // Latin Extended-A, where each lower-case letter follows its upper-case one
    {0x0101, 0x012F, 2, -1},
    {0x0131, 0x0131, 1, -232},
    {0x0133, 0x0137, 2, -1},
    {0x013A, 0x0148, 2, -1},
    {0x014B, 0x0177, 2, -1},
    {0x017A, 0x017E, 2, -1},
    // Romanian s and t with comma below
    {0x0219, 0x021B, 2, -1},
    // Greek
    {0x03AC, 0x03AC, 1, -38},
    {0x03AD, 0x03AF, 1, -37},
    {0x03B1, 0x03C1, 1, -32},
    {0x03C3, 0x03CB, 1, -32},
    {0x03CC, 0x03CC, 1, -64},
    {0x03CD, 0x03CE, 1, -63},
    // Cyrillic
    {0x0430, 0x044F, 1, -32},
    {0x0450, 0x045F, 1, -80},
    {0x0461, 0x0481, 2, -1},
    {0x048B, 0x04BF, 2, -1},
    {0x04D1, 0x04FF, 2, -1},
    // Armenian
    {0x0561, 0x0586, 1, -48},
};

// The range that contains a lower-case letter; null if there is none.
const LowerCaseRange* rangeOf(int letter) {
  const auto found =
      std::find_if(std::begin(kLowerCaseRanges), std::end(kLowerCaseRanges), [letter](const LowerCaseRange& range) {
        return letter >= range.first && letter <= range.last && (letter - range.first) % range.step == 0;
      });
  return found == std::end(kLowerCaseRanges) ? nullptr : found;
}

}  // namespace

char32_t toUpperCase(char32_t c) {
  const LowerCaseRange* const range = rangeOf(static_cast<int>(c));
  return range ? static_cast<char32_t>(static_cast<int>(c) + range->distance) : c;
}

char32_t toLowerCase(char32_t c) {
  if (c < 0x80) {
    return asciiLower(c);
  }
  for (const LowerCaseRange& range : kLowerCaseRanges) {
    const int letter = static_cast<int>(c) - range.distance;
    if (rangeOf(letter) == &range) {
      return static_cast<char32_t>(letter);
    }
  }
  return c;
}

}  // namespace scrivalen
