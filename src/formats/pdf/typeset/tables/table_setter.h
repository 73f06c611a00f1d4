#pragma once

#include "document/settings/settings.h"
#include "formats/pdf/typeset/blocks/text_setter.h"
#include "formats/pdf/typeset/tables/table_row.h"
#include "formats/pdf/typeset/tables/table_tags.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace scrivalen::typeset {

/// Sets tables: the header rows are on each page, and a row is on one page if that holds it. Of a table in parts the
/// rows of a page wait until it is full; then each part draws them.
class TableSetter {
 public:
  /// All are not owned and must outlive this object.
  /// @param tagger  null: the document has no tags
  TableSetter(const document::FormatSettings& settings, Flow& flow, PageMaker& pages, TextSetter& texts,
              TextDrawer& drawer, FontSet& fonts, Shaper& shaper, PictureWriter& pictures,
              document::OutputWarnings& warnings, Family family, Tagger* tagger = nullptr)
      : settings_(settings),
        flow_(flow),
        pages_(pages),
        texts_(texts),
        drawer_(drawer),
        fonts_(fonts),
        shaper_(shaper),
        family_(family),
        rows_(fonts, shaper, pictures, warnings, family),
        tags_(tagger) {}

  void begin(const document::Table& table);
  void row(const document::Row& row);
  void end();

 private:
  /// The lines of a cell that are on a page.
  struct CellLines {
    const SetCell* cell;
    std::size_t begin;
    std::size_t end;
    std::optional<TextTags> tags = std::nullopt;
  };

  void prepare(Length firstHeight, Length secondHeight);
  void beginRows(Length secondHeight);
  void add(SetRow& row);
  void addToParts(SetRow row);
  bool isFullFor(const SetRow& row) const;
  void beginWaiting();
  void writeWaiting();
  void beginPart(const TablePart& part);
  void place(const SetRow& row, const TablePart& part);
  void placeAcrossPages(const SetRow& row, const TablePart& part);
  void nextPage(const TablePart& part);
  Length fitLines(std::vector<CellLines>& cells, Length padding, bool isNew) const;
  void draw(const SetRow& row, const TablePart& part, Length top);
  void drawCell(const SetRow& row, CellLines& lines, const TablePart& part, Length textTop);
  void drawFrame(const SetRow& row, const TablePart& part, Length top, Length height);
  LineSpace spaceOf(const SetCell& cell, const TablePart& part) const;
  Length placeOf(Length left, Length width) const;
  Length take(Length height);
  Length headerHeight() const;
  Length headerHeightIn(const TablePart& part) const;

  const document::FormatSettings& settings_;
  Flow& flow_;
  PageMaker& pages_;
  TextSetter& texts_;
  TextDrawer& drawer_;
  FontSet& fonts_;
  Shaper& shaper_;
  Family family_;
  RowSetter rows_;
  TableTags tags_;

  TablePlan plan_;
  std::vector<SetRow> headers_;
  SetRow row_;
  std::optional<SetRow> first_;  // waits for the second row
  std::vector<SetRow> waiting_;
  std::vector<Length> waitingHeights_;  // of each part with its headers
  Length waitingSpace_ = 0;
  std::size_t waitingCells_ = 0;
  bool hasBegun_ = false;
  bool isMirrored_ = false;
};

}  // namespace scrivalen::typeset
