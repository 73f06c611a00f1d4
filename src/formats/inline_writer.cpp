#include "formats/inline_writer.h"

#include <algorithm>

namespace scrivalen {
namespace {

using document::Span;
using document::Status;

constexpr std::size_t kMostSpace = 1000;
constexpr std::size_t kMostSizes = 64;
constexpr int kLargestSize = 1000;
constexpr std::string_view kNoBreakBlank = "\xC2\xA0";

bool endsWithSpace(std::string_view text) {
  return text.ends_with(' ') || text.ends_with('\n') || text.ends_with('\r') || text.ends_with('\t');
}

}  // namespace

void InlineWriter::enter(const Attributes& look) {
  space_.clear();
  look_ = look;
  enterOpenText();
}

void InlineWriter::enterOpenText() {
  hasContent_ = false;
  endsWithBlank_ = true;
}

void InlineWriter::leave(bool takesAnchors) {
  closeTo(0);
  if (takesAnchors) {
    writeAnchors();
  }
  space_.clear();
  look_ = {};
  hasContent_ = false;
}

void InlineWriter::text(std::string_view text) {
  if (text.empty()) {
    return;
  }
  beginContent();
  document_.text(text);
  endsWithBlank_ = endsWithSpace(text);
}

void InlineWriter::link(std::string_view text, std::string_view address) {
  beginContent();
  const bool isOpen = document_.beginLink(address, {}) == Status::Ok;
  document_.text(text);
  if (isOpen) {
    document_.end();
  }
  endsWithBlank_ = endsWithSpace(text);
}

void InlineWriter::markup(std::string_view markup) {
  beginContent();
  document_.raw("html", markup);
  endsWithBlank_ = endsWithSpace(markup);
}

// Blanks at the end of a line disappear.
void InlineWriter::lineBreak() {
  while (space_.ends_with(' ')) {
    space_.pop_back();
  }
  wait('\n');
}

void InlineWriter::newLine() {
  if (space_.find('\n') == space_.npos) {
    space_.assign(hasContent_ ? 1 : 0, '\n');
  }
}

void InlineWriter::wait(char space) {
  if (space_.size() < kMostSpace) {
    space_ += space;
  }
}

void InlineWriter::anchor(std::string_view name) { anchors_.emplace_back(name); }

std::string InlineWriter::takeAnchor() {
  if (anchors_.empty()) {
    return {};
  }
  std::string name = std::move(anchors_.front());
  anchors_.erase(anchors_.begin());
  return name;
}

void InlineWriter::writeAnchors() {
  for (const std::string& name : anchors_) {
    document_.anchor(name);
  }
  anchors_.clear();
}

// A host that never ends its sizes needs no more memory for each.
void InlineWriter::beginSize(int points) {
  if (sizes_.size() == kMostSizes) {
    sizes_.erase(sizes_.begin());
  }
  sizes_.push_back(std::clamp(points, 0, kLargestSize));
}

void InlineWriter::endSize() {
  if (!sizes_.empty()) {
    sizes_.pop_back();
  }
}

bool InlineWriter::isWanted(const OpenSpan& span) const {
  switch (span.kind) {
    case SpanKind::Colored: return look_.color || look_.background;
    case SpanKind::Strong: return bold_ > 0 || look_.isBold;
    case SpanKind::Emphasis: return italic_ > 0 || look_.isItalic;
    case SpanKind::Sized: return !sizes_.empty() && sizes_.back() > 0 && sizes_.back() == span.points;
  }
  return false;
}

bool InlineWriter::isOpen(SpanKind kind) const {
  return std::any_of(open_.begin(), open_.end(), [kind](const OpenSpan& span) { return span.kind == kind; });
}

void InlineWriter::open(SpanKind kind) {
  const OpenSpan span{kind, kind == SpanKind::Sized && !sizes_.empty() ? sizes_.back() : 0};
  if (!isWanted(span) || isOpen(kind)) {
    return;
  }
  Status status = Status::Ok;
  switch (kind) {
    case SpanKind::Colored: status = document_.beginColored(look_.color, look_.background); break;
    case SpanKind::Strong: status = document_.beginSpan(Span::Strong); break;
    case SpanKind::Emphasis: status = document_.beginSpan(Span::Emphasis); break;
    case SpanKind::Sized: status = document_.beginSized(span.points); break;
  }
  if (status == Status::Ok) {
    open_.push_back(span);
  }
}

void InlineWriter::closeTo(std::size_t count) {
  for (; open_.size() > count; open_.pop_back()) {
    document_.end();
  }
}

// Ends the spans from the first that is no longer wanted on, and begins those that are missing.
void InlineWriter::beginContent() {
  const auto unwanted =
      std::find_if(open_.begin(), open_.end(), [this](const OpenSpan& span) { return !isWanted(span); });
  closeTo(static_cast<std::size_t>(unwanted - open_.begin()));
  writeSpace();
  for (const SpanKind kind : {SpanKind::Colored, SpanKind::Sized, SpanKind::Strong, SpanKind::Emphasis}) {
    open(kind);
  }
  writeAnchors();
  hasContent_ = true;
}

void InlineWriter::writeSpace() {
  spaced_.clear();
  for (const char c : space_) {
    if (c == '\n' && !hasContent_) {
      continue;
    }
    spaced_ += c == ' ' && endsWithBlank_ ? kNoBreakBlank : std::string_view(&c, 1);
    endsWithBlank_ = true;
  }
  space_.clear();
  if (!spaced_.empty()) {
    document_.text(spaced_);
  }
}

}  // namespace scrivalen
