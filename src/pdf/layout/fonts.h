#pragma once

#include "pdf/objects/file.h"
#include "scrivalen/pdf_doc.h"

#include <string>
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

  int nextUnusedId() const;
  int variantOf(int font, bool bold, bool italic) const;
  float averageWidth(int font, int size, bool bold) const;
  bool has(int font) const { return find(font) != nullptr; }
  const std::vector<CPDFfontIdx>& entries() const { return entries_; }
  void clear() { entries_.clear(); }

 private:
  const CPDFfontIdx* find(int id) const;

  std::vector<CPDFfontIdx> entries_;
};

}  // namespace scrivalen::pdf
