#include "formats/pdf/typeset/tables/table_setter.h"

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

}  // namespace

void TableSetter::begin(const document::Table& table) {
  const Length turnedWidth =
      std::max(flow_.shape().height, flow_.shape().width) - flow_.shape().left - flow_.shape().right - flow_.indent();
  plan_ = planTable(table, measureColumns(table, shaper_, family_),
                    {flow_.width(), turnedWidth, settings_.text("widths") == "equal"});
  rows_.begin(plan_, table, std::min(flow_.shape().textHeight(), flow_.shape().turned().textHeight()));
  headers_.clear();
  hasBegun_ = false;
}

void TableSetter::row(const document::Row& row) {
  if (row.repeated) {
    rows_.set(row, headers_.emplace_back());
    return;
  }
  if (plan_.parts.size() > 1) {
    SetRow set;
    rows_.set(row, set);
    return addToPart(std::move(set));
  }
  rows_.set(row, row_);
  prepare(row_.height);
  place(row_, plan_.parts.front());
}

// What comes before the first row of the table.
void TableSetter::prepare(Length height) {
  if (hasBegun_) {
    return;
  }
  hasBegun_ = true;
  if (plan_.isTurned) {
    flow_.turn(true);
  }
  flow_.space(kBefore);
  texts_.setWaiting(kBefore + headerHeight() + height);
  flow_.space(kBefore);
  flow_.keepTogether(headerHeight() + height);
  if (plan_.parts.size() == 1) {
    beginPart(plan_.parts.front());
  }
}

Length TableSetter::headerHeight() const {
  Length height = 0;
  for (const SetRow& header : headers_) {
    height += header.height;
  }
  return height;
}

void TableSetter::beginPart(const TablePart& part) {
  const Length height = headerHeight();
  if (height == 0) {
    return;
  }
  Length top = flow_.take(height);
  texts_.drawMarkers(top + rows_.baseline());
  for (const SetRow& header : headers_) {
    draw(header, part, top);
    top += header.height;
  }
}

void TableSetter::place(const SetRow& row, const TablePart& part) {
  if (row.height > flow_.room()) {
    if (row.height > flow_.shape().textHeight() - headerHeight()) {
      return placeAcrossPages(row, part);
    }
    flow_.endPage();
    beginPart(part);
  }
  const Length top = flow_.take(row.height);
  texts_.drawMarkers(top + rows_.baseline());
  draw(row, part, top);
}

// A row that is higher than a page: each page has the lines that it has space for, at least one.
void TableSetter::placeAcrossPages(const SetRow& row, const TablePart& part) {
  std::vector<std::size_t> drawn(row.cells.size());
  for (bool isDone = false; !isDone;) {
    const Length room = std::max(flow_.room(), rows_.lineHeight() + 2 * row.padding);
    const Length top = flow_.take(std::min(room, row.height));
    isDone = true;
    Length height = 0;
    for (std::size_t i = 0; i < row.cells.size(); ++i) {
      const SetCell& cell = row.cells[i];
      if (!part.has(cell.column)) {
        continue;
      }
      if (!cell.more) {
        if (drawn[i] == 0) {
          drawCell(row, cell, part, top);
          drawn[i] = 1;
        }
        continue;
      }
      const LineSpace space = spaceOf(cell, part);
      Length used = row.padding;
      const std::vector<TextLine>& lines = cell.more->set.lines;
      while (drawn[i] < lines.size() && (used == row.padding || used + lines[drawn[i]].height + row.padding <= room)) {
        drawer_.draw(cell.more->text, cell.more->set, lines[drawn[i]], {space.left, top + used, space.width},
                     cell.align);
        used += lines[drawn[i]++].height;
      }
      height = std::max(height, used + row.padding);
      isDone = isDone && drawn[i] == lines.size();
    }
    drawFrame(row, part, top, height);
    if (!isDone) {
      flow_.endPage();
      beginPart(part);
    }
  }
}

LineSpace TableSetter::spaceOf(const SetCell& cell, const TablePart& part) const {
  const std::size_t place = part.placeOf(cell.column);
  const std::size_t end =
      cell.column == 0 && part.repeatsFirst() ? 1 : part.placeOf(std::min(cell.endColumn, part.end) - 1) + 1;
  return {flow_.left() + part.edges[place] + kCellPadding, 0, part.edges[end] - part.edges[place] - 2 * kCellPadding};
}

void TableSetter::draw(const SetRow& row, const TablePart& part, Length top) {
  drawFrame(row, part, top, row.height);
  for (const SetCell& cell : row.cells) {
    if (part.has(cell.column)) {
      drawCell(row, cell, part, top);
    }
  }
}

void TableSetter::drawCell(const SetRow& row, const SetCell& cell, const TablePart& part, Length top) {
  LineSpace space = spaceOf(cell, part);
  space.top = top + row.padding;
  if (cell.more) {
    for (const TextLine& line : cell.more->set.lines) {
      drawer_.draw(cell.more->text, cell.more->set, line, space, cell.align);
      space.top += line.height;
    }
  } else if (cell.end > cell.begin) {
    const Length free = space.width - cell.width;
    const Length before = cell.align == document::Align::Right    ? free
                          : cell.align == document::Align::Center ? free / 2
                                                                  : 0;
    drawer_.drawBytes(space.left + before, space.top + rows_.baseline(), cell.style, cell.font,
                      std::string_view(row.bytes).substr(cell.begin, cell.end - cell.begin));
  }
}

void TableSetter::drawFrame(const SetRow& row, const TablePart& part, Length top, Length height) {
  Canvas& canvas = pages_.canvas();
  for (const SetCell& cell : row.cells) {
    if (cell.background && part.has(cell.column)) {
      const LineSpace space = spaceOf(cell, part);
      canvas.area(space.left - kCellPadding, top, space.width + 2 * kCellPadding, height, *cell.background);
    }
  }
  const Length rule = row.isHeader ? kHeaderRule : kRule;
  canvas.area(flow_.left(), top + height - rule, part.edges.back(), rule,
              row.isHeader ? kHeaderRuleColor : kRowRuleColor);
}

// The rows wait until a page is full. The first page has what the text before the table leaves.
void TableSetter::addToPart(SetRow row) {
  prepare(row.height);
  if (waiting_.empty()) {
    waitingSpace_ = flow_.room() - headerHeight();
  }
  if (!waiting_.empty() && waitingHeight_ + row.height > waitingSpace_) {
    writeWaiting();
    flow_.endPage();
    waitingSpace_ = flow_.room() - headerHeight();
  }
  waitingHeight_ += row.height;
  waiting_.push_back(std::move(row));
}

void TableSetter::writeWaiting() {
  for (const TablePart& part : plan_.parts) {
    flow_.space(kBefore);
    flow_.keepTogether(headerHeight() + waitingHeight_);
    beginPart(part);
    for (const SetRow& row : waiting_) {
      place(row, part);
    }
  }
  waiting_.clear();
  waitingHeight_ = 0;
}

void TableSetter::end() {
  if (!hasBegun_ && !headers_.empty()) {
    prepare(0);
    if (plan_.parts.size() > 1) {
      writeWaiting();
    }
  } else if (!waiting_.empty()) {
    writeWaiting();
  }
  if (plan_.isTurned) {
    flow_.turn(false);
  }
  flow_.space(kAfter);
}

}  // namespace scrivalen::typeset
