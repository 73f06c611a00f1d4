#pragma once

#include "document/model/table.h"
#include "formats/pdf/typeset/blocks/inline_collector.h"
#include "formats/pdf/typeset/tables/table_plan.h"
#include "formats/pdf/typeset/text/paragraph.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace scrivalen::typeset {

/// The text of a cell that is more than one line in one style.
struct LongCell {
  StyledText text;
  SetText set;
};

/// A cell whose text has been measured and broken into lines.
struct SetCell {
  std::size_t column = 0;
  std::size_t endColumn = 0;
  document::Align align = document::Align::Left;
  TextStyle style;
  FontUse font;           ///< of its bytes
  std::size_t begin = 0;  ///< of its text in SetRow::bytes, unless it is a long cell
  std::size_t end = 0;
  Length width = 0;
  Length space = 0;  ///< for a line of its text, in each part that shows it
  std::optional<Rgb> background;
  bool isHeaderCell = false;
  std::unique_ptr<LongCell> more;  ///< null for one line in one style

  std::size_t lines() const { return more ? more->set.lines.size() : 1; }
  /// Whether a part of the table shows its text. A header that spans columns of several parts is in each of them.
  bool isIn(const TablePart& part, bool isHeader) const {
    return part.has(column) || (isHeader && part.reaches(column, endColumn));
  }
};

struct RowSize {
  Length height = 0;
  Length padding = 0;  ///< above and below the text
};

/// A row that is ready to be drawn.
struct SetRow {
  std::vector<SetCell> cells;
  std::string bytes;
  RowSize size;  ///< with the highest of its cells
  bool isHeader = false;
};

/// Calls a function with the cells that reach into a part of a table, which may be few of very many.
template <typename Use>
void eachCell(const SetRow& row, const TablePart& part, Use use) {
  auto cell = std::partition_point(row.cells.begin(), row.cells.end(),
                                   [&](const SetCell& before) { return before.endColumn <= part.first; });
  if (part.repeatsFirst() && cell != row.cells.begin()) {
    use(row.cells.front());
  }
  for (; cell != row.cells.end() && cell->column < part.end; ++cell) {
    use(*cell);
  }
}

/// Sets the rows of a table.
class RowSetter {
 public:
  /// @param fonts, shaper, pictures, warnings  not owned; must outlive this object
  RowSetter(FontSet& fonts, Shaper& shaper, PictureWriter& pictures, document::OutputWarnings& warnings, Family family)
      : fonts_(fonts), shaper_(shaper), family_(family), collector_(&pictures, &warnings) {}

  /// @param pageHeight     of the space for text; a picture in a cell has half of it at most
  /// @param isRightToLeft  columns on the left are on the right
  void begin(const TablePlan& plan, const document::Table& table, Length pageHeight, bool isRightToLeft);
  /// @param set  cleared first
  void set(const document::Row& row, SetRow& set);
  /// With the highest of the cells that a part shows.
  RowSize sizeIn(const TablePart& part, const SetRow& row) const;
  Length lineHeight() const { return lineHeight_; }
  /// Of a line's upper edge to its baseline.
  Length baseline() const { return baseline_; }

 private:
  RowSize sizeFor(Length textHeight) const;
  document::Align alignOf(const document::Cell& cell, std::size_t column) const;
  Length widthOf(const SetCell& cell, bool isHeader) const;
  void setCell(const document::Cell& cell, SetRow& row, SetCell& set);
  bool setShort(std::string_view text, SetRow& row, SetCell& set);

  FontSet& fonts_;
  Shaper& shaper_;
  Family family_;
  InlineCollector collector_;
  const TablePlan* plan_ = nullptr;
  std::vector<document::Align> aligns_;
  std::vector<const TablePart*> parts_;  // of each column
  std::vector<Length> widths_;           // of the text of each column
  Length lineHeight_ = 0;
  Length baseline_ = 0;
  Length pictureHeight_ = 0;
};

/// Between the text of a row of one line and its upper and lower edge.
inline constexpr Length kRowPadding = kPoint;

}  // namespace scrivalen::typeset
