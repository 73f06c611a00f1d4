#pragma once

#include <scrivalen/export.h>
#include <scrivalen/output_file.h>

#include <cstddef>
#include <cstdint>

/// Writes a document in Rich Text Format (RTF 1.9), one fragment per operation, to a file opened by the caller.
///
/// Every fragment is converted to the ANSI code page and passed to the file at once; nothing is held back. A fragment
/// of more than 4,096 bytes is dropped. Texts are written unchanged.
///
/// A conforming document differs: `\`, `{` and `}` in texts are escaped, a line feed is a line break, the code page is
/// Windows-1252 on every system, a character outside it is written as \uN with "?" as its substitute, a blank ends
/// every control word that text may follow, a double quote in a bookmark's name becomes an apostrophe, and the limits
/// of 4,096 bytes and of 1,024 code units do not apply.
///
/// Calls are not checked for balance. Without an open document nothing is written. Null texts are empty. The writer
/// throws nothing itself, but the file's exceptions reach the caller. A copy writes to the same file.
class SCRIVALEN_API RTFdoc {
 public:
  /// The position of an entry in the font table or the style sheet. A list has at least a first and a last entry.
  enum ITEM_TYPE : int { ITEM_FIRST = 0, ITEM_INNER = 1, ITEM_LAST = 2 };

  /// The alignment of a paragraph. PAR_DEFAULT and PAR_LEFT are the same; any other number writes no alignment.
  enum ParType : int { PAR_DEFAULT = 0, PAR_LEFT = 1, PAR_CENTER = 2, PAR_RIGHT = 3, PAR_JUSTIFY = 4 };

  /// 102400; limits nothing. Kept for programs that use it.
  static const int OBUF_SIZE;

  RTFdoc();

  /// Begins a document: title, colour table, A4 paper.
  /// @param file       open for writing; not owned; must outlive EndDoc; null leaves the document closed
  /// @param title      written unchanged; its fragment is cut at 1,024 UTF-16 code units
  /// @param landscape  non-zero: 16838 x 11906 twips, else 11906 x 16838
  /// @return 1, or 0 if @p file is null
  int BegDoc(OutputFile* file, const wchar_t* title, int landscape);

  /// Closes open fields, two at a time (so one too many for an odd number), and the document's groups. The file stays
  /// open, and the document no longer uses it.
  void EndDoc();

  /// Makes documents conforming (non-zero) or classic (0), from the next BegDoc.
  void SetConforming(int on);

  /// Writes an entry of the font table, cut at 1,024 UTF-16 code units.
  /// @param number  the font's number, for FontNo
  /// @param pos     ITEM_FIRST begins the table, ITEM_LAST ends it; any other number is an inner entry. Add all fonts
  ///                before the styles, and both right after BegDoc
  void AddFont(int number, const wchar_t* name, ITEM_TYPE pos);

  /// Writes an entry of the style sheet, cut at 1,024 UTF-16 code units.
  /// @param number   the style's number, for Style and Paragraf
  /// @param name     null or empty: none
  /// @param ignored  not used
  /// @param size     in half-points
  /// @param bold     non-zero: bold
  /// @param extra    further control words, never escaped; may be null
  /// @param pos      as in AddFont
  void AddStyle(int number, const wchar_t* name, const wchar_t* ignored, int size, int bold, const wchar_t* extra,
                ITEM_TYPE pos);

  /// Writes one byte of the document's code page, escaped, or a control character as SpecChar does.
  void Char(char c);
  /// Does nothing.
  void Char(wchar_t c);
  /// Writes a control character: 7 and 13 end the paragraph, 9 is a tab, 11 breaks the line, 12 and 14 break the page.
  /// Every other character writes nothing.
  void SpecChar(wchar_t c);

  /// Writes a text without ending the paragraph. The classic form drops a text of more than 4,096 bytes.
  /// @param text    null: nothing is written
  /// @param length  the number of wide characters to read (UTF-16 code units on Windows, characters on Linux), NULs
  ///                included; 0 or less: up to the terminating NUL
  void write(const wchar_t* text, int length);
  /// Does nothing.
  void writeT(const wchar_t* text, int length);

  // Bold and italic open a group that their Off closes; the others open none. In the classic form no blank ends the
  // control words of StrikeOn, OutlineOn, ShadowOn, SmallOn, CapsOn, FontNo and Numbers(0): the text after them must
  // not begin with a letter, a digit, a minus sign or a blank.
  void BoldOn();
  void BoldOff();
  void ItalicOn();
  void ItalicOff();
  void StrikeOn();
  void StrikeOff();
  void OutlineOn();
  void OutlineOff();
  void ShadowOn();
  void ShadowOff();
  void SmallOn();
  void SmallOff();
  void CapsOn();
  void CapsOff();
  /// @param size  in half-points; 0 and below write nothing
  void FontSize(char size);
  /// @param kind  not used: the underline is always single
  void UnderLineOn(char kind);
  /// Writes nothing if no underline is on.
  void UnderLineOff(char kind);
  /// @param kind  1: superscript, 2: subscript, else nothing
  void ScriptOn(char kind);
  void ScriptOff();
  /// @param index  in the colour table that BegDoc writes, not checked: 0 default, 1 black, 2 blue, 3 cyan, 4 light
  ///               green, 5 magenta, 6 red, 7 yellow, 8 white, 9 dark blue, 10 dark cyan, 11 green, 12 dark magenta, 13
  ///               dark red, 14 dark yellow, 15 gray, 16 light gray
  void FontColorOn(int index);
  void FontColorOff();
  void BackgroundColorOn(int index);
  void BackgroundColorOff();
  /// @param number  as passed to AddFont
  void FontNo(int number);

  /// Sets the style of the paragraph that the next Paragraf ends.
  void Style(int number);
  /// Sets the alignment of the paragraph that the next Char(13) or SpecChar(13) ends.
  void NextParJ(ParType type);
  /// Ends a paragraph.
  /// @param type   the alignment of the paragraph that ends
  /// @param style  its style; negative: the style set by Style, if any
  void Paragraf(ParType type, int style);
  void PageBreak();
  void Tab();
  void LineBreak();
  /// @param on  non-zero begins paragraph numbering, zero ends it
  void Numbers(int on);
  /// Does nothing.
  void List(char kind);

  /// Writes a link to a bookmark, underlined and blue.
  /// @param text      null is an empty text
  /// @param bookmark  its name, without "#"
  void HyperLink(const wchar_t* text, const wchar_t* bookmark);
  /// Writes an empty bookmark; the fragment is cut at 1,024 UTF-16 code units.
  void BookMark(const wchar_t* name);
  /// Begins a field; write its instruction next.
  void BeginField();
  /// Ends the field's instruction; write the displayed text next.
  void MiddleField();
  void EndField();

  /// Ends the line above a table.
  void BeginTable();
  /// Does nothing.
  void EndTable();
  /// Begins a row of cells, each 1,000 twips wide whatever its content.
  /// @param cells  0 and below: none
  /// @param color  shading of every cell, an index into the colour table; negative: none
  void BeginRow(int cells, int color);
  void BeginCell();
  void EndCell();
  void EndRow();

  /// The number of text characters that the document since the last BegDoc could not hold, including those of dropped
  /// fragments and cut ends, and the first of them.
  std::uint64_t LostCharacters() const;
  char32_t FirstLostCharacter() const;

  /// Receives the fragments; null without an open document. Not owned.
  OutputFile* file = nullptr;
  /// The style set by Style; -1: none.
  std::int32_t nextStyle = -1;
  /// The number of open fields.
  std::int32_t fieldDepth = 0;
  /// Not used.
  std::int32_t reserved[2] = {0, 0};
  /// The number of underlines that are on.
  std::int32_t underlineDepth = 0;
  /// The alignment set by NextParJ.
  ParType nextParType = PAR_DEFAULT;

 private:
  struct Words;

  scrivalen::OutputBuffer* buffer() const { return file == bufferedFile_ ? buffer_ : nullptr; }
  template <typename Content>
  void fragment(std::size_t units, Content content);

  std::int32_t conformingNext_ = 0;
  std::int32_t conforming_ = 0;
  std::uint64_t lost_ = 0;
  char32_t firstLost_ = 0;
  // The buffer of the library's own file, into which fragments are written in place.
  OutputFile* bufferedFile_ = nullptr;
  scrivalen::OutputBuffer* buffer_ = nullptr;
};
