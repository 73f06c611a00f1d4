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
/// Text escapes its text unless it is raw, and writes raw text unchanged. Cell, Link, BeginAncor, Ancor and TocItem
/// write their texts unchanged: quote them first. With OPTION_CONFORMING they escape what is not yet escaped: the five
/// entities of XML (&amp; &lt; &gt; &quot; &apos;) and references to characters that XML allows (&#160;) are kept, and
/// every other & < > " is escaped. Cell attributes include their leading blank; table, row and heading attributes do
/// not.
class SCRIVALEN_API HtmlReport : public AReport {
 public:
  HtmlReport();
  /// The copy shares the output file; only one of the two may be closed.
  HtmlReport(const HtmlReport& other);
  HtmlReport& operator=(const HtmlReport& other);
  /// Does not close the file: call Close first. A file that is still open stays open until the process ends.
  ~HtmlReport();

  /// Lists the templates of a folder by display name: the file name without ".htm", its first letter in upper case, in
  /// the order of the file system.
  /// @param folder  with or without a trailing separator
  /// @param names   replaced by the list; null: nothing is done
  /// @return the number of templates, or -1 if there are none or @p names is null
  static int GetTemplatesList(const wchar_t* folder, std::vector<std::wstring>* names);

  /// Opens the file set by SetOutputFileName. The page begins with the template if one is set and exists, else with a
  /// plain head whose title is the property "%TITLE%" (no title without that property). A missing template is logged.
  REPORT_ERRORS Open() override;
  /// Opens a file without writing a head or template: the host's first output begins the page. Close still ends it with
  /// </body></html>.
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
  /// Supports OPTION_CONFORMING: from the next Open, templates are read as UTF-8 instead of one character a byte, and
  /// the texts of cells, links, anchors and contents are escaped unless they are already escaped.
  void SetReportOption(REPORT_OPTION option, int value) override;

 protected:
  /// Writes to a host's file, which is neither owned nor closed and must outlive Close. No head is written. If the file
  /// throws, Close reports it.
  /// @param file  null returns REPORT_FILE_ERROR
  REPORT_ERRORS Open(OutputFile* file);
  /// Opens a page with a template from the template folder, with every property's name replaced by its value. The part
  /// before "%BODY%" is written now, the part after it by Close.
  /// @return REPORT_TEMPLATE_NOT_FOUND if the template is missing or unreadable; the output is then not created
  REPORT_ERRORS OpenWithTemplate(const wchar_t* output, const wchar_t* templateName);
  /// Opens a page with a plain head; a null title writes no title.
  REPORT_ERRORS OpenWithHeader(const wchar_t* file, const wchar_t* title);
  /// Writes a value through a printf-style format, unescaped. The first overload takes %s and %c, both for wide text,
  /// the second %d %i %u %x %X and %c, with flags, width and precision. Any other text is written unchanged.
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
