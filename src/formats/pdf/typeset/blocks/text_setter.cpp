#include "formats/pdf/typeset/blocks/text_setter.h"

#include "formats/pdf/typeset/pages/short_text.h"

#include <algorithm>
#include <utility>

namespace scrivalen::typeset {
namespace {

// The lines of a paragraph that are on one page at least.
constexpr std::size_t kFewestLines = 2;

// What the line of a picture has besides it.
constexpr Length kPictureSlack = 20 * kPoint;

// More headings in a row than this do not wait for the text after them.
constexpr std::size_t kMostWaiting = 64;

constexpr Length kRuleHeight = kPoint * 3 / 4;
constexpr Length kRuleSpace = 8 * kPoint;
constexpr Rgb kRuleColor = 0xB0B0B0;

// Code is part of a line unless it says otherwise (PDF 1.7, 14.8.4.4).
constexpr std::string_view kCodeRole = "Code";
constexpr std::string_view kBlockAttributes = "/A<</O/Layout/Placement/Block>>";

Length heightOf(const std::vector<TextLine>& lines, std::size_t first, std::size_t end) {
  Length height = 0;
  for (; first < end; ++first) {
    height += lines[first].height;
  }
  return height;
}

bool isBlank(const TextLine& line) { return line.firstPiece == line.endPiece; }

// How many of some lines have a text, and where the last of them ends.
struct Texts {
  std::size_t count;
  std::size_t end;
};

// The first texts, no more than those that stay together. Looks no further than about a page.
Texts firstTexts(const std::vector<TextLine>& lines, std::size_t first, std::size_t end) {
  constexpr std::size_t kFarthest = 100;
  Texts texts{0, first};
  end = std::min(end, first + kFarthest);
  for (; first < end && texts.count < kFewestLines; ++first) {
    texts = isBlank(lines[first]) ? texts : Texts{texts.count + 1, first + 1};
  }
  return texts;
}

// The lines at the beginning that stay together.
std::size_t firstLines(const std::vector<TextLine>& lines) {
  const Texts first = firstTexts(lines, 0, lines.size());
  const Texts rest = firstTexts(lines, first.end, lines.size());
  return std::max<std::size_t>(rest.count == 1 ? rest.end : first.end, 1);
}

// Blank lines of code are not drawn at the end of a page, nor at the beginning of the next.
std::size_t endOfDrawn(const std::vector<TextLine>& lines, std::size_t first, std::size_t end) {
  while (end < lines.size() && end > first + 1 && isBlank(lines[end - 1])) {
    --end;
  }
  return end;
}

std::size_t firstDrawn(const std::vector<TextLine>& lines, std::size_t first) {
  while (first < lines.size() && isBlank(lines[first])) {
    ++first;
  }
  return first;
}

// The padding above and below the lines of each page.
Length paddingOf(const BlockRule& rule) { return rule.shade ? rule.padding : 0; }

}  // namespace

void TextSetter::set(StyledText text, const BlockRule& rule, std::optional<OutlineEntry> entry) {
  const Length width = std::max(flow_.width() - 2 * rule.padding, kPoint);
  const LineRule lineRule{.width = width,
                          .leading = rule.leading,
                          .usual = rule.usual,
                          .keepsBlanks = rule.keepsBlanks,
                          .isKerned = rule.isKerned,
                          .isJustified = rule.align == document::Align::Justify,
                          .height = tallestPicture()};
  SetText set = setText(text, lineRule, shaper_);
  if (set.dividesWords && rule.smallestSize > 0 && makeWordsFit(text, rule, lineRule)) {
    set = setText(text, lineRule, shaper_);
  }
  // Code is on the left even where its first letter is read from right to left.
  const bool isMirrored = set.isRightToLeft && !rule.shade;
  Waiting block{std::move(text),
                std::move(set),
                rule,
                (isMirrored ? flow_.mirrored(flow_.left(), flow_.width()) : flow_.left()) + rule.padding,
                width,
                std::move(entry),
                std::exchange(markers_, {}),
                flow_.backdrops(),
                isMirrored};
  // Its place in the structure is before what comes next, also if that is drawn first.
  if (tagger_ != nullptr && !block.text.isEmpty()) {
    block.element = tagger_->tree().add(rule.role, rule.role == kCodeRole ? kBlockAttributes : "");
  }
  if (rule.staysWithNext) {
    return wait(std::move(block));
  }
  const std::size_t first = firstLines(block.set.lines);
  setWaiting(heightOf(block.set.lines, 0, first) + 2 * paddingOf(rule), rule.before);
  draw(block);
}

// Makes a text smaller if its longest word then has room. Returns whether it has.
bool TextSetter::makeWordsFit(StyledText& text, const BlockRule& rule, LineRule words) {
  words.keepsWords = true;
  words.isJustified = false;
  Length longest = 0;
  for (const TextLine& line : setText(text, words, shaper_).lines) {
    longest = std::max(longest, line.width);
  }
  const Length part = 1000 * words.width / longest;
  if (part * rule.usual.size < 1000 * rule.smallestSize) {
    return false;
  }
  for (StyledSpan& span : text.spans) {
    span.style.size = scaled(part, span.style.size);
    span.style.rise = scaled(part, span.style.rise);
  }
  return true;
}

// What waits never needs more than a page: it is drawn without the new block if a page does not hold both.
void TextSetter::wait(Waiting block) {
  waiting_.push_back(std::move(block));
  if (waiting_.size() > kMostWaiting || waitingHeight(0) > flow_.shape().textHeight()) {
    Waiting last = std::move(waiting_.back());
    waiting_.pop_back();
    setWaiting(0);
    waiting_.push_back(std::move(last));
  }
}

void TextSetter::setRule() {
  if (waiting_.empty()) {
    drawRule(ruleHere());
  } else {
    wait(ruleHere());
  }
}

TextSetter::Waiting TextSetter::ruleHere() {
  Waiting rule{};
  rule.rule.before = rule.rule.after = kRuleSpace;
  rule.left = flow_.left();
  rule.width = flow_.width();
  rule.markers = std::exchange(markers_, {});
  rule.backdrops = flow_.backdrops();
  rule.isRule = true;
  return rule;
}

// Of what waits from one of the blocks on, with the space after the last of it.
Length TextSetter::waitingHeight(Length gap, std::size_t first) const {
  Length height = 0;
  for (std::size_t i = first; i < waiting_.size(); ++i) {
    const Waiting& block = waiting_[i];
    height += std::max(gap, block.rule.before);
    height += block.isRule ? kRuleHeight : heightOf(block.set.lines, 0, block.set.lines.size());
    gap = block.rule.after;
  }
  return height + gap;
}

// A picture leaves room for some of the text around it, and for the headings before it.
Length TextSetter::tallestPicture() const {
  const Length all = flow_.shape().textHeight();
  const Length room = all - (waiting_.empty() ? 0 : waitingHeight(0) + kPictureSlack);
  return std::max(std::min(room, all * 9 / 10), all / 3);
}

void TextSetter::setWaiting(Length height, Length before) {
  if (waiting_.empty()) {
    return;
  }
  const Length after = waiting_.back().rule.after;
  const Length next = std::max<Length>(before - after, 0) + height;
  const auto heightFrom = [&](std::size_t first) { return waitingHeight(flow_.gap(), first) + next - flow_.gap(); };
  // As much as a page holds stays with the next block.
  std::size_t first = 0;
  while (first + 1 < waiting_.size() && heightFrom(first) > flow_.shape().textHeight()) {
    draw(waiting_[first++]);
  }
  flow_.keepTogether(heightFrom(first));
  for (; first < waiting_.size(); ++first) {
    draw(waiting_[first]);
  }
  waiting_.clear();
}

void TextSetter::space(Length height) {
  if (waiting_.empty()) {
    flow_.space(height);
  } else {
    Length& after = waiting_.back().rule.after;
    after = std::max(after, height);
  }
}

// How many of the lines are on the page that is open: all that fit, unless a single line were left alone on either
// page.
std::size_t TextSetter::linesForPage(const Waiting& block, std::size_t first) const {
  const std::vector<TextLine>& lines = block.set.lines;
  const std::size_t left = lines.size() - first;
  Length room = flow_.room() - 2 * paddingOf(block.rule);
  std::size_t fitting = 0;
  while (fitting < left && lines[first + fitting].height <= room) {
    room -= lines[first + fitting].height;
    ++fitting;
  }
  if (fitting == left) {
    return left;
  }
  std::size_t kept = fitting;
  while (kept > 0 && firstTexts(lines, first + kept, lines.size()).count == 1) {
    --kept;
  }
  const bool isTooFew = firstTexts(lines, first, first + kept).count < (first == 0 ? kFewestLines : 1);
  if (isTooFew) {
    // A whole page would not hold them better.
    return flow_.isAtTop() ? std::max<std::size_t>(fitting, 1) : 0;
  }
  return kept;
}

void TextSetter::drawRule(const Waiting& rule) {
  flow_.space(rule.rule.before);
  const Length top = flow_.take(kRuleHeight, rule.backdrops);
  pages_.canvas().area(rule.left, top, rule.width, kRuleHeight, kRuleColor);
  drawMarkersOf(rule.markers, top, false);
  flow_.space(rule.rule.after);
}

void TextSetter::draw(const Waiting& block) {
  if (block.isRule) {
    return drawRule(block);
  }
  std::optional<TextTags> tags;
  if (block.element.number != 0) {
    tags.emplace(*tagger_, block.element);
  }
  flow_.space(block.rule.before);
  const Length padding = paddingOf(block.rule);
  std::size_t line = 0;
  while (line < block.set.lines.size()) {
    const std::size_t count = linesForPage(block, line);
    if (count == 0) {
      flow_.endPage();
      continue;
    }
    std::size_t backdrops = block.backdrops;
    if (block.rule.shade) {
      flow_.beginBackdrop({block.left - padding, block.width + 2 * padding, *block.rule.shade});
      ++backdrops;
      flow_.take(padding);
    }
    const std::size_t end = line + count;
    const std::size_t drawn = block.rule.shade ? endOfDrawn(block.set.lines, line, end) : end;
    for (; line < drawn; ++line) {
      drawLine(block, line, backdrops, tags ? &*tags : nullptr);
    }
    line = block.rule.shade ? firstDrawn(block.set.lines, end) : end;
    if (block.rule.shade) {
      // A line that no page holds leaves no room.
      flow_.take(std::min(padding, std::max<Length>(flow_.room(), 0)));
      flow_.endBackdrop();
    }
    if (line < block.set.lines.size()) {
      flow_.endPage();
    }
  }
  if (tags) {
    tags->finish();
  }
  flow_.space(block.rule.after);
}

void TextSetter::drawLine(const Waiting& block, std::size_t line, std::size_t backdrops, TextTags* tags) {
  const TextLine& here = block.set.lines[line];
  const Length top = flow_.take(here.height, backdrops, block.isMirrored);
  if (line == 0) {
    drawMarkersOf(block.markers, top + here.baseline, block.isMirrored);
    if (block.entry) {
      outline_.add(block.entry->level, block.entry->text, pages_.placeAt(top));
      pages_.noteHeading(block.entry->level, block.entry->text);
    }
  }
  drawer_.draw(block.text, block.set, here, {block.left, top, block.width}, block.rule.align, tags);
}

void TextSetter::drawMarkers(Length baseline, bool isMirrored) {
  drawMarkersOf(std::exchange(markers_, {}), baseline, isMirrored);
}

void TextSetter::drawMarkersOf(const std::vector<Marker>& markers, Length baseline, bool isMirrored) {
  for (const Marker& marker : markers) {
    const ShortText text(marker.text, marker.style, shaper_, isMirrored);
    if (tagger_ != nullptr) {
      Element element = marker.element;
      tagger_->show(element);
      tagger_->tree().write(element);
    }
    const Length left = marker.right - text.width();
    text.draw(pages_.canvas(), isMirrored ? flow_.mirrored(left, text.width()) : left, baseline);
  }
}

}  // namespace scrivalen::typeset
