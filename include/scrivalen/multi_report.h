#pragma once

#include <scrivalen/report.h>

#include <memory>

// No virtual destructor, by contract: reports are destroyed through their own classes.
#if defined(__GNUC__)
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"
#endif

/// Writes one report in several formats at once: it forwards every call to its reports, in the order in which they were
/// added. Quoting is not forwarded and returns its argument unchanged.
class SCRIVALEN_API MultiReport : public AReport {
 public:
  MultiReport();
  /// The copy shares the reports of the source.
  MultiReport(const MultiReport& other);
  MultiReport& operator=(const MultiReport& other);
  /// Neither closes nor writes anything: call Close and Clear first. A report that is still open keeps its file open
  /// until the process ends.
  ~MultiReport();

  /// Adds a report. Properties, styles, the separator and options set earlier do not apply to it. Several reports of
  /// one format are allowed, each with its own file.
  /// @param format        an unknown format adds nothing, which is logged
  /// @param file          its output file; null or empty: nothing is added
  /// @param templateFile  its template's file name (HTML); may be null. Help always uses "default.htm"
  void AddReport(REPORT_FORMAT format, const wchar_t* file, const wchar_t* templateFile);
  /// Releases every report. Nothing is written or closed: a report that is still open keeps its file open until the
  /// process ends, and its unflushed bytes are lost.
  void Clear();
  /// Sets the style sheet text of the reports added so far; the MultiReport keeps none.
  void SetStyles(const wchar_t* text);

  /// Opens every report under its own name.
  /// @return REPORT_FILE_ERROR at the first that fails, with its error text; the reports after it are not opened.
  ///         REPORT_FILE_ERROR too if an AddReport since the last Clear ran out of memory: then no report is opened
  REPORT_ERRORS Open() override;
  /// Opens every report under one name; meant for a single report. A report that fails leaves the error text unchanged.
  REPORT_ERRORS Open(const wchar_t* file) override;
  /// Closes every report.
  /// @return the first result that is not REPORT_OK, with that report's error text
  REPORT_ERRORS Close() override;
  /// Adds the property to the reports added so far; the MultiReport keeps none, so its GetProperty finds nothing.
  void AddProperty(const wchar_t* name, const wchar_t* value) override;
  void SetColumnSeparator(const std::wstring& separator) override;
  void Text(const wchar_t* text, PARAGRAPH_TYPE type, const wchar_t* style, int raw) override;
  /// @return the first result that is not REPORT_OK, with that report's error text
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
  /// Sets the option in the reports added so far.
  void SetReportOption(REPORT_OPTION option, int value) override;

 private:
  struct Children;
  std::unique_ptr<Children> children_;
};

#if defined(__GNUC__)
#pragma GCC diagnostic pop
#endif
