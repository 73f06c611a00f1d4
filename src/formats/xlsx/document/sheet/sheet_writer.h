#pragma once

#include "document/model/warnings.h"
#include "formats/xlsx/document/cells/cell_formats.h"
#include "formats/xlsx/document/cells/cell_name.h"
#include "formats/xlsx/document/cells/rich_text.h"
#include "formats/xlsx/document/sheet/links.h"
#include "formats/xlsx/document/sheet/page_setup.h"
#include "formats/xlsx/document/sheet/pictures.h"
#include "output/archive/zip_writer.h"
#include "output/markup_text.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace scrivalen::xlsx {

/// How a sheet is shown. It is known before the first row.
struct SheetLayout {
  std::vector<double> widths;  ///< of the first columns, in digits; the others have the usual one
  std::uint32_t frozenRows = 0;
  bool isRightToLeft = false;
  std::uint32_t proseColumns = 1;  ///< that a long text outside tables covers
  double proseWidth = 0;           ///< of these, in digits

  double widthOf(std::uint32_t column) const;
};

/// How many cells of a workbook could not be written as given.
struct CellLosses {
  std::uint64_t cut = 0;
  std::uint64_t dropped = 0;
  std::uint64_t replaced = 0;  ///< characters
  std::uint64_t plainLinks = 0;
};

/// How many parts of some kinds a workbook has so far.
struct PartCounts {
  std::size_t drawings = 0;
  std::size_t images = 0;
  std::string headerImage;  ///< the file of the picture in headers, once it is written
};

/// Writes a sheet from its first row to its last, into the entry of an archive.
class SheetWriter {
 public:
  /// @param zip, formats, places, losses  not owned; must outlive this object
  SheetWriter(ZipWriter& zip, CellFormats& formats, NamedPlaces& places, CellLosses& losses, std::string name,
              std::size_t number);

  void begin(const SheetLayout& layout);
  const SheetLayout& layout() const { return layout_; }
  const std::string& name() const { return name_; }

  /// The row that is open, or else the next one; counted from 0.
  std::uint32_t row() const { return row_; }
  /// Whether no further row has room.
  bool isFull() const;
  /// @param heightPt  0: the usual one; readers that measure their texts themselves do not change it
  void beginRow(double heightPt = 0);
  void endRow();
  /// Leaves rows empty.
  void skipRow() { ++row_; }

  /// Each writes a cell of the open row, in ascending columns.
  void blank(std::uint32_t column, std::uint32_t format);
  void text(std::uint32_t column, std::uint32_t format, std::string_view text);
  void number(std::uint32_t column, std::uint32_t format, std::string_view digits);
  void boolean(std::uint32_t column, std::uint32_t format, std::string_view digit);
  /// A text with its link and anchors; its pictures are placed by the caller.
  /// @param format  its font is that of the text's only run
  void rich(std::uint32_t column, CellFormat format, const RichText& text);

  void addPicture(std::uint32_t column, double topPt, PlacedPicture picture) {
    pictures_.add(row_, column, topPt, std::move(picture));
  }
  void addAnchor(std::string_view id);
  /// Joins cells of the open row.
  void merge(std::uint32_t firstColumn, std::uint32_t lastColumn);
  void breakPage();

  /// That of the sheet's first table.
  void setFilter(const CellRange& range) { filter_ = range; }
  const std::optional<CellRange>& filter() const { return filter_; }
  void setTitleRows(std::uint32_t first, std::uint32_t last) { titleRows_ = CellRange{first, 0, last, 0}; }
  const std::optional<CellRange>& titleRows() const { return titleRows_; }

  /// Writes the rest of the sheet and its parts.
  void end(const PageSetup& page, bool isLandscape, PartCounts& parts);

 private:
  char* putCellStart(char* out, std::uint32_t column, std::uint32_t format);
  void writeValue(std::uint32_t column, std::uint32_t format, std::string_view type, std::string_view value);
  const std::string& nameOf(std::uint32_t column);
  std::string runsXml(const RichText& text, std::string_view kept, const Font& font);
  std::string addLink(std::uint32_t column, const RichText& text);
  std::string tail(const PageSetup& page, bool isLandscape) const;
  void writeHeaderPicture(const HeaderPicture& picture, PartCounts& parts);
  void put(std::string_view xml) { zip_.content().write(xml.data(), xml.size()); }

  ZipWriter& zip_;
  CellFormats& formats_;
  CellLosses& losses_;
  NamedPlaces& places_;
  std::string name_;
  std::size_t number_;
  SheetLayout layout_;
  SheetLinks links_;
  SheetPictures pictures_;
  MarkupText markup_;
  std::uint32_t row_ = 0;
  std::string rowDigits_;
  std::vector<std::string> columnNames_;
  std::string merges_;
  std::size_t mergeCount_ = 0;
  std::vector<std::uint32_t> breaks_;
  std::optional<CellRange> filter_;
  std::optional<CellRange> titleRows_;
};

}  // namespace scrivalen::xlsx
