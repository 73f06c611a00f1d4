#pragma once

#include <scrivalen/export.h>
#include <scrivalen/output_file.h>

#include <cstddef>
#include <cstdint>

/// Writes a document in Rich Text Format (RTF 1.9), one fragment an operation, to a file that the caller has opened.
///
/// Every fragment is converted to the ANSI code page and handed to the file at once; nothing is held back. A fragment
/// of more than 4,096 bytes is dropped. Texts go out as they stand, unless the document is a conforming one: then `\`,
/// `{` and `}` in them are escaped, a line feed is a line break, the code page is Windows-1252 on every system, a
/// character outside of it is written as \uN with "?" as its stand-in, a blank ends every control word that text may
/// follow, a double quote in the name of a bookmark becomes an apostrophe, and the limits of 4,096 bytes and of 1,024
/// code units do not hold.
///
/// Calls are not checked for balance. Without an open document nothing is written. Null texts are empty. The writer
/// raises nothing itself; what the file raises reaches the caller. A copy writes to the same file.
class SCRIVALEN_API RTFdoc {
 public:
  /// The place of an entry in the font table or the style sheet; a list has at least a first and a last entry.
  enum ITEM_TYPE : int { ITEM_FIRST = 0, ITEM_INNER = 1, ITEM_LAST = 2 };

  /// How a paragraph is aligned. PAR_DEFAULT and PAR_LEFT are the same; any other number writes no alignment.
  enum ParType : int { PAR_DEFAULT = 0, PAR_LEFT = 1, PAR_CENTER = 2, PAR_RIGHT = 3, PAR_JUSTIFY = 4 };

  /// 102400, which limits nothing; kept for programs that name it.
  static const int OBUF_SIZE;

  RTFdoc();

  /// Begins a document: title, colour table, A4 paper.
  /// @param file       open for writing, not owned; must outlive EndDoc; null leaves the document closed
  /// @param title      written as it stands; 1,024 UTF-16 code units of the fragment it stands in arrive
  /// @param landscape  non-zero: 16838 x 11906 twips, else 11906 x 16838
  /// @return 1, or 0 when @p file is null
  int BegDoc(OutputFile* file, const wchar_t* title, int landscape);

  /// Closes open fields, two at a time and so one too many for an odd number, and the document's groups, and forgets
  /// the file, which stays open.
  void EndDoc();

  /// Makes documents conforming, or classic again, from the next BegDoc on.
  void SetConforming(int on);

  /// Writes an entry of the font table; at most 1,024 UTF-16 code units of it arrive.
  /// @param number  of the font, for FontNo
  /// @param pos     ITEM_FIRST begins the table, ITEM_LAST ends it; any other number is an inner entry. All fonts come
  ///                before all styles, both right after BegDoc
  void AddFont(int number, const wchar_t* name, ITEM_TYPE pos);

  /// Writes an entry of the style sheet; at most 1,024 UTF-16 code units of it arrive.
  /// @param number   of the style, for Style and Paragraf
  /// @param name     null or empty: none
  /// @param ignored  not used
  /// @param size     in half-points
  /// @param bold     non-zero: bold
  /// @param extra    further control words, never escaped; may be null
  /// @param pos      as in AddFont
  void AddStyle(int number, const wchar_t* name, const wchar_t* ignored, int size, int bold, const wchar_t* extra,
                ITEM_TYPE pos);

  /// Writes one byte of the document's code page, escaped; a control character as SpecChar does.
  void Char(char c);
  /// Does nothing.
  void Char(wchar_t c);
  /// Writes the break that a control character stands for: 7 and 13 end a paragraph, 9 is a tab, 11 breaks the line, 12
  /// and 14 the page. Every other character writes nothing.
  void SpecChar(wchar_t c);

  /// Writes a text, without ending a paragraph. In the classic form one of more than 4,096 bytes is dropped.
  /// @param text    null: nothing
  /// @param length  in wide characters (UTF-16 code units on Windows, characters on Linux): so many are read, zeros
  ///                too; 0 or less: up to the terminating zero
  void write(const wchar_t* text, int length);
  /// Does nothing.
  void writeT(const wchar_t* text, int length);

  // Bold and italic open a group that their Off closes. The other words open none. In the classic form no blank ends
  // StrikeOn, OutlineOn, ShadowOn, SmallOn, CapsOn, FontNo and Numbers(0): what is written next must not begin with a
  // letter, a digit, a minus sign or a blank.
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
  /// @param kind  not used: there is the single underline only
  void UnderLineOn(char kind);
  /// Writes nothing when no underline is on.
  void UnderLineOff(char kind);
  /// @param kind  1: superscript, 2: subscript, else nothing
  void ScriptOn(char kind);
  void ScriptOff();
  /// @param index  into the colour table that BegDoc writes, not checked: 0 default, 1 black, 2 blue, 3 cyan, 4 light
  ///               green, 5 magenta, 6 red, 7 yellow, 8 white, 9 dark blue, 10 dark cyan, 11 green, 12 dark magenta, 13
  ///               dark red, 14 dark yellow, 15 gray, 16 light gray
  void FontColorOn(int index);
  void FontColorOff();
  void BackgroundColorOn(int index);
  void BackgroundColorOff();
  /// @param number  as AddFont was given
  void FontNo(int number);

  /// Sets the style of the paragraph that the next Paragraf ends.
  void Style(int number);
  /// Sets the alignment of the paragraph that a carriage return given to Char ends.
  void NextParJ(ParType type);
  /// Ends a paragraph.
  /// @param type   of the paragraph that ends
  /// @param style  negative: what Style has set, if anything
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
  /// Writes an empty bookmark; at most 1,024 UTF-16 code units of the fragment arrive.
  void BookMark(const wchar_t* name);
  /// Begins a field, whose instruction is written next.
  void BeginField();
  /// Ends the field's instruction; what is written next is shown.
  void MiddleField();
  void EndField();

  /// Ends the line above a table.
  void BeginTable();
  /// Does nothing.
  void EndTable();
  /// Begins a row of cells that are 1,000 twips wide each, whatever is in them.
  /// @param cells  0 and below: none
  /// @param color  shading of every cell, an index into the colour table; negative: none
  void BeginRow(int cells, int color);
  void BeginCell();
  void EndCell();
  void EndRow();

  /// How many characters of texts the document since the last BegDoc could not hold, those of dropped fragments and cut
  /// ends among them, and the first of them.
  std::uint64_t LostCharacters() const;
  char32_t FirstLostCharacter() const;

  /// Where fragments go; null without an open document. Not owned.
  OutputFile* file = nullptr;
  /// The style that Style has set; -1: none.
  std::int32_t nextStyle = -1;
  /// Fields begun and not ended.
  std::int32_t fieldDepth = 0;
  /// Not used.
  std::int32_t reserved[2] = {0, 0};
  /// Underlines on and not yet off.
  std::int32_t underlineDepth = 0;
  /// The alignment that NextParJ has set.
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
  // The buffer of a file of the library's own, into which fragments are put in place.
  OutputFile* bufferedFile_ = nullptr;
  scrivalen::OutputBuffer* buffer_ = nullptr;
};
