#include "formats/pdf/typeset/tables/table_setter.h"

#include "document/language.h"
#include "text/direction.h"

#include <algorithm>
#include <utility>

namespace scrivalen::typeset {
namespace {

constexpr Length kBefore = 8 * kPoint;
constexpr Length kAfter = 8 * kPoint;
constexpr Length kRule = kPoint / 2;
constexpr Length kHeaderRule = kPoint;
constexpr Rgb kRowRuleColor = 0xD4D4D4;
constexpr Rgb kHeaderRuleColor = 0x808080;

// Header rows that take more than this part of a page are not repeated: the rows need the space.
constexpr Length kHeaderPart = 3;

// Header and two rows that take more than this part of a page are not kept together: too much of a page would be empty.
constexpr Length kTwoRowsPart = 3;

// The lines of a row across pages that are on the first of them at least.
constexpr Length kFewestLinesOfRowOfRow = 2;

// Rows of a table with very many columns do not wait for a page's other rows.
constexpr std::size_t kMostWaitingCells = 262144;

// That of the first letter in the header rows of a sample, or in its other rows.
Direction firstDirectionOf(const document::Table& table, bool inHeaders) {
  for (const document::SampleRow& row : table.sample) {
    for (const document::Cell& cell : row.header == inHeaders ? row.cells : std::span<const document::Cell>()) {
      if (const Direction direction = firstDirection(cell.text); direction != Direction::Neutral) {
        return direction;
      }
    }
  }
  return Direction::Neutral;
}

// The first letter of the header says how a table is read, as that of a paragraph does; that of the rows in a table
// whose header has no letter.
bool isReadFromRightToLeft(const document::Table& table) {
  const Direction header = firstDirectionOf(table, true);
  return (header != Direction::Neutral ? header : firstDirectionOf(table, false)) == Direction::RightToLeft;
}

}  // namespace

void TableSetter::begin(const document::Table& table) {
  const Length turnedWidth =
      std::max(flow_.shape().height, flow_.shape().width) - flow_.shape().left - flow_.shape().right - flow_.indent();
  isMirrored_ = document::isRightToLeft(settings_.text("language")) || isReadFromRightToLeft(table);
  plan_ = planTable(table, measureColumns(table, shaper_, family_),
                    {flow_.width(), turnedWidth, settings_.text("widths") == "equal", isMirrored_});
  rows_.begin(plan_, table, std::min(flow_.shape().textHeight(), flow_.shape().turned().textHeight()), isMirrored_);
  headers_.clear();
  hasBegun_ = false;
  first_.reset();
}

void TableSetter::row(const document::Row& row) {
  if (row.repeated) {
    rows_.set(row, headers_.emplace_back());
    return;
  }
  if (!hasBegun_ && !first_) {
    rows_.set(row, first_.emplace());
    return;
  }
  rows_.set(row, row_);
  if (first_) {
    beginRows(row_.size.height);
  }
  add(row_);
}

void TableSetter::beginRows(Length secondHeight) {
  prepare(first_->size.height, secondHeight);
  add(*first_);
  first_.reset();
}

void TableSetter::add(SetRow& row) {
  if (plan_.parts.size() > 1) {
    addToParts(std::move(row));
  } else {
    place(row, plan_.parts.front());
  }
}

// What comes before the first row of the table. The header is on a page with two rows, unless the second is high.
void TableSetter::prepare(Length firstHeight, Length secondHeight) {
  hasBegun_ = true;
  if (plan_.isTurned) {
    flow_.turn(true);
  }
  std::vector<SetRow> tooTall;
  if (kHeaderPart * headerHeight() > flow_.shape().textHeight()) {
    tooTall.swap(headers_);
  }
  Length height = headerHeight() + firstHeight;
  if (!headers_.empty() && kTwoRowsPart * (height + secondHeight) <= flow_.shape().textHeight()) {
    height += secondHeight;
  }
  flow_.space(kBefore);
  texts_.setWaiting(kBefore + height);
  flow_.space(kBefore);
  flow_.keepTogether(height);
  if (plan_.parts.size() == 1) {
    tags_.beginTable();
    beginPart(plan_.parts.front());
  }
  for (SetRow& row : tooTall) {
    add(row);
  }
}

Length TableSetter::headerHeight() const {
  Length height = 0;
  for (const SetRow& header : headers_) {
    height += header.size.height;
  }
  return height;
}

Length TableSetter::headerHeightIn(const TablePart& part) const {
  Length height = 0;
  for (const SetRow& header : headers_) {
    height += rows_.sizeIn(part, header).height;
  }
  return height;
}

void TableSetter::beginPart(const TablePart& part) {
  if (headers_.empty()) {
    return;
  }
  Length top = take(headerHeightIn(part));
  texts_.drawMarkers(top + rows_.sizeIn(part, headers_.front()).padding + rows_.baseline(), isMirrored_);
  tags_.beginHeaders();
  for (const SetRow& header : headers_) {
    draw(header, part, top);
    top += rows_.sizeIn(part, header).height;
  }
  tags_.endHeaders();
}

void TableSetter::place(const SetRow& row, const TablePart& part) {
  const RowSize size = rows_.sizeIn(part, row);
  if (size.height > flow_.room()) {
    if (size.height > flow_.shape().textHeight() - headerHeightIn(part)) {
      return placeAcrossPages(row, part);
    }
    nextPage(part);
  }
  const Length top = take(size.height);
  texts_.drawMarkers(top + size.padding + rows_.baseline(), isMirrored_);
  draw(row, part, top);
}

void TableSetter::nextPage(const TablePart& part) {
  flow_.endPage();
  beginPart(part);
}

// A row that is higher than a page: each page has the lines that it has space for.
void TableSetter::placeAcrossPages(const SetRow& row, const TablePart& part) {
  const Length padding = rows_.sizeIn(part, row).padding;
  if (!flow_.isAtTop() && flow_.room() < kFewestLinesOfRowOfRow * rows_.lineHeight() + 2 * padding) {
    nextPage(part);
  }
  std::vector<CellLines> cells;
  tags_.beginRow();
  eachCell(row, part, [&](const SetCell& cell) {
    if (cell.isIn(part, row.isHeader)) {
      cells.push_back({&cell, 0, 0, tags_.cell(row, cell, part)});
    }
  });
  for (bool isNew = flow_.isAtTop();; isNew = true) {
    if (const Length height = fitLines(cells, 2 * padding, isNew); height > 0) {
      const Length top = take(height);
      texts_.drawMarkers(top + padding + rows_.baseline(), isMirrored_);
      drawFrame(row, part, top, height);
      for (CellLines& lines : cells) {
        drawCell(row, lines, part, top + padding);
      }
    }
    if (std::all_of(cells.begin(), cells.end(), [](const CellLines& cell) { return cell.end == cell.cell->lines(); })) {
      break;
    }
    nextPage(part);
  }
  for (CellLines& lines : cells) {
    if (lines.tags) {
      lines.tags->finish();
    }
  }
  tags_.endRow();
}

// The next lines of each cell that the page has space for; on a new page at least one. Returns the height of what fits.
Length TableSetter::fitLines(std::vector<CellLines>& cells, Length padding, bool isNew) const {
  const Length room = flow_.room();
  Length height = 0;
  for (CellLines& lines : cells) {
    const SetCell& cell = *lines.cell;
    lines.begin = lines.end;
    Length used = padding;
    for (const std::size_t count = cell.lines(); lines.end < count; ++lines.end) {
      const Length line = cell.more ? cell.more->set.lines[lines.end].height : rows_.lineHeight();
      const bool isOneAtLeast = isNew && lines.end == lines.begin;
      if (used + line > room && !isOneAtLeast) {
        break;
      }
      used += line;
    }
    height = lines.end > lines.begin ? std::max(height, used) : height;
  }
  return height;
}

LineSpace TableSetter::spaceOf(const SetCell& cell, const TablePart& part) const {
  const Length left = part.leftOf(cell.column);
  const Length width = part.rightOf(cell.endColumn) - left;
  return {placeOf(left, width) + kCellPadding, 0, width - 2 * kCellPadding - part.gapBefore(cell.endColumn)};
}

// The first column of a table that is read from right to left is on the right.
Length TableSetter::placeOf(Length left, Length width) const {
  left += flow_.left();
  return isMirrored_ ? flow_.mirrored(left, width) : left;
}

Length TableSetter::take(Length height) { return flow_.take(height, flow_.backdrops(), isMirrored_); }

void TableSetter::draw(const SetRow& row, const TablePart& part, Length top) {
  const RowSize size = rows_.sizeIn(part, row);
  drawFrame(row, part, top, size.height);
  tags_.beginRow();
  eachCell(row, part, [&](const SetCell& cell) {
    if (cell.isIn(part, row.isHeader)) {
      CellLines lines{&cell, 0, cell.lines(), tags_.cell(row, cell, part)};
      drawCell(row, lines, part, top + size.padding);
      if (lines.tags) {
        lines.tags->finish();
      }
    }
  });
  tags_.endRow();
}

void TableSetter::drawCell(const SetRow& row, CellLines& lines, const TablePart& part, Length textTop) {
  const SetCell& cell = *lines.cell;
  if (lines.begin == lines.end) {
    return;
  }
  LineSpace space = spaceOf(cell, part);
  space.top = textTop;
  if (cell.more) {
    for (std::size_t i = lines.begin; i < lines.end; ++i) {
      const TextLine& line = cell.more->set.lines[i];
      drawer_.draw(cell.more->text, cell.more->set, line, space, cell.align, lines.tags ? &*lines.tags : nullptr);
      space.top += line.height;
    }
  } else if (cell.end > cell.begin) {
    const Length free = space.width - cell.width;
    const Length before = cell.align == document::Align::Right    ? free
                          : cell.align == document::Align::Center ? free / 2
                                                                  : 0;
    if (lines.tags) {
      lines.tags->show();
    }
    drawer_.drawBytes(space.left + before, space.top + rows_.baseline(), cell.style, cell.font,
                      std::string_view(row.bytes).substr(cell.begin, cell.end - cell.begin));
  }
}

void TableSetter::drawFrame(const SetRow& row, const TablePart& part, Length top, Length height) {
  Canvas& canvas = pages_.canvas();
  eachCell(row, part, [&](const SetCell& cell) {
    if (cell.background) {
      const Length left = part.leftOf(cell.column);
      const Length width = part.rightOf(cell.endColumn) - left;
      canvas.area(placeOf(left, width), top, width, height, *cell.background);
    }
  });
  const Length rule = row.isHeader ? kHeaderRule : kRule;
  canvas.area(placeOf(0, part.edges.back()), top + height - rule, part.edges.back(), rule,
              row.isHeader ? kHeaderRuleColor : kRowRuleColor);
}

// The rows wait until a page is full. The first page has what the text before the table leaves.
void TableSetter::addToParts(SetRow row) {
  if (waitingCells_ >= kMostWaitingCells) {
    writeWaiting();
  }
  if (waiting_.empty()) {
    flow_.keepTogether(headerHeight() + row.size.height);
    beginWaiting();
  } else if (isFullFor(row)) {
    writeWaiting();
    flow_.endPage();
    beginWaiting();
  }
  for (std::size_t part = 0; part < plan_.parts.size(); ++part) {
    waitingHeights_[part] += rows_.sizeIn(plan_.parts[part], row).height;
  }
  waitingCells_ += row.cells.size();
  waiting_.push_back(std::move(row));
}

// Whether a part has no space for a row below those that wait.
bool TableSetter::isFullFor(const SetRow& row) const {
  for (std::size_t part = 0; part < plan_.parts.size(); ++part) {
    if (waitingHeights_[part] + rows_.sizeIn(plan_.parts[part], row).height > waitingSpace_) {
      return true;
    }
  }
  return false;
}

void TableSetter::beginWaiting() {
  waitingSpace_ = flow_.room();
  waitingHeights_.clear();
  for (const TablePart& part : plan_.parts) {
    waitingHeights_.push_back(headerHeightIn(part));
  }
}

void TableSetter::writeWaiting() {
  for (std::size_t i = 0; i < plan_.parts.size(); ++i) {
    const TablePart& part = plan_.parts[i];
    flow_.space(kBefore);
    flow_.keepTogether(waitingHeights_[i]);
    // A part is a table of its own: it has other columns, and is read before the next one.
    tags_.beginTable();
    beginPart(part);
    for (const SetRow& row : waiting_) {
      place(row, part);
    }
    tags_.endTable();
  }
  waiting_.clear();
  waitingCells_ = 0;
}

void TableSetter::end() {
  if (first_) {
    beginRows(0);
  }
  const bool isHeaderOnly = !hasBegun_ && !headers_.empty();
  if (isHeaderOnly) {
    prepare(0, 0);
  }
  if (plan_.parts.size() > 1 && (isHeaderOnly || !waiting_.empty())) {
    if (waiting_.empty()) {
      beginWaiting();
    }
    writeWaiting();
  }
  if (!hasBegun_) {
    return;
  }
  if (plan_.parts.size() == 1) {
    tags_.endTable();
  }
  if (plan_.isTurned) {
    flow_.turn(false);
  }
  flow_.space(kAfter);
}

}  // namespace scrivalen::typeset
