#include "formats/pdf/typeset/blocks/contents_setter.h"

#include "formats/pdf/typeset/pages/number_form.h"

#include <algorithm>

namespace scrivalen::typeset {
namespace {

constexpr Length kIndent = 14 * kPoint;  // of each level
constexpr Length kEntryLeading = 1350;
constexpr int kMostDigits = 5;  // of a page's number
constexpr std::string_view kDot = ". ";

}  // namespace

void ContentsSetter::add(int level, std::string_view id, std::string_view text, const TextStyle& style) {
  StyledText entry;
  const bool isOuter = level == 1;
  TextStyle own = style;
  own.font = static_cast<FontId>(isOuter ? own.font | fontOf(Family::Serif, true, false) : own.font);
  entry.links.emplace_back(1, '#').append(id);
  own.link = 0;
  entry.add(text, own);
  const Length numberWidth = kMostDigits * drawer_.widthOf("0", own);
  const Length left = flow_.left() + kIndent * (level - 1);
  const Length right = flow_.left() + flow_.width();
  const Length width = std::max(right - left - numberWidth, kPoint);
  const SetText set = setText(entry, {.width = width, .leading = kEntryLeading, .usual = own}, shaper_);
  const std::vector<TextLine>& lines = set.lines;
  texts_.setWaiting(lines.front().height);
  flow_.space(isOuter ? 4 * kPoint : 0);
  for (const TextLine& line : lines) {
    const Length top = flow_.take(line.height);
    drawer_.draw(entry, set, line, {left, top, width}, document::Align::Left);
    if (&line == &lines.back()) {
      const Length baseline = top + line.baseline;
      drawLeader(left + line.width, right - numberWidth, baseline, own);
      const int form = file_.newNumber();
      const std::string name = std::string(1, 'N').append(std::to_string(form));
      pages_.canvas().form(right, baseline, name);
      pages_.useForm(name, form);
      pages_.link({right - numberWidth, top, numberWidth, line.height}, entry.links.front());
      numbers_.push_back({form, own, std::string(id)});
    }
  }
}

// The dots of all lines are below each other.
void ContentsSetter::drawLeader(Length begin, Length end, Length baseline, const TextStyle& style) {
  TextStyle dots = style;
  dots.font = static_cast<FontId>(dots.font & ~fontOf(Family::Serif, true, false));
  const Length dot = drawer_.widthOf(kDot, dots);
  const Length count = (end - begin - dot) / dot;
  std::string text;
  for (Length i = 0; i < count; ++i) {
    text += kDot;
  }
  if (count > 0) {
    drawer_.drawShort(end - drawer_.widthOf(text, dots), baseline, dots, text);
  }
}

void ContentsSetter::finish(const NamedPlaces& places) {
  for (const Number& number : numbers_) {
    const Place* const place = places.find(number.id);
    writeNumberForm(file_, number.form, pages_.fontResources(), shaper_,
                    {place == nullptr ? std::string() : std::to_string(place->pageNumber), number.style, true});
  }
}

}  // namespace scrivalen::typeset
