#include "formats/report_translation.h"

#include "formats/markup_reading.h"
#include "text/address.h"
#include "text/null_text.h"
#include "text/plain_text.h"
#include "text/utf.h"

#include <algorithm>
#include <cstdint>

namespace scrivalen {
namespace {

using document::Align;
using document::Status;
using document::WarningCode;

constexpr int kDeepestLevel = 6;

bool isHeading(PARAGRAPH_TYPE type) { return type >= PARAGRAPH_HEADING1 && type <= PARAGRAPH_HEADING6; }

std::string placeOf(std::string_view name) { return std::string("#").append(name); }

bool isSpace(std::string_view text) { return text.find_first_not_of(" \t\r\n") == text.npos; }

}  // namespace

ReportTranslation::ReportTranslation(document::Document& document, bool takesHtml)
    : document_(document), takesHtml_(takesHtml), inline_(document), columns_(document) {}

// The results are valid until the next call.
std::string_view ReportTranslation::read(const wchar_t* text) {
  const std::wstring_view wide = orEmpty(text);
  text_.clear();
  appendUtf8(text_, wide.substr(appendPlain<PlainBelow<char, 0x80>>(text_, wide)));
  return text_;
}

std::string_view ReportTranslation::readQuoted(const wchar_t* text) {
  read(text);
  decodeReferences(text_);
  return text_;
}

std::string_view ReportTranslation::readName(const wchar_t* name) {
  const std::string_view read = readQuoted(name);
  return read.substr(read.starts_with('#') ? 1 : 0);
}

void ReportTranslation::text(const wchar_t* text, PARAGRAPH_TYPE type, const wchar_t* attributes, bool isRaw) {
  if (type == PARAGRAPH_NONE) {
    return writeText(read(text), isRaw);
  }
  beginBlock(type, attributes);
  writeText(read(text), isRaw);
  endParagraph();
}

void ReportTranslation::writeText(std::string_view text, bool isRaw) {
  if (isRaw) {
    return writeMarkup(text);
  }
  if (isInText() ? text.empty() : isSpace(text)) {
    return;  // white space between blocks is that of the host's source
  }
  enterText();
  inline_.text(text);
}

// Markup of blocks is in no paragraph but one that the host has begun.
void ReportTranslation::writeMarkup(std::string_view text) {
  const bool isBlock = beginsWithBlock(text);
  if (isBlock && block_ == Block::Open) {
    closeBlock();
  }
  if (!takesHtml_) {
    writeText(textOfMarkup(text), false);
  } else if (isBlock && !isInText() && !isInRow_) {
    closeToOutermost();
    document_.raw("html", text);
  } else if (isInText() || !isSpace(text)) {
    enterText();
    inline_.markup(text);
  }
  if (isBlock && block_ == Block::Open) {
    closeBlock();
  }
}

// Text that is in no cell of its row is a cell; text that is in no paragraph begins one.
void ReportTranslation::enterText() {
  if (isInText()) {
    return;
  }
  if (isInRow_) {
    return openCell(CellKind::Open, false, attributesOfCell(nullptr));
  }
  closeTable();
  closeContents();
  document_.beginParagraph(Align::Auto);
  block_ = Block::Open;
  inline_.enterOpenText();
}

// A paragraph between two cells is a cell. A heading there means that the host did not end its table.
void ReportTranslation::beginBlock(PARAGRAPH_TYPE type, const wchar_t* attributes) {
  if (cell_ == CellKind::Begun || (isInRow_ && !isHeading(type))) {
    return beginBlockInCell(isHeading(type));
  }
  closeBlock();
  closeTable();
  closeContents();
  Attributes look;
  readAttributes(read(attributes), look);
  if (isHeading(type)) {
    const std::string id = look.id.empty() ? inline_.takeAnchor() : look.id;
    document_.beginHeading(type, id, look.align);
  } else {
    document_.beginParagraph(look.align);
  }
  block_ = Block::Paragraph;
  inline_.enter(look);
  if (!isHeading(type) && !look.id.empty()) {
    inline_.anchor(look.id);
  }
}

void ReportTranslation::beginBlockInCell(bool isHeading) {
  if (cell_ == CellKind::Open) {
    closeCell();
  }
  enterText();
  endBlockInCell();
  isHeadingInCell_ = isHeading;
  if (isHeading) {
    inline_.beginBold();
  }
}

void ReportTranslation::endBlockInCell() {
  inline_.newLine();
  if (isHeadingInCell_) {
    isHeadingInCell_ = false;
    inline_.endBold();
  }
}

void ReportTranslation::beginParagraph(PARAGRAPH_TYPE type, const wchar_t* attributes) { beginBlock(type, attributes); }

void ReportTranslation::endParagraph() {
  if (cell_ == CellKind::Begun) {
    endBlockInCell();
  } else {
    closeCell();
    closeBlock();
  }
}

void ReportTranslation::closeBlock() {
  if (block_ != Block::None) {
    inline_.leave(block_ == Block::Paragraph);
    document_.end();
    block_ = Block::None;
  }
  inline_.forgetSpace();
}

void ReportTranslation::closeContents() {
  if (isContentsOpen_) {
    isContentsOpen_ = false;
    document_.end();
  }
}

void ReportTranslation::closeToOutermost() {
  closeTable();
  closeBlock();
  closeContents();
  inline_.writeAnchors();
}

void ReportTranslation::endOfLine() {
  if (block_ == Block::Paragraph || cell_ != CellKind::None) {
    inline_.lineBreak();
  } else {
    closeBlock();
  }
}

void ReportTranslation::space() {
  if (isInText() || !isInRow_) {
    inline_.blank();
  }
}

void ReportTranslation::beginStyle(REPORT_STYLE style, int value) {
  switch (style) {
    case STYLE_BOLD: return inline_.beginBold();
    case STYLE_ITALIC: return inline_.beginItalic();
    case STYLE_FONT_SIZE: return inline_.beginSize(value);
    default: return;
  }
}

void ReportTranslation::endStyle(REPORT_STYLE style) {
  switch (style) {
    case STYLE_BOLD: return inline_.endBold();
    case STYLE_ITALIC: return inline_.endItalic();
    case STYLE_FONT_SIZE: return inline_.endSize();
    default: return;
  }
}

// The page's name is the section's id: links between topics lead to it.
void ReportTranslation::beginSection(const wchar_t* file, const wchar_t* title) {
  endSection();
  otherText_ = readName(file);
  isInSection_ = document_.beginSection(readQuoted(title), otherText_) == Status::Ok;
}

void ReportTranslation::endSection() {
  closeToOutermost();
  if (isInSection_) {
    isInSection_ = false;
    document_.end();
  }
}

void ReportTranslation::anchor(const wchar_t* name) {
  if (const std::string_view place = readName(name); !place.empty()) {
    inline_.anchor(place);
  }
}

void ReportTranslation::link(const wchar_t* text, const wchar_t* target) {
  const std::string address = addressOf(target);
  const std::string_view shown = readQuoted(text);
  if (shown.empty() && address.empty()) {
    return;
  }
  enterText();
  if (address.empty()) {
    inline_.text(shown);
  } else {
    inline_.link(shown.empty() ? std::string_view(address) : shown, address);
  }
}

// A target that could be a place in the report is one. A page's name before the place is that of a topic.
std::string ReportTranslation::addressOf(const wchar_t* target) {
  const std::string_view read = readQuoted(target);
  if (read.empty() || read.starts_with('#')) {
    return std::string(read.size() > 1 ? read : "");
  }
  const bool isOutside = hasScheme(toWide(read)) || read.find_first_of("/\\?") != read.npos || read.starts_with("www.");
  const std::size_t place = read.rfind('#');
  if (isOutside || place == read.size() - 1) {
    return std::string(read);
  }
  return placeOf(place == read.npos ? read : read.substr(place + 1));
}

void ReportTranslation::beginContents() {
  listsContents_ = true;
  firstLevel_.reset();
}

// Levels are counted from 0 or from 1, as the first item's.
void ReportTranslation::contentsItem(const wchar_t* anchor, const wchar_t* text, int level) {
  if (!listsContents_) {
    return;
  }
  otherText_ = readName(anchor);
  std::string_view shown = readQuoted(text);
  shown = shown.empty() ? std::string_view(otherText_) : shown;
  if (cell_ != CellKind::None) {
    inline_.newLine();
    inline_.link(shown, placeOf(otherText_));
    return;
  }
  if (!isContentsOpen_) {
    closeToOutermost();
    document_.beginContents();
    isContentsOpen_ = true;
  }
  firstLevel_ = firstLevel_.value_or(level > 0 ? 1 : 0);
  const int counted = std::clamp(level, 0, kDeepestLevel) + 1 - *firstLevel_;
  document_.contentsItem(std::clamp(counted, 1, kDeepestLevel), otherText_, shown);
}

void ReportTranslation::endContents() {
  listsContents_ = false;
  closeContents();
}

// A table in a cell becomes lines of that cell.
void ReportTranslation::beginTable(const wchar_t* name) {
  if (cell_ == CellKind::Begun) {
    ++inner_.depth;
    return inline_.newLine();
  }
  closeTable();
  closeBlock();
  closeContents();
  tableName_ = read(name);
}

void ReportTranslation::endTable() {
  if (inner_) {
    inner_.depth -= 1;
    inner_.hasCells = false;
    if (inner_.depth == 0) {
      inner_ = {};
    }
    return inline_.newLine();
  }
  closeTable();
  tableName_.clear();
}

void ReportTranslation::beginRow(const wchar_t* attributes) {
  if (inner_) {
    ++inner_.rows;
    inner_.hasCells = false;
    return inline_.newLine();
  }
  closeRow();
  closeBlock();
  closeContents();
  isInRow_ = true;
  hasRowLook_ = !isEmpty(attributes);
  if (hasRowLook_) {
    Attributes row;
    readAttributes(read(attributes), row);
    rowLook_.align = row.align;
    rowLook_.color = row.color;
    rowLook_.background = row.background;
    rowLook_.isBold = row.isBold;
    rowLook_.isItalic = row.isItalic;
  }
}

void ReportTranslation::endRow() {
  if (inner_ && inner_.rows > 0) {
    --inner_.rows;
    inner_.cells = 0;
    return inline_.newLine();
  }
  closeRow();
}

void ReportTranslation::openRow() {
  if (isRowOpen_) {
    return;
  }
  if (!isTableOpen_) {
    closeBlock();
    closeContents();
    document_.beginTable({}, tableName_);
    isTableOpen_ = true;
    columns_.beginTable();
  }
  document_.beginRow(false);
  isRowOpen_ = true;
  cells_ = 0;
  headers_ = 0;
  columns_.beginRow();
}

void ReportTranslation::closeRow() {
  closeCell();
  isInRow_ = false;
  if (hasRowLook_) {
    hasRowLook_ = false;
    rowLook_ = {};
  }
  if (!isRowOpen_) {
    return;
  }
  isRowOpen_ = false;
  columns_.endRow();
  if (headers_ == cells_) {
    document_.markRow(true);
  }
  document_.end();
}

void ReportTranslation::closeTable() {
  closeRow();
  if (isTableOpen_) {
    isTableOpen_ = false;
    document_.end();
  }
}

Attributes ReportTranslation::attributesOfCell(const wchar_t* attributes) {
  Attributes result = rowLook_;
  if (!isEmpty(attributes)) {
    readAttributes(read(attributes), result);
  }
  if (hasNextCell_) {
    hasNextCell_ = false;
    result.color = nextCell_.color ? nextCell_.color : result.color;
    result.background = nextCell_.background ? nextCell_.background : result.background;
  }
  return result;
}

void ReportTranslation::openCell(CellKind kind, bool isHeader, const Attributes& attributes) {
  closeCell();
  openRow();
  document_.beginCell({.header = isHeader,
                       .align = attributes.align,
                       .span = attributes.span,
                       .color = attributes.color,
                       .background = attributes.background,
                       .type = attributes.type});
  cell_ = kind;
  ++cells_;
  headers_ += isHeader ? 1 : 0;
  columns_.pass(attributes.span);
  Attributes look;
  look.isBold = attributes.isBold;
  look.isItalic = attributes.isItalic;
  inline_.enter(look);
  if (!attributes.id.empty()) {
    inline_.anchor(attributes.id);
  }
}

void ReportTranslation::closeCell() {
  if (cell_ == CellKind::None) {
    return;
  }
  endBlockInCell();
  inner_ = {};
  inline_.leave(true);
  document_.end();
  cell_ = CellKind::None;
}

void ReportTranslation::beginInnerCell() {
  if (inner_.hasCells) {
    inline_.blank();
  }
  inner_.hasCells = true;
}

void ReportTranslation::beginCell(const wchar_t* name, bool isHeader, const wchar_t* attributes) {
  if (inner_) {
    ++inner_.cells;
    return beginInnerCell();
  }
  closeCell();
  openRow();
  const Attributes look = attributesOfCell(attributes);
  otherText_ = read(name);
  columns_.note(look, otherText_);
  openCell(CellKind::Begun, isHeader, look);
}

void ReportTranslation::endCell() {
  if (inner_ && inner_.cells > 0) {
    --inner_.cells;
    return;
  }
  closeCell();
}

void ReportTranslation::cell(const wchar_t* text, bool isHeader, const wchar_t* attributes) {
  if (inner_) {
    beginInnerCell();
    return inline_.text(readQuoted(text));
  }
  closeCell();
  openRow();
  if (!isHeader && isEmpty(attributes) && !hasRowLook_ && !hasNextCell_ && inline_.isPlain()) {
    ++cells_;
    columns_.pass(1);
    document_.cell(readQuoted(text));
    return;
  }
  const Attributes look = attributesOfCell(attributes);
  columns_.note(look, {});
  openCell(CellKind::Begun, isHeader, look);
  inline_.text(readQuoted(text));
  closeCell();
}

void ReportTranslation::setCellColor(const wchar_t* color) {
  nextCell_ = {};
  hasNextCell_ = !isEmpty(color);
  if (hasNextCell_ && !readColors(read(color), nextCell_)) {
    document_.warn(WarningCode::SomethingLeftOut, "a cell's color that is neither a name of CSS nor #RRGGBB");
  }
}

void ReportTranslation::finish() { closeToOutermost(); }

}  // namespace scrivalen
