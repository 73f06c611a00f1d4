#pragma once

#include "formats/xlsx/excel_writer.h"
#include "scrivalen/report.h"

#include <string>

/// Writes a report as a spreadsheet: one row per table row and per text outside a table. Bold and cell colours are
/// kept; all other formatting is dropped.
class ExcelReport : public AReport {
 public:
  REPORT_ERRORS Open() override { return Open(GetOutputFileName()); }
  REPORT_ERRORS Open(const wchar_t* file) override;
  REPORT_ERRORS Close() override;
  void Text(const wchar_t* text, PARAGRAPH_TYPE type, const wchar_t* style, int raw) override;
  void BeginAncor(const wchar_t*) override {}
  void EndAncor() override {}
  void Ancor(const wchar_t*) override {}
  void EndOfLine() override {}
  void BeginStyle(REPORT_STYLE style, int value) override;
  void EndStyle(REPORT_STYLE style, int value) override;
  void Space() override {}
  void BeginParagraph(PARAGRAPH_TYPE type, const wchar_t* attributes) override;
  void EndParagraph(PARAGRAPH_TYPE type) override;
  void BeginToc() override {}
  void TocItem(const wchar_t*, const wchar_t*, int) override {}
  void EndToc() override {}
  void BeginTable(const wchar_t*, const wchar_t*) override {}
  void EndTable(const wchar_t*) override {}
  void BeginRow(const wchar_t* name, const wchar_t* attributes, int columns) override;
  void EndRow(const wchar_t* name) override;
  void BeginCell(const wchar_t*, int, const wchar_t*) override {}
  void EndCell(const wchar_t*, int) override {}
  void Cell(const wchar_t* text, int header, const wchar_t* attributes) override;
  /// Colours the next cell, whichever operation writes it; such a cell is not bold. An empty text cancels the colour.
  void SetCellColor(const wchar_t* color) override;
  void Link(const wchar_t*, const wchar_t*) override {}

 private:
  REPORT_ERRORS resultOf(bool isDone) noexcept;
  void loseColor() noexcept;
  void writeCell(const wchar_t* text, bool bold);

  std::wstring pendingColor_;  // of the next cell
  ExcelWriter writer_;
  bool inRow_ = false;
  bool textMadeRow_ = false;  // while a row that Text has begun is open
  bool bold_ = false;
};
