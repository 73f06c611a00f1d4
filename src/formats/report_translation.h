#pragma once

#include "document/document.h"
#include "formats/attribute_text.h"
#include "formats/inline_writer.h"
#include "formats/report_columns.h"
#include "scrivalen/report.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace scrivalen {

/// Turns the operations of the classic interface into the calls of a document, whose parts nest strictly. What hosts
/// leave open, end twice or write in the wrong place is mended; nothing is refused.
///
/// Texts of hosts may be null. A call may raise std::bad_alloc.
class ReportTranslation {
 public:
  /// @param document  not owned; must outlive the translation
  /// @param takesHtml  whether the document's format takes raw HTML
  ReportTranslation(document::Document& document, bool takesHtml);

  void text(const wchar_t* text, PARAGRAPH_TYPE type, const wchar_t* attributes, bool isRaw);
  void beginParagraph(PARAGRAPH_TYPE type, const wchar_t* attributes);
  void endParagraph();
  void endOfLine();
  void space();
  void beginStyle(REPORT_STYLE style, int value);
  void endStyle(REPORT_STYLE style);

  void beginSection(const wchar_t* file, const wchar_t* title);
  void endSection();
  void anchor(const wchar_t* name);
  void link(const wchar_t* text, const wchar_t* target);
  void beginContents();
  void contentsItem(const wchar_t* anchor, const wchar_t* text, int level);
  void endContents();

  void beginTable(const wchar_t* name);
  void endTable();
  void beginRow(const wchar_t* attributes);
  void endRow();
  void beginCell(const wchar_t* name, bool isHeader, const wchar_t* attributes);
  void endCell();
  void cell(const wchar_t* text, bool isHeader, const wchar_t* attributes);
  void setCellColor(const wchar_t* color);

  /// Ends what is open.
  void finish();

 private:
  enum class Block { None, Open, Paragraph };  // Open: of text that no paragraph began
  enum class CellKind { None, Open, Begun };   // Open: of text between two cells

  // A table within a cell, which becomes lines of that cell.
  struct InnerTable {
    std::size_t depth = 0;
    std::size_t rows = 0;   // begun and not ended
    std::size_t cells = 0;  // the same
    bool hasCells = false;  // in the current line

    explicit operator bool() const { return depth > 0; }
  };

  std::string_view read(const wchar_t* text);
  std::string_view readQuoted(const wchar_t* text);
  std::string_view readName(const wchar_t* name);

  bool isInText() const { return block_ != Block::None || cell_ != CellKind::None; }
  void enterText();
  void writeText(std::string_view text, bool isRaw);
  void writeMarkup(std::string_view text);
  void beginBlock(PARAGRAPH_TYPE type, const wchar_t* attributes);
  void beginBlockInCell(bool isHeading);
  void endBlockInCell();
  void closeBlock();
  void closeContents();
  void closeToOutermost();

  void openRow();
  void closeRow();
  void closeTable();
  void openCell(CellKind kind, bool isHeader, const Attributes& attributes);
  void closeCell();
  Attributes attributesOfCell(const wchar_t* attributes);
  void beginInnerCell();
  std::string addressOf(const wchar_t* target);

  document::Document& document_;
  const bool takesHtml_;
  InlineWriter inline_;
  ReportColumns columns_;
  std::string text_;
  std::string otherText_;
  Block block_ = Block::None;
  bool isInSection_ = false;

  bool listsContents_ = false;  // the host is between BeginToc and EndToc
  bool isContentsOpen_ = false;
  std::optional<int> firstLevel_;  // 0 or 1

  bool isTableOpen_ = false;
  std::string tableName_;
  bool isInRow_ = false;  // the host has begun a row
  bool isRowOpen_ = false;
  std::size_t cells_ = 0;  // of the row
  std::size_t headers_ = 0;
  bool hasRowLook_ = false;
  Attributes rowLook_;  // what its cells begin with
  CellKind cell_ = CellKind::None;
  bool isHeadingInCell_ = false;
  InnerTable inner_;
  Attributes nextCell_;  // the colours that SetCellColor gave it
  bool hasNextCell_ = false;
};

}  // namespace scrivalen
