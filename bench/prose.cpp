#include "prose.h"

#include <array>
#include <cstddef>
#include <string_view>

namespace scrivalen::bench {
namespace {

constexpr std::size_t kParagraphLength = 600;

constexpr std::array<std::wstring_view, 8> kSentences = {
    L"The report of the week was read aloud, and nobody had a question. ",
    L"Two of the five lorries came back empty, which had not been planned. ",
    L"What the customer had ordered in March, he paid for in June. ",
    L"A new roof costs more than an old one, and is dry. ",
    L"The north hall (the smaller one) stays closed until the heating works again. ",
    L"Nothing else is known, so the account remains open for another thirty days. ",
    L"Each box holds twelve bottles, and each pallet sixty boxes. ",
    L"The figures of the branch are better than they were, though not by much. "};

// Spreads a number over 32 bits, so that neighbours differ (Knuth's multiplier).
constexpr unsigned spread(unsigned number) { return number * 2654435761u; }

}  // namespace

const std::wstring& Prose::nextHeading() {
  text_ = L"Section " + std::to_wstring(++section_);
  return text_;
}

const std::wstring& Prose::nextParagraph() {
  text_.clear();
  for (unsigned bits = spread(++paragraph_); text_.size() < kParagraphLength; bits = spread(bits + 1)) {
    text_ += kSentences[bits >> 29];
  }
  text_.resize(kParagraphLength);
  return text_;
}

}  // namespace scrivalen::bench
