#include "document/word/word_inlines.h"

namespace scrivalen::document {

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
