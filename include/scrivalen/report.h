#pragma once

#include <scrivalen/export.h>
#include <scrivalen/output_file.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

/// The formats that MultiReport::AddReport creates.
enum REPORT_FORMAT : int {
  FORMAT_RTF = 0,
  FORMAT_HTML = 1,
  FORMAT_XML = 2,
  FORMAT_TEXT = 3,
  FORMAT_CHM = 4,
  FORMAT_PDF = 5,
  FORMAT_EXCEL = 6
};

enum REPORT_ERRORS : int {
  REPORT_OK = 0,
  /// A file could not be created, opened or written whole; GetError says which and why.
  REPORT_FILE_ERROR = 1,
  /// The named template is not in the template folder; the miss is logged.
  REPORT_TEMPLATE_NOT_FOUND = 2
};

enum PARAGRAPH_TYPE : int {
  /// Inline text, no paragraph around it.
  PARAGRAPH_NONE = 0,
  PARAGRAPH_HEADING1 = 1,
  PARAGRAPH_HEADING2 = 2,
  PARAGRAPH_HEADING3 = 3,
  PARAGRAPH_HEADING4 = 4,
  PARAGRAPH_HEADING5 = 5,
  PARAGRAPH_HEADING6 = 6,
  PARAGRAPH_NORMAL = 7
};

enum REPORT_STYLE : int {
  STYLE_BOLD = 0,
  STYLE_ITALIC = 1,
  /// BeginStyle sets the size given (points in PDF, half-points in RTF), EndStyle sets 10 in that unit. HTML has none.
  STYLE_FONT_SIZE = 2
};

/// An option's value is a flag: non-zero is on. A format ignores the options it does not know.
enum REPORT_OPTION : int {
  /// Paper on its side (RTF, PDF).
  OPTION_LANDSCAPE = 0,
  /// One byte per character and no byte-order mark (text); set it before Open.
  OPTION_SINGLE_BYTE_TEXT = 1,
  /// Follow the public standard of the format instead of the classic bytes, from the next Open. Off by default.
  OPTION_CONFORMING = 100
};

/// A named value of a report.
struct PropertyRecord {
  std::wstring name;
  std::wstring value;
};

// No virtual destructor, by contract: reports are destroyed through their own classes.
#if defined(__GNUC__)
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"
#endif

/// The interface through which a report is written, and what all formats share.
///
/// A host constructs a concrete report, sets names, properties and options, calls Open, streams the content and calls
/// Close. All text is wide and NUL-terminated; a null text counts as an empty one unless its operation says otherwise.
/// Texts are only read during the call. A report is used by one thread at a time.
///
/// No operation raises. When memory runs out for one that sets the report up (a name, a property, the styles, the
/// separator, a copy), Open returns REPORT_FILE_ERROR from then on; when it runs out for content, the next Close does,
/// or the next Open if none is open. GetError then says so, for which it needs no memory.
///
/// There is deliberately no virtual destructor: a report is destroyed through its own class, never through AReport.
/// The order of the virtual operations is part of the interface.
class SCRIVALEN_API AReport {
 public:
  AReport();
  /// The copy shares the property records of the source, not its list of them.
  AReport(const AReport& other);
  AReport& operator=(const AReport& other);
  ~AReport();

  /// Opens the output file name that SetOutputFileName gave.
  virtual REPORT_ERRORS Open() = 0;
  /// Opens a report file; an existing file is replaced.
  virtual REPORT_ERRORS Open(const wchar_t* file) = 0;
  /// Finishes the report.
  /// @return REPORT_FILE_ERROR when bytes of the report did not all reach the file; GetError and the log say why.
  ///         REPORT_OK, with nothing written, when the report is not open
  virtual REPORT_ERRORS Close() = 0;
  /// Appends a property; the first of several of one name is the one found.
  virtual void AddProperty(const wchar_t* name, const wchar_t* value);
  /// Sets the text between two cells of a row (text).
  virtual void SetColumnSeparator(const std::wstring& separator);
  /// The text with what the format gives a meaning to escaped; here an unchanged copy. Empty when memory runs out.
  virtual std::wstring Quoting(const std::wstring& text);
  /// Writes a text, as a paragraph of its own unless @p type is PARAGRAPH_NONE.
  /// @param style  attribute text for a heading (HTML)
  /// @param raw    non-zero: the text is in the target markup already and is not quoted
  virtual void Text(const wchar_t* text, PARAGRAPH_TYPE type, const wchar_t* style, int raw) = 0;
  /// Begins a topic (CHM): @p folder and @p file are joined as they stand.
  /// @return how the topic's file opened; REPORT_OK in formats without topics
  virtual REPORT_ERRORS BeginSubDocument(const wchar_t* folder, const wchar_t* file, const wchar_t* title);
  virtual void EndSubDocument();
  /// Begins an anchor around what follows.
  virtual void BeginAncor(const wchar_t* name) = 0;
  virtual void EndAncor() = 0;
  /// Sets an anchor with nothing inside.
  virtual void Ancor(const wchar_t* name) = 0;
  /// Breaks the line.
  virtual void EndOfLine() = 0;
  virtual void BeginStyle(REPORT_STYLE style, int value) = 0;
  virtual void EndStyle(REPORT_STYLE style, int value) = 0;
  /// Writes one blank in the format's own form.
  virtual void Space() = 0;
  virtual void BeginParagraph(PARAGRAPH_TYPE type, const wchar_t* attributes);
  virtual void EndParagraph(PARAGRAPH_TYPE type);
  virtual void BeginToc() = 0;
  virtual void TocItem(const wchar_t* anchor, const wchar_t* text, int level) = 0;
  virtual void EndToc() = 0;
  /// @param name        the table's element name (XML), else unused
  /// @param attributes  attribute text (HTML); null: the format's default
  virtual void BeginTable(const wchar_t* name, const wchar_t* attributes) = 0;
  virtual void EndTable(const wchar_t* name) = 0;
  /// @param columns  how many cells the row will have (RTF, PDF)
  virtual void BeginRow(const wchar_t* name, const wchar_t* attributes, int columns) = 0;
  virtual void EndRow(const wchar_t* name) = 0;
  /// @param text    the cell's element name (XML), else unused
  /// @param header  non-zero: a header cell
  virtual void BeginCell(const wchar_t* text, int header, const wchar_t* attributes) = 0;
  virtual void EndCell(const wchar_t* text, int header) = 0;
  /// Writes a whole cell.
  virtual void Cell(const wchar_t* text, int header, const wchar_t* attributes) = 0;
  /// Colours the next cell (spreadsheet, PDF).
  virtual void SetCellColor(const wchar_t* color);
  /// @param target  an address, or "#" followed by an anchor name
  virtual void Link(const wchar_t* text, const wchar_t* target) = 0;
  virtual void SetReportOption(REPORT_OPTION option, int value);

  /// The value of the first property of exactly this name, or null. Valid as long as a report holds the property.
  const wchar_t* GetProperty(const wchar_t* name) const;
  /// Sets the style sheet text (spreadsheet).
  void SetStyles(const wchar_t* text);
  void SetOutputFileName(const wchar_t* name);
  /// Sets the template's file name, extension included; a null or empty name changes nothing.
  void SetTemplateFileName(const wchar_t* name);
  /// Never null; valid until the name changes.
  const wchar_t* GetOutputFileName() const;
  /// Never null; valid until the name changes.
  const wchar_t* GetTemplateFileName() const;
  /// The reason of the last failure, never null; a success does not clear it.
  const wchar_t* GetError() const;

  /// Builds the full path of a template: the folder "tmpl" beside the library's own file.
  /// @return 1 when that file exists, else 0, and the miss is logged
  int MakeTemplateName(std::wstring& path, const wchar_t* name);

  /// Writes a row of two cells.
  void Row2(const wchar_t* t1, const wchar_t* t2, int header, const wchar_t* a1, const wchar_t* a2);
  /// Writes a row of three cells.
  void Row3(const wchar_t* t1, const wchar_t* t2, const wchar_t* t3, int header);
  /// Writes a row of a name and its value, the value through Quoting; nothing when the value is null or empty.
  void Row2NotEmptyWithQuote(const wchar_t* name, const wchar_t* value);
  /// Writes the header row of an attribute table.
  void AttributeRowHeader();
  /// Writes a row with the current date and time, local. A time that cannot be converted ends the program.
  void ReportCreated();
  /// Writes a row with the library's version.
  void ProductRow(const wchar_t* label);

 protected:
  /// Opens a format's output file.
  /// @return 1, or 0 with the reason in the error text
  int OpenReportFile(ReportFile& file, const wchar_t* name);
  /// Appends a template's bytes to a text, one character each.
  /// @param text      null: only tell whether the template can be read
  /// @param fullPath  non-zero: @p name is a path, else a name in the template folder
  REPORT_ERRORS LoadTemplate(std::wstring* text, const wchar_t* name, int fullPath);
  /// Replaces every property's name in a text by its value, in the order of the properties.
  void PrepareTemplate(std::wstring& text);

  /// Kept empty; part of the layout.
  std::wstring reserved_;
  std::wstring outputFileName_;
  std::wstring templateFileName_;
  std::wstring styles_;
  std::wstring error_;
  std::int32_t openFlag_ = 0;
  /// What was lost because memory ran out: 1 settings, 2 content, 4 the error text. It takes the place of padding.
  std::int32_t lost_ = 0;
  std::vector<std::shared_ptr<PropertyRecord>> properties_;
};

#if defined(__GNUC__)
#pragma GCC diagnostic pop
#endif
