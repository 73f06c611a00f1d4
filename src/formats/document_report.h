#pragma once

#include "document/document.h"
#include "output/file_error.h"
#include "output/target_file.h"
#include "scrivalen/report.h"

#include <memory>
#include <string>

namespace scrivalen {

/// Writes a report as a document in one of the formats of documents. What the classic interface leaves to the host's
/// care, such as the nesting of styles, is mended; see ReportTranslation. The file is replaced by Close.
class DocumentReport final : public AReport {
 public:
  /// @param format  not owned; must outlive the report
  explicit DocumentReport(const document::Format& format);
  DocumentReport(const DocumentReport&) = delete;
  DocumentReport& operator=(const DocumentReport&) = delete;
  /// Delivers nothing if the report is open.
  ~DocumentReport();

  REPORT_ERRORS Open() override { return Open(GetOutputFileName()); }
  REPORT_ERRORS Open(const wchar_t* file) override;
  REPORT_ERRORS Close() override;
  /// Counts for the open document too, as long as it has no content.
  void AddProperty(const wchar_t* name, const wchar_t* value) override;
  void Text(const wchar_t* text, PARAGRAPH_TYPE type, const wchar_t* style, int raw) override;
  REPORT_ERRORS BeginSubDocument(const wchar_t* folder, const wchar_t* file, const wchar_t* title) override;
  void EndSubDocument() override;
  void BeginAncor(const wchar_t* name) override;
  void EndAncor() override {}
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
  /// Supports OPTION_LANDSCAPE and OPTION_SINGLE_BYTE_TEXT, both as AddProperty does.
  void SetReportOption(REPORT_OPTION option, int value) override;

 private:
  struct Session;

  bool lock(const std::wstring& file);
  template <typename Action>
  void write(Action&& action) noexcept;
  document::Status open(Session& session);
  void applySettings(document::Document& document);
  void applyTemplate(document::Document& document);
  void applyProperties(document::Document& document);
  void changeSetting() noexcept;
  REPORT_ERRORS resultOf(document::Status status, FileError error, Session& session);
  void logWarnings() noexcept;

  const document::Format& format_;
  bool isLandscape_ = false;
  bool isSingleByte_ = false;
  std::unique_ptr<Session> session_;  // while the report is open
  TargetFile target_;                 // held against other reports, from Open to Close
};

}  // namespace scrivalen
