#pragma once

#include "formats/pdf/fonts/char_widths.h"
#include "formats/pdf/objects/file.h"
#include "scrivalen/pdf_doc.h"

#include <cstddef>
#include <map>
#include <string>
#include <tuple>
#include <unordered_map>
#include <vector>

namespace scrivalen::pdf {

/// A font that texts name by its number.
struct CPDFfontIdx {
  int id = 0;
  /// The face it was registered under; a bold variant has that of its base.
  PDF_STANDARD_FONT_FACE face = PDF_TIMES_ROMAN;
  /// Owned by the file.
  PDFStuffer::CPDFStandardFont* font = nullptr;
  bool bold = false;
  bool italic = false;
  std::u16string resourceName;
};

/// The fonts of a document, in the order of their registration.
class FontTable {
 public:
  void add(PDFStuffer::CPDFFile& file, int id, PDF_STANDARD_FONT_FACE face);
  /// Adds a bold variant of each font.
  void addBoldVariants(PDFStuffer::CPDFFile& file);

  int nextUnusedId() const { return unusedIdFrom(0); }
  int variantOf(int font, bool bold, bool italic) const;
  float averageWidth(int font, int size, bool bold) const;
  /// By which lines in a font are broken. Estimated or, in a conforming document, those of the face that it is drawn
  /// in.
  CharWidths widths(int font, int size, bool bold, PDFStuffer::Form form) const;
  bool has(int font) const { return find(font) != nullptr; }
  /// Whether a text of this style is drawn in signs instead of letters, as far as fonts are registered by now; an
  /// unknown number stands for the first of them.
  bool isSymbolic(int font, bool bold) const;
  const std::vector<CPDFfontIdx>& entries() const { return entries_; }

 private:
  using Variant = std::tuple<PDF_STANDARD_FONT_FACE, bool, bool>;

  void append(CPDFfontIdx entry);
  const CPDFfontIdx* find(int id) const;
  int unusedIdFrom(int least) const;

  // Of two fonts with one number, or of one face and the same weight and slope, the first counts.
  std::vector<CPDFfontIdx> entries_;
  std::unordered_map<int, std::size_t> indexOfId_;
  std::map<Variant, int> idOfVariant_;
  bool hasSymbolic_ = false;
};

}  // namespace scrivalen::pdf
