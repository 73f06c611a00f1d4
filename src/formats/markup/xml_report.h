#pragma once

#include "formats/markup/html.h"
#include "scrivalen/report.h"

#include <cstdint>
#include <string>
#include <string_view>

/// Writes a report as XML data: a root element "report", texts, paragraphs and tables whose elements the caller names.
/// Header cells and all formatting are dropped.
class XmlReport final : public AReport {
 public:
  REPORT_ERRORS Open() override { return Open(GetOutputFileName()); }
  REPORT_ERRORS Open(const wchar_t* file) override;
  REPORT_ERRORS Close() override;
  std::wstring Quoting(const std::wstring& text) override;
  void Text(const wchar_t* text, PARAGRAPH_TYPE type, const wchar_t* style, int raw) override;
  void BeginAncor(const wchar_t*) override {}
  void EndAncor() override {}
  void Ancor(const wchar_t*) override {}
  void EndOfLine() override;
  void BeginStyle(REPORT_STYLE, int) override {}
  void EndStyle(REPORT_STYLE, int) override {}
  void Space() override {}
  void BeginParagraph(PARAGRAPH_TYPE type, const wchar_t* attributes) override;
  void EndParagraph(PARAGRAPH_TYPE type) override;
  void BeginToc() override {}
  void TocItem(const wchar_t*, const wchar_t*, int) override {}
  void EndToc() override {}
  void BeginTable(const wchar_t* name, const wchar_t* attributes) override;
  void EndTable(const wchar_t* name) override;
  void BeginRow(const wchar_t* name, const wchar_t* attributes, int columns) override;
  void EndRow(const wchar_t* name) override;
  void BeginCell(const wchar_t* name, int header, const wchar_t* attributes) override;
  void EndCell(const wchar_t* name, int header) override;
  void Cell(const wchar_t* text, int header, const wchar_t* attributes) override;
  void Link(const wchar_t*, const wchar_t*) override {}
  /// Supports OPTION_CONFORMING, from the next Open: an element name that XML does not allow is corrected.
  void SetReportOption(REPORT_OPTION option, int value) override;

 private:
  void openNamed(const wchar_t* name);
  void closeNamed(const wchar_t* name);
  void openElement(const wchar_t* name);
  void closeElement(const wchar_t* name);
  void writeRepairedTag(std::string_view begin, std::wstring_view name);
  void noteRenamed(std::wstring_view name);
  void logRenamed() const;

  HTML writer_;
  bool conforming_ = false;      // the option, for the next Open
  bool openConforming_ = false;  // of the open report
  std::uint64_t renamed_ = 0;    // elements of the open report
  std::wstring firstRenamed_;
  std::int32_t suppressText_ = 0;  // 1 while a cell that was begun without a name is open
  ReportFile file_;
};
