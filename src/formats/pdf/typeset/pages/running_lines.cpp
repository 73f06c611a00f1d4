#include "formats/pdf/typeset/pages/running_lines.h"

#include "formats/pdf/typeset/pages/number_form.h"

#include <algorithm>
#include <utility>

namespace scrivalen::typeset {
namespace {

using document::RunningField;

constexpr Length kSize = 8 * kPoint;
constexpr Length kLeastRunningSize = 5 * kPoint;
constexpr Length kUnit = kPoint / kUnitsPerPoint;
constexpr Rgb kColor = 0x555555;
constexpr int kLowestMainHeading = 2;
constexpr Length kLeastMargin = 2 * kSize;
constexpr Length kFromEdge = 4 * kPoint;  // of the paper
constexpr Length kFirstBaseline = 11 * kPoint;
constexpr Length kLastBaseline = 6 * kPoint;
constexpr Length kGap = 12 * kPoint;      // between two parts, at least
constexpr Length kImageGap = 6 * kPoint;  // between the picture and the text
constexpr std::size_t kMostBytes = 4096;  // of a text: no paper has room for as much
constexpr std::size_t kMostForms = 16;
constexpr std::size_t kUsualDigits = 3;  // of the number of pages
constexpr std::int64_t kFirstUsualPage = 100;
constexpr std::size_t kMostOwnBytes = 256;  // of a part that has a form of its own on a page
constexpr Length kMostSpare = 10 * kPoint;  // less than the gap

bool isEmpty(const document::RunningText& line) {
  return std::all_of(line.begin(), line.end(), [](const auto& part) { return part.empty(); });
}

bool isSameOnAllPages(const RunningPart::Piece& piece) {
  return piece.field != RunningField::Page && piece.field != RunningField::Section;
}

// Whether a text is words between blanks, of which it does not show that they are wider than others.
bool hasBlanksAround(std::string_view text) { return text.size() > 2 && text.starts_with(' ') && text.ends_with(' '); }

// The most that each part may take, so that all have room: one that needs less leaves the rest to the others.
Length shareOf(std::array<Length, 3> widths, Length room) {
  std::sort(widths.begin(), widths.end());
  Length count = static_cast<Length>(widths.size());
  for (const Length width : widths) {
    if (width * count > room) {
      return room / count;
    }
    room -= width;
    --count;
  }
  return widths.back();
}

}  // namespace

RunningLines::RunningLines(const document::FormatSettings& settings, document::OutputWarnings& warnings, PdfFile& file,
                           Shaper& shaper, PictureWriter& pictures, Family family)
    : warnings_(warnings),
      file_(file),
      shaper_(shaper),
      pictures_(pictures),
      font_(fontOf(family, false, false)),
      header_(document::runningTextOf(settings.text("header"))),
      footer_(document::runningTextOf(settings.text("footer"))),
      image_(document::headerImageOf(settings, warnings)),
      title_(settings.text("title")),
      date_(document::shownDate(settings)) {}

PageShape RunningLines::withRoom(PageShape shape) const {
  shape.top = isEmpty(header_) ? shape.top : std::max(shape.top, kLeastMargin);
  shape.bottom = isEmpty(footer_) ? shape.bottom : std::max(shape.bottom, kLeastMargin);
  return shape;
}

std::string RunningLines::kept(std::string_view text) {
  isCut_ = isCut_ || text.size() > kMostBytes;
  return cutToBytes(text, kMostBytes);
}

TextStyle RunningLines::style(Length size) const {
  TextStyle style;
  style.font = font_;
  style.size = size;
  style.color = kColor;
  return style;
}

void RunningLines::beginSection(std::string_view name) {
  section_ = name;
  hasSections_ = true;
  endsSection_ = false;
}

void RunningLines::endSection(bool isPageOpen) {
  section_ = isPageOpen ? section_ : std::string();
  endsSection_ = isPageOpen;
}

void RunningLines::noteHeading(int level, std::string_view text) {
  if (!hasSections_ && level <= kLowestMainHeading) {
    section_ = text;
  }
}

void RunningLines::decorate(PageMaker& page) {
  const PageShape& shape = page.shape();
  const Length baseline = std::max(shape.top / 2, kFirstBaseline);
  const Length taken = image_.picture ? drawImage(page, baseline) : 0;
  drawLine(page, header_, shape.left + taken, baseline);
  drawLine(page, footer_, shape.left, shape.height - std::max(shape.bottom / 2 - kSize / 2, kLastBaseline));
  if (std::exchange(endsSection_, false)) {
    section_.clear();
  }
}

// Draws the picture with its middle beside that of the text. Returns what it takes of the line.
Length RunningLines::drawImage(PageMaker& page, Length baseline) {
  if (imageObject_ == 0) {
    std::string reason;
    imageObject_ = pictures_.write(*image_.picture, reason).value_or(0);
    if (imageObject_ == 0) {
      warnings_.add(document::WarningCode::SomethingLeftOut, reason + " The header has no picture.");
      image_.picture.reset();
      return 0;
    }
  }
  const Length width = lengthOf(image_.widthPt);
  const Length height = lengthOf(image_.heightPt);
  if (width < kUnit || height < kUnit) {
    warnings_.add(document::WarningCode::SomethingLeftOut,
                  "the picture of the header, for which the page has no room, left out");
    image_.picture.reset();
    return 0;
  }
  const Length top = std::max<Length>(baseline - kSize / 3 - height / 2, 0);
  page.image({page.shape().left, top, width, height}, imageObject_, image_.picture->orientation());
  return width + kImageGap;
}

void RunningLines::drawLine(PageMaker& page, const document::RunningText& line, Length left, Length baseline) {
  if (isEmpty(line)) {
    return;
  }
  const PageShape& shape = page.shape();
  left = std::max(left, kFromEdge);
  const Length right = std::min(shape.left + shape.textWidth(), shape.width - kFromEdge);
  Parts parts = partsOf(line, page.number());
  const Length size = fit(parts, right - left);
  const std::array<Length, 3> widths = {widthOf(parts[0], size), widthOf(parts[1], size), widthOf(parts[2], size)};
  const Length first = left + (parts[0].isEmpty() ? 0 : widths[0] + kGap);
  const Length last = right - (parts[2].isEmpty() ? 0 : widths[2] + kGap) - widths[1];
  const Length middle = shape.left + (shape.textWidth() - widths[1]) / 2;
  const Length second = std::max(std::min(middle, last), first);
  const auto spareTo = [](Length end, Length limit) { return limit - end >= kMostSpare ? kMostSpare : 0; };
  const Length third = right - widths[2];
  draw(page, parts[0],
       {left, baseline, size, spareTo(left + widths[0], parts[1].isEmpty() ? third : second), document::Align::Left});
  draw(page, parts[1], {second, baseline, size, spareTo(second + widths[1], third), document::Align::Center});
  draw(page, parts[2], {third, baseline, size, 0, document::Align::Right});
}

RunningLines::Parts RunningLines::partsOf(const document::RunningText& line, std::int64_t pageNumber) {
  Parts parts;
  const std::string number = std::to_string(pageNumber);
  for (std::size_t i = 0; i < line.size(); ++i) {
    for (const document::RunningPiece& piece : line[i]) {
      RunningPart::Piece& shown = parts[i].pieces.emplace_back();
      shown.field = piece.field;
      switch (piece.field) {
        case RunningField::None: shown.text = kept(piece.text); break;
        case RunningField::Title: shown.text = kept(title_); break;
        case RunningField::Date: shown.text = kept(date_); break;
        case RunningField::Section: shown.text = kept(section_); break;
        case RunningField::Pages: shown.text.assign(std::max(number.size(), kUsualDigits), '0'); break;
        case RunningField::Page: shown.text = number; break;
      }
    }
  }
  return parts;
}

Length RunningLines::widthOf(std::string_view text, Length size) {
  return text.empty() ? 0 : ShortText(text, style(size), shaper_).width();
}

// Makes parts that have no room beside each other smaller, then shorter. Returns the size.
Length RunningLines::fit(Parts& parts, Length width) {
  const auto count = std::count_if(parts.begin(), parts.end(), [](const RunningPart& part) { return !part.isEmpty(); });
  const Length room = std::max<Length>(width - kGap * (count - 1), 0);
  const auto widths = [&](Length size) {
    return std::array<Length, 3>{widthOf(parts[0], size), widthOf(parts[1], size), widthOf(parts[2], size)};
  };
  const std::array<Length, 3> usual = widths(kSize);
  const Length whole = usual[0] + usual[1] + usual[2];
  if (whole <= room) {
    return kSize;
  }
  const Length size = std::max(kLeastRunningSize, kSize * room / whole / kUnit * kUnit);
  const std::array<Length, 3> smaller = widths(size);
  if (smaller[0] + smaller[1] + smaller[2] > room) {
    isCut_ = true;
    const Length share = shareOf(smaller, room);
    for (RunningPart& part : parts) {
      part.shorten(share, style(size), shaper_);
    }
  }
  return size;
}

// The number of pages and what follows it are in a form, so that they never overlap, unless what follows differs from
// page to page.
void RunningLines::draw(PageMaker& page, const RunningPart& part, Spot place) {
  if (drawOwnForm(page, part, place)) {
    return;
  }
  const Pieces& pieces = part.pieces;
  const auto isWhole = [&](Pieces::const_iterator at) {
    return forms_.size() < kMostForms && std::all_of(at, pieces.end(), isSameOnAllPages);
  };
  std::string before;
  for (auto at = pieces.begin(); at != pieces.end();) {
    const bool isTotal = at->field == RunningField::Pages;
    auto end = isTotal && isWhole(at) ? pieces.end() : at + 1;
    while (!isTotal && end != pieces.end() && end->field != RunningField::Pages) {
      ++end;
    }
    const RunningPart run{Pieces(at, end)};
    const ShortText text(run.text(), style(place.size), shaper_);
    if (isTotal) {
      const Length width = text.width() + widthOf(before, place.size);
      drawForm(page, {0, before, run.pieces, end == pieces.end() ? place.spare : 0}, place, width);
      place.x += width;
      before.clear();
    } else if (place.align == document::Align::Right && end != pieces.end() && isWhole(end) &&
               hasBlanksAround((end - 1)->text)) {
      before = (end - 1)->text;
      const ShortText start(RunningPart{Pieces(at, end - 1)}.text(), style(place.size), shaper_);
      start.draw(page.canvas(), place.x, place.baseline);
      place.x += start.width();
    } else {
      text.draw(page.canvas(), place.x, place.baseline);
      place.x += text.width();
    }
    at = end;
  }
}

// The number of pages of a short document has fewer digits than there is room for. So the first pages have the whole
// part as a form, which is set in the middle or on the right when the number is known. Returns whether it is drawn.
bool RunningLines::drawOwnForm(PageMaker& page, const RunningPart& part, const Spot& place) {
  const auto isTotal = [](const RunningPart::Piece& piece) { return piece.field == RunningField::Pages; };
  if (place.align == document::Align::Left || page.number() >= kFirstUsualPage ||
      std::none_of(part.pieces.begin(), part.pieces.end(), isTotal) || part.text().size() > kMostOwnBytes) {
    return false;
  }
  const Length width = widthOf(part, place.size);
  const bool isOnRight = place.align == document::Align::Right;
  const bool hasSpare = place.x >= kFromEdge + kMostSpare && (isOnRight || place.spare > 0);
  drawForm(page, {0, {}, part.pieces, hasSpare ? kMostSpare : 0, place.align}, place, isOnRight ? width : width / 2);
  return true;
}

// A form has its origin where the number's place is fixed.
void RunningLines::drawForm(PageMaker& page, const Form& form, const Spot& place, Length width) {
  const int object = objectOf(form);
  const std::string name = std::string(1, 'T').append(std::to_string(object));
  const bool isAtStart = form.before.empty() && form.align == document::Align::Left;
  page.canvas().form(place.x + (isAtStart ? 0 : width), place.baseline, name, place.size * 1000 / kSize);
  page.useForm(name, object);
}

int RunningLines::objectOf(const Form& form) {
  std::string key = std::to_string(static_cast<int>(form.align)).append("\n");
  key.append(std::to_string(form.spare)).append("\n").append(form.before);
  for (const RunningPart::Piece& piece : form.pieces) {
    key += piece.field == RunningField::Pages ? std::string(1, '\n') : std::string();
    key += piece.text;
  }
  auto& forms = form.align == document::Align::Left ? forms_ : ownForms_;
  const auto [found, isNew] = forms.try_emplace(std::move(key), form);
  if (isNew) {
    found->second.object = file_.newNumber();
  }
  return found->second.object;
}

// What its room is too narrow for is condensed.
void RunningLines::writeForm(PageMaker& pages, const Form& form, const std::string& total) {
  RunningPart part{form.pieces};
  const Length before = widthOf(form.before, kSize);
  const Length room = before + widthOf(part, kSize);
  for (RunningPart::Piece& piece : part.pieces) {
    piece.text = piece.field == RunningField::Pages ? total : piece.text;
  }
  const Length number = widthOf(part, kSize);
  const Length free = room - before - number;
  const TextStyle own = style(kSize);
  const bool isRightAligned = form.align == document::Align::Right || !form.before.empty();
  NumberForm written{part.text(), own, isRightAligned, form.before, own};
  written.isCentered = form.align == document::Align::Center;
  written.leaderBegin = form.before.empty() ? 0 : -number - before - std::max<Length>(free, 0) / 2;
  written.scale = -free > form.spare ? 1000 * (room + form.spare) / (before + number) : 1000;
  writeNumberForm(file_, form.object, pages.fontResources(), shaper_, written);
}

void RunningLines::finish(PageMaker& pages) {
  const std::string total = std::to_string(pages.count());
  for (const auto* forms : {&forms_, &ownForms_}) {
    for (const auto& [key, form] : *forms) {
      writeForm(pages, form, total);
    }
  }
  if (isCut_) {
    warnings_.add(document::WarningCode::TextCut,
                  "texts of the header or footer, which has no room for them, shortened");
  }
}

}  // namespace scrivalen::typeset
