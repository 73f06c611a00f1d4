#pragma once

#include "scrivalen/report.h"
#include "scrivalen/rtf_doc.h"

#include <string_view>

/// Writes a report in Rich Text Format. It defines no fonts and no style sheet; headings have their style numbers.
class RTFReport final : public AReport {
 public:
  REPORT_ERRORS Open() override { return Open(GetOutputFileName()); }
  REPORT_ERRORS Open(const wchar_t* file) override;
  REPORT_ERRORS Close() override;
  void Text(const wchar_t* text, PARAGRAPH_TYPE type, const wchar_t* style, int raw) override;
  void BeginAncor(const wchar_t* name) override;
  void EndAncor() override {}
  void Ancor(const wchar_t* name) override;
  void EndOfLine() override;
  void BeginStyle(REPORT_STYLE style, int value) override;
  void EndStyle(REPORT_STYLE style, int value) override;
  void Space() override;
  void EndParagraph(PARAGRAPH_TYPE type) override;
  void BeginToc() override;
  void TocItem(const wchar_t* anchor, const wchar_t* text, int level) override;
  void EndToc() override;
  void BeginTable(const wchar_t* name, const wchar_t* attributes) override;
  void EndTable(const wchar_t*) override {}
  void BeginRow(const wchar_t* name, const wchar_t* attributes, int columns) override;
  void EndRow(const wchar_t* name) override;
  void BeginCell(const wchar_t* text, int header, const wchar_t* attributes) override;
  void EndCell(const wchar_t* text, int header) override;
  void Cell(const wchar_t* text, int header, const wchar_t* attributes) override;
  void Link(const wchar_t* text, const wchar_t* target) override;
  /// Supports OPTION_LANDSCAPE and OPTION_CONFORMING, both from the next Open.
  void SetReportOption(REPORT_OPTION option, int value) override;

 private:
  void beginColors(const wchar_t* colors);
  void endColors();
  void outsideLink(const wchar_t* text, std::wstring_view address);

  RTFdoc document_;
  ReportFile file_;
  bool cellColored = false;
  bool landscape = false;
  bool conforming_ = false;      // the option, for the next Open
  bool openConforming_ = false;  // of the open document
};
