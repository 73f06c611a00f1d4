#include "formats/pdf/layout/pages.h"

#include "formats/pdf/objects/piece.h"
#include "system/process/stop.h"

#include <stdexcept>

namespace scrivalen::pdf {

using PDFStuffer::Form;

namespace {

template <typename Cache, typename Make>
const auto& lookUp(Cache& cache, std::uint32_t index, Make make) {
  auto& cached = cache[index % cache.size()];
  if (!cached.known || cached.index != index) {
    cached = {true, index, make()};
  }
  return cached.value;
}

}  // namespace

Pages::Pages(PDFStuffer::CPDFFile& file, const FontTable& fonts, const Pool<CPDFtextStyle>& styles,
             const Pool<_RGB_COLOR>& backgrounds, const Paper& paper, Form form)
    : file_(file),
      fonts_(fonts),
      styles_(styles),
      backgrounds_(backgrounds),
      paper_(paper),
      form_(form),
      offPaperCheck_(paper) {}

void Pages::begin(Purpose purpose) {
  purpose_ = purpose;
  const auto keeping = purpose == Purpose::Writing ? PageText::Keeping::Lines : PageText::Keeping::Nothing;
  lines_ = PageText(keeping);
  started_ = 0;
}

void Pages::addPage() {
  pages_.push_back(file_.AddPage({}));
  for (const CPDFfontIdx& entry : fonts_.entries()) {
    pages_.back()->AddFont(*entry.font);
  }
}

void Pages::startPage() {
  if (scrivalen::isStopRequested()) {
    throw std::runtime_error("The host has stopped the report");
  }
  if (purpose_ == Purpose::Writing && file_.hasLostBytes()) {
    throw LostBytes();
  }
  if (started_ == pages_.size()) {
    addPage();
  }
  current_ = pages_[started_++];
  lines_.line("BT");
  lines_.line(PDFStuffer::Piece().number(kLeftMargin).text(" ").number(paper_.top()).text(" Td").view());
}

void Pages::finishPage() {
  lines_.line("ET");
  if (purpose_ == Purpose::Writing) {
    file_.saveThrough(current_->content(), lines_.text());
  }
  lines_.clear();
}

int Pages::resolvedFont(const CPDFtextStyle& style) const {
  const bool unknown = form_ == Form::Conforming && !fonts_.has(style.font) && !fonts_.entries().empty();
  return fonts_.variantOf(unknown ? fonts_.entries().front().id : style.font, style.bold, false);
}

const DrawStyle& Pages::drawStyle(std::uint32_t style) {
  return lookUp(drawStyles_, style, [&] {
    const CPDFtextStyle& wanted = styles_[style];
    const int font = resolvedFont(wanted);
    return DrawStyle(wanted, font, fonts_.widths(font, wanted.size, wanted.bold, form_), form_);
  });
}

const std::string& Pages::background(std::uint32_t color) {
  return lookUp(fills_, color, [&] { return fillColor(backgrounds_[color], form_); });
}

}  // namespace scrivalen::pdf
