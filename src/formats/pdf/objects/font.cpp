#include "formats/pdf/objects/font.h"

#include "formats/pdf/objects/values.h"

#include <array>

namespace PDFStuffer {
namespace {

constexpr const char16_t* kBadSubtype = u"BADFont";

// The gap at index 2 is kept for compatibility with existing files.
constexpr std::array kSubtypes = {u"Type0", u"Type1",    kBadSubtype,     u"MMType1",
                                  u"Type3", u"TrueType", u"CIDFontType0", u"CIDFontType2"};

constexpr std::int32_t kType1 = 1;

struct BaseFont {
  const char16_t* name;
  const char16_t* standard;  // one of the 14 standard fonts (PDF 1.4, 5.5.1); any other font needs a Widths entry
};

constexpr std::array<BaseFont, 19> kBaseFonts = {{{u"Times-Roman", u"Times-Roman"},
                                                  {u"Times-Bold", u"Times-Bold"},
                                                  {u"Times-Italic", u"Times-Italic"},
                                                  {u"Times-BoldItalic", u"Times-BoldItalic"},
                                                  {u"Helvetica", u"Helvetica"},
                                                  {u"Helvetica-Bold", u"Helvetica-Bold"},
                                                  {u"Helvetica-Oblique", u"Helvetica-Oblique"},
                                                  {u"Helvetica-BoldOblique", u"Helvetica-BoldOblique"},
                                                  {u"Courier", u"Courier"},
                                                  {u"Courier-Bold", u"Courier-Bold"},
                                                  {u"Courier-Oblique", u"Courier-Oblique"},
                                                  {u"Courier-BoldOblique", u"Courier-BoldOblique"},
                                                  {u"Symbol", u"Symbol"},
                                                  {u"ZapfDingbats", u"ZapfDingbats"},
                                                  {u"Arial", u"Helvetica"},
                                                  {u"Helvetica-Italic", u"Helvetica-Oblique"},
                                                  {u"Helvetica-BoldItalic", u"Helvetica-BoldOblique"},
                                                  {u"Courier-Italic", u"Courier-Oblique"},
                                                  {u"Courier-BoldItalic", u"Courier-BoldOblique"}}};

const char16_t* subtypeName(std::int32_t subtype) {
  const auto index = static_cast<std::uint32_t>(subtype);
  return index < kSubtypes.size() ? kSubtypes[index] : kBadSubtype;
}

bool hasBaseFont(std::int32_t subtype) { return subtype == 1 || (subtype >= 5 && subtype <= 7); }

const char16_t* baseFontName(PDF_STANDARD_FONT_FACE face, Form form) {
  const auto index = static_cast<std::uint32_t>(face);
  const BaseFont& font = index < kBaseFonts.size() ? kBaseFonts[index] : kBaseFonts[PDF_HELVETICA];
  return form == Form::Conforming ? font.standard : font.name;
}

// A reference to an object known only by its number.
class NumberedRef final : public CPDFObject {
 public:
  explicit NumberedRef(std::uint32_t number) { numbered_.objectNumber = number; }
  void Write(CPDFMemBlock& out) override { CPDFIndirectRef(&numbered_).Write(out); }

 private:
  CPDFName numbered_;
};

}  // namespace

void CPDFFontBase::Write(CPDFMemBlock& out) {
  if (toUnicode != 0) {
    add(u"ToUnicode", std::make_unique<NumberedRef>(toUnicode));
  }
  CPDFDictionary::Write(out);
}

CPDFFont::CPDFFont(std::uint32_t& nextObjectNumber) {
  objectNumber = nextObjectNumber++;
  addName(u"Type", u"Font");
}

void CPDFFont::Write(CPDFMemBlock& out) {
  addName(u"Subtype", subtypeName(subtype));
  if (!name.empty()) {
    addName(u"Name", name);
  }
  if (hasBaseFont(subtype)) {
    addName(u"BaseFont", baseFont);
  }
  if (firstChar != kNoChar && lastChar != kNoChar) {
    addNumber(u"FirstChar", static_cast<std::int32_t>(firstChar));
    addNumber(u"LastChar", static_cast<std::int32_t>(lastChar));
  }
  if (widths) {
    add(u"Widths", std::move(widths));
  }
  if (fontDescriptor != 0) {
    add(u"FontDescriptor", std::make_unique<NumberedRef>(fontDescriptor));
  }
  if (!encodingName.empty()) {
    addName(u"Encoding", encodingName);
  } else if (encoding) {
    add(u"Encoding", std::move(encoding));
  }
  CPDFFontBase::Write(out);
}

bool isSymbolic(PDF_STANDARD_FONT_FACE face) { return face == PDF_SYMBOL || face == PDF_ZAPFDINGBATS; }

void CPDFStandardFont::Write(CPDFMemBlock& out) {
  subtype = kType1;
  baseFont = baseFontName(face, out.form());
  fontDescriptor = 0;
  if (out.isConforming() && isSymbolic(face)) {
    encodingName.clear();
  }
  CPDFFont::Write(out);
}

}  // namespace PDFStuffer
