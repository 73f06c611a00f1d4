#include "formats/xlsx/document/block_writer.h"

#include "document/plain/tabs.h"

#include <algorithm>
#include <utility>

namespace scrivalen::xlsx {
namespace {

using document::Event;
using document::EventKind;

constexpr std::size_t kDeepestIndent = 15;
constexpr std::uint32_t kQuoteColor = 0x595959;
constexpr std::string_view kBullet = "\u2022 ";

// In hundredths of a point, by level.
constexpr std::uint16_t kHeadingSizes[] = {1600, 1400, 1200, 1100, 1100, 1100};

void removeEnd(RichText& text) {
  text.text.erase(text.text.find_last_not_of(" \n") + 1);
  while (!text.runs.empty() && text.runs.back().begin >= text.text.size()) {
    text.runs.pop_back();
  }
}

void insert(RichText& text, std::string_view before, const Font& font) {
  if (before.empty()) {
    return;
  }
  text.text.insert(0, before);
  for (TextRun& run : text.runs) {
    run.begin += before.size();
  }
  if (!text.runs.empty() && text.runs.front().font == font) {
    text.runs.front().begin = 0;
  } else {
    text.runs.insert(text.runs.begin(), {0, font});
  }
}

}  // namespace

void BlockWriter::write(const Event& event) {
  if (!isInline(event.kind)) {
    return writeBlock(event);
  }
  if (event.kind == EventKind::Raw) {
    return;
  }
  if (!isText_) {
    beginText({.kind = EventKind::BeginParagraph});
  }
  collector_.write(event);
}

void BlockWriter::writeBlock(const Event& event) {
  switch (event.kind) {
    case EventKind::EndHeading: return endHeading();
    case EventKind::EndCode: return endCode();
    default: endParagraph();
  }
  switch (event.kind) {
    case EventKind::BeginHeading:
    case EventKind::BeginParagraph:
    case EventKind::BeginCode: return beginText(event);
    case EventKind::ContentsItem: return contentsItem(event);
    case EventKind::PageBreak: isBreakNext_ = true; return;
    case EventKind::BeginQuote:
      ++depth_;
      ++quotes_;
      return;
    case EventKind::EndQuote:
      --depth_;
      --quotes_;
      return;
    case EventKind::BeginList:
      markers_.enter(event);
      ++depth_;
      return;
    case EventKind::EndList:
      markers_.leave();
      --depth_;
      return;
    case EventKind::BeginItem: marker_ += markers_.next(event.task, kBullet); return;
    case EventKind::EndItem: return endItem();
    default: return;
  }
}

CellFormat BlockWriter::bodyFormat() const {
  CellFormat format = looks_.body;
  format.indent = static_cast<std::uint8_t>(std::min(depth_, kDeepestIndent));
  format.align = align_;
  if (quotes_ > 0 && format.font.color == kNoColor) {
    format.font.color = kQuoteColor;
  }
  return format;
}

Font BlockWriter::headingFont() const {
  Font font = looks_.header.font;
  font.size = looks_.isHeadingSized ? kHeadingSizes[level_ - 1] : font.size;
  return font;
}

void BlockWriter::beginText(const Event& event) {
  isText_ = true;
  isCode_ = event.kind == EventKind::BeginCode;
  align_ = event.align;
  CellFormat format = bodyFormat();
  if (isCode_) {
    format.font.family = Family::Code;
  } else if (event.kind == EventKind::BeginHeading) {
    level_ = std::clamp(event.number, 1, 6);
    format.font = headingFont();
  }
  collector_.begin(format.font);
  if (event.kind == EventKind::BeginHeading && !event.id.empty()) {
    collector_.write({.kind = EventKind::Anchor, .id = event.id});
  }
}

void BlockWriter::endParagraph() {
  if (!std::exchange(isText_, false)) {
    return;
  }
  RichText text = collector_.take();
  removeEnd(text);
  if (!text.isEmpty() || !text.anchors.empty()) {
    put(std::move(text), bodyFormat());
  }
  align_ = document::Align::Auto;
}

// An item without text is still written.
void BlockWriter::endItem() {
  endParagraph();
  if (!marker_.empty()) {
    put({}, bodyFormat());
  }
}

bool BlockWriter::takeBreak() { return std::exchange(isBreakNext_, false); }

void BlockWriter::endHeading() {
  isText_ = false;
  RichText text = collector_.take();
  removeEnd(text);
  if (text.isEmpty() && text.anchors.empty()) {
    return;
  }
  CellFormat format = bodyFormat();
  format.font = headingFont();
  put(std::move(text), format, true);
  align_ = document::Align::Auto;
}

void BlockWriter::endCode() {
  isText_ = false;
  std::size_t column = 0;
  const std::string code = document::withoutTabs(collector_.take().text, column);
  std::string_view text = code;
  CellFormat format = bodyFormat();
  format.font.family = Family::Code;
  if (text.ends_with('\n')) {
    text.remove_suffix(1);
  }
  for (std::size_t start = 0; start <= text.size();) {
    const std::size_t end = std::min(text.find('\n', start), text.size());
    RichText line;
    line.text = text.substr(start, end - start);
    if (!line.text.empty()) {
      line.runs.push_back({0, format.font});
    }
    put(std::move(line), format);
    start = end + 1;
  }
  isCode_ = false;
}

void BlockWriter::contentsItem(const Event& item) {
  CellFormat format = bodyFormat();
  format.indent = static_cast<std::uint8_t>(std::clamp(item.number, 1, 6) - 1);
  collector_.begin(format.font);
  const std::string address = std::string("#").append(item.id);
  collector_.write({.kind = EventKind::BeginLink, .address = address});
  collector_.write({.kind = EventKind::Text, .text = item.text});
  collector_.write({.kind = EventKind::EndLink});
  isAfterContents_ = false;
  put(collector_.take(), format);
  isAfterContents_ = true;
}

void BlockWriter::put(RichText text, CellFormat format, bool isHeading) {
  const Direction direction = isCode_ ? Direction::LeftToRight : firstDirection(text.text);
  insert(text, std::exchange(marker_, {}), format.font);
  format.fill = text.fill == kNoColor ? format.fill : text.fill;
  const bool hasBlankBefore = std::exchange(isAfterContents_, false) || isHeading;
  target_.put({std::move(text), format, hasBlankBefore, takeBreak(), isHeading, direction});
}

}  // namespace scrivalen::xlsx
