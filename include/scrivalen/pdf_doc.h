#pragma once

#include <scrivalen/export.h>

#include <cstdint>
#include <memory>

namespace PDFStuffer {
class CPDFPage;
}
class PDFReport;

/// A colour; each part lies between 0.0 and 1.0.
struct _RGB_COLOR {
  double red, green, blue;
};

/// The fonts that every reader has, and some that most have. Any other number stands for Helvetica.
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

/// Lays a stream of paragraphs and tables out on pages and writes them as PDF 1.4.
///
/// Nothing is laid out while the calls arrive: they are collected, and EndDoc makes the pages. All lengths are whole
/// points; the paper is 595 x 840, or 840 x 595. A call in the wrong place is ignored; so is what is added
/// once the pages are made.
///
/// A null text is left out: a cell or paragraph into which nothing else is written has no text, and a row of such cells
/// has no height. In a conforming document a null text is an empty one. A null name is an empty one in both.
///
/// Nothing is ever raised. The first failure is kept: when memory runs out for a call, the calls after it do nothing,
/// and EndDoc returns -1 without writing anything; when it runs out for the constructor, no document can begin.
///
/// Texts are UTF-16 code units. The file gets the low byte of each, in a font with WinAnsiEncoding. A conforming
/// document has WinAnsi text, with readable stand-ins for what that lacks, breaks lines by the true widths of its fonts
/// instead of estimated ones, and follows PDF 1.4 in the other places where the classic one does not.
class SCRIVALEN_API CPDFdoc {
 public:
  /// Kept from paragraph to paragraph and not used: every paragraph is aligned to the left.
  using ParType = int;

  CPDFdoc();
  CPDFdoc(const CPDFdoc&) = delete;
  CPDFdoc& operator=(const CPDFdoc&) = delete;
  /// Drops an open document; what was collected is not written.
  virtual ~CPDFdoc();

  /// Begins a document.
  /// @param file       an open file of the operating system, a HANDLE on Windows, a file descriptor carried in the
  ///                   pointer on Linux; written from its current position by EndDoc; never closed. Descriptor 0 is the
  ///                   null pointer, and so no file
  /// @param landscape  non-zero: 840 x 595 points, else 595 x 840
  /// @return 0; -1 when a document is open; -2 when @p file is null; -3 when the writer could not be made, for the
  ///         reason that WriteError tells
  int BegDoc(void* file, int landscape);

  /// Registers a font under a number; a bold variant of each is made at the end.
  ///
  /// In a conforming document a number keeps its first font; faces from Arial on are drawn in the standard font that
  /// looks like them; and a text in Symbol or ZapfDingbats, registered before it, is not WinAnsi but that font's own
  /// codes, up to 255.
  void AddFont(int id, PDF_STANDARD_FONT_FACE face);

  // The style that the next write takes. An item has one style only, that of the last write into it.
  void FontNo(int id);
  /// @param size  in points
  void FontSize(int size);
  void BoldOn();
  void BoldOff();
  /// Italic is noted and not drawn.
  void ItalicOn();
  void ItalicOff();
  void ColorOn(_RGB_COLOR color);
  /// Black.
  void ColorOff();

  /// Begins a paragraph; ignored inside a table.
  /// @param type  changes nothing
  void Paragraf(ParType type);
  /// Appends text to the current paragraph or cell; a line feed in it ends a line. Without a paragraph or cell it is
  /// dropped.
  void write(const wchar_t* text);
  /// Writes a line feed.
  void LineBreak();

  /// Begins a table; ignored inside a table.
  void BeginTable();
  /// Ends the table when its last row is ended; until the next paragraph text is dropped.
  void EndTable();
  /// @param columns  the width of the page is divided by; none, 0 or less, take no cells. Beyond 1,000 of them, which
  ///                 have no width any more, only those with a cell are drawn.
  void BeginRow(int columns);
  void EndRow();
  /// Begins a cell of the current row; one beyond its columns is dropped, with its text.
  void BeginCell(_RGB_COLOR background);
  void EndCell();

  /// Makes the current paragraph or cell the place that links of this name lead to. The last one of a name counts.
  void BookMark(const wchar_t* name);
  /// Appends text and makes the whole current paragraph or cell a link to a bookmark, which may come later.
  /// @param target  a bookmark's name; in a conforming document with or without "#" in front, or an address that begins
  ///                with a scheme, as https:, which readers open
  void HyperLink(const wchar_t* text, const wchar_t* target);
  /// Adds an entry to the outline.
  ///
  /// The classic outline has the entries in the order in which the names of their targets first appeared, in any call;
  /// the conforming one in the order of these calls.
  /// @param level  0 for the top; an entry without one to hang below is left out of the classic form's tree
  void AddOutlineItem(const wchar_t* text, const wchar_t* target, int level);

  /// Ends the page that is being made and begins the next; only while pages are made.
  void PageBreak();

  /// Counts up and returns the number.
  unsigned long GetNextID();
  /// The page that is being made; null before. Owned by the document.
  PDFStuffer::CPDFPage* GetCurrentPage();
  /// The font that stands for a font in bold or italic; @p font itself when there is none.
  int GetFontIdx(int font, bool bold, bool italic);
  /// In points; 2/3 of the size for an unknown font.
  float GetAvrCharWidth(int font, int size, int bold);

  /// Lays the document out, writes it and closes it; the file stays open.
  /// @param pageMode  how a reader opens it (PDF 1.4, table 3.16); null is "UseNone". A conforming document leaves out
  ///                  what that table does not have.
  /// @return 0, or -1 when the file is not whole: memory ran out, bytes did not reach it, or its handle is the invalid
  ///         one; WriteError says which. 0 without an open document
  int EndDoc(const wchar_t* pageMode);

  /// Makes documents conforming, or classic again, from the next BegDoc on.
  void SetConforming(int on);

  /// Whether there is a document between BegDoc and EndDoc.
  bool IsOpen() const;
  /// The first reason why the document since the last BegDoc is not whole; empty as long as it is. Valid until the next
  /// BegDoc.
  const wchar_t* WriteError() const;
  /// How many characters the document since the last BegDoc could not hold as they were given, and the first of them.
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
  /// A font number that no font has.
  int GetNextUnusedFontIdx();

 private:
  friend class PDFReport;
  struct State;
  std::unique_ptr<State> state_;
};
