#include "formats/xlsx/document/workbook_writer.h"

#include "document/language.h"
#include "formats/xlsx/document/block_writer.h"
#include "formats/xlsx/document/sheet/column_layout.h"
#include "formats/xlsx/document/table_writer.h"
#include "formats/xlsx/workbook/cell_text.h"
#include "formats/xlsx/workbook/package.h"
#include "output/archive/zip_writer.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <string>
#include <utility>
#include <vector>

namespace scrivalen::xlsx {
namespace {

using document::Event;
using document::EventKind;
using document::WarningCode;

constexpr std::size_t kMostHeld = 1048576;  // bytes of rows before a sheet's first table
constexpr std::uint32_t kMostFrozen = 12;   // rows: more would leave no room for those that scroll
constexpr double kDigitsPerIndent = 1.3;

class WorkbookWriter final : public document::DocumentWriter, private ProseTarget {
 public:
  explicit WorkbookWriter(const document::WriterContext& context)
      : settings_(context.settings),
        warnings_(context.warnings),
        zip_(context.out, context.settings.clock()),
        page_(context.settings, context.warnings),
        sheets_(zip_, formats_, page_),
        looks_(Looks::of(context.settings, context.warnings, formats_)),
        numbers_(context.settings, formats_),
        tables_(sheets_, formats_, numbers_, looks_),
        blocks_(looks_, *this) {}

  void begin() override {}
  void write(const Event& event) override;
  void beginTable(const document::Table& table) override;
  void row(const document::Row& row) override { tables_.row(row); }
  void endTable() override;
  void finish() override;

 private:
  void beginSection(const Event& section);
  void put(ProseRow row) override;
  void hold(ProseRow row);
  void writeProse(const ProseRow& row);
  void writeText(SheetWriter& sheet, const ProseRow& row);
  void writePictures(SheetWriter& sheet, const ProseRow& row);
  SheetWriter& sheetWithSpace();
  void startSheet(const SheetLayout& layout);
  SheetLayout layoutOf(const document::Table& table) const;
  SheetLayout usualLayout() const;
  void finishSheet();
  WorkbookProperties properties() const;
  void warn();

  const document::FormatSettings& settings_;
  document::OutputWarnings& warnings_;
  ZipWriter zip_;
  CellFormats formats_;
  PageSetup page_;
  Sheets sheets_;
  Looks looks_;
  NumberFormats numbers_;
  TableWriter tables_;
  BlockWriter blocks_;

  std::string wish_;        // the name of the sheet that comes
  std::string sectionId_;   // of that sheet
  bool isAwaited_ = false;  // whether a sheet comes even without rows
  bool hasTable_ = false;   // the sheet that is open
  bool isAfterHeading_ = false;
  bool isAfterTable_ = false;
  std::vector<ProseRow> held_;  // rows of a sheet that has not begun
  std::size_t heldBytes_ = 0;
};

void WorkbookWriter::write(const Event& event) {
  switch (event.kind) {
    case EventKind::Title: return;
    case EventKind::BeginSection: return beginSection(event);
    case EventKind::EndSection: blocks_.endParagraph(); return finishSheet();
    default: return blocks_.write(event);
  }
}

void WorkbookWriter::beginSection(const Event& section) {
  blocks_.endParagraph();
  finishSheet();
  wish_ = section.text;
  sectionId_ = section.id;
  isAwaited_ = true;
}

// ---- Rows outside tables

void WorkbookWriter::put(ProseRow row) {
  if (sheets_.isOpen()) {
    writeProse(row);
  } else {
    hold(std::move(row));
  }
}

void WorkbookWriter::hold(ProseRow row) {
  constexpr std::size_t kBytesOfARow = 256;
  heldBytes_ += kBytesOfARow + row.text.text.size();
  for (const PlacedPicture& picture : row.text.pictures) {
    heldBytes_ += picture.picture->bytes().size();
  }
  held_.push_back(std::move(row));
  if (heldBytes_ > kMostHeld) {
    startSheet(usualLayout());
  }
}

SheetWriter& WorkbookWriter::sheetWithSpace() {
  if (sheets_.current().isFull()) {
    const SheetLayout layout = sheets_.current().layout();
    const std::string name = sheets_.current().name();
    sheets_.begin(name, layout);
    hasTable_ = false;
  }
  return sheets_.current();
}

void WorkbookWriter::writeProse(const ProseRow& row) {
  SheetWriter* sheet = &sheetWithSpace();
  if (sheet->row() > 0 && (row.hasBlankBefore || isAfterTable_)) {
    sheet->skipRow();
    sheet = &sheetWithSpace();
  }
  isAfterTable_ = false;
  isAfterHeading_ = row.isHeading;
  if (row.hasBreakBefore) {
    sheet->breakPage();
  }
  if (!row.text.text.empty() || row.text.pictures.empty()) {
    writeText(*sheet, row);
  }
  writePictures(sheetWithSpace(), row);
}

// A text that is too long for the columns it may cover is wrapped in them. No reader gives joined cells the height of
// their text, and not every one gives it to other cells, so it is stated.
void WorkbookWriter::writeText(SheetWriter& sheet, const ProseRow& row) {
  constexpr double kUsualSize = 1100;
  const SheetLayout& layout = sheet.layout();
  CellFormat format = row.format;
  const double scale = format.font.size / kUsualSize;
  const double space = (layout.proseWidth - format.indent * kDigitsPerIndent) / scale;
  const double lines = linesOf(row.text.text, space);
  format.wraps = lines > 1;
  format.isTop = format.wraps;
  const double height = shownLinesOf(row.text.text, space) * kLineHeight * scale;
  sheet.beginRow(format.wraps || scale > 1 ? std::min(height, kHighestRow) : 0);
  sheet.rich(0, format, row.text);
  if (format.wraps && layout.proseColumns > 1) {
    sheet.merge(0, layout.proseColumns - 1);
  }
  sheet.endRow();
}

void WorkbookWriter::writePictures(SheetWriter& sheet, const ProseRow& row) {
  constexpr double kEdge = 2;
  SheetWriter* target = &sheet;
  for (PlacedPicture picture : row.text.pictures) {
    const double width = target->layout().proseWidth * kPointsPerDigit;
    const double scale = std::min({1.0, width / picture.width, kHighestPicture / picture.height});
    picture.width *= scale;
    picture.height *= scale;
    target->beginRow(picture.height + kEdge);
    target->addPicture(0, kEdge / 2, picture);
    if (row.text.text.empty()) {
      RichText places;
      places.anchors = row.text.anchors;
      places.links = row.text.links;
      target->rich(0, looks_.body, places);
    }
    target->endRow();
    target = &sheetWithSpace();
  }
}

// ---- Sheets

SheetLayout WorkbookWriter::usualLayout() const {
  SheetLayout layout;
  layout.widths = {looks_.columnWidth.value_or(kProseWidth)};
  layout.proseWidth = layout.widths.front();
  layout.isRightToLeft = document::isRightToLeft(settings_.text("language"));
  return layout;
}

SheetLayout WorkbookWriter::layoutOf(const document::Table& table) const {
  SheetLayout layout;
  layout.widths = sheetWidths(table, settings_);
  if (looks_.columnWidth) {
    layout.widths.assign(layout.widths.size(), *looks_.columnWidth);
  }
  layout.isRightToLeft = document::isRightToLeft(settings_.text("language"));
  layout.proseColumns = 0;
  while (layout.proseWidth < kProseWidth && layout.proseColumns < kMostColumns) {
    layout.proseWidth += layout.widthOf(layout.proseColumns++);
  }
  return layout;
}

void WorkbookWriter::startSheet(const SheetLayout& layout) {
  SheetWriter& sheet = sheets_.begin(std::exchange(wish_, {}), layout);
  isAwaited_ = false;
  hasTable_ = false;
  isAfterTable_ = false;
  isAfterHeading_ = false;
  sheet.addAnchor(std::exchange(sectionId_, {}));
  heldBytes_ = 0;
  for (const ProseRow& row : std::exchange(held_, {})) {
    writeProse(row);
  }
}

void WorkbookWriter::finishSheet() {
  if (!sheets_.isOpen() && (isAwaited_ || !held_.empty())) {
    startSheet(usualLayout());
  }
  sheets_.end();
}

void WorkbookWriter::beginTable(const document::Table& table) {
  blocks_.endItem();
  const std::uint32_t header = TableWriter::headerRowsOf(table);
  if (!sheets_.isOpen()) {
    SheetLayout layout = layoutOf(table);
    // The rows before the table: each, the blank ones before headings, and one before the table.
    std::uint32_t before = 0;
    bool isHeading = true;
    for (const ProseRow& row : held_) {
      before += row.hasBlankBefore && before > 0 ? 1u : 0u;
      before += static_cast<std::uint32_t>(row.text.pictures.size());
      before += !row.text.text.empty() || row.text.pictures.empty() ? 1u : 0u;
      isHeading = row.isHeading;
    }
    before += isHeading ? 0u : 1u;
    layout.frozenRows = header > 0 && before + header <= kMostFrozen ? before + header : 0;
    layout.frozenRows = looks_.frozenRows.value_or(layout.frozenRows);
    startSheet(layout);
  }
  SheetWriter& sheet = sheetWithSpace();
  if (sheet.row() > 0 && !isAfterHeading_) {
    sheet.skipRow();
  }
  sheetWithSpace();
  tables_.begin(table, !std::exchange(hasTable_, true));
}

void WorkbookWriter::endTable() {
  tables_.end();
  isAfterTable_ = true;
  isAfterHeading_ = false;
}

WorkbookProperties WorkbookWriter::properties() const {
  return {.created = settings_.clock(),
          .title = settings_.text("title"),
          .subject = settings_.text("subject"),
          .author = settings_.text("author"),
          .keywords = settings_.text("keywords"),
          .language = settings_.text("language"),
          .own = settings_.properties()};
}

void WorkbookWriter::finish() {
  blocks_.endParagraph();
  finishSheet();
  if (sheets_.written().empty()) {
    sheets_.begin({}, usualLayout());
    sheets_.end();
  }
  writePackage(zip_, {sheets_.written(), sheets_.drawings(), formats_.xml(), sheets_.places().xml()}, properties());
  zip_.finish();
  warn();
}

void WorkbookWriter::warn() {
  const CellLosses& losses = sheets_.losses();
  const auto add = [this](WarningCode code, std::uint64_t count, std::string_view message) {
    if (count > 0) {
      warnings_.add(code, message, count);
    }
  };
  add(WarningCode::CharactersReplaced, losses.replaced, "characters that XML cannot contain, written as U+FFFD");
  add(WarningCode::TextCut, losses.cut, "cells cut at 32,767 characters");
  add(WarningCode::CellsDropped, losses.dropped, "cells dropped beyond column 16,384");
  add(WarningCode::SomethingLeftOut, losses.plainLinks, "links that a sheet does not take, written as text");
  add(WarningCode::SomethingLeftOut, formats_.refused(),
      "cells without their colours, beyond the formats of a workbook");
}

}  // namespace

std::unique_ptr<document::DocumentWriter> createXlsxDocumentWriter(const document::WriterContext& context) {
  return std::make_unique<WorkbookWriter>(context);
}

}  // namespace scrivalen::xlsx
