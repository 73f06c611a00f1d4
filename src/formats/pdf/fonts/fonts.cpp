#include "formats/pdf/fonts/fonts.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace scrivalen::pdf {
namespace {

struct BoldFace {
  PDF_STANDARD_FONT_FACE base;
  PDF_STANDARD_FONT_FACE bold;
};

// The bold variant of any other face is Times-Bold.
constexpr BoldFace kBoldFaces[] = {{PDF_TIMES_ROMAN, PDF_TIMES_BOLD},
                                   {PDF_HELVETICA, PDF_HELVETICA_BOLD},
                                   {PDF_COURIER, PDF_COURIER_BOLD},
                                   {PDF_SYMBOL, PDF_SYMBOL},
                                   {PDF_ARIAL, PDF_HELVETICA_BOLD}};

PDF_STANDARD_FONT_FACE boldFaceOf(PDF_STANDARD_FONT_FACE face) {
  const auto found = std::find_if(std::begin(kBoldFaces), std::end(kBoldFaces),
                                  [face](const BoldFace& row) { return row.base == face; });
  return found == std::end(kBoldFaces) ? PDF_TIMES_BOLD : found->bold;
}

// The average character width is the font size divided by these.
struct WidthDivisors {
  double regular;
  double bold;
};

constexpr int kLargeTimes = 14;  // points; from this size on bold Times is estimated narrower

WidthDivisors widthDivisors(PDF_STANDARD_FONT_FACE face, int size) {
  switch (face) {
    case PDF_TIMES_ROMAN: return {2.01, size < kLargeTimes ? 1.93 : 2.0};
    case PDF_HELVETICA:
    case PDF_ARIAL: return {2.25, 2.09};
    case PDF_COURIER: return {1.45, 1.35};
    case PDF_SYMBOL: return {2.2, 2.2};
    default: return {1.6, 1.5};
  }
}

CPDFfontIdx makeFont(PDFStuffer::CPDFFile& file, int id, PDF_STANDARD_FONT_FACE face, PDF_STANDARD_FONT_FACE drawn) {
  const std::string number = std::to_string(id);
  CPDFfontIdx entry;
  entry.id = id;
  entry.face = face;
  entry.resourceName = u"F";
  entry.resourceName.append(number.begin(), number.end());
  entry.font = file.AddStandardFont(entry.resourceName, drawn);
  entry.font->encodingName = u"WinAnsiEncoding";
  return entry;
}

}  // namespace

void FontTable::add(PDFStuffer::CPDFFile& file, int id, PDF_STANDARD_FONT_FACE face) {
  append(makeFont(file, id, face, face));
}

void FontTable::append(CPDFfontIdx entry) {
  hasSymbolic_ = hasSymbolic_ || PDFStuffer::isSymbolic(entry.face);
  const CPDFfontIdx& added = entries_.emplace_back(std::move(entry));
  indexOfId_.try_emplace(added.id, entries_.size() - 1);
  idOfVariant_.try_emplace({added.face, added.bold, added.italic}, added.id);
}

void FontTable::addBoldVariants(PDFStuffer::CPDFFile& file) {
  const std::size_t registered = entries_.size();
  int id = 0;
  for (std::size_t i = 0; i < registered; ++i) {
    const PDF_STANDARD_FONT_FACE face = entries_[i].face;
    id = unusedIdFrom(id + 1);
    CPDFfontIdx variant = makeFont(file, id, face, boldFaceOf(face));
    variant.bold = true;
    append(std::move(variant));
  }
}

// Candidates begin after the number of fonts. Used numbers are never freed, so a caller that needs many can continue
// after the last one.
int FontTable::unusedIdFrom(int least) const {
  int id = std::max(static_cast<int>(entries_.size()) + 1, least);
  while (indexOfId_.contains(id)) {
    ++id;
  }
  return id;
}

const CPDFfontIdx* FontTable::find(int id) const {
  const auto found = indexOfId_.find(id);
  return found == indexOfId_.end() ? nullptr : &entries_[found->second];
}

bool FontTable::isSymbolic(int font, bool bold) const {
  if (!hasSymbolic_) {
    return false;
  }
  const CPDFfontIdx* const known = find(font);
  const PDF_STANDARD_FONT_FACE face = (known ? *known : entries_.front()).face;
  return PDFStuffer::isSymbolic(bold ? boldFaceOf(face) : face);
}

int FontTable::variantOf(int font, bool bold, bool italic) const {
  const CPDFfontIdx* const base = bold || italic ? find(font) : nullptr;
  if (!base) {
    return font;
  }
  const auto found = idOfVariant_.find({base->face, bold, italic});
  return found == idOfVariant_.end() ? font : found->second;
}

float FontTable::averageWidth(int font, int size, bool bold) const {
  const CPDFfontIdx* const entry = find(font);
  if (!entry) {
    return static_cast<float>(size) * 2.0f / 3.0f;
  }
  const WidthDivisors divisors = widthDivisors(entry->face, size);
  return static_cast<float>(size / (bold ? divisors.bold : divisors.regular));
}

CharWidths FontTable::widths(int font, int size, bool bold, PDFStuffer::Form form) const {
  const CPDFfontIdx* const entry = form == PDFStuffer::Form::Conforming ? find(font) : nullptr;
  return entry ? CharWidths(advanceWidths(entry->font->face), size) : CharWidths(averageWidth(font, size, bold));
}

}  // namespace scrivalen::pdf
