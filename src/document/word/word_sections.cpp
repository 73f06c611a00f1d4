#include "document/word/word_sections.h"

namespace scrivalen::document {
namespace {

// The margins keep their sides.
PageTwips turned(PageTwips paper) {
  std::swap(paper.width, paper.height);
  return paper;
}

}  // namespace

WordSections::WordSections(const PageTwips& paper) : paper_(paper), turned_(turned(paper)) {}

void WordSections::begin(std::string_view name) {
  if (opened_) {
    openPending();
  }
  name_ = name;
  isPending_ = true;
  isAfterSection_ = false;
  isAtTop_ = true;
  breaksPage_ = false;
}

void WordSections::end() {
  openPending();
  isAfterSection_ = true;
  isAtTop_ = true;
  breaksPage_ = false;
}

void WordSections::prepare(Orientation orientation) {
  if (isAfterSection_) {
    begin({});
  }
  if (isPending_ || opened_ != orientation) {
    open(orientation);
  }
}

void WordSections::addContent() {
  isAtTop_ = false;
  hasContent_ = true;
}

void WordSections::openPending() {
  if (isPending_) {
    open(Orientation::Upright);
  }
  isAfterSection_ = false;
}

void WordSections::open(Orientation orientation) {
  writeBegin(orientation, opened_);
  opened_ = orientation;
  isPending_ = false;
  isAtTop_ = true;
  breaksPage_ = false;
}

}  // namespace scrivalen::document
