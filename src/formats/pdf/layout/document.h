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

/// Facts about a finished document.
struct Summary {
  PDFStuffer::Form form = PDFStuffer::Form::Classic;
  std::size_t pages = 0;
  scrivalen::LossCounter loss;
  OffPaper offPaper;
};

/// One document from its beginning to its end: the collected items and the page layout.
///
/// After a call that raises, only the destructor may be called. Once the pages are made, nothing more is collected.
class Document {
 public:
  Document(std::unique_ptr<PDFStuffer::CPDFFile> file, const Paper& paper, PDFStuffer::Form form);

  void addFont(int id, PDF_STANDARD_FONT_FACE face);
  void addBoldVariants();
  const FontTable& fonts() const { return fonts_; }

  /// @return false inside a table, where paragraphs are not possible
  bool beginParagraph(std::uint32_t& itemId);
  void beginTable(std::uint32_t& itemId);
  void beginRow(std::uint32_t& itemId, int columns);
  void beginCell(std::uint32_t& itemId, const _RGB_COLOR& background);
  // Each ends the current item if it is of the right kind and makes its parent current.
  void endTable() { end(ItemKind::Table, nullptr); }
  void endRow() { end(ItemKind::Row, table_); }
  void endCell() { end(ItemKind::Cell, row_); }
  /// A null text is ignored in the classic form and empty in the conforming one, here and in a link.
  void write(const wchar_t* text, const CPDFtextStyle& style);
  void bookMark(std::wstring_view name);
  void link(std::uint32_t& itemId, const wchar_t* text, std::wstring_view target, const CPDFtextStyle& style);
  void addOutlineItem(std::uint32_t& itemId, const wchar_t* text, std::wstring_view target, int level,
                      const CPDFtextStyle& style);

  /// Lays everything out to find positions and resolves the links; adds bold variants of the fonts if they are missing.
  /// Further calls do nothing.
  void makePages();
  /// Sets the title of a conforming document. An empty title is not written.
  void setTitle(std::wstring_view title);
  void setPageMode(const std::u16string& mode) { file_->SetPageMode(&mode); }
  /// Writes the file.
  void save();

  Pages& pages() { return pages_; }
  bool isMakingPages() const { return makingPages_; }
  /// The reason why the file is incomplete; empty if it is complete.
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
  // Not the default resource, which belongs to the host.
  std::pmr::monotonic_buffer_resource itemMemory_{std::pmr::new_delete_resource()};
  std::pmr::monotonic_buffer_resource textMemory_{std::pmr::new_delete_resource()};
  std::unique_ptr<PDFStuffer::CPDFFile> file_;
  FontTable fonts_;
  Pool<CPDFtextStyle> styles_;
  Pool<_RGB_COLOR> backgrounds_;
  LinkTable links_;
  ItemList items_;
  CPDFitem* current_ = nullptr;
  CPDFtable* table_ = nullptr;   // of the current row or cell
  CPDFtableRow* row_ = nullptr;  // of the current cell
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
