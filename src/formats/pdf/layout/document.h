#pragma once

#include "formats/pdf/fonts/fonts.h"
#include "formats/pdf/layout/items.h"
#include "formats/pdf/layout/links.h"
#include "formats/pdf/layout/pages.h"
#include "formats/pdf/layout/tables.h"
#include "formats/pdf/layout/text_buffer.h"
#include "formats/pdf/layout/text_style.h"
#include "formats/pdf/objects/file.h"
#include "text/loss_counter.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <memory_resource>
#include <string>
#include <string_view>

namespace scrivalen::pdf {

/// What is known of a document when its pages are made.
struct Summary {
  PDFStuffer::Form form = PDFStuffer::Form::Classic;
  std::size_t pages = 0;
  scrivalen::LossCounter loss;
  OffPaper offPaper;
};

/// One document between its beginning and its end: what was collected, and what makes pages of it.
///
/// A call that raises leaves the document in no state to go on: only its destructor may follow. Once the pages are made
/// nothing more is collected.
class Document {
 public:
  Document(std::unique_ptr<PDFStuffer::CPDFFile> file, const Paper& paper, PDFStuffer::Form form);

  void addFont(int id, PDF_STANDARD_FONT_FACE face);
  void addBoldVariants();
  const FontTable& fonts() const { return fonts_; }

  /// @return whether it is there: inside a table there are no paragraphs
  bool beginParagraph(std::uint32_t& itemId);
  void beginTable(std::uint32_t& itemId);
  void beginRow(std::uint32_t& itemId, int columns);
  void beginCell(std::uint32_t& itemId, const _RGB_COLOR& background);
  // These end what is current when it is of their kind; what it stands in is current then.
  void endTable() { end(ItemKind::Table, nullptr); }
  void endRow() { end(ItemKind::Row, table_); }
  void endCell() { end(ItemKind::Cell, row_); }
  /// A null text is nothing in the classic form and an empty text in the conforming one, here and in a link.
  void write(const wchar_t* text, const CPDFtextStyle& style);
  void bookMark(std::wstring_view name);
  void link(std::uint32_t& itemId, const wchar_t* text, std::wstring_view target, const CPDFtextStyle& style);
  void addOutlineItem(std::uint32_t& itemId, const wchar_t* text, std::wstring_view target, int level,
                      const CPDFtextStyle& style);

  /// Lays everything out for its place, with bold variants of the fonts. Does nothing the second time.
  void makePages();
  /// What a conforming document says its title is; nothing when it is empty.
  void setTitle(std::wstring_view title);
  void setPageMode(const std::u16string& mode) { file_->SetPageMode(&mode); }
  /// Writes the file.
  void save();

  Pages& pages() { return pages_; }
  bool isMakingPages() const { return makingPages_; }
  /// Why not everything was written; empty when it was.
  std::wstring_view writeError() const { return file_->writeError(); }
  Summary summary() const { return {form_, pages_.count(), loss_, pages_.offPaper()}; }

 private:
  template <typename Item, typename... Arguments>
  Item& make(std::uint32_t& itemId, Arguments&&... arguments);
  bool canBeginBlock() const { return isCollecting_ && (!current_ || current_->isA(ItemKind::Paragraph)); }
  void setCurrent(CPDFitem* item);
  void end(ItemKind kind, CPDFitem* parent);
  void keepText(CPDFtextItem& item);
  bool takesText() const;
  void appendText(std::wstring_view text, const CPDFtextStyle& style);
  CPDFlink& linkTo(std::wstring_view target);
  template <typename Unit>
  std::basic_string_view<Unit> stored(std::basic_string_view<Unit> text);
  void layOut(Pages::Purpose purpose);

  bool isConforming() const { return form_ == PDFStuffer::Form::Conforming; }

  PDFStuffer::Form form_;
  Paper paper_;
  // Not of the default resource, which belongs to the host.
  std::pmr::monotonic_buffer_resource itemMemory_{std::pmr::new_delete_resource()};
  std::pmr::monotonic_buffer_resource textMemory_{std::pmr::new_delete_resource()};
  std::unique_ptr<PDFStuffer::CPDFFile> file_;
  FontTable fonts_;
  Pool<CPDFtextStyle> styles_;
  Pool<_RGB_COLOR> backgrounds_;
  LinkTable links_;
  ItemList items_;
  CPDFitem* current_ = nullptr;
  CPDFtable* table_ = nullptr;   // that of the current row or cell
  CPDFtableRow* row_ = nullptr;  // that of the current cell
  TextBuffer text_;              // of the current item
  bool hasText_ = false;
  std::uint32_t outlineSize_ = 0;
  std::u16string title_;
  Pages pages_;
  bool isCollecting_ = true;
  bool hasBoldVariants_ = false;
  bool makingPages_ = false;
  scrivalen::LossCounter loss_;
};

}  // namespace scrivalen::pdf
