#pragma once

#include "formats/pdf/layout/links.h"
#include "formats/pdf/layout/page_text.h"
#include "formats/pdf/layout/pages.h"
#include "formats/pdf/layout/text_style.h"
#include "formats/pdf/layout/units.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace scrivalen::pdf {

enum class ItemKind : std::uint8_t { Paragraph, Table, Row, Cell, Outline };

// A report of a million cells is collected completely before its first page is made, so items are small. They are
// allocated from the document's memory, which is freed as a whole without calling destructors. Children form an
// intrusive list, styles and colours are indexes, and only items with a link to or from them have a placement.
class CPDFitem {
 public:
  explicit CPDFitem(ItemKind itemKind) : kind_(itemKind) {}
  CPDFitem(const CPDFitem&) = delete;
  CPDFitem& operator=(const CPDFitem&) = delete;

  /// Lays the item out from @p y down and appends its lines. @return its lower end
  virtual Points Layout(Pages& pages, PageText& lines, Points y);
  /// Makes the item lead to a link's target. Called when all pages are made.
  virtual void AttachLink(LinkWriter& writer, const CPDFlink& link) const;

  bool isA(ItemKind kind) const { return kind_ == kind; }
  /// Whether links need its position.
  bool needsPlacement() const { return needsPlacement_; }
  void requirePlacement() { needsPlacement_ = true; }

  CPDFitem* next = nullptr;

 protected:
  ~CPDFitem() = default;
  /// The gap above a paragraph or a table.
  static Points leadingGap(Pages& pages, PageText& lines, std::uint32_t style, Points y);
  void place(Pages& pages, const Placement& placement) const;

 private:
  ItemKind kind_;
  bool needsPlacement_ = false;
};

/// An item with text: a paragraph, a cell or an outline entry.
class CPDFtextItem : public CPDFitem {
 public:
  using CPDFitem::CPDFitem;

  /// Sets the text: UTF-16 code units, stored as bytes if none of them is above 255. Not owned.
  void setText(std::string_view bytes);
  void setText(std::u16string_view units);
  /// Whether nothing was written, not even an empty text.
  bool hasNoText() const { return !text_; }
  void setStyle(std::uint32_t style) { style_ = style; }

 protected:
  ~CPDFtextItem() = default;
  std::uint32_t style() const { return style_; }
  Points layoutText(Pages& pages, PageText& lines, Points x, Points y, Points width) const;
  Points beginOfText(Pages& pages, Points y) const;

  /// Calls a function with the text as std::string_view or std::u16string_view.
  template <typename Function>
  auto visitText(Function function) const {
    return isWide_ ? function(std::u16string_view(static_cast<const char16_t*>(text_), length_))
                   : function(std::string_view(static_cast<const char*>(text_), length_));
  }

 private:
  bool isWide_ = false;
  std::uint32_t style_ = kDefaultStyle;
  const void* text_ = nullptr;
  std::uint32_t length_ = 0;
};

/// An intrusive list of items.
struct ItemList {
  CPDFitem* first = nullptr;
  CPDFitem* last = nullptr;

  void append(CPDFitem& item) {
    (last ? last->next : first) = &item;
    last = &item;
  }
};

class CPDFparagraf final : public CPDFtextItem {
 public:
  CPDFparagraf() : CPDFtextItem(ItemKind::Paragraph) {}
  Points Layout(Pages& pages, PageText& lines, Points y) override;
};

class CPDFoutlineItem final : public CPDFtextItem {
 public:
  explicit CPDFoutlineItem(const OutlinePlace& placeOfEntry) : CPDFtextItem(ItemKind::Outline), place_(placeOfEntry) {}
  void AttachLink(LinkWriter& writer, const CPDFlink& link) const override;

 private:
  OutlinePlace place_;
};

}  // namespace scrivalen::pdf
