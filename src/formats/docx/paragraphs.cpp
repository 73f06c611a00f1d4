#include "formats/docx/paragraphs.h"

#include "document/language.h"
#include "formats/docx/xml.h"

#include <cstddef>
#include <utility>

namespace scrivalen::document::docx {
namespace {

constexpr std::size_t kMostWaiting = 4096;  // bytes without any letter

Direction directionOfText(const Event& event) {
  switch (event.kind) {
    case EventKind::Text: return firstDirection(event.text);
    case EventKind::BeginLanguage: return isRightToLeft(event.text) ? Direction::RightToLeft : Direction::LeftToRight;
    default: return Direction::Neutral;
  }
}

}  // namespace

std::string_view alignmentElement(Align align, bool isRightToLeft) {
  constexpr std::string_view kBegin = "<w:jc w:val=\"left\"/>";
  constexpr std::string_view kEnd = "<w:jc w:val=\"right\"/>";
  switch (align) {
    case Align::Auto: return "";
    case Align::Left: return isRightToLeft ? kEnd : kBegin;
    case Align::Center: return "<w:jc w:val=\"center\"/>";
    case Align::Right: return isRightToLeft ? kBegin : kEnd;
    case Align::Justify: return "<w:jc w:val=\"both\"/>";
  }
  return "";
}

void Paragraphs::begin(ParagraphStart start) {
  start_ = start;
  isOpen_ = true;
  isWaiting_ = true;
}

void Paragraphs::begin(ParagraphStart start, Direction direction) {
  const bool isRightToLeft = direction == Direction::Neutral ? isRightToLeft_ : direction == Direction::RightToLeft;
  sections_.prepare(orientation_);
  const ContainerProperties around = containers_.takeProperties(start.style, isRightToLeft);
  put(out_, "<w:p>");
  writeProperties(start, isRightToLeft, around);
  sections_.addContent();
  const PageTwips& paper = sections_.paper();
  inlines_.setRoom({paper.textWidth() - containers_.indent(), paper.textHeight()});
  inlines_.beginText({}, isRightToLeft);
  inlines_.writeHeld();
  if (!around.marker.empty()) {
    inlines_.writeText(around.marker);
  }
  isOpen_ = true;
  isWaiting_ = false;
}

// In the order of the schema (ECMA-376, 17.3.1.26).
void Paragraphs::writeProperties(ParagraphStart start, bool isRightToLeft, const ContainerProperties& around) {
  std::string xml(styleReference(start.style));
  xml += sections_.takeBreak() ? "<w:pageBreakBefore/>" : "";
  xml.append(around.list).append(around.border);
  xml += isRightToLeft ? "<w:bidi/>" : "";
  xml.append(around.indent).append(around.space).append(alignmentElement(start.align, isRightToLeft));
  if (!xml.empty()) {
    put(out_, "<w:pPr>");
    put(out_, xml);
    put(out_, "</w:pPr>");
  }
}

void Paragraphs::decide(Direction direction) {
  begin(std::exchange(start_, {}), direction);
  std::exchange(waiting_, {}).replay(inlines_);
}

void Paragraphs::write(const Event& event) {
  if (isWaiting_) {
    const Direction direction = directionOfText(event);
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
    put(out_, "</w:p>\n");
  }
}

void Paragraphs::write(ParagraphStart start, std::string_view text) {
  begin(start, firstDirection(text));
  if (!text.empty()) {
    inlines_.writeText(text);
  }
  close();
}

void Paragraphs::writeEmpty() { write({.style = containers_.style()}, {}); }

}  // namespace scrivalen::document::docx
