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

/// A font, which texts refer to by its number.
struct CPDFfontIdx {
  int id = 0;
  /// The face it was registered with; a bold variant has the face of its base font.
  PDF_STANDARD_FONT_FACE face = PDF_TIMES_ROMAN;
  /// Owned by the file.
  PDFStuffer::CPDFStandardFont* font = nullptr;
  bool bold = false;
  bool italic = false;
  std::u16string resourceName;
};

/// The fonts of a document, in order of registration.
class FontTable {
 public:
  void add(PDFStuffer::CPDFFile& file, int id, PDF_STANDARD_FONT_FACE face);
  /// Adds a bold variant of each font.
  void addBoldVariants(PDFStuffer::CPDFFile& file);

  int nextUnusedId() const { return unusedIdFrom(0); }
  int variantOf(int font, bool bold, bool italic) const;
  float averageWidth(int font, int size, bool bold) const;
  /// The widths used for line breaking: estimates, or in a conforming document the widths of the font that is drawn.
  CharWidths widths(int font, int size, bool bold, PDFStuffer::Form form) const;
  bool has(int font) const { return find(font) != nullptr; }
  /// Whether text of this style is drawn in symbols, given the fonts registered so far. An unknown number means the
  /// first font.
  bool isSymbolic(int font, bool bold) const;
  const std::vector<CPDFfontIdx>& entries() const { return entries_; }

 private:
  using Variant = std::tuple<PDF_STANDARD_FONT_FACE, bool, bool>;

  void append(CPDFfontIdx entry);
  const CPDFfontIdx* find(int id) const;
  int unusedIdFrom(int least) const;

  // If two fonts share a number, or face, weight and slope, the first one is used.
  std::vector<CPDFfontIdx> entries_;
  std::unordered_map<int, std::size_t> indexOfId_;
  std::map<Variant, int> idOfVariant_;
  bool hasSymbolic_ = false;
};

}  // namespace scrivalen::pdf
