#include "formats/rtf/document/paragraphs.h"

#include "document/language.h"
#include "formats/rtf/document/escape.h"

#include <cstddef>
#include <string_view>
#include <utility>

namespace scrivalen::document::rtf {
namespace {

constexpr std::size_t kMostWaiting = 4096;  // bytes without any letter

// Readers have the sides of the page, whatever the direction.
std::string_view alignment(Align align, bool isRightToLeft) {
  switch (align) {
    case Align::Auto: return isRightToLeft ? "\\qr" : "";
    case Align::Left: return isRightToLeft ? "\\ql" : "";
    case Align::Center: return "\\qc";
    case Align::Right: return "\\qr";
    case Align::Justify: return "\\qj";
  }
  return "";
}

Direction directionOf(const Event& event) {
  switch (event.kind) {
    case EventKind::Text: return firstDirection(event.text);
    case EventKind::BeginLanguage: return isRightToLeft(event.text) ? Direction::RightToLeft : Direction::LeftToRight;
    default: return Direction::Neutral;
  }
}

}  // namespace

void Paragraphs::begin(ParagraphStart start) {
  start_ = std::move(start);
  isOpen_ = true;
  isWaiting_ = true;
}

void Paragraphs::begin(const ParagraphStart& start, Direction direction) {
  const bool isRightToLeft = direction == Direction::Neutral ? isRightToLeft_ : direction == Direction::RightToLeft;
  sections_.prepare(orientation_);
  put(out_, "\\pard\\plain");
  put(out_, styles_.words(start.style, isRightToLeft));
  put(out_, sections_.isAtTop() || sections_.breaksPage() ? "\\sb0" : "");
  put(out_, sections_.takeBreak() ? "\\pagebb" : "");
  sections_.addContent();
  containers_.writeWords(isRightToLeft);
  put(out_, isRightToLeft ? "\\rtlpar" : "");
  put(out_, alignment(start.align, isRightToLeft));
  put(out_, start.words);
  const RunStyle style = styles_.run(start.style);
  if (isRightToLeft) {
    writeRightToLeftStyle(out_, style);
  }
  out_.put(' ');
  containers_.writeMarker();
  const PageTwips& paper = sections_.paper();
  inlines_.setRoom({paper.textWidth() - containers_.indent(), paper.textHeight()});
  inlines_.beginText(style, isRightToLeft);
  inlines_.writeHeld();
  isOpen_ = true;
  isWaiting_ = false;
}

void Paragraphs::decide(Direction direction) {
  begin(std::exchange(start_, {}), direction);
  std::exchange(waiting_, {}).replay(inlines_);
}

void Paragraphs::write(const Event& event) {
  if (isWaiting_) {
    const Direction direction = directionOf(event);
    if (direction == Direction::Neutral && event.kind != EventKind::Image && waiting_.size() < kMostWaiting) {
      return waiting_.write(event);
    }
    decide(direction);
  }
  inlines_.write(event);
}

void Paragraphs::close() {
  if (isWaiting_) {
    decide(Direction::Neutral);
  }
  if (std::exchange(isOpen_, false)) {
    put(out_, "\\par\n");
  }
}

void Paragraphs::write(const ParagraphStart& start, std::string_view text) {
  begin(start, firstDirection(text));
  if (!text.empty()) {
    inlines_.write({.kind = EventKind::Text, .text = text});
  }
  close();
}

void Paragraphs::writeEmpty() { write({.style = containers_.style()}, {}); }

}  // namespace scrivalen::document::rtf
