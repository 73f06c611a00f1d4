#include "formats/pdf/typeset/blocks/text_setter.h"

#include <algorithm>
#include <utility>

namespace scrivalen::typeset {
namespace {

// The lines of a paragraph that are on one page at least.
constexpr std::size_t kFewestLines = 2;

Length heightOf(const std::vector<TextLine>& lines, std::size_t first, std::size_t end) {
  Length height = 0;
  for (; first < end; ++first) {
    height += lines[first].height;
  }
  return height;
}

// The lines at the beginning that stay together.
std::size_t firstLines(const std::vector<TextLine>& lines, bool staysWhole) {
  return staysWhole || lines.size() <= kFewestLines + 1 ? lines.size() : kFewestLines;
}

}  // namespace

void TextSetter::set(StyledText text, const BlockRule& rule, std::optional<OutlineEntry> entry) {
  const Length width = std::max(flow_.width() - 2 * rule.padding, kPoint);
  SetText set = setText(text,
                        {.width = width,
                         .leading = rule.leading,
                         .usual = rule.usual,
                         .keepsBlanks = rule.keepsBlanks,
                         .isKerned = rule.isKerned,
                         .isJustified = rule.align == document::Align::Justify,
                         .height = flow_.shape().textHeight() * 9 / 10},
                        shaper_);
  Waiting block{std::move(text),
                std::move(set),
                rule,
                flow_.left() + rule.padding,
                width,
                std::move(entry),
                std::exchange(markers_, {})};
  if (rule.staysWithNext) {
    waiting_.push_back(std::move(block));
    if (waiting_.size() > kMostWaiting) {
      setWaiting(0);
    }
    return;
  }
  const std::size_t first = firstLines(block.set.lines, false);
  setWaiting(rule.before + heightOf(block.set.lines, 0, first));
  draw(block);
}

void TextSetter::setWaiting(Length height) {
  const std::vector<Waiting> waiting = std::exchange(waiting_, {});
  Length whole = height;
  for (const Waiting& block : waiting) {
    whole += std::max(block.rule.before, block.rule.after) + heightOf(block.set.lines, 0, block.set.lines.size());
  }
  if (!waiting.empty()) {
    flow_.keepTogether(whole);
  }
  for (const Waiting& block : waiting) {
    draw(block);
  }
}

// How many of the lines are on the page that is open: all that fit, unless a single line were left alone on either
// page.
std::size_t TextSetter::linesForPage(const std::vector<TextLine>& lines, std::size_t first) const {
  const std::size_t left = lines.size() - first;
  Length room = flow_.room();
  std::size_t fitting = 0;
  while (fitting < left && lines[first + fitting].height <= room) {
    room -= lines[first + fitting].height;
    ++fitting;
  }
  if (fitting == left) {
    return left;
  }
  const std::size_t kept = left - fitting < kFewestLines ? left - std::min(left, kFewestLines) : fitting;
  const bool isTooFew = kept < (first == 0 ? kFewestLines : 1);
  if (isTooFew) {
    // A whole page would not hold them better.
    return flow_.isAtTop() ? std::max<std::size_t>(fitting, 1) : 0;
  }
  return kept;
}

void TextSetter::draw(const Waiting& block) {
  flow_.space(block.rule.before);
  std::size_t line = 0;
  while (line < block.set.lines.size()) {
    const std::size_t count = linesForPage(block.set.lines, line);
    if (count == 0) {
      flow_.endPage();
      continue;
    }
    for (const std::size_t end = line + count; line < end; ++line) {
      const TextLine& here = block.set.lines[line];
      const Length top = flow_.take(here.height);
      if (line == 0) {
        drawMarkersOf(block.markers, top + here.baseline);
        if (block.entry) {
          outline_.add(block.entry->level, block.entry->text, pages_.placeAt(top));
        }
      }
      drawer_.draw(block.text, block.set, here, {block.left, top, block.width}, block.rule.align);
    }
    if (line < block.set.lines.size()) {
      flow_.endPage();
    }
  }
  flow_.space(block.rule.after);
}

void TextSetter::drawMarkers(Length baseline) { drawMarkersOf(std::exchange(markers_, {}), baseline); }

void TextSetter::drawMarkersOf(const std::vector<Marker>& markers, Length baseline) {
  for (const Marker& marker : markers) {
    const Length width = drawer_.widthOf(marker.text, marker.style);
    drawer_.drawShort(marker.right - width, baseline, marker.style, marker.text);
  }
}

}  // namespace scrivalen::typeset
