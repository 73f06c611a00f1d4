#include "formats/xlsx/document/workbook_writer.h"

#include "formats/xlsx/document/block_writer.h"
#include "formats/xlsx/document/prose_layout.h"
#include "formats/xlsx/document/sheet/text_height.h"
#include "formats/xlsx/document/sheet_plan.h"
#include "formats/xlsx/document/table_writer.h"
#include "formats/xlsx/workbook/cell_text.h"
#include "formats/xlsx/workbook/package.h"
#include "output/archive/zip_writer.h"

#include <string>
#include <utility>

namespace scrivalen::xlsx {
namespace {

using document::Event;
using document::EventKind;
using document::WarningCode;

class WorkbookWriter final : public document::DocumentWriter, private ProseTarget, private SheetTarget {
 public:
  WorkbookWriter(const document::WriterContext& context, const SheetLimits& limits)
      : settings_(context.settings),
        warnings_(context.warnings),
        zip_(context.out, context.settings.clock()),
        page_(context.settings, context.warnings),
        sheets_(zip_, formats_, page_, limits),
        looks_(Looks::of(context.settings, context.warnings, formats_)),
        numbers_(context.settings, formats_),
        tables_(sheets_, formats_, numbers_, looks_),
        blocks_(looks_, *this),
        plan_(context.settings, looks_) {}

  void begin() override {}
  void write(const Event& event) override;
  void beginTable(const document::Table& table) override;
  void row(const document::Row& row) override;
  void endTable() override;
  void finish() override;

 private:
  void beginSection(const Event& section);
  void put(ProseRow row) override;
  void writeProse(const ProseRow& row) override;
  void beginHeldTable(const document::Table& table, const TableHead& head) override { startTable(table, head); }
  void writeHeldRow(const document::Row& row) override { tables_.row(row); }
  void endHeldTable() override { finishTable(); }
  void writeText(SheetWriter& sheet, const ProseRow& row);
  void writePictures(SheetWriter& sheet, const ProseRow& row);
  SheetWriter& sheetWithSpace(std::uint32_t frozenRows = 0);
  void startSheet(bool isWhole);
  void startSheetIfFull();
  void startTable(const document::Table& table, const TableHead& head);
  void finishTable();
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

  std::string wish_;            // the name of the sheet that comes
  std::string sectionId_;       // of that sheet
  bool isAwaited_ = false;      // whether a sheet comes even without rows
  bool hasTable_ = false;       // the sheet that is open
  bool isOfFirstTable_ = true;  // whether the sheet is about it
  bool isAfterHeading_ = false;
  bool isAfterTable_ = false;
  SheetPlan plan_;  // of a sheet that has not begun
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
    plan_.add(std::move(row));
    startSheetIfFull();
  }
}

// Another sheet continues one that is full.
SheetWriter& WorkbookWriter::sheetWithSpace(std::uint32_t frozenRows) {
  if (sheets_.current().isFull()) {
    SheetLayout layout = sheets_.current().layout();
    layout.frozenRows = frozenRows;
    const std::string name = sheets_.current().name();
    sheets_.begin(name, layout);
    hasTable_ = false;
    isOfFirstTable_ = true;
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
  if (row.hasText()) {
    writeText(*sheet, row);
  }
  writePictures(sheetWithSpace(), row);
}

// No reader gives joined cells the height of their text, and not every one gives it to other cells, so it is stated.
void WorkbookWriter::writeText(SheetWriter& sheet, const ProseRow& row) {
  const SheetLayout& layout = sheet.layout();
  const ProseText text = proseTextOf(row, layout);
  sheet.beginRow(text.format.wraps || text.heightPt > kLineHeight ? text.heightPt : 0);
  sheet.rich(0, text.format, row.text);
  if (text.isJoined) {
    sheet.merge(0, layout.proseColumns - 1);
  }
  sheet.endRow();
}

void WorkbookWriter::writePictures(SheetWriter& sheet, const ProseRow& row) {
  SheetWriter* target = &sheet;
  for (const PlacedPicture& placed : row.text.pictures) {
    const PlacedPicture picture = fittedPicture(placed, target->layout());
    target->beginRow(picture.height + kProsePictureEdge);
    target->addPicture(0, kProsePictureEdge / 2, picture);
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

void WorkbookWriter::startSheet(bool isWhole) {
  SheetWriter& sheet = sheets_.begin(std::exchange(wish_, {}), plan_.layout(isWhole));
  isAwaited_ = false;
  hasTable_ = false;
  isOfFirstTable_ = plan_.isOfFirstTable();
  isAfterTable_ = false;
  isAfterHeading_ = false;
  sheet.addAnchor(std::exchange(sectionId_, {}));
  plan_.writeTo(*this);
}

void WorkbookWriter::startSheetIfFull() {
  if (plan_.isFull()) {
    startSheet(false);
  }
}

void WorkbookWriter::finishSheet() {
  if (!sheets_.isOpen() && (isAwaited_ || !plan_.isEmpty())) {
    startSheet(true);
  }
  sheets_.end();
}

// ---- Tables

void WorkbookWriter::beginTable(const document::Table& table) {
  blocks_.endItem();
  const TableHead head{TableWriter::headerRowsOf(table), blocks_.takeBreak()};
  if (sheets_.isOpen()) {
    return startTable(table, head);
  }
  plan_.measure(table, tables_);
  if (table.isSampleWhole) {
    return plan_.beginTable(table, head);
  }
  startSheet(false);
  startTable(table, head);
}

void WorkbookWriter::row(const document::Row& row) {
  if (plan_.isInTable()) {
    plan_.add(row);
    startSheetIfFull();
  } else {
    tables_.row(row);
  }
}

void WorkbookWriter::endTable() {
  if (plan_.isInTable()) {
    plan_.endTable();
  } else {
    finishTable();
  }
}

// A header is not repeated above the rows of other tables.
void WorkbookWriter::startTable(const document::Table& table, const TableHead& head) {
  const bool isFrozen = canFreeze(head.headerRows, head.headerRows * kLineHeight);
  const std::uint32_t frozenRows = looks_.frozenRows.value_or(isFrozen ? head.headerRows : 0);
  SheetWriter& sheet = sheetWithSpace(frozenRows);
  if (sheet.row() > 0 && !isAfterHeading_) {
    sheet.skipRow();
  }
  if (SheetWriter& begun = sheetWithSpace(frozenRows); head.hasBreakBefore) {
    begun.breakPage();
  }
  const bool isFirst = !std::exchange(hasTable_, true);
  tables_.begin(table, {isFirst, isFirst && isOfFirstTable_});
}

void WorkbookWriter::finishTable() {
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
    sheets_.begin({}, plan_.layout(true));
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
  add(WarningCode::TextCut, losses.cutTitles, "descriptions of links cut at 255 characters");
  add(WarningCode::CellsDropped, losses.dropped, "cells dropped beyond column 16,384");
  add(WarningCode::CellsDropped, losses.tooLarge, "cells without their text, beyond the 4 GiB of a sheet");
  add(WarningCode::SomethingLeftOut, losses.plainLinks, "links that a sheet does not take, written as text");
  add(WarningCode::SomethingLeftOut, losses.innerLinks, "links within the text of a cell, written as text");
  add(WarningCode::SomethingLeftOut, losses.breaks, "page breaks beyond those that a sheet takes");
  add(WarningCode::SomethingLeftOut, losses.plainParts, "backgrounds of parts of a text, which only whole cells have");
  add(WarningCode::SomethingLeftOut, formats_.refused(),
      "cells without their colours, beyond the formats of a workbook");
  add(WarningCode::SomethingLeftOut, formats_.refusedFonts(),
      "cells without their font, beyond the formats of a workbook");
  add(WarningCode::SomethingLeftOut, numbers_.refused(), "columns without their format, beyond those of a workbook");
}

}  // namespace

std::unique_ptr<document::DocumentWriter> createXlsxDocumentWriter(const document::WriterContext& context) {
  return createXlsxDocumentWriter(context, {});
}

std::unique_ptr<document::DocumentWriter> createXlsxDocumentWriter(const document::WriterContext& context,
                                                                   const SheetLimits& limits) {
  return std::make_unique<WorkbookWriter>(context, limits);
}

}  // namespace scrivalen::xlsx
