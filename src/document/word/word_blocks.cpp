#include "document/word/word_blocks.h"

#include "document/model/event_log.h"
#include "document/word/table_plan.h"
#include "text/direction.h"

#include <utility>

namespace scrivalen::document {
namespace {

// Of the page's height, for a picture in a table: above it are header rows, which each page repeats.
constexpr double kPictureShare = 0.85;

}  // namespace

void WordBlocks::add(const Event& event) {
  if (headings_.isFull()) {
    writeHeadings(Orientation::Upright);
  }
  if (headings_.hold(event)) {
    return;
  }
  writeHeadings(Orientation::Upright);
  write(event);
}

void WordBlocks::writeHeadings(Orientation orientation) {
  if (headings_.isEmpty()) {
    return;
  }
  parts_.paragraphs.setOrientation(orientation);
  headings_.take().replay(*this);
  parts_.paragraphs.close();
  parts_.paragraphs.setOrientation(Orientation::Upright);
}

void WordBlocks::write(const Event& event) {
  if (isInline(event.kind)) {
    return writeInline(event);
  }
  parts_.paragraphs.close();
  switch (event.kind) {
    case EventKind::Title: return parts_.paragraphs.write({.kind = BlockKind::Title}, event.text);
    case EventKind::BeginSection: return beginSection(event);
    case EventKind::EndSection: return parts_.sections.end();
    case EventKind::BeginHeading: return beginHeading(event);
    case EventKind::BeginParagraph:
      return parts_.paragraphs.begin({.kind = parts_.containers.kind(), .align = event.align});
    case EventKind::BeginQuote: return parts_.containers.beginQuote();
    case EventKind::BeginList: return beginList(event);
    case EventKind::EndQuote:
    case EventKind::EndList: return parts_.containers.end();
    case EventKind::BeginItem: return parts_.containers.beginItem(event.task);
    case EventKind::EndItem: return flushMarker();
    case EventKind::BeginCode: return beginCode(true);
    case EventKind::EndCode: return beginCode(false);
    case EventKind::Rule: return writeRule();
    case EventKind::PageBreak: return breakPage();
    case EventKind::ContentsItem: return contentsItem(event);
    case EventKind::EndContents: return writeContentsItem(true);
    default: return;
  }
}

void WordBlocks::writeInline(const Event& event) {
  const bool isRaw = event.kind == EventKind::Raw;
  if (isRaw && !parts_.inlines.takesRaw()) {
    return;
  }
  if (isInCode_ && event.kind == EventKind::Text) {
    return writeCode(event.text);
  }
  if (!parts_.paragraphs.isOpen()) {
    if (event.kind == EventKind::Anchor) {
      return parts_.inlines.hold(event.id);
    }
    if (isRaw) {
      parts_.sections.prepare(Orientation::Upright);
      return parts_.inlines.write(event);
    }
    parts_.paragraphs.begin({.kind = parts_.containers.kind()});
  }
  parts_.paragraphs.write(event);
}

void WordBlocks::finish() {
  writeHeadings(Orientation::Upright);
  parts_.paragraphs.close();
}

void WordBlocks::beginTable(const Table& table) {
  parts_.paragraphs.close();
  const PageTwips& paper = parts_.sections.paper();
  const PageTwips* turned = parts_.sections.turnedPaper();
  const int left = parts_.containers.indent();
  const TableSpace space{paper.textWidth() - left, turned == nullptr ? 0 : turned->textWidth() - left};
  // Readers do not agree on where a narrow table from right to left is.
  const WidthRule rule{.isEqual = settings_.text("widths") == "equal",
                       .isFilled = isRightToLeft_,
                       .letters = parts_.tables.letterWidth()};
  TablePlan plan = planTable(table, space, rule);
  writeHeadings(plan.orientation);
  flushMarker();
  parts_.sections.prepare(plan.orientation);
  if (parts_.sections.takeBreak()) {
    parts_.sections.writeBreak();
  }
  const bool isTurned = plan.orientation == Orientation::Turned;
  const int height = static_cast<int>((isTurned ? *turned : paper).textHeight() * kPictureShare);
  parts_.inlines.setRoom({isTurned ? space.turned : space.upright, height});
  parts_.sections.addContent();
  parts_.tables.begin(table, std::move(plan), left);
}

void WordBlocks::beginSection(const Event& section) {
  parts_.sections.begin(section.text);
  parts_.inlines.hold(section.id);
}

void WordBlocks::breakPage() {
  if (parts_.sections.breaksPage()) {
    parts_.paragraphs.writeEmpty();
  }
  parts_.sections.breakPage();
}

void WordBlocks::flushMarker() {
  if (parts_.containers.hasMarker()) {
    parts_.paragraphs.writeEmpty();
  }
}

void WordBlocks::beginHeading(const Event& heading) {
  parts_.inlines.hold(heading.id);
  parts_.paragraphs.begin({.kind = BlockKind::Heading, .level = heading.number, .align = heading.align},
                          firstDirection(heading.text));
}

void WordBlocks::beginList(const Event& list) {
  flushMarker();
  parts_.containers.beginList(list);
}

void WordBlocks::beginCode(bool isInCode) {
  isInCode_ = isInCode;
  codeBreaks_ = 0;
}

// One paragraph, whose last line break ends it.
void WordBlocks::writeCode(std::string_view text) {
  if (!parts_.paragraphs.isOpen()) {
    parts_.paragraphs.begin({.kind = BlockKind::Code}, Direction::LeftToRight);
  }
  const std::size_t end = text.find_last_not_of('\n') + 1;
  if (end > 0) {
    for (; codeBreaks_ > 0; --codeBreaks_) {
      parts_.inlines.writeText("\n");
    }
    parts_.inlines.writeText(text.substr(0, end));
  }
  codeBreaks_ += text.size() - end;
}

void WordBlocks::writeRule() {
  flushMarker();
  parts_.paragraphs.write({.kind = BlockKind::Rule}, {});
}

void WordBlocks::contentsItem(const Event& item) {
  writeContentsItem(false);
  entry_ = ContentsEntry{item.number, std::string(item.id), std::string(item.text)};
}

void WordBlocks::writeContentsItem(bool isLast) {
  if (!entry_) {
    return;
  }
  const ContentsEntry entry = *std::exchange(entry_, std::nullopt);
  parts_.paragraphs.begin({.kind = BlockKind::Contents, .level = entry.level, .isLast = isLast},
                          firstDirection(entry.text));
  if (entry.id.empty()) {
    parts_.inlines.writeText(entry.text);
  } else {
    parts_.inlines.writePageLink(
        {.kind = EventKind::ContentsItem, .number = entry.level, .text = entry.text, .id = entry.id});
  }
  parts_.paragraphs.close();
}

}  // namespace scrivalen::document
