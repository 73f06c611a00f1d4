#include "formats/pdf/typeset/tables/table_row.h"

#include "formats/pdf/typeset/fonts/win_ansi_text.h"

#include <algorithm>
#include <utility>

namespace scrivalen::typeset {
namespace {

constexpr Length kLeading = 1180;  // in thousandths of the size

}  // namespace

void RowSetter::begin(const TablePlan& plan, const document::Table& table) {
  plan_ = &plan;
  lineHeight_ = scaled(kLeading, plan.size);
  const SimpleFont& font = fonts_.at(fontOf(family_, false, false));
  const Length ascent = std::min(scaled(font.measures().ascent, plan.size), plan.size);
  baseline_ = (lineHeight_ - plan.size) / 2 + ascent;
  aligns_.clear();
  for (const document::Column& column : table.columns) {
    aligns_.push_back(column.align);
  }
  parts_.assign(table.columns.size(), nullptr);
  for (const TablePart& part : plan.parts) {
    std::fill(parts_.begin() + static_cast<std::ptrdiff_t>(part.first),
              parts_.begin() + static_cast<std::ptrdiff_t>(part.end), &part);
  }
}

// Of the columns in the part where the first one is: a cell that spans into the next part ends there.
Length RowSetter::widthOf(std::size_t column, std::size_t endColumn) const {
  const TablePart& part = *parts_[column];
  const std::size_t end = std::min(endColumn, part.end);
  return part.edges[part.placeOf(end - 1) + 1] - part.edges[part.placeOf(column)] - 2 * kCellPadding;
}

void RowSetter::set(const document::Row& row, SetRow& set) {
  set.cells.clear();
  set.bytes.clear();
  set.isHeader = row.header;
  std::size_t column = 0;
  Length height = lineHeight_;
  for (const document::Cell& cell : row.cells) {
    SetCell& drawn = set.cells.emplace_back();
    drawn.column = column;
    drawn.endColumn = column + static_cast<std::size_t>(cell.span);
    drawn.align = cell.align != document::Align::Auto ? cell.align : aligns_[column];
    drawn.style.font = fontOf(family_, row.header || cell.header, false);
    drawn.style.size = plan_->size;
    drawn.style.color = cell.color.value_or(0);
    drawn.background = cell.background;
    column = drawn.endColumn;
    if (cell.content != nullptr) {
      setContent(cell, drawn);
      setLines(drawn);
    } else if (!cell.text.empty()) {
      drawn.begin = set.bytes.size();
      missing_ += appendWinAnsi(set.bytes, cell.text);
      drawn.end = set.bytes.size();
      const std::string_view bytes = std::string_view(set.bytes).substr(drawn.begin);
      drawn.width = fonts_.at(drawn.style.font).widthOf(bytes, plan_->size);
      if (drawn.width > widthOf(drawn.column, drawn.endColumn) || bytes.find('\n') != bytes.npos) {
        drawn.more = std::make_unique<LongCell>();
        drawn.more->text.bytes = bytes;
        drawn.more->text.spans.push_back({0, drawn.style});
        setLines(drawn);
      }
    }
    if (drawn.more) {
      Length lines = 0;
      for (const TextLine& line : drawn.more->lines) {
        lines += line.height;
      }
      height = std::max(height, lines);
    }
  }
  set.height = height + 2 * kRowPadding;
}

void RowSetter::setContent(const document::Cell& cell, SetCell& set) {
  collector_.begin(set.style);
  cell.replay(collector_);
  set.more = std::make_unique<LongCell>();
  set.more->text = collector_.take();
  missing_ += set.more->text.missing;
}

void RowSetter::setLines(SetCell& cell) {
  const LineRule rule{std::max(widthOf(cell.column, cell.endColumn), kPoint), kLeading, cell.style, false};
  cell.more->lines = linesOf(cell.more->text, rule, fonts_);
}

}  // namespace scrivalen::typeset
