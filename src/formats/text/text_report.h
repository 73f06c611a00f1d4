#pragma once

#include "output/output_buffer.h"
#include "scrivalen/report.h"
#include "text/loss_counter.h"

#include <string_view>

/// Writes a report as plain text: UTF-16, little-endian, with a byte-order mark, or one byte per character. A table row
/// is a line of cells joined by the column separator. Whatever plain text cannot express is dropped.
class TextReport final : public AReport {
 public:
  REPORT_ERRORS Open() override { return Open(GetOutputFileName()); }
  REPORT_ERRORS Open(const wchar_t* file) override;
  REPORT_ERRORS Close() override;
  void SetColumnSeparator(const std::wstring& separator) override;
  void Text(const wchar_t* text, PARAGRAPH_TYPE type, const wchar_t* style, int raw) override;
  void BeginAncor(const wchar_t*) override {}
  void EndAncor() override {}
  void Ancor(const wchar_t*) override {}
  void EndOfLine() override;
  void BeginStyle(REPORT_STYLE, int) override {}
  void EndStyle(REPORT_STYLE, int) override {}
  void Space() override;
  void EndParagraph(PARAGRAPH_TYPE type) override;
  void BeginToc() override {}
  void TocItem(const wchar_t*, const wchar_t*, int) override {}
  void EndToc() override {}
  void BeginTable(const wchar_t*, const wchar_t*) override {}
  void EndTable(const wchar_t*) override {}
  void BeginRow(const wchar_t* name, const wchar_t* attributes, int columns) override;
  void EndRow(const wchar_t* name) override;
  void BeginCell(const wchar_t* text, int header, const wchar_t* attributes) override;
  void EndCell(const wchar_t*, int) override {}
  void Cell(const wchar_t* text, int header, const wchar_t* attributes) override;
  void Link(const wchar_t*, const wchar_t*) override {}
  /// Supports OPTION_SINGLE_BYTE_TEXT.
  void SetReportOption(REPORT_OPTION option, int value) override;

 private:
  void write(std::wstring_view text);

  bool firstCell_ = true;
  bool singleByte_ = false;
  std::wstring separator_ = L"\t";
  ReportFile file_;
  scrivalen::OutputBuffer* out_ = nullptr;  // the open file's
  scrivalen::LossCounter loss_;
};
