#include "document/word/word_inlines.h"

#include "text/utf.h"

#include <cstddef>

namespace scrivalen::document {

std::string_view linkTitle(std::string_view title, OutputWarnings& warnings) {
  constexpr std::size_t kLongest = 260;  // UTF-16 code units
  const std::string_view kept = cutToUnits(title, kLongest);
  if (kept.size() < title.size()) {
    warnings.add(WarningCode::TextCut, "descriptions of links cut at 260 characters");
  }
  return kept;
}

void WordInlines::hold(std::string_view id) {
  if (!id.empty()) {
    held_.emplace_back(id);
  }
}

void WordInlines::writeHeld() {
  for (const std::string& id : held_) {
    anchor(id);
  }
  held_.clear();
}

void WordInlines::anchor(std::string_view id) {
  if (hasPlaces_) {
    writePlace(id);
    hasWrittenPlaces_ = true;
  }
}

}  // namespace scrivalen::document
