#pragma once

#include "scrivalen/report.h"

#include <string>
#include <vector>

namespace scrivalen::test {

/// Records every call with its arguments: `BeginRow("row", null, 2)`. Texts are recorded as UTF-8.
class RecordingReport final : public AReport {
 public:
  const std::vector<std::string>& calls() const { return calls_; }

  REPORT_ERRORS Open() override;
  REPORT_ERRORS Open(const wchar_t* file) override;
  REPORT_ERRORS Close() override;
  void AddProperty(const wchar_t* name, const wchar_t* value) override;
  void SetColumnSeparator(const std::wstring& separator) override;
  /// The text in square brackets.
  std::wstring Quoting(const std::wstring& text) override;
  void Text(const wchar_t* text, PARAGRAPH_TYPE type, const wchar_t* style, int raw) override;
  REPORT_ERRORS BeginSubDocument(const wchar_t* folder, const wchar_t* file, const wchar_t* title) override;
  void EndSubDocument() override;
  void BeginAncor(const wchar_t* name) override;
  void EndAncor() override;
  void Ancor(const wchar_t* name) override;
  void EndOfLine() override;
  void BeginStyle(REPORT_STYLE style, int value) override;
  void EndStyle(REPORT_STYLE style, int value) override;
  void Space() override;
  void BeginParagraph(PARAGRAPH_TYPE type, const wchar_t* attributes) override;
  void EndParagraph(PARAGRAPH_TYPE type) override;
  void BeginToc() override;
  void TocItem(const wchar_t* anchor, const wchar_t* text, int level) override;
  void EndToc() override;
  void BeginTable(const wchar_t* name, const wchar_t* attributes) override;
  void EndTable(const wchar_t* name) override;
  void BeginRow(const wchar_t* name, const wchar_t* attributes, int columns) override;
  void EndRow(const wchar_t* name) override;
  void BeginCell(const wchar_t* text, int header, const wchar_t* attributes) override;
  void EndCell(const wchar_t* text, int header) override;
  void Cell(const wchar_t* text, int header, const wchar_t* attributes) override;
  void SetCellColor(const wchar_t* color) override;
  void Link(const wchar_t* text, const wchar_t* target) override;
  void SetReportOption(REPORT_OPTION option, int value) override;

 private:
  template <typename... Arguments>
  void note(const char* operation, const Arguments&... arguments);

  std::vector<std::string> calls_;
};

}  // namespace scrivalen::test
