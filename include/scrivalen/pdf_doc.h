#pragma once

#include <scrivalen/export.h>

#include <cstdint>
#include <memory>

namespace PDFStuffer {
class CPDFPage;
}
class PDFReport;

/// A colour; each component is between 0.0 and 1.0.
struct _RGB_COLOR {
  double red, green, blue;
};

/// The fonts that every reader has, and some that most have. Any other number is Helvetica.
enum PDF_STANDARD_FONT_FACE : int {
  PDF_TIMES_ROMAN = 0,
  PDF_TIMES_BOLD = 1,
  PDF_TIMES_ITALIC = 2,
  PDF_TIMES_BOLDITALIC = 3,
  PDF_HELVETICA = 4,
  PDF_HELVETICA_BOLD = 5,
  PDF_HELVETICA_OBLIQUE = 6,
  PDF_HELVETICA_BOLDOBLIQUE = 7,
  PDF_COURIER = 8,
  PDF_COURIER_BOLD = 9,
  PDF_COURIER_OBLIQUE = 10,
  PDF_COURIER_BOLDOBLIQUE = 11,
  PDF_SYMBOL = 12,
  PDF_ZAPFDINGBATS = 13,
  PDF_ARIAL = 14,
  PDF_HELVETICA_ITALIC = 15,
  PDF_HELVETICA_BOLDITALIC = 16,
  PDF_COURIER_ITALIC = 17,
  PDF_COURIER_BOLDITALIC = 18
};

/// Lays out a stream of paragraphs and tables on pages and writes them as PDF 1.4.
///
/// The calls are collected, and EndDoc lays out the pages. All lengths are whole points; the paper is 595 x 840, or
/// 840 x 595. A call in the wrong place is ignored, and so is content added once the pages are made.
///
/// A null text is ignored: a cell or paragraph without any other text has no text, and a row of such cells has no
/// height. In a conforming document a null text is an empty one. A null name is an empty one in both forms.
///
/// Nothing is ever thrown. The first failure is kept: if a call runs out of memory, later calls do nothing, and EndDoc
/// returns -1 without writing anything; if the constructor runs out of memory, no document can begin.
///
/// Texts are UTF-16 code units. The file gets the low byte of each, in a font with WinAnsiEncoding. A conforming
/// document has WinAnsi text, with readable substitutes for missing characters, breaks lines by the true widths of its
/// fonts instead of estimates, and follows PDF 1.4 wherever else the classic form does not.
class SCRIVALEN_API CPDFdoc {
 public:
  /// Kept from paragraph to paragraph but not used: every paragraph is left-aligned.
  using ParType = int;

  CPDFdoc();
  CPDFdoc(const CPDFdoc&) = delete;
  CPDFdoc& operator=(const CPDFdoc&) = delete;
  /// Drops an open document; its content is not written.
  virtual ~CPDFdoc();

  /// Begins a document.
  /// @param file       an open file of the operating system: a HANDLE on Windows, a file descriptor cast to a pointer
  ///                   on Linux. EndDoc writes from its current position; it is never closed. Descriptor 0 is the null
  ///                   pointer, so it is refused
  /// @param landscape  non-zero: 840 x 595 points, else 595 x 840
  /// @return 0; -1 if a document is open; -2 if @p file is null; -3 if the writer could not be created, for the reason
  ///         in WriteError
  int BegDoc(void* file, int landscape);

  /// Registers a font under a number; a bold variant of each is added at the end.
  ///
  /// In a conforming document a number keeps its first font, and faces from Arial on are drawn in the standard font
  /// that looks like them. A text in Symbol or ZapfDingbats, if registered before the text, is not WinAnsi but in that
  /// font's own codes, up to 255.
  void AddFont(int id, PDF_STANDARD_FONT_FACE face);

  // The style for the next write. An item has one style only, that of the last write into it.
  void FontNo(int id);
  /// @param size  in points
  void FontSize(int size);
  void BoldOn();
  void BoldOff();
  /// Italic is recorded but not drawn.
  void ItalicOn();
  void ItalicOff();
  void ColorOn(_RGB_COLOR color);
  /// Black.
  void ColorOff();

  /// Begins a paragraph; ignored inside a table.
  /// @param type  not used
  void Paragraf(ParType type);
  /// Appends text to the current paragraph or cell; a line feed in it breaks the line. Without a paragraph or cell the
  /// text is dropped.
  void write(const wchar_t* text);
  /// Writes a line feed.
  void LineBreak();

  /// Begins a table; ignored inside a table.
  void BeginTable();
  /// Ends the table if its last row has ended. Text is dropped until the next paragraph.
  void EndTable();
  /// @param columns  divides the width of the page equally; with 0 or less the row takes no cells. With more than 1,000
  ///                 columns, which have no width left, only those with a cell are drawn.
  void BeginRow(int columns);
  void EndRow();
  /// Begins a cell of the current row; a cell beyond its columns is dropped, with its text.
  void BeginCell(_RGB_COLOR background);
  void EndCell();

  /// Makes the current paragraph or cell the target of links to this name. The last bookmark of a name counts.
  void BookMark(const wchar_t* name);
  /// Appends text and makes the whole current paragraph or cell a link to a bookmark, which may come later.
  /// @param target  a bookmark's name. In a conforming document it may begin with "#", or be an address with a scheme,
  ///                such as https:, which readers open
  void HyperLink(const wchar_t* text, const wchar_t* target);
  /// Adds an entry to the outline.
  ///
  /// In the classic outline, entries are in the order in which their targets' names first appeared, in any call; in the
  /// conforming outline, in the order of these calls.
  /// @param level  0 for the top; an entry without a parent is left out of the classic form's tree
  void AddOutlineItem(const wchar_t* text, const wchar_t* target, int level);

  /// Ends the current page and begins the next; does nothing unless pages are being laid out.
  void PageBreak();

  /// Increments a counter and returns it.
  unsigned long GetNextID();
  /// The page that is being laid out; null before that. Owned by the document.
  PDFStuffer::CPDFPage* GetCurrentPage();
  /// Returns the bold or italic variant of a font; @p font itself if there is none.
  int GetFontIdx(int font, bool bold, bool italic);
  /// Returns the average width in points; 2/3 of the size for an unknown font.
  float GetAvrCharWidth(int font, int size, int bold);

  /// Lays out the document, writes it and closes it; the file stays open.
  /// @param pageMode  how a reader opens it (PDF 1.4, table 3.16); null is "UseNone". A conforming document leaves out
  ///                  a mode that the table lacks.
  /// @return 0, or -1 if the file is incomplete: memory ran out, bytes did not reach the file, or the handle is
  ///         invalid; WriteError says which. 0 without an open document
  int EndDoc(const wchar_t* pageMode);

  /// Makes documents conforming (non-zero) or classic (0), from the next BegDoc.
  void SetConforming(int on);

  /// Whether a document is open.
  bool IsOpen() const;
  /// The first reason why the document since the last BegDoc is incomplete; empty if there is none. Valid until the
  /// next BegDoc.
  const wchar_t* WriteError() const;
  /// The number of characters that the document since the last BegDoc could not hold as given, and the first of them.
  std::uint64_t LostCharacters() const;
  char32_t FirstLostCharacter() const;

 protected:
  // The steps of BegDoc and EndDoc.
  void Init();
  void Delete();
  void CreateFonts();
  void GeneratePages();
  void StartPage();
  void FinishPage();
  /// Returns an unused font number.
  int GetNextUnusedFontIdx();

 private:
  friend class PDFReport;
  struct State;
  std::unique_ptr<State> state_;
};
