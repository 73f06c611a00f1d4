#pragma once

#include <scrivalen/export.h>
#include <scrivalen/output_file.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

/// The formats that MultiReport::AddReport creates. In the comments below "help" is compiled HTML help, "spreadsheet"
/// an .xlsx workbook.
enum REPORT_FORMAT : int {
  FORMAT_RTF = 0,
  FORMAT_HTML = 1,
  FORMAT_XML = 2,
  FORMAT_TEXT = 3,
  FORMAT_CHM = 4,
  FORMAT_PDF = 5,
  FORMAT_EXCEL = 6
};

/// What Open, Close and BeginSubDocument return.
enum REPORT_ERRORS : int {
  REPORT_OK = 0,
  /// A file could not be created, opened or written whole; GetError says which and why.
  REPORT_FILE_ERROR = 1,
  /// The named template is not in the template folder; the miss is logged.
  REPORT_TEMPLATE_NOT_FOUND = 2
};

/// What a text is. Other numbers are types of no format: HTML writes an element "h" with that number, RTF a style of
/// it, PDF body text.
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

/// How text looks. Text and XML ignore every style. Of any other number HTML writes an empty tag, other formats
/// nothing.
enum REPORT_STYLE : int {
  /// HTML, help, RTF, PDF, spreadsheet.
  STYLE_BOLD = 0,
  /// HTML, help, RTF. PDF notes it and does not draw it.
  STYLE_ITALIC = 1,
  /// RTF and PDF: BeginStyle sets the size given, in half-points in RTF and in points in PDF; EndStyle sets 10 of them,
  /// whatever the size was before.
  STYLE_FONT_SIZE = 2
};

/// An option's value is a flag: non-zero is on. A format ignores the options it does not know.
enum REPORT_OPTION : int {
  /// Paper on its side (RTF, PDF), from the next Open.
  OPTION_LANDSCAPE = 0,
  /// The low byte of each UTF-16 code unit and no byte-order mark (text). It holds at once: set it before Open, or the
  /// file has two encodings.
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
/// Texts are only read during the call. A report is used by one thread at a time. An operation that a format has no use
/// for does nothing in it. What is written while the report is not open goes nowhere.
///
/// No operation raises. When memory runs out for one that sets the report up (a name, a property, the styles, the
/// separator, a copy), Open returns REPORT_FILE_ERROR from then on; when it runs out for content, the next Close does,
/// or the next Open if none is open. GetError then says so, for which it needs no memory.
///
/// There is deliberately no virtual destructor: a report is destroyed through its own class, never through AReport. The
/// order of the virtual operations is part of the interface.
class SCRIVALEN_API AReport {
 public:
  AReport();
  /// The copy shares the property records of the source, not its list of them.
  AReport(const AReport& other);
  AReport& operator=(const AReport& other);
  ~AReport();

  /// Opens the output file name that SetOutputFileName gave. An HtmlReport begins its page with its template or a head.
  virtual REPORT_ERRORS Open() = 0;
  /// Opens a report file; what was in it is replaced. When that happens differs:
  ///
  /// | Format | An existing file |
  /// | --- | --- |
  /// | text, HTML, XML, RTF, PDF | is emptied now |
  /// | spreadsheet | is held now and replaced by Close, once the workbook is whole |
  /// | help | is not touched until Close, which replaces it once the help file is whole |
  ///
  /// An HtmlReport that is opened so writes no head and no template.
  /// @param file  its folder must exist; null is an empty path, which cannot be opened
  /// @return REPORT_FILE_ERROR when the report is open already, which it stays, when the file is open in another report
  ///         or cannot be created
  virtual REPORT_ERRORS Open(const wchar_t* file) = 0;
  /// Finishes the report.
  /// @return REPORT_FILE_ERROR when bytes of the report did not all reach the file; GetError and the log say why.
  ///         REPORT_OK, with nothing written, when the report is not open
  virtual REPORT_ERRORS Close() = 0;
  /// Appends a property; the first of several of one name is the one found. "%TITLE%" is the title of RTF documents, of
  /// conforming PDF documents, of help files, and of HTML pages that Open() begins without a template; a template has
  /// places for every property. Without it RTF documents and help files are titled "Report", and PDF documents have no
  /// title. Add properties before Open.
  virtual void AddProperty(const wchar_t* name, const wchar_t* value);
  /// Sets the text between two cells of a row, a tab by default (text). It holds at once, up to its first NUL.
  virtual void SetColumnSeparator(const std::wstring& separator);
  /// The text with what the format gives a meaning to escaped: & < > " in HTML, XML and help; an unchanged copy in
  /// every other format and in MultiReport. Empty when memory runs out.
  virtual std::wstring Quoting(const std::wstring& text);
  /// Writes a text, as a paragraph of its own unless @p type is PARAGRAPH_NONE.
  ///
  /// Inline text belongs into a paragraph, a cell or, in help, a topic: PDF drops it where none of them is begun, help
  /// drops every text outside of a topic. In a spreadsheet a text in a row is one more cell of it, any other a row of
  /// one cell, bold with every type but PARAGRAPH_NONE. In XML a text between BeginCell(null) and EndCell is dropped.
  /// @param type   HTML and help: p or h1 to h6; XML: an element "text" for every type; text: a line; RTF: a paragraph
  ///               of style 1 to 6, or 0; PDF: 20, 18, 16, 15, 14, 12 points, or 8
  /// @param style  attribute text of a heading without a blank before it (HTML, help), else ignored; may be null
  /// @param raw    non-zero: the text is markup already. HTML and XML write it as it is, help does so when it is
  ///               conforming. All other formats ignore this: text, PDF and spreadsheet show markup as text; RTF takes
  ///               every text for RTF unless it is conforming
  virtual void Text(const wchar_t* text, PARAGRAPH_TYPE type, const wchar_t* style, int raw) = 0;
  /// Begins a topic (help); nothing in other formats.
  /// @param folder  where the topic's page is written until Close, with a separator at its end; it must exist. Give all
  ///                topics the same one, which no one else writes to
  /// @param file    the page's name, appended to the folder as it is. A path with a line break, and the names
  ///                report.hhp, report.hhc and report.chm are refused
  /// @param title   the topic's name in the contents
  /// @return how the topic's page opened; REPORT_FILE_ERROR too when it was refused or the report is not open;
  ///         REPORT_OK in formats without topics
  virtual REPORT_ERRORS BeginSubDocument(const wchar_t* folder, const wchar_t* file, const wchar_t* title);
  /// Ends the topic; one that Close finds open counts as a failure of the help file.
  virtual void EndSubDocument();
  /// Begins an anchor around what follows (HTML, help). RTF: an empty bookmark. PDF: the place is the paragraph or cell
  /// that is begun; without one there is no place. Nothing in text, XML and spreadsheet.
  virtual void BeginAncor(const wchar_t* name) = 0;
  /// Ends the anchor (HTML, help); nothing in other formats.
  virtual void EndAncor() = 0;
  /// Sets an anchor with nothing inside. PDF begins a paragraph for it, except in a cell, which then is the place.
  virtual void Ancor(const wchar_t* name) = 0;
  /// Breaks the line; nothing in a spreadsheet.
  virtual void EndOfLine() = 0;
  /// Begins a style. End styles in the reverse of the order in which they begin.
  ///
  /// Begin and end a style within one paragraph or one cell, between BeginCell and EndCell. Around whole cells or rows
  /// it works in PDF and spreadsheets only: HTML would have an element across the cells of a table, RTF a group across
  /// them. PDF draws each paragraph and each cell in one style, that of the last text in it.
  /// @param value  the size, with STYLE_FONT_SIZE; else ignored. RTF takes its low byte, which above 127 sets no size
  virtual void BeginStyle(REPORT_STYLE style, int value) = 0;
  /// @param value  ignored
  virtual void EndStyle(REPORT_STYLE style, int value) = 0;
  /// Writes one blank: not to be broken in HTML and help, a plain one in text, RTF and PDF, none in XML and
  /// spreadsheet.
  virtual void Space() = 0;
  /// Begins a paragraph that several calls fill (HTML, XML, PDF, help). RTF, text and spreadsheet write nothing; in RTF
  /// EndParagraph ends the paragraph, in text the line.
  /// @param type        a heading or PARAGRAPH_NORMAL; PARAGRAPH_NONE is for Text alone
  /// @param attributes  attribute text of a heading without a blank before it (HTML, help), else ignored; may be null
  virtual void BeginParagraph(PARAGRAPH_TYPE type, const wchar_t* attributes);
  /// @param type  as BeginParagraph was given
  virtual void EndParagraph(PARAGRAPH_TYPE type);
  /// Begins a table of contents: a list in HTML, nothing in other formats.
  virtual void BeginToc() = 0;
  /// Adds an entry: a link in HTML and RTF, an entry of the outline in PDF, wherever it is called. Nothing in text,
  /// XML, spreadsheet and help, whose contents are its topics.
  /// @param anchor  the anchor's name, without "#"
  /// @param level   PDF: 0 on top, negative numbers too; an entry that skips a level is left out of the outline, or
  ///                hangs below the deepest one when the report is conforming. Other formats show no level
  virtual void TocItem(const wchar_t* anchor, const wchar_t* text, int level) = 0;
  /// Ends the list (HTML), a paragraph (RTF).
  virtual void EndToc() = 0;
  /// @param name        the table's element name (XML), which must be a name of XML; the others ignore it. Null or
  ///                    empty gives an element without a name, which no parser reads. A conforming report mends names
  /// @param attributes  attribute text without a blank before it (HTML, help): null is class="table table-hover
  ///                    table-bordered", empty is none. The others ignore it
  virtual void BeginTable(const wchar_t* name, const wchar_t* attributes) = 0;
  /// @param name  as BeginTable was given
  virtual void EndTable(const wchar_t* name) = 0;
  /// @param name        the row's element name (XML); null or empty: the row has no element
  /// @param attributes  attribute text without a blank before it (HTML, help); may be null
  /// @param columns     how many cells the row will have (RTF, PDF). RTF has so many borders of 1,000 twips each; PDF
  ///                    shares the page's width among them and drops cells beyond them, with their texts. 0 and below:
  ///                    none. The others ignore it
  virtual void BeginRow(const wchar_t* name, const wchar_t* attributes, int columns) = 0;
  /// @param name  as BeginRow was given
  virtual void EndRow(const wchar_t* name) = 0;
  /// Begins a cell that several calls fill. A spreadsheet ignores it: each Text in it is a cell.
  /// @param text        the cell's element name (XML), else ignored. Null: no element, and Text is dropped until
  ///                    EndCell; empty: no element, and Text stays
  /// @param header      non-zero: a header cell. HTML and help: th; PDF: bold on light grey; XML: no element, Text
  ///                    stays unless @p text is null; RTF, text and spreadsheet: as any other
  /// @param attributes  HTML and help: attribute text with a blank before it. RTF: the colours "text;background" or one
  ///                    name for both. PDF: the background's name. The others ignore it. Null or empty: none
  virtual void BeginCell(const wchar_t* text, int header, const wchar_t* attributes) = 0;
  /// @param text, header  as BeginCell was given
  virtual void EndCell(const wchar_t* text, int header) = 0;
  /// Writes a whole cell.
  /// @param text        HTML and help: markup, written as it is, unless the report is conforming: then it is quoted if
  ///                    it is not quoted already. XML: quoted if it is not quoted already. Null is an empty text, but a
  ///                    null gives a classic PDF cell no text at all: a row of such cells has no height
  /// @param header      non-zero: HTML and help: th; PDF: bold on light grey; RTF and spreadsheet: bold; XML: the cell
  ///                    is dropped; text: as any other
  /// @param attributes  as in BeginCell, but PDF ignores it: such a cell is white
  virtual void Cell(const wchar_t* text, int header, const wchar_t* attributes) = 0;
  /// Colours the next cell that is written (spreadsheet), which then is not bold; nothing in other formats. In HTML,
  /// RTF and PDF a cell's colour is in its attributes.
  /// @param color  "background" or "text;background", each a name of CSS or "#RRGGBB"; an unknown one is logged and
  ///               colours nothing. Null or empty takes a colour back
  virtual void SetCellColor(const wchar_t* color);
  /// Writes a link. XML, text and spreadsheet drop it together with its text. In PDF the whole paragraph or cell leads
  /// there.
  /// @param text    HTML and help: markup, as in Cell
  /// @param target  HTML and help: an address, or "#" followed by an anchor's name. RTF and PDF: an anchor's name,
  ///                without "#" in the classic form, with it or without in the conforming one. Both also take an
  ///                address that begins with a scheme, as https:, when they are conforming
  virtual void Link(const wchar_t* text, const wchar_t* target) = 0;
  /// @param value  non-zero is on; see REPORT_OPTION for when each option takes effect
  virtual void SetReportOption(REPORT_OPTION option, int value);

  /// The value of the first property of exactly this name, or null. Valid as long as a report holds the property.
  const wchar_t* GetProperty(const wchar_t* name) const;
  /// Sets the style sheet text, for the next Open (spreadsheet); null or empty: none.
  void SetStyles(const wchar_t* text);
  /// Sets the file that Open() opens; null is an empty name.
  void SetOutputFileName(const wchar_t* name);
  /// Sets the name of the template's file in the template folder, extension included (HTML); a null or empty name
  /// changes nothing.
  void SetTemplateFileName(const wchar_t* name);
  /// Never null; valid until the name changes.
  const wchar_t* GetOutputFileName() const;
  /// Never null; valid until the name changes.
  const wchar_t* GetTemplateFileName() const;
  /// The reason of the last failure, never null; a success does not clear it.
  const wchar_t* GetError() const;

  /// Builds the full path of a template: the template folder, which is "tmpl" beside the library's own file or where
  /// scrivalen::SetDataFolder says, and a name in it.
  /// @param path  receives the path, also of a file that does not exist
  /// @param name  the file's name, extension included; null is an empty one
  /// @return 1 when that file exists, else 0, and the miss is logged
  int MakeTemplateName(std::wstring& path, const wchar_t* name);

  // The composite rows are written through BeginRow, Cell and EndRow; in XML the row is an element "row".

  /// Writes a row of two cells.
  /// @param t1, t2  as Cell takes a text
  /// @param header  of both cells
  /// @param a1, a2  their attributes, as Cell takes them
  void Row2(const wchar_t* t1, const wchar_t* t2, int header, const wchar_t* a1, const wchar_t* a2);
  /// Writes a row of three cells without attributes.
  void Row3(const wchar_t* t1, const wchar_t* t2, const wchar_t* t3, int header);
  /// Writes a row of a name and its value; nothing when the value is null or empty.
  /// @param name   as Cell takes a text: it is not quoted
  /// @param value  goes through Quoting, which in a MultiReport changes nothing
  void Row2NotEmptyWithQuote(const wchar_t* name, const wchar_t* value);
  /// Writes the header row of an attribute table: "Report Attribute", a quarter of the width of an HTML table, and
  /// "Value".
  void AttributeRowHeader();
  /// Writes a row of "Report Created" and the local date and time, as 05-Mar-2024 14:07, with the month in the language
  /// of the C locale that the host has set. A time that cannot be converted ends the program (abort).
  void ReportCreated();
  /// Writes a row of a label and the library's name and version.
  /// @param label  as Cell takes a text
  void ProductRow(const wchar_t* label);

 protected:
  /// Opens a format's output file.
  /// @param name  null is an empty path
  /// @return 1, or 0 with the reason in the error text
  int OpenReportFile(ReportFile& file, const wchar_t* name);
  /// Appends a template's bytes to a text, one character each.
  /// @param text      what is there stays; null: only look whether the template can be opened
  /// @param fullPath  non-zero: @p name is a path, else a name in the template folder
  /// @return REPORT_TEMPLATE_NOT_FOUND when it is not in the folder; REPORT_FILE_ERROR, with the reason in the error
  ///         text, when it cannot be read
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
