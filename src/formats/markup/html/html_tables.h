#pragma once

#include "document/model/table.h"
#include "document/settings/settings.h"
#include "formats/markup/html/html_markup.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace scrivalen::document {

/// Writes tables. A cell with nothing but text costs one copy of its start tag and one pass over its text.
class HtmlTables {
 public:
  /// @param markup    not owned; must outlive this object
  /// @param settings  with the paper that tables are to fit on; null: there is none. Not owned
  /// @param content   gets what a cell with spans, links and the like contains; not owned
  HtmlTables(HtmlMarkup& markup, const FormatSettings* settings, EventSink& content)
      : markup_(markup), settings_(settings), content_(content) {}

  void begin(const Table& table);
  void row(const Row& row);
  void end();

 private:
  // The start tag of most cells of a column, with the space to be copied in one piece.
  struct CellTag {
    static constexpr std::size_t kSpace = 48;

    char bytes[kSpace] = {};
    std::size_t size = 0;
  };

  struct ColumnTags {
    CellTag data;
    CellTag date;
    CellTag columnHeader;
    CellTag rowHeader;
  };

  enum class RowGroup { None, Head, Body };

  // The longest text that is written in place together with its tags.
  static constexpr std::size_t kLongestPlain = MarkupText::longestInPlace(OutputBuffer::kBlock - 2 * CellTag::kSpace);

  static bool isPlain(const Cell& cell);
  CellTag cellTag(std::string_view start, Align align) const;
  void setColumns(const Table& table);
  void putWidths(const Table& table);
  void enterRowGroup(RowGroup group);
  void putPlainCell(const CellTag& tag, std::string_view text, bool isHeader);
  void putCell(const Cell& cell, std::size_t column, bool isInHeaderRow);
  void putCellStart(const Cell& cell, std::size_t column, bool isInHeaderRow);

  HtmlMarkup& markup_;
  const FormatSettings* const settings_;
  EventSink& content_;
  std::string tag_;  // kept for its memory
  std::vector<Align> aligns_;
  std::vector<ColumnTags> tags_;
  RowGroup rowGroup_ = RowGroup::None;
};

}  // namespace scrivalen::document
