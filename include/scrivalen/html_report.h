#pragma once

#include <scrivalen/report.h>

#include <memory>
#include <string>
#include <vector>

namespace scrivalen::formats {
struct PageLoss;
}

// No virtual destructor, by contract: reports are destroyed through their own classes.
#if defined(__GNUC__)
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"
#endif

/// Writes a report as an HTML page in UTF-8.
///
/// Text without the raw flag quotes its text, and raw text is written as it stands. Cell, Link, BeginAncor, Ancor and
/// TocItem write their texts as they stand: quote them first. With OPTION_CONFORMING they quote what is not quoted yet:
/// a text stays as it is in the five names of XML (&amp; &lt; &gt; &quot; &apos;) and in references to characters that
/// XML allows (&#160;); every other & < > " is escaped. Cell attributes bring their own leading blank, row and heading
/// attributes do not.
class SCRIVALEN_API HtmlReport : public AReport {
 public:
  HtmlReport();
  /// The copy shares the output file; only one of the two may be closed.
  HtmlReport(const HtmlReport& other);
  HtmlReport& operator=(const HtmlReport& other);
  /// Does not close the file: that is Close's work. A file that is still open stays so until the process ends.
  ~HtmlReport();

  /// Lists the templates of a folder by display name: the file name without ".htm", its first letter in upper case, in
  /// the order of the file system.
  /// @param folder  the folder; with or without a separator at its end
  /// @param names   replaced by the list; null: nothing is done
  /// @return how many there are, or -1 when there is none or @p names is null
  static int GetTemplatesList(const wchar_t* folder, std::vector<std::wstring>* names);

  /// Opens the output file name, with the template if one is set and exists, else with a plain page head whose title is
  /// the property "%TITLE%" (none without that property). A template that does not exist is logged.
  REPORT_ERRORS Open() override;
  /// Opens a file and writes no head, with or without a template: what the host writes first begins the page. Close
  /// ends it with </body></html> all the same.
  REPORT_ERRORS Open(const wchar_t* file) override;
  REPORT_ERRORS Close() override;
  std::wstring Quoting(const std::wstring& text) override;
  void Text(const wchar_t* text, PARAGRAPH_TYPE type, const wchar_t* style, int raw) override;
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
  void Link(const wchar_t* text, const wchar_t* target) override;
  /// Knows OPTION_CONFORMING: from the next Open, templates are read as UTF-8 instead of one character a byte, and the
  /// texts of cells, links, anchors and contents are quoted unless they are quoted already.
  void SetReportOption(REPORT_OPTION option, int value) override;

 protected:
  /// Writes to a file of the host's, which is neither owned nor closed and must outlive Close. No head is written. What
  /// the file raises ends up in the result of Close.
  /// @param file  null is refused with REPORT_FILE_ERROR
  REPORT_ERRORS Open(OutputFile* file);
  /// Opens a page in a template of the template folder: what is before "%BODY%" is written now, what is after it by
  /// Close, with every property's name replaced by its value.
  /// @return REPORT_TEMPLATE_NOT_FOUND when the template is missing or unreadable; the output is then not created
  REPORT_ERRORS OpenWithTemplate(const wchar_t* output, const wchar_t* templateName);
  /// Opens a page with a plain head; a null title gives none.
  REPORT_ERRORS OpenWithHeader(const wchar_t* file, const wchar_t* title);
  /// Writes a value through a printf-style format, unescaped. The first takes %s and %c, both for wide text, the second
  /// %d %i %u %x %X and %c, with flags, width and precision; what is no conversion of the value is written as it is.
  void ValueToHtml(const wchar_t* format, const wchar_t* text);
  void ValueToHtml(const wchar_t* format, int value);

 private:
  friend struct scrivalen::formats::PageLoss;
  struct State;
  std::unique_ptr<State> state_;
};

#if defined(__GNUC__)
#pragma GCC diagnostic pop
#endif
