#include "formats/text/text_table.h"

#include "document/tables/column_widths.h"
#include "text/columns/character_width.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <string>

namespace scrivalen::text {
namespace {

using document::Align;
using document::Cell;
using document::Row;
using document::Table;

constexpr std::size_t kGap = 2;
constexpr std::size_t kBlanksAtOnce = 16;
constexpr std::size_t kBytesPerColumn = 4;
// Rows that are wider are written piece by piece instead of in place.
constexpr std::size_t kMostColumnsInPlace = 8192;
// What a table that does not fit takes beyond its longest words, as a part of the line, so that the texts beside a long
// word need not break at every blank.
constexpr std::size_t kOverflowParts = 4;

std::vector<document::ColumnNeed> needsOf(const Table& table) {
  std::vector<document::ColumnNeed> needs;
  for (const document::Column& column : table.columns) {
    const std::size_t word = std::max<std::size_t>(column.longestWord, 1);
    const std::size_t line = std::max(column.longestLine, word);
    needs.push_back({static_cast<double>(word), static_cast<double>(line), column.width, std::round(column.usualLine)});
  }
  return needs;
}

std::vector<std::size_t> widthsOf(const Table& table, std::size_t columns, bool equal) {
  const auto needs = needsOf(table);
  const std::size_t gaps = kGap * (needs.size() - 1);
  const std::size_t space = columns > gaps ? columns - gaps : 0;
  if (equal) {
    return document::wholeEqualColumnWidths(needs, space).widths;
  }
  const auto result = document::wholeColumnWidths(needs, space);
  if (result.fit) {
    return result.widths;
  }
  std::size_t words = columns / kOverflowParts;
  for (const std::size_t width : result.widths) {
    words += width;
  }
  return document::wholeColumnWidths(needs, words).widths;
}

template <typename Block>
Block blockAt(const char* at) {
  Block block;
  std::memcpy(&block, at, sizeof block);
  return block;
}

// Eight bytes or fewer of a text of 1 to 8 bytes, some of them perhaps twice, the others 0x20.
std::uint64_t shortText(const char* at, std::size_t size) {
  constexpr std::uint64_t kEightBlanks = 0x2020202020202020;
  if (size == 8) {
    return blockAt<std::uint64_t>(at);
  }
  if (size >= 4) {
    return blockAt<std::uint32_t>(at) | std::uint64_t{blockAt<std::uint32_t>(at + size - 4)} << 32;
  }
  if (size >= 2) {
    return (kEightBlanks << 32) | blockAt<std::uint16_t>(at) |
           std::uint64_t{blockAt<std::uint16_t>(at + size - 2)} << 16;
  }
  return (kEightBlanks << 8) | static_cast<unsigned char>(*at);
}

// Whether eight bytes are ASCII without control characters. A borrow from the next byte comes only from a control
// character.
bool isPlain(std::uint64_t bytes) { return ((bytes | (bytes - 0x2020202020202020)) & 0x8080808080808080) == 0; }

// Whether a text that is not empty takes a column a byte and has no line feed.
bool isPlainLine(std::string_view text) {
  const char* at = text.data();
  std::size_t left = text.size();
  for (; left > 8; left -= 8, at += 8) {
    if (!isPlain(blockAt<std::uint64_t>(at))) {
      return false;
    }
  }
  return isPlain(shortText(at, left));
}

// Whether a line that is too long for its column cannot be broken.
bool isOneWord(std::string_view text) {
  Word word;
  WordReader reader(text);
  return reader.next(word) && word.text.size() == text.size();
}

// Writes up to kBlanksAtOnce blanks more than are counted.
char* putBlanks(char* out, std::size_t count) {
  char* const end = out + count;
  for (; out < end; out += kBlanksAtOnce) {
    std::memset(out, ' ', kBlanksAtOnce);
  }
  return end;
}

// A call of memcpy costs as much as a cell, so short texts are copied as two overlapping blocks.
char* putText(char* out, std::string_view text) {
  const std::size_t size = text.size();
  const char* const from = text.data();
  const auto copyTwo = [&](auto block) {
    block = blockAt<decltype(block)>(from);
    const auto last = blockAt<decltype(block)>(from + size - sizeof block);
    std::memcpy(out, &block, sizeof block);
    std::memcpy(out + size - sizeof block, &last, sizeof last);
  };
  if (size > 16) {
    std::memcpy(out, from, size);
  } else if (size >= 8) {
    copyTwo(std::uint64_t{});
  } else if (size >= 4) {
    copyTwo(std::uint32_t{});
  } else if (size >= 2) {
    copyTwo(std::uint16_t{});
  } else if (size == 1) {
    *out = *from;
  }
  return out + size;
}

}  // namespace

void TextTable::begin(const Table& table) {
  slots_.clear();
  std::size_t begin = 0;
  const auto widths = widthsOf(table, lines_.columns(), hasEqualColumns_);
  for (std::size_t i = 0; i < widths.size(); ++i) {
    slots_.push_back({begin, widths[i], table.columns[i].align});
    begin += widths[i] + kGap;
  }
  isAfterHeader_ = false;
  isAfterWrapped_ = false;
  isFirstOfBody_ = true;
}

void TextTable::row(const Row& row) {
  if (!separator_.empty()) {
    return writeSeparated(row);
  }
  if (isAfterHeader_ && !row.repeated) {
    writeDashes();
  }
  isAfterHeader_ = row.repeated;
  if (placeCells(row)) {
    writePlaced(row);
  } else {
    writeWrapped(row);
  }
}

void TextTable::end() {
  if (isAfterHeader_) {
    writeDashes();
  }
}

void TextTable::writeDashes() {
  line_.clear();
  for (const Slot& slot : slots_) {
    line_.append(slot.begin - line_.size(), ' ').append(slot.columns, '-');
  }
  lines_.write(line_);
  isFirstOfBody_ = true;
}

// A row of several lines has a blank line around it: it could not be told where it begins and ends.
void TextTable::separate(bool isWrapped, bool isHeader) {
  if ((isWrapped || isAfterWrapped_) && !isFirstOfBody_ && !isHeader) {
    lines_.write({});
  }
  isAfterWrapped_ = isWrapped;
  isFirstOfBody_ = false;
}

TextTable::Slot TextTable::slotOf(const Cell& cell, std::size_t column) const {
  Slot slot = slots_[column];
  if (cell.span > 1) {
    const Slot& last = slots_[std::min(column + static_cast<std::size_t>(cell.span), slots_.size()) - 1];
    slot.columns = last.begin + last.columns - slot.begin;
  }
  if (cell.align != Align::Auto) {
    slot.align = cell.align;
  }
  return slot;
}

// Where a text begins, after `used` columns of the line.
std::size_t TextTable::beginOfText(const Slot& slot, std::size_t columns, std::size_t used) {
  const std::size_t blanks = slot.columns > columns ? slot.columns - columns : 0;
  std::size_t begin = slot.begin;
  if (slot.align == Align::Right) {
    begin += blanks;
  } else if (slot.align == Align::Center) {
    begin += blanks / 2;
  }
  return std::max(begin, used > 0 ? used + kGap : 0);
}

// Finds the places of the texts of a row in which no cell is wrapped. @return false for another row
bool TextTable::placeCells(const Row& row) {
  places_.clear();
  std::size_t column = 0;
  std::size_t used = 0;
  for (const Cell& cell : row.cells) {
    const Slot slot = slotOf(cell, column);
    column += static_cast<std::size_t>(cell.span);
    std::size_t columns = cell.text.size();
    if (columns > 0 && !isPlainLine(cell.text)) {
      columns = columnsOf(cell.text);
      if (cell.text.size() > kBytesPerColumn * columns || cell.text.find('\n') != std::string_view::npos) {
        return false;
      }
    }
    if (columns > slot.columns && !isOneWord(cell.text)) {
      return false;
    }
    const std::size_t begin = beginOfText(slot, columns, used);
    places_.push_back({begin, columns});
    if (columns > 0) {
      used = begin + columns;
    }
  }
  columnsOfRow_ = used;
  return used <= kMostColumnsInPlace;
}

// Writes a row whose cells have their places.
void TextTable::writePlaced(const Row& row) {
  separate(false, row.repeated);
  const std::string_view prefix = lines_.beginLine();
  char* const line = out_.reserve(prefix.size() + kBytesPerColumn * columnsOfRow_ + kBlanksAtOnce + 1);
  char* at = putText(line, prefix);
  std::size_t used = 0;
  for (std::size_t i = 0; i < row.cells.size(); ++i) {
    const std::string_view text = row.cells[i].text;
    if (!text.empty()) {
      at = putText(putBlanks(at, places_[i].begin - used), text);
      used = places_[i].begin + places_[i].columns;
    }
  }
  while (at != line && at[-1] == ' ') {
    --at;
  }
  *at = '\n';
  out_.advance(at + 1);
}

// A cell of several columns leaves those after the first one empty, so that each row has all columns.
void TextTable::writeSeparated(const Row& row) {
  line_.clear();
  for (const Cell& cell : row.cells) {
    line_.append(cell.text);
    for (int i = 0; i < cell.span; ++i) {
      line_.append(separator_);
    }
  }
  line_.resize(line_.size() - separator_.size());
  std::replace(line_.begin(), line_.end(), '\n', ' ');
  lines_.write(line_);
}

void TextTable::writeWrapped(const Row& row) {
  open_.clear();
  std::size_t column = 0;
  bool isWrapped = false;
  for (const Cell& cell : row.cells) {
    const Slot slot = slotOf(cell, column);
    column += static_cast<std::size_t>(cell.span);
    OpenCell& open = open_.emplace_back(OpenCell{slot, LineReader(cell.text, slot.columns), {}});
    open.reader.next(open.line);
    isWrapped = isWrapped || !open.reader.isAtEnd();
  }
  separate(isWrapped, row.repeated);
  bool hasMore = true;
  while (hasMore) {
    writeLine();
    hasMore = false;
    for (OpenCell& cell : open_) {
      cell.line = {};
      hasMore = cell.reader.next(cell.line) || hasMore;
    }
  }
}

// Writes one line of each open cell.
void TextTable::writeLine() {
  line_.clear();
  std::size_t used = 0;
  for (const OpenCell& cell : open_) {
    if (!cell.line.text.empty()) {
      const std::size_t begin = beginOfText(cell.slot, cell.line.columns, used);
      line_.append(begin - used, ' ').append(cell.line.text);
      used = begin + cell.line.columns;
    }
  }
  lines_.write(line_);
}

}  // namespace scrivalen::text
