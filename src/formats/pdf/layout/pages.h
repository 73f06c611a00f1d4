#pragma once

#include "formats/pdf/fonts/fonts.h"
#include "formats/pdf/layout/off_paper_check.h"
#include "formats/pdf/layout/page_text.h"
#include "formats/pdf/layout/placement.h"
#include "formats/pdf/layout/text_style.h"
#include "formats/pdf/layout/units.h"
#include "formats/pdf/objects/file.h"

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace scrivalen::pdf {

/// The pages of a document during layout.
///
/// A document is laid out twice, with the same page breaks. The first layout creates the pages and finds the positions
/// on them. The second one makes each page's text, writes it and drops it, so that at most one page's text is in
/// memory.
class Pages {
 public:
  enum class Purpose { Placing, Writing };

  /// Thrown by startPage when bytes of earlier pages were lost, as on a full disk: more pages would be lost too.
  struct LostBytes {};

  Pages(PDFStuffer::CPDFFile& file, const FontTable& fonts, const Pool<CPDFtextStyle>& styles,
        const Pool<_RGB_COLOR>& backgrounds, const Paper& paper, PDFStuffer::Form form);

  /// Begins a layout at the first page.
  void begin(Purpose purpose);

  void startPage();
  void finishPage();
  void breakPage() {
    finishPage();
    startPage();
  }

  /// The current page; null if there is none.
  PDFStuffer::CPDFPage* current() const { return current_; }
  std::uint64_t pageBreaks() const { return started_; }
  std::size_t count() const { return pages_.size(); }
  const Paper& paper() const { return paper_; }
  PDFStuffer::Form form() const { return form_; }

  /// The check for content off the paper, if the document is conforming and these lines are written to the file;
  /// otherwise null.
  OffPaperCheck* offPaperCheck(const PageText& lines) {
    return form_ == PDFStuffer::Form::Conforming && lines.keepsLines() ? &offPaperCheck_ : nullptr;
  }
  const OffPaper& offPaper() const { return offPaperCheck_.found(); }

  PageText& lines() { return lines_; }
  Placements& placements() { return placements_; }

  const DrawStyle& drawStyle(std::uint32_t style);
  /// The operator that sets a cell's background colour.
  const std::string& background(std::uint32_t color);

 private:
  // Caches the value made for a pool index. The cache holds as many values as alternate in a usual report.
  template <typename Value>
  struct Cached {
    bool known = false;
    std::uint32_t index = 0;
    Value value;
  };
  template <typename Value>
  using Cache = std::array<Cached<Value>, 16>;

  void addPage();
  int resolvedFont(const CPDFtextStyle& style) const;

  PDFStuffer::CPDFFile& file_;
  const FontTable& fonts_;
  const Pool<CPDFtextStyle>& styles_;
  const Pool<_RGB_COLOR>& backgrounds_;
  Paper paper_;
  PDFStuffer::Form form_;
  Purpose purpose_ = Purpose::Placing;
  std::vector<PDFStuffer::CPDFPage*> pages_;
  std::size_t started_ = 0;
  PDFStuffer::CPDFPage* current_ = nullptr;
  PageText lines_;
  Placements placements_;
  OffPaperCheck offPaperCheck_;
  Cache<DrawStyle> drawStyles_;
  Cache<std::string> fills_;
};

}  // namespace scrivalen::pdf
