#pragma once

#include "formats/pdf/layout/items.h"
#include "formats/pdf/layout/page_text.h"
#include "formats/pdf/layout/pages.h"
#include "formats/pdf/layout/units.h"

#include <cstdint>

namespace scrivalen::pdf {

class CPDFtable final : public CPDFitem {
 public:
  CPDFtable() : CPDFitem(ItemKind::Table) {}
  Points Layout(Pages& pages, PageText& lines, Points y) override;

  ItemList rows;
};

/// The columns of a row, all of the same width.
class Columns {
 public:
  Columns(const Paper& paper, std::int32_t count) : width_(count == 0 ? 0 : paper.usableWidth() / count) {}

  Points width() const { return width_; }
  /// The left edge of a column; columns are numbered from 0.
  Points left(std::int32_t column) const { return kLeftMargin + column * width_; }

 private:
  Points width_;
};

class CPDFtableCell final : public CPDFtextItem {
 public:
  explicit CPDFtableCell(std::uint32_t backgroundIndex) : CPDFtextItem(ItemKind::Cell), background(backgroundIndex) {}
  /// @param x  the left edge of the cell's column
  Points layOut(Pages& pages, PageText& lines, Points x, Points y, Points width) const;

  std::uint32_t background;
};

class CPDFtableRow final : public CPDFitem {
 public:
  explicit CPDFtableRow(int columnCount) : CPDFitem(ItemKind::Row), columns_(columnCount) {}
  Points Layout(Pages& pages, PageText& lines, Points y) override;
  bool isFull() const { return cellCount_ >= columns_; }
  void append(CPDFtableCell& cell) {
    cells_.append(cell);
    ++cellCount_;
  }

 private:
  static constexpr Points kUnknown = -1;

  struct Trial {
    Points bottom;
    bool ranOff;  // a cell ended higher than it began, so on another page
  };

  Trial tryCells(Pages& pages, const Columns& columns, Points y) const;
  Points layOutCells(Pages& pages, PageText& lines, const Columns& columns, Points y) const;
  void drawFrame(Pages& pages, PageText& lines, const Columns& columns, Points y, Points bottom) const;

  std::int32_t columns_;
  std::int32_t cellCount_ = 0;
  ItemList cells_;
  Points height_ = kUnknown;  // found by the first layout if the row causes no page break
};

}  // namespace scrivalen::pdf
