#pragma once

#include "document/model/warnings.h"
#include "formats/xlsx/document/cells/rich_text.h"
#include "formats/xlsx/document/sheet/links.h"
#include "formats/xlsx/document/sheet/page_setup.h"
#include "formats/xlsx/document/sheet/pictures.h"
#include "formats/xlsx/workbook/cell_formats.h"
#include "formats/xlsx/workbook/cell_name.h"
#include "formats/xlsx/workbook/sheet_rows.h"
#include "output/archive/zip_writer.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace scrivalen::xlsx {

/// How a sheet is shown. It is known before the first row.
struct SheetLayout : SheetFrame {
  std::uint32_t proseColumns = 1;  ///< that a long text outside tables covers
  double proseWidth = 0;           ///< of these, in digits

  double widthOf(std::uint32_t column) const;
};

/// Whether rows at the top of a sheet leave room for those that scroll, also in a low window.
bool canFreeze(std::uint32_t rows, double heightPt);

/// How many cells of a workbook could not be written as given.
struct CellLosses {
  std::uint64_t cut = 0;
  std::uint64_t dropped = 0;
  std::uint64_t replaced = 0;  ///< characters
  std::uint64_t plainLinks = 0;
  std::uint64_t innerLinks = 0;  ///< of texts that are no link as a whole
  std::uint64_t plainParts = 0;  ///< without their backgrounds
  std::uint64_t tooLarge = 0;    ///< for what is left of a sheet
  std::uint64_t breaks = 0;      ///< of pages
  std::uint64_t cutTitles = 0;   ///< of links
};

/// How many parts of some kinds a workbook has so far.
struct PartCounts {
  std::size_t drawings = 0;
  std::size_t images = 0;
  std::string headerImage;  ///< the file of the picture in headers, once it is written
};

/// The bytes of XML that a cell with such a text has at most.
std::uint64_t mostBytesOf(const RichText& text);
/// The same for a plain one.
std::uint64_t mostBytesOf(std::string_view text);

/// Writes a sheet of a document, with what belongs to its cells: links, places, pictures.
class SheetWriter : public SheetRows {
 public:
  /// @param zip, formats, places, losses  not owned; must outlive this object
  SheetWriter(ZipWriter& zip, CellFormats& formats, NamedPlaces& places, CellLosses& losses, std::string name,
              std::size_t number, const SheetLimits& limits);

  void begin(const SheetLayout& layout);
  const SheetLayout& layout() const { return layout_; }
  const std::string& name() const { return name_; }

  /// What SheetRows says of them, with what comes after the rows.
  bool isFull() const { return SheetRows::isFull() || !hasRoomFor(0); }
  bool hasRoomFor(std::uint64_t bytes) const { return SheetRows::hasRoomFor(bytes + merges_.size() + links_.size()); }

  /// Like the other cells: in the open row, in ascending columns. A text that is too long is cut, and a long one that
  /// has no room left out.
  void text(std::uint32_t column, std::uint32_t format, std::string_view text);
  /// A text with its link and anchors; its pictures are placed by the caller.
  /// @param format  its font is that of the text's only run
  void rich(std::uint32_t column, CellFormat format, const RichText& text);

  void addPicture(std::uint32_t column, double topPt, PlacedPicture picture) {
    pictures_.add(row(), column, topPt, std::move(picture));
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
  void longText(std::uint32_t column, std::uint32_t format, std::string_view text);
  std::string runsXml(const RichText& text, std::string_view kept, const Font& font);
  std::string addLink(std::uint32_t column, const RichText& text);
  std::string settingElements(const PageSetup& page, bool isLandscape) const;
  std::string drawingElements(const PageSetup& page) const;
  void writeHeaderPicture(const HeaderPicture& picture, PartCounts& parts);

  ZipWriter& zip_;
  CellFormats& formats_;
  CellLosses& losses_;
  NamedPlaces& places_;
  std::string name_;
  SheetLayout layout_;
  SheetLinks links_;
  SheetPictures pictures_;
  std::string merges_;
  std::size_t mergeCount_ = 0;
  std::vector<std::uint32_t> breaks_;
  std::optional<CellRange> filter_;
  std::optional<CellRange> titleRows_;
};

}  // namespace scrivalen::xlsx
