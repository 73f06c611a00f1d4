#pragma once

#include <scrivalen/export.h>
#include <scrivalen/output_file.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

/// The formats that MultiReport::AddReport creates. In the comments below "help" is compiled HTML help, "spreadsheet"
/// an .xlsx workbook.
///
/// The formats from 100 on are those of documents: the same calls become a document whose nesting is mended, which the
/// comments below do not describe. The guide says what each operation becomes. AddReport takes those that this version
/// of the library writes: scrivalen_format lists them.
enum REPORT_FORMAT : int {
  FORMAT_RTF = 0,
  FORMAT_HTML = 1,
  FORMAT_XML = 2,
  FORMAT_TEXT = 3,
  FORMAT_CHM = 4,
  FORMAT_PDF = 5,
  FORMAT_EXCEL = 6,
  FORMAT_DOCUMENT_RTF = 100,
  FORMAT_DOCUMENT_HTML = 101,
  FORMAT_DOCUMENT_XML = 102,
  FORMAT_DOCUMENT_TEXT = 103,
  FORMAT_DOCUMENT_CHM = 104,
  FORMAT_DOCUMENT_PDF = 105,
  FORMAT_DOCUMENT_EXCEL = 106,
  FORMAT_DOCUMENT_DOCX = 107,
  FORMAT_DOCUMENT_MARKDOWN = 108
};

/// What Open, Close and BeginSubDocument return.
enum REPORT_ERRORS : int {
  REPORT_OK = 0,
  /// A file could not be created, opened or written completely; GetError says which and why.
  REPORT_FILE_ERROR = 1,
  /// The template is missing, which is logged, or unreadable.
  REPORT_TEMPLATE_NOT_FOUND = 2
};

/// The type of a text. Other numbers are not checked: HTML writes an element "h" with that number, RTF a style with
/// that number, PDF body text.
enum PARAGRAPH_TYPE : int {
  /// Inline text, without a paragraph around it.
  PARAGRAPH_NONE = 0,
  PARAGRAPH_HEADING1 = 1,
  PARAGRAPH_HEADING2 = 2,
  PARAGRAPH_HEADING3 = 3,
  PARAGRAPH_HEADING4 = 4,
  PARAGRAPH_HEADING5 = 5,
  PARAGRAPH_HEADING6 = 6,
  PARAGRAPH_NORMAL = 7
};

/// A text style. Text and XML ignore all styles. For any other number HTML writes an empty tag, other formats nothing.
enum REPORT_STYLE : int {
  /// HTML, help, RTF, PDF, spreadsheet.
  STYLE_BOLD = 0,
  /// HTML, help, RTF. PDF records it but does not draw it.
  STYLE_ITALIC = 1,
  /// RTF and PDF: BeginStyle sets the given size, in half-points in RTF and in points in PDF; EndStyle sets 10 of that
  /// unit, whatever the size was before.
  STYLE_FONT_SIZE = 2
};

/// An option's value is a flag: non-zero is on. A format ignores options that it does not support.
enum REPORT_OPTION : int {
  /// Landscape paper (RTF, PDF), from the next Open.
  OPTION_LANDSCAPE = 0,
  /// Writes the low byte of each UTF-16 code unit, and no byte-order mark (text). Takes effect at once: set it before
  /// Open, or the file has two encodings.
  OPTION_SINGLE_BYTE_TEXT = 1,
  /// Follows the public standard of the format instead of the classic bytes, from the next Open. Off by default.
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

/// The interface for writing a report, and the base of all formats.
///
/// A host constructs a concrete report, sets names, properties and options, calls Open, streams the content and calls
/// Close. All text is wide and NUL-terminated; a null text counts as an empty one unless its operation says otherwise.
/// Texts are read during the call only. A report is used by one thread at a time. An operation that a format does not
/// support does nothing. Content written while the report is not open is dropped.
///
/// No operation throws. If memory runs out while the report is being set up (a name, a property, the styles, the
/// separator, a copy), Open returns REPORT_FILE_ERROR from then on. If it runs out for content, the next Close returns
/// it, or the next Open if the report is not open. GetError then says so, without allocating.
///
/// There is deliberately no virtual destructor: a report is destroyed through its own class, never through AReport. The
/// order of the virtual operations is part of the interface.
class SCRIVALEN_API AReport {
 public:
  AReport();
  /// The copy shares the property records of the source but has its own list of them.
  AReport(const AReport& other);
  AReport& operator=(const AReport& other);
  ~AReport();

  /// Opens the file set by SetOutputFileName. An HtmlReport begins its page with its template or a head.
  virtual REPORT_ERRORS Open() = 0;
  /// Opens a report file. The time at which an existing file is replaced depends on the format:
  ///
  /// | Format | An existing file |
  /// | --- | --- |
  /// | text, HTML, XML, RTF, PDF | is emptied now |
  /// | spreadsheet | is locked now and replaced by Close, once the workbook is complete |
  /// | help | is untouched until Close, which replaces it once the help file is complete |
  ///
  /// An HtmlReport opened this way writes no head and no template.
  /// @param file  its folder must exist; null is an empty path, which cannot be opened
  /// @return REPORT_FILE_ERROR if the report is already open (it stays open), if the file is open in another report, or
  ///         if it cannot be created
  virtual REPORT_ERRORS Open(const wchar_t* file) = 0;
  /// Finishes the report.
  /// @return REPORT_FILE_ERROR if not all bytes of the report reached the file; GetError and the log say why.
  ///         REPORT_OK, with nothing written, if the report is not open
  virtual REPORT_ERRORS Close() = 0;
  /// Appends a property; of several with one name the first is found. "%TITLE%" is the title of RTF documents, of
  /// conforming PDF documents, of help files, and of HTML pages that Open() begins without a template; a template can
  /// have places for any property. Without a "%TITLE%" RTF documents and help files are titled "Report", and PDF
  /// documents have no title. Add properties before Open.
  virtual void AddProperty(const wchar_t* name, const wchar_t* value);
  /// Sets the text between two cells of a row (text); a tab by default. Takes effect at once, up to its first NUL.
  virtual void SetColumnSeparator(const std::wstring& separator);
  /// Returns the text with the format's special characters escaped: & < > " in HTML, XML and help. Every other format,
  /// and MultiReport, returns an unchanged copy. Empty when memory runs out.
  virtual std::wstring Quoting(const std::wstring& text);
  /// Writes a text, as a paragraph of its own unless @p type is PARAGRAPH_NONE.
  ///
  /// Inline text belongs in a paragraph or a cell, and in help also in a topic: PDF drops inline text outside
  /// paragraphs and cells, help drops every text outside a topic. In a spreadsheet a text within a row is one more cell
  /// of the row; any other text is a row of one cell, bold unless its type is PARAGRAPH_NONE. In XML a text between
  /// BeginCell(null) and EndCell is dropped.
  /// @param text   null is an empty text, but in classic PDF no text at all: a cell without another text is then as
  ///               Cell(null) makes it
  /// @param type   HTML and help: p or h1 to h6; XML: an element "text" for every type; text: a line; RTF: a paragraph
  ///               of style 1 to 6, or 0; PDF: 20, 18, 16, 15, 14, 12 points, or 8
  /// @param style  attribute text of a heading, without a leading blank (HTML, help), else ignored; may be null
  /// @param raw    non-zero: the text is already markup. HTML, XML and conforming help write it unchanged. All other
  ///               formats ignore this: text, PDF and spreadsheet show markup as text; classic RTF takes every text for
  ///               RTF
  virtual void Text(const wchar_t* text, PARAGRAPH_TYPE type, const wchar_t* style, int raw) = 0;
  /// Begins a topic (help); does nothing in other formats.
  /// @param folder  where the topic's page is kept until Close; must exist and end with a separator. Use one folder for
  ///                all topics, and let nothing else write to it
  /// @param file    the page's name, appended to the folder unchanged. A path with a line break, and the names
  ///                report.hhp, report.hhc and report.chm, are refused
  /// @param title   the topic's name in the contents
  /// @return the result of opening the page; REPORT_FILE_ERROR too if the page was refused or the report is not open;
  ///         REPORT_OK in formats without topics
  virtual REPORT_ERRORS BeginSubDocument(const wchar_t* folder, const wchar_t* file, const wchar_t* title);
  /// Ends the topic. A topic that is still open at Close makes the report fail.
  virtual void EndSubDocument();
  /// Begins an anchor around the content that follows (HTML, help). RTF: an empty bookmark. PDF: the anchor is the
  /// current paragraph or cell; without one there is no anchor. Nothing in text, XML and spreadsheet.
  virtual void BeginAncor(const wchar_t* name) = 0;
  /// Ends the anchor (HTML, help); does nothing in other formats.
  virtual void EndAncor() = 0;
  /// Writes an empty anchor. PDF begins a paragraph for it, except in a cell, which then is the anchor.
  virtual void Ancor(const wchar_t* name) = 0;
  /// Breaks the line; does nothing in a spreadsheet.
  virtual void EndOfLine() = 0;
  /// Begins a style. End styles in reverse order.
  ///
  /// Begin and end a style within one paragraph or one cell, between BeginCell and EndCell. Styles around entire cells
  /// or rows work in PDF and spreadsheets only: in HTML an element would span cells, in RTF a group would. PDF draws
  /// each paragraph and each cell in one style, that of the last text in it.
  /// @param value  the size, with STYLE_FONT_SIZE; else ignored. RTF uses its low byte; above 127 that sets no size
  virtual void BeginStyle(REPORT_STYLE style, int value) = 0;
  /// @param value  ignored
  virtual void EndStyle(REPORT_STYLE style, int value) = 0;
  /// Writes a blank: a no-break space in HTML and help, a plain blank in text, RTF and PDF, nothing in XML and
  /// spreadsheet.
  virtual void Space() = 0;
  /// Begins a paragraph that several calls fill (HTML, XML, PDF, help). RTF, text and spreadsheet write nothing here;
  /// EndParagraph ends the paragraph in RTF and the line in text.
  /// @param type        a heading or PARAGRAPH_NORMAL; PARAGRAPH_NONE is for Text alone
  /// @param attributes  attribute text of a heading, without a leading blank (HTML, help), else ignored; may be null
  virtual void BeginParagraph(PARAGRAPH_TYPE type, const wchar_t* attributes);
  /// @param type  as passed to BeginParagraph
  virtual void EndParagraph(PARAGRAPH_TYPE type);
  /// Begins a table of contents: a list in HTML, nothing in other formats.
  virtual void BeginToc() = 0;
  /// Adds an entry: a link in HTML and RTF, and in PDF an outline entry, anywhere in the report. Nothing in text, XML
  /// and spreadsheet, nor in help, whose contents list its topics.
  /// @param anchor  the anchor's name, without "#"
  /// @param level   PDF: 0 or negative is the top level. An entry that skips a level is left out of the outline, or
  ///                goes below the deepest entry if the report is conforming. Other formats show no level
  virtual void TocItem(const wchar_t* anchor, const wchar_t* text, int level) = 0;
  /// Ends the list (HTML), a paragraph (RTF).
  virtual void EndToc() = 0;
  /// @param name        the table's element name (XML), which must be valid in XML; the others ignore it. Null or empty
  ///                    gives an element without a name, which no parser accepts. A conforming report corrects names
  /// @param attributes  attribute text without a leading blank (HTML, help): null is class="table table-hover
  ///                    table-bordered", empty is none. The others ignore it
  virtual void BeginTable(const wchar_t* name, const wchar_t* attributes) = 0;
  /// @param name  as passed to BeginTable
  virtual void EndTable(const wchar_t* name) = 0;
  /// @param name        the row's element name (XML); null or empty: the row has no element
  /// @param attributes  attribute text without a leading blank (HTML, help); may be null
  /// @param columns     the number of cells in the row (RTF, PDF); 0 or below: none. RTF makes each column 1,000 twips
  ///                    wide; PDF divides the page's width equally and drops further cells with their texts. The others
  ///                    ignore it
  virtual void BeginRow(const wchar_t* name, const wchar_t* attributes, int columns) = 0;
  /// @param name  as passed to BeginRow
  virtual void EndRow(const wchar_t* name) = 0;
  /// Begins a cell that several calls fill. A spreadsheet ignores it: each Text in it is a cell.
  /// @param text        the cell's element name (XML), else ignored. Null: no element, and Text is dropped until
  ///                    EndCell; empty: no element, but Text is kept
  /// @param header      non-zero: a header cell. HTML and help: th; PDF: bold on light grey; XML: no element, but Text
  ///                    is kept unless @p text is null; RTF, text and spreadsheet: an ordinary cell
  /// @param attributes  HTML and help: attribute text with a leading blank. RTF: the colours "text;background" or one
  ///                    name for both. PDF: the background's name. The others ignore it. Null or empty: none
  virtual void BeginCell(const wchar_t* text, int header, const wchar_t* attributes) = 0;
  /// @param text, header  as passed to BeginCell
  virtual void EndCell(const wchar_t* text, int header) = 0;
  /// Writes a complete cell.
  /// @param text        HTML and help: markup, written unchanged; a conforming report escapes it unless it is already
  ///                    escaped. XML: escaped unless it is already. Null is an empty text, but in classic PDF no text
  ///                    at all: a row of such cells has no height
  /// @param header      non-zero: HTML and help: th; PDF: bold on light grey; RTF and spreadsheet: bold; XML: the cell
  ///                    is dropped; text: an ordinary cell
  /// @param attributes  as in BeginCell, but PDF ignores it: the cell is white
  virtual void Cell(const wchar_t* text, int header, const wchar_t* attributes) = 0;
  /// Colours the next cell, which is then not bold (spreadsheet); does nothing in other formats. In HTML, RTF and PDF a
  /// cell's colour is in its attributes.
  /// @param color  "background" or "text;background", each a CSS name or "#RRGGBB"; an unknown colour is logged and
  ///               ignored. Null or empty removes a pending colour
  virtual void SetCellColor(const wchar_t* color);
  /// Writes a link. XML, text and spreadsheet drop it together with its text. In PDF the whole paragraph or cell is the
  /// link.
  /// @param text    HTML and help: markup, as in Cell. Null is an empty text, but in classic PDF no text at all, as in
  ///                Cell
  /// @param target  HTML and help: an address, or "#" followed by an anchor's name. RTF and PDF: an anchor's name,
  ///                without "#" in the classic form, with or without it in the conforming form, which also accepts an
  ///                address that begins with a scheme, such as https:
  virtual void Link(const wchar_t* text, const wchar_t* target) = 0;
  /// @param value  non-zero is on; see REPORT_OPTION for when each option takes effect
  virtual void SetReportOption(REPORT_OPTION option, int value);

  /// Returns the value of the first property with exactly this name, or null. Valid as long as a report holds the
  /// property.
  const wchar_t* GetProperty(const wchar_t* name) const;
  /// Sets the style sheet text, for the next Open (spreadsheet); null or empty: none.
  void SetStyles(const wchar_t* text);
  /// Sets the file that Open() opens; null is an empty name.
  void SetOutputFileName(const wchar_t* name);
  /// Sets the template's file name in the template folder, including its extension (HTML); a null or empty name changes
  /// nothing.
  void SetTemplateFileName(const wchar_t* name);
  /// Never null; valid until the name changes.
  const wchar_t* GetOutputFileName() const;
  /// Never null; valid until the name changes.
  const wchar_t* GetTemplateFileName() const;
  /// The reason for the last failure; never null. A success does not clear it.
  const wchar_t* GetError() const;

  /// Builds the full path of a template in the template folder, which is "tmpl" beside the library's own file or in the
  /// folder set by scrivalen::SetDataFolder.
  /// @param path  receives the path, even if the file does not exist
  /// @param name  the file's name, including its extension; null is an empty one
  /// @return 1 if the file exists, else 0, which is logged
  int MakeTemplateName(std::wstring& path, const wchar_t* name);

  // The composite rows are written through BeginRow, Cell and EndRow; in XML the row is an element "row".

  /// Writes a row of two cells.
  /// @param t1, t2  the texts, as in Cell
  /// @param header  as in Cell, for both cells
  /// @param a1, a2  the attributes, as in Cell
  void Row2(const wchar_t* t1, const wchar_t* t2, int header, const wchar_t* a1, const wchar_t* a2);
  /// Writes a row of three cells without attributes.
  void Row3(const wchar_t* t1, const wchar_t* t2, const wchar_t* t3, int header);
  /// Writes a row with a name and its value; writes nothing if the value is null or empty.
  /// @param name   a text as in Cell; not quoted
  /// @param value  passed through Quoting, which in a MultiReport changes nothing
  void Row2NotEmptyWithQuote(const wchar_t* name, const wchar_t* value);
  /// Writes the header row of an attribute table: "Report Attribute", a quarter of the width of an HTML table, and
  /// "Value".
  void AttributeRowHeader();
  /// Writes a row with "Report Created" and the local date and time, as 05-Mar-2024 14:07, with the month in the
  /// language of the host's C locale. A time that cannot be converted ends the program (abort).
  void ReportCreated();
  /// Writes a row with a label and the library's name and version.
  /// @param label  a text as in Cell
  void ProductRow(const wchar_t* label);

 protected:
  /// Opens the output file of a format.
  /// @param name  null is an empty path
  /// @return 1, or 0 with the reason in the error text
  int OpenReportFile(ReportFile& file, const wchar_t* name);
  /// Appends a template's bytes to a text, one character each.
  /// @param text      the existing text is kept; null: only checks whether the template can be opened
  /// @param fullPath  non-zero: @p name is a path, else a name in the template folder
  /// @return REPORT_TEMPLATE_NOT_FOUND if it is not in the folder; REPORT_FILE_ERROR, with the reason in the error
  ///         text, if it cannot be read
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
  /// What was lost when memory ran out: 1 settings, 2 content, 4 the error text. Occupies what would be padding.
  std::int32_t lost_ = 0;
  std::vector<std::shared_ptr<PropertyRecord>> properties_;
};

#if defined(__GNUC__)
#pragma GCC diagnostic pop
#endif
