#pragma once

#include "formats/pdf/layout/items.h"
#include "formats/pdf/layout/page_text.h"
#include "formats/pdf/layout/pages.h"
#include "formats/pdf/layout/units.h"

#include <algorithm>
#include <cstdint>
#include <limits>

namespace scrivalen::pdf {

class CPDFtable final : public CPDFitem {
 public:
  CPDFtable() : CPDFitem(ItemKind::Table) {}
  Points Layout(Pages& pages, PageText& lines, Points y) override;

  ItemList rows;
};

/// How a cell keeps its column. One beyond those that have a width counts as the last that is possible.
constexpr std::uint16_t columnIndex(std::int32_t column) {
  return static_cast<std::uint16_t>(std::min<std::int32_t>(column, std::numeric_limits<std::uint16_t>::max()));
}

/// The columns of a row, all of one width.
class Columns {
 public:
  Columns(const Paper& paper, std::int32_t count) : width_(count == 0 ? 0 : paper.usableWidth() / count) {}

  Points width() const { return width_; }
  /// The left edge of a column; they count from 0.
  Points left(std::int32_t column) const { return kLeftMargin + column * width_; }

 private:
  Points width_;
};

class CPDFtableCell final : public CPDFitem {
 public:
  CPDFtableCell(std::uint16_t columnIndex, std::uint32_t backgroundIndex)
      : CPDFitem(ItemKind::Cell, columnIndex), background(backgroundIndex) {}
  Points layOut(Pages& pages, PageText& lines, const Columns& columns, Points y) const;

  std::uint32_t background;
};

class CPDFtableRow final : public CPDFitem {
 public:
  explicit CPDFtableRow(int columnCount) : CPDFitem(ItemKind::Row), columns(columnCount) {}
  Points Layout(Pages& pages, PageText& lines, Points y) override;
  bool isFull() const { return cellCount >= columns; }

  std::int32_t columns;
  std::int32_t cellCount = 0;
  ItemList cells;

 private:
  struct Trial {
    Points bottom;
    bool stands;  // no page was broken: the lines in the scratch text are right
    bool ranOff;  // a cell ended above where it began
  };

  template <typename Function>
  void forEachCell(Function function) const;
  Trial tryCells(Pages& pages, const Columns& edges, Points y) const;
  void drawFrame(Pages& pages, PageText& lines, const Columns& edges, Points y, Points bottom) const;
};

}  // namespace scrivalen::pdf
