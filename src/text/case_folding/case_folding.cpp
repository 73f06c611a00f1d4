#include "text/case_folding/case_folding.h"

#include "text/ascii.h"
#include "text/case_folding/folding_table.h"
#include "text/utf.h"

#include <algorithm>
#include <iterator>

namespace scrivalen {

char32_t foldCase(char32_t c) {
  if (c < 0x80) {
    return asciiLower(c);
  }
  const auto* const range =
      std::lower_bound(std::begin(kFoldingRanges), std::end(kFoldingRanges), c,
                       [](const FoldingRange& candidate, char32_t letter) { return candidate.last < letter; });
  if (range == std::end(kFoldingRanges) || c < range->first || (c - range->first) % range->step != 0) {
    return c;
  }
  return static_cast<char32_t>(static_cast<std::int32_t>(c) + range->difference);
}

namespace {

void appendFolded(std::string& utf8, char32_t c) {
  char bytes[4];
  utf8.append(bytes, putUtf8(c, bytes));
}

// Calls a function with each character.
template <typename Take>
void forEachCharacter(std::string_view utf8, Take take) {
  const char* at = utf8.data();
  const char* const end = at + utf8.size();
  while (at != end) {
    char32_t c = kReplacement;
    take(nextUtf8(at, end, c) ? c : kReplacement);
  }
}

// Null if it is folded into one character at most.
const FullFolding* fullFoldingOf(char32_t c) {
  const auto* const found =
      std::lower_bound(std::begin(kFullFoldings), std::end(kFullFoldings), c,
                       [](const FullFolding& candidate, char32_t letter) { return candidate.letter < letter; });
  return found != std::end(kFullFoldings) && found->letter == c ? found : nullptr;
}

}  // namespace

std::string foldCase(std::string_view utf8) {
  std::string folded;
  forEachCharacter(utf8, [&folded](char32_t c) { appendFolded(folded, foldCase(c)); });
  return folded;
}

std::string foldCaseFully(std::string_view utf8) {
  std::string folded;
  forEachCharacter(utf8, [&folded](char32_t c) {
    const FullFolding* const full = fullFoldingOf(c);
    if (full == nullptr) {
      return appendFolded(folded, foldCase(c));
    }
    for (const char16_t part : full->folded) {
      if (part != 0) {
        appendFolded(folded, part);
      }
    }
  });
  return folded;
}

}  // namespace scrivalen
