#include "document/word/word_paragraphs.h"

#include "document/language.h"

#include <cstddef>
#include <utility>

namespace scrivalen::document {
namespace {

constexpr std::size_t kMostWaiting = 4096;  // bytes without any letter

Direction directionOfStart(const Event& event) {
  switch (event.kind) {
    case EventKind::Text: return firstDirection(event.text);
    case EventKind::BeginLanguage: return isRightToLeft(event.text) ? Direction::RightToLeft : Direction::LeftToRight;
    default: return Direction::Neutral;
  }
}

}  // namespace

void WordParagraphs::begin(const ParagraphStart& start) {
  start_ = start;
  isOpen_ = true;
  isWaiting_ = true;
}

void WordParagraphs::begin(const ParagraphStart& start, Direction direction) {
  const bool isRightToLeft = direction == Direction::Neutral ? isRightToLeft_ : direction == Direction::RightToLeft;
  sections_.prepare(orientation_);
  const PageTwips& paper = sections_.paper();
  inlines_.setRoom({paper.textWidth() - containers_.indent(), paper.textHeight()});
  writeBegin(start, isRightToLeft);
  sections_.addContent();
  isOpen_ = true;
  isWaiting_ = false;
}

void WordParagraphs::decide(Direction direction) {
  begin(std::exchange(start_, {}), direction);
  std::exchange(waiting_, {}).replay(inlines_);
}

void WordParagraphs::write(const Event& event) {
  if (isWaiting_) {
    const Direction direction = directionOfStart(event);
    if (direction == Direction::Neutral && event.kind != EventKind::Image && waiting_.size() < kMostWaiting) {
      return waiting_.write(event);
    }
    decide(direction);
  }
  inlines_.write(event);
}

void WordParagraphs::close() {
  if (isWaiting_) {
    decide(Direction::Neutral);
  }
  if (std::exchange(isOpen_, false)) {
    writeEnd();
  }
}

void WordParagraphs::write(const ParagraphStart& start, std::string_view text) {
  begin(start, firstDirection(text));
  if (!text.empty()) {
    inlines_.writeText(text);
  }
  close();
}

void WordParagraphs::writeEmpty() { write({.kind = containers_.kind()}, {}); }

}  // namespace scrivalen::document
