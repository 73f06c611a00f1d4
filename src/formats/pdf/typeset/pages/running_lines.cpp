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
constexpr Length kGap = 12 * kPoint;      // between two parts, at least
constexpr Length kImageGap = 6 * kPoint;  // between the picture and the text
constexpr std::size_t kMostBytes = 4096;  // of a text: no paper has room for as much
constexpr std::size_t kMostForms = 16;

bool isEmpty(const document::RunningText& line) {
  return std::all_of(line.begin(), line.end(), [](const auto& part) { return part.empty(); });
}

bool isSameOnAllPages(const RunningPart::Piece& piece) {
  return piece.field != RunningField::Page && piece.field != RunningField::Section;
}

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

void RunningLines::decorate(PageMaker& page) {
  const PageShape& shape = page.shape();
  const Length baseline = std::max(shape.top / 2, kSize);
  const Length taken = image_.picture ? drawImage(page, baseline) : 0;
  drawLine(page, header_, shape.left + taken, baseline);
  drawLine(page, footer_, shape.left, shape.height - std::max(shape.bottom / 2 - kSize / 2, kSize / 2));
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
  const Length right = shape.left + shape.textWidth();
  Parts parts = partsOf(line, page.number());
  const Length size = fit(parts, right - left);
  const std::array<Length, 3> widths = {widthOf(parts[0], size), widthOf(parts[1], size), widthOf(parts[2], size)};
  const Length first = left + (parts[0].isEmpty() ? 0 : widths[0] + kGap);
  const Length last = right - (parts[2].isEmpty() ? 0 : widths[2] + kGap) - widths[1];
  const Length middle = shape.left + (shape.textWidth() - widths[1]) / 2;
  draw(page, parts[0], left, baseline, size);
  draw(page, parts[1], std::max(std::min(middle, last), first), baseline, size);
  draw(page, parts[2], right - widths[2], baseline, size);
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
        // The number of pages mostly has as many digits as that of the page.
        case RunningField::Pages:
        case RunningField::Page: shown.text = number; break;
      }
    }
  }
  return parts;
}

Length RunningLines::widthOf(const RunningPart& part, Length size) {
  return part.isEmpty() ? 0 : ShortText(part.text(), style(size), shaper_).width();
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
void RunningLines::draw(PageMaker& page, const RunningPart& part, Length x, Length baseline, Length size) {
  const Pieces& pieces = part.pieces;
  for (auto at = pieces.begin(); at != pieces.end();) {
    const bool isTotal = at->field == RunningField::Pages;
    const bool isLast = isTotal && forms_.size() < kMostForms && std::all_of(at, pieces.end(), isSameOnAllPages);
    auto end = isLast ? pieces.end() : at + 1;
    while (!isTotal && end != pieces.end() && end->field != RunningField::Pages) {
      ++end;
    }
    const RunningPart run{Pieces(at, end)};
    const ShortText text(run.text(), style(size), shaper_);
    if (isTotal) {
      const int object = formOf(run.pieces);
      const std::string name = std::string(1, 'T').append(std::to_string(object));
      page.canvas().form(x, baseline, name, size * 1000 / kSize);
      page.useForm(name, object);
    } else {
      text.draw(page.canvas(), x, baseline);
    }
    x += text.width();
    at = end;
  }
}

int RunningLines::formOf(Pieces pieces) {
  std::string key;
  for (const RunningPart::Piece& piece : pieces) {
    key += piece.field == RunningField::Pages ? std::string(1, '\n') : piece.text;
  }
  const auto found = forms_.find(key);
  if (found != forms_.end()) {
    return found->second.object;
  }
  const int object = file_.newNumber();
  forms_.emplace(std::move(key), Form{object, std::move(pieces)});
  return object;
}

void RunningLines::finish(PageMaker& pages) {
  const std::string total = std::to_string(pages.count());
  for (auto& [key, form] : forms_) {
    for (RunningPart::Piece& piece : form.pieces) {
      piece.text = piece.field == RunningField::Pages ? total : piece.text;
    }
    writeNumberForm(file_, form.object, pages.fontResources(), shaper_,
                    {RunningPart{form.pieces}.text(), style(kSize), false});
  }
  if (isCut_) {
    warnings_.add(document::WarningCode::TextCut,
                  "texts of the header or footer, which has no room for them, shortened");
  }
}

}  // namespace scrivalen::typeset
