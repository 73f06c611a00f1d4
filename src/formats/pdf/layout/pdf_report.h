#pragma once

#include "scrivalen/output_file.h"
#include "scrivalen/pdf_doc.h"
#include "scrivalen/report.h"

/// Writes a report as PDF, in Times: body text in 8 points, headings in 20 down to 12.
class PDFReport final : public AReport {
 public:
  /// Raises std::bad_alloc if memory runs out for the document.
  PDFReport();
  REPORT_ERRORS Open() override { return Open(GetOutputFileName()); }
  REPORT_ERRORS Open(const wchar_t* file) override;
  REPORT_ERRORS Close() override;
  void Text(const wchar_t* text, PARAGRAPH_TYPE type, const wchar_t* style, int raw) override;
  void BeginAncor(const wchar_t* name) override { document_.BookMark(name); }
  void EndAncor() override {}
  void Ancor(const wchar_t* name) override;
  void EndOfLine() override { document_.LineBreak(); }
  void BeginStyle(REPORT_STYLE style, int value) override;
  void EndStyle(REPORT_STYLE style, int value) override;
  void Space() override { document_.write(L" "); }
  void BeginParagraph(PARAGRAPH_TYPE type, const wchar_t* attributes) override;
  void EndParagraph(PARAGRAPH_TYPE type) override;
  void BeginToc() override {}
  /// Adds an entry to the outline.
  void TocItem(const wchar_t* anchor, const wchar_t* text, int level) override;
  void EndToc() override {}
  void BeginTable(const wchar_t* name, const wchar_t* attributes) override;
  void EndTable(const wchar_t*) override { document_.EndTable(); }
  void BeginRow(const wchar_t* name, const wchar_t* attributes, int columns) override;
  void EndRow(const wchar_t*) override { document_.EndRow(); }
  void BeginCell(const wchar_t* text, int header, const wchar_t* attributes) override;
  void EndCell(const wchar_t* text, int header) override;
  void Cell(const wchar_t* text, int header, const wchar_t* attributes) override;
  void Link(const wchar_t* text, const wchar_t* target) override { document_.HyperLink(text, target); }
  /// Supports OPTION_LANDSCAPE and OPTION_CONFORMING, both effective from the next Open.
  void SetReportOption(REPORT_OPTION option, int value) override;

 private:
  int landscape_ = 0;
  CPDFdoc document_;
  ReportFile file_;
};
