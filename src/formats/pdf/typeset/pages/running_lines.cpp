#include "formats/pdf/typeset/pages/running_lines.h"

#include "formats/pdf/typeset/pages/number_form.h"

#include <algorithm>
#include <vector>

namespace scrivalen::typeset {
namespace {

constexpr Length kSize = 8 * kPoint;
constexpr Rgb kColor = 0x555555;
constexpr std::string_view kTotalName = "Total";

bool isEmpty(const document::RunningText& line) {
  return std::all_of(line.begin(), line.end(), [](const auto& part) { return part.empty(); });
}

}  // namespace

RunningLines::RunningLines(const document::FormatSettings& settings, PdfFile& file, FontSet& fonts, Shaper& shaper,
                           Family family)
    : file_(file),
      fonts_(fonts),
      shaper_(shaper),
      font_(fontOf(family, false, false)),
      header_(document::runningTextOf(settings.text("header"))),
      footer_(document::runningTextOf(settings.text("footer"))),
      title_(settings.text("title")),
      date_(document::shownDate(settings)) {}

void RunningLines::decorate(PageMaker& page) {
  const PageShape& shape = page.shape();
  drawLine(page, header_, std::max(shape.top / 2, kSize));
  drawLine(page, footer_, shape.height - std::max(shape.bottom / 2 - kSize / 2, kSize / 2));
}

void RunningLines::drawLine(PageMaker& page, const document::RunningText& line, Length baseline) {
  if (isEmpty(line)) {
    return;
  }
  const PageShape& shape = page.shape();
  for (std::size_t part = 0; part < line.size(); ++part) {
    const std::vector<Piece> pieces = piecesOf(line[part], page.number());
    Length width = 0;
    for (const Piece& piece : pieces) {
      width += piece.width;
    }
    draw(page, pieces, shape.left + (shape.textWidth() - width) * static_cast<Length>(part) / 2, baseline);
  }
}

// The space for the number of pages is that of the page's own number: the total has mostly as many digits.
std::vector<RunningLines::Piece> RunningLines::piecesOf(const std::vector<document::RunningPiece>& pieces,
                                                        std::int64_t pageNumber) {
  std::vector<Piece> result;
  const std::string number = std::to_string(pageNumber);
  for (const document::RunningPiece& piece : pieces) {
    Piece& drawn = result.emplace_back();
    switch (piece.field) {
      case document::RunningField::None: drawn.text = piece.text; break;
      case document::RunningField::Title: drawn.text = title_; break;
      case document::RunningField::Date: drawn.text = date_; break;
      case document::RunningField::Section: drawn.text = section_; break;
      case document::RunningField::Pages: drawn.isTotal = true; [[fallthrough]];
      case document::RunningField::Page: drawn.text = number; break;
    }
    for (const ShapedRun& run : shaper_.shape(drawn.text, {font_, kSize})) {
      drawn.width += run.width;
    }
  }
  return result;
}

void RunningLines::draw(PageMaker& page, const std::vector<Piece>& pieces, Length x, Length baseline) {
  bool hasTotal = false;
  for (const Piece& piece : pieces) {
    if (piece.isTotal) {
      total_ = total_ == 0 ? file_.newNumber() : total_;
      page.canvas().form(x, baseline, kTotalName);
      hasTotal = true;
    } else {
      Length runX = x;
      for (const ShapedRun& run : shaper_.shape(piece.text, {font_, kSize})) {
        page.canvas().glyphs(runX, baseline, run.font, kSize, kColor, run.content);
        runX += run.width;
      }
    }
    x += piece.width;
  }
  if (hasTotal) {
    page.useForm(kTotalName, total_);
  }
}

void RunningLines::finish(PageMaker& pages) {
  if (total_ != 0) {
    writeNumberForm(file_, total_, pages.fontResources(), fonts_, {font_, kSize, kColor, pages.count(), false});
  }
}

}  // namespace scrivalen::typeset
