#include "formats/markup/html/html_tables.h"

#include "formats/markup/html/html_style.h"

#include <algorithm>
#include <cstring>

namespace scrivalen::document {
namespace {

constexpr std::string_view kDate = "<td class=\"date\"";
constexpr std::string_view kColumnHeader = "<th scope=\"col\"";
constexpr std::string_view kRowHeader = "<th scope=\"row\"";

// Browsers divide dates at their hyphens unless the style sheet forbids it.
bool isDate(const Cell& cell) {
  constexpr std::size_t kSize = std::string_view("yyyy-mm-dd").size();
  return cell.type == ValueType::Date || cell.type == ValueType::Time ||
         (cell.text.size() == kSize && isIsoDate(cell.text));
}

bool hasWidths(const Table& table) {
  return std::any_of(table.columns.begin(), table.columns.end(), [](const Column& c) { return c.width > 0; });
}

}  // namespace

void HtmlTables::begin(const Table& table) {
  rowGroup_ = RowGroup::None;
  setColumns(table);
  std::string style = hasWidths(table) ? "width:100%" : "";
  tag_ = "<table";
  const HtmlPrintSize size = settings_ ? htmlPrintSize(table, *settings_) : HtmlPrintSize();
  if (size.points > 0) {
    tag_ += size.wordsAreDivided ? " class=\"wide crowded\"" : " class=\"wide\"";
    style.append(style.empty() ? "" : ";").append("--print:");
    appendNumber(style, size.points, 1);
    style += "pt";
  }
  appendStyle(tag_, style);
  markup_.put(tag_.append(">\n"));
  if (hasWidths(table)) {
    putWidths(table);
  }
}

void HtmlTables::setColumns(const Table& table) {
  tags_.clear();
  aligns_.clear();
  for (const Column& column : table.columns) {
    // A column of texts begins where its language does.
    const Align align = column.align == Align::Left ? Align::Auto : column.align;
    aligns_.push_back(align);
    tags_.push_back({.data = cellTag("<td", align),
                     .date = cellTag(kDate, align),
                     .columnHeader = cellTag(kColumnHeader, align),
                     .rowHeader = cellTag(kRowHeader, align)});
  }
}

HtmlTables::CellTag HtmlTables::cellTag(std::string_view start, Align align) const {
  CellTag tag;
  for (const std::string_view part : {start, markup_.alignment(align), std::string_view(">")}) {
    std::memcpy(tag.bytes + tag.size, part.data(), part.size());
    tag.size += part.size();
  }
  return tag;
}

// Columns without a width get what is left, as if each had the mean of the others.
void HtmlTables::putWidths(const Table& table) {
  double sum = 0;
  double given = 0;
  for (const Column& column : table.columns) {
    sum += column.width;
    given += column.width > 0 ? 1 : 0;
  }
  const double whole = sum * static_cast<double>(table.columns.size()) / given;
  markup_.put("<colgroup>");
  for (const Column& column : table.columns) {
    tag_ = column.width > 0 ? "<col style=\"width:" : "<col>";
    if (column.width > 0) {
      appendNumber(tag_, 100 * column.width / whole, 2);
      tag_ += "%\">";
    }
    markup_.put(tag_);
  }
  markup_.put("</colgroup>\n");
}

void HtmlTables::end() {
  enterRowGroup(RowGroup::None);
  markup_.put("</table>\n");
}

void HtmlTables::enterRowGroup(RowGroup group) {
  if (group == rowGroup_) {
    return;
  }
  markup_.put(rowGroup_ == RowGroup::None ? "" : rowGroup_ == RowGroup::Head ? "</thead>\n" : "</tbody>\n");
  markup_.put(group == RowGroup::None ? "" : group == RowGroup::Head ? "<thead>\n" : "<tbody>\n");
  rowGroup_ = group;
}

inline bool HtmlTables::isPlain(const Cell& cell) {
  return cell.content == nullptr && cell.span == 1 && cell.align == Align::Auto && !cell.color && !cell.background &&
         cell.text.size() <= kLongestPlain;
}

// Inline, since a call would cost as much as the copy of a short text.
inline void HtmlTables::putPlainCell(const CellTag& tag, std::string_view text, bool isHeader) {
  constexpr std::size_t kEndTag = 5;
  OutputBuffer& out = markup_.out();
  char* at = out.reserve(2 * CellTag::kSpace + MarkupText::spaceFor(text.size()));
  std::memcpy(at, tag.bytes, CellTag::kSpace);
  at = markup_.escaper().content(at + tag.size, text, HtmlMarkup::kLineBreak);
  std::memcpy(at, isHeader ? "</th>" : "</td>", kEndTag);
  out.advance(at + kEndTag);
}

void HtmlTables::row(const Row& row) {
  enterRowGroup(row.repeated ? RowGroup::Head : RowGroup::Body);
  markup_.put("<tr>");
  std::size_t column = 0;
  for (const Cell& cell : row.cells) {
    if (isPlain(cell)) {
      const ColumnTags& tags = tags_[column];
      const CellTag& tag = row.header     ? tags.columnHeader
                           : cell.header  ? tags.rowHeader
                           : isDate(cell) ? tags.date
                                          : tags.data;
      putPlainCell(tag, cell.text, row.header || cell.header);
    } else {
      putCell(cell, column, row.header);
    }
    column += static_cast<std::size_t>(cell.span);
  }
  markup_.put("</tr>\n");
}

void HtmlTables::putCell(const Cell& cell, std::size_t column, bool isInHeaderRow) {
  putCellStart(cell, column, isInHeaderRow);
  if (cell.content != nullptr) {
    cell.replay(content_);
  } else {
    markup_.putText(cell.text);
  }
  markup_.put(isInHeaderRow || cell.header ? "</th>" : "</td>");
}

void HtmlTables::putCellStart(const Cell& cell, std::size_t column, bool isInHeaderRow) {
  tag_ = isInHeaderRow ? kColumnHeader : cell.header ? kRowHeader : isDate(cell) ? kDate : "<td";
  if (cell.span > 1) {
    tag_ += " colspan=\"";
    appendNumber(tag_, cell.span);
    tag_ += '"';
  }
  std::string style;
  const std::string_view align = markup_.alignment(cell.align == Align::Auto ? aligns_[column] : cell.align);
  if (!align.empty()) {
    style = align.substr(align.find('"') + 1, align.rfind('"') - align.find('"') - 1);
  }
  appendColors(style, cell.color, cell.background);
  appendStyle(tag_, style);
  markup_.put(tag_.append(">"));
}

}  // namespace scrivalen::document
