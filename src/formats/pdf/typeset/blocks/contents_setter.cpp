#include "formats/pdf/typeset/blocks/contents_setter.h"

#include "formats/pdf/typeset/pages/number_form.h"

#include <algorithm>

namespace scrivalen::typeset {
namespace {

constexpr Length kIndent = 14 * kPoint;  // of each level
constexpr Length kHang = 7 * kPoint;     // of the lines after the first of an entry
constexpr Length kEntryLeading = 1350;
constexpr int kMostDigits = 5;  // of a page's number
constexpr std::string_view kDot = ". ";

TextStyle styleOfDots(TextStyle style) {
  style.font = static_cast<FontId>(style.font & ~fontOf(Family::Serif, true, false));
  return style;
}

}  // namespace

void ContentsSetter::add(int level, std::string_view id, std::string_view text, const TextStyle& style) {
  outermost_ = outermost_ == 0 ? level : outermost_;
  const int depth = std::max(level - outermost_, 0);
  const bool isOuter = depth == 0;
  Entry entry{id, style, {}, flow_.left() + kIndent * depth, 0};
  entry.style.font = static_cast<FontId>(isOuter ? style.font | fontOf(Family::Serif, true, false) : style.font);
  entry.text.links.push_back({std::string(1, '#').append(id), 0});
  entry.style.link = 0;
  entry.text.add(text, entry.style);
  const Length right = flow_.left() + flow_.width();
  entry.width = std::max(right - entry.left - widthOfNumber(entry.style), kPoint);
  const SetText set = setLines(entry);
  isMirrored_ = set.isRightToLeft;
  texts_.setWaiting(set.lines.front().height);
  flow_.space(isOuter ? 4 * kPoint : 0);
  // An entry of the outermost level is not the last of a page.
  flow_.keepTogether(set.height() + (isOuter ? set.lines.front().height : 0));
  if (tagger_ != nullptr) {
    TextTags tags(*tagger_, tagger_->tree().add("TOCI"));
    drawEntry(entry, set, &tags);
    tags.finish();
  } else {
    drawEntry(entry, set, nullptr);
  }
}

SetText ContentsSetter::setLines(const Entry& entry) {
  const auto set = [&](Length width) {
    return setText(entry.text, {.width = width, .leading = kEntryLeading, .usual = entry.style}, shaper_);
  };
  SetText lines = set(entry.width);
  return lines.lines.size() == 1 ? lines : set(std::max(entry.width - kHang, kPoint));
}

void ContentsSetter::drawEntry(const Entry& entry, const SetText& set, TextTags* tags) {
  for (const TextLine& line : set.lines) {
    const Length top = flow_.take(line.height);
    const Length left = entry.left + (&line == &set.lines.front() ? 0 : kHang);
    drawer_.draw(entry.text, set, line, {placeOf(left, entry.width), top, entry.width}, document::Align::Auto, tags);
    if (&line == &set.lines.back()) {
      drawNumber(entry, line, left + line.width, top, tags);
    }
  }
}

// With the dots before it.
void ContentsSetter::drawNumber(const Entry& entry, const TextLine& line, Length end, Length top, TextTags* tags) {
  const Length baseline = top + line.baseline;
  const Length width = widthOfNumber(entry.style);
  const Length right = flow_.left() + flow_.width();
  if (tags != nullptr) {
    tags->showArtifact();
  }
  drawLeader(end, right - width, baseline, entry.style);
  // With tags the dots have a form of their own: they are no part of the text.
  const int leader = tags != nullptr ? drawForm(placeOf(right, 0), baseline) : 0;
  if (tags != nullptr) {
    tags->beginForm();
  }
  const int form = drawForm(placeOf(right, 0), baseline);
  if (tags != nullptr) {
    tags->endForm();
  }
  drawLinkOfNumber(entry.text, entry.style.link, {placeOf(right - width, width), top, width, line.height}, tags);
  numbers_.push_back({form, leader, entry.style, std::string(entry.id), isMirrored_});
}

// Where something is in an entry, which may be read from right to left.
Length ContentsSetter::placeOf(Length left, Length width) const {
  return isMirrored_ ? flow_.mirrored(left, width) : left;
}

void ContentsSetter::drawLinkOfNumber(const StyledText& entry, int link, const Box& box, TextTags* tags) {
  if (pages_.takesLink(entry.links[static_cast<std::size_t>(link)].address)) {
    const int annotation = pages_.link(box, entry, link, tags != nullptr ? tags->newLinkKey() : -1);
    if (tags != nullptr) {
      tags->addLink(annotation);
    }
  }
}

// Draws a form that is written last. Returns its number.
int ContentsSetter::drawForm(Length x, Length baseline) {
  const int form = file_.newNumber();
  const std::string name = std::string(1, 'N').append(std::to_string(form));
  pages_.canvas().form(x, baseline, name);
  pages_.useForm(name, form);
  return form;
}

Length ContentsSetter::widthOfNumber(const TextStyle& style) { return kMostDigits * drawer_.widthOf("0", style); }

// The dots of all lines are below each other. Those beside the number come with it.
void ContentsSetter::drawLeader(Length begin, Length end, Length baseline, const TextStyle& style) {
  const TextStyle dots = styleOfDots(style);
  const std::string text = dotsFor(end - begin, dots);
  if (!text.empty()) {
    const Length width = drawer_.widthOf(text, dots);
    drawer_.drawShort(placeOf(end - width, width), baseline, dots, text);
  }
}

// The dots that have room in a width, with as much space as a dot beside them.
std::string ContentsSetter::dotsFor(Length width, const TextStyle& style) {
  const Length dot = drawer_.widthOf(kDot, style);
  std::string text;
  for (Length count = (width - dot) / dot; count > 0; --count) {
    text += kDot;
  }
  return text;
}

void ContentsSetter::finish(const NamedPlaces& places) {
  for (const Number& number : numbers_) {
    const Place* const place = places.find(number.id);
    const std::string digits = place == nullptr ? std::string() : std::to_string(place->pageNumber);
    const TextStyle dots = styleOfDots(number.style);
    const Length width = widthOfNumber(number.style);
    const std::string leader = dotsFor(width - drawer_.widthOf(digits, number.style), dots);
    const Length begin = number.isMirrored ? width - drawer_.widthOf(leader, dots) : -width;
    if (number.leader != 0) {
      writeNumberForm(file_, number.leader, pages_.fontResources(), shaper_,
                      {{}, number.style, !number.isMirrored, leader, dots, begin});
    }
    writeNumberForm(
        file_, number.form, pages_.fontResources(), shaper_,
        {digits, number.style, !number.isMirrored, number.leader != 0 ? std::string() : leader, dots, begin});
  }
}

}  // namespace scrivalen::typeset
