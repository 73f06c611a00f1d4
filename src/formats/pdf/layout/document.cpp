#include "formats/pdf/layout/document.h"

#include "formats/pdf/fonts/win_ansi.h"
#include "text/address.h"

#include <algorithm>
#include <new>
#include <string>
#include <type_traits>
#include <utility>

namespace scrivalen::pdf {

using PDFStuffer::Form;

namespace {

constexpr int kFirstFont = 1;

}  // namespace

Document::Document(std::unique_ptr<PDFStuffer::CPDFFile> file, const Paper& paper, Form form)
    : form_(form), paper_(paper), file_(std::move(file)), pages_(*file_, fonts_, styles_, backgrounds_, paper, form) {
  file_->mediaBox = {0, 0, paper.width, paper.height};
  styles_.indexOf(CPDFtextStyle());  // becomes kDefaultStyle
}

// The classic form lists a number each time it is registered; a conforming page lists each name once. Fonts are ignored
// after the layout, because they could move text away from the link targets found.
void Document::addFont(int id, PDF_STANDARD_FONT_FACE face) {
  if (isCollecting_ && (!isConforming() || !fonts_.has(id))) {
    fonts_.add(*file_, id, face);
  }
}

// Conforming text always uses a font that its page lists.
void Document::addBoldVariants() {
  if (!isCollecting_) {
    return;
  }
  hasBoldVariants_ = true;
  if (isConforming() && fonts_.entries().empty()) {
    addFont(kFirstFont, PDF_TIMES_ROMAN);
  }
  fonts_.addBoldVariants(*file_);
}

template <typename Item, typename... Arguments>
Item& Document::make(std::uint32_t& itemId, Arguments&&... arguments) {
  static_assert(std::is_trivially_destructible_v<Item>);
  void* const place = itemMemory_.allocate(sizeof(Item), alignof(Item));
  ++itemId;
  return *new (place) Item(std::forward<Arguments>(arguments)...);
}

// An item's text is complete when another item becomes current, because an item with text never becomes current again.
void Document::setCurrent(CPDFitem* item) {
  CPDFitem* const complete = std::exchange(current_, item);
  if (std::exchange(hasText_, false)) {
    keepText(static_cast<CPDFtextItem&>(*complete));
  }
}

void Document::keepText(CPDFtextItem& item) {
  if (text_.isWide()) {
    item.setText(stored(text_.units()));
  } else {
    item.setText(stored(text_.bytes()));
  }
  text_.clear();
}

// An empty text is not null, so that it still counts as text.
template <typename Unit>
std::basic_string_view<Unit> Document::stored(std::basic_string_view<Unit> text) {
  static constexpr Unit kEmpty[] = {0};
  if (text.empty()) {
    return {kEmpty, 0};
  }
  auto* const units = static_cast<Unit*>(textMemory_.allocate(text.size() * sizeof(Unit), alignof(Unit)));
  std::copy(text.begin(), text.end(), units);
  return {units, text.size()};
}

bool Document::beginParagraph(std::uint32_t& itemId) {
  if (!canBeginBlock()) {
    return false;
  }
  auto& paragraph = make<CPDFparagraf>(itemId);
  items_.append(paragraph);
  setCurrent(&paragraph);
  return true;
}

void Document::beginTable(std::uint32_t& itemId) {
  if (canBeginBlock()) {
    table_ = &make<CPDFtable>(itemId);
    items_.append(*table_);
    setCurrent(table_);
  }
}

void Document::beginRow(std::uint32_t& itemId, int columns) {
  if (current_ && current_->isA(ItemKind::Table)) {
    row_ = &make<CPDFtableRow>(itemId, columns);
    table_->rows.append(*row_);
    setCurrent(row_);
  }
}

// A cell beyond the last column is dropped. The row stays current, so the cell's text is dropped too.
void Document::beginCell(std::uint32_t& itemId, const _RGB_COLOR& background) {
  if (current_ && current_->isA(ItemKind::Row) && !row_->isFull()) {
    auto& cell = make<CPDFtableCell>(itemId, backgrounds_.indexOf(background));
    row_->append(cell);
    setCurrent(&cell);
  }
}

void Document::end(ItemKind kind, CPDFitem* parent) {
  if (current_ && current_->isA(kind)) {
    setCurrent(parent);
  }
}

// Whether the current item can hold text.
bool Document::takesText() const {
  return current_ &&
         (current_->isA(ItemKind::Paragraph) || current_->isA(ItemKind::Cell) || current_->isA(ItemKind::Outline));
}

void Document::write(const wchar_t* text, const CPDFtextStyle& style) {
  if (!takesText() || (!text && !isConforming())) {
    return;
  }
  appendText(text ? text : L"", style);
  static_cast<CPDFtextItem&>(*current_).setStyle(styles_.indexOf(style));
  hasText_ = true;
}

// Outline titles are not drawn in a font of the document, so a conforming file stores them in Unicode.
void Document::appendText(std::wstring_view text, const CPDFtextStyle& style) {
  if (!isConforming()) {
    loss_.add(text_.append(text));
  } else if (current_->isA(ItemKind::Outline)) {
    loss_.add(text_.appendTitle(text));
  } else if (fonts_.isSymbolic(style.font, style.bold)) {
    loss_.add(text_.appendSigns(text));
  } else {
    loss_.add(text_.appendWinAnsi(text));
  }
}

void Document::bookMark(std::wstring_view name) {
  if (!current_ || !(current_->isA(ItemKind::Paragraph) || current_->isA(ItemKind::Cell))) {
    return;
  }
  current_->requirePlacement();
  std::u16string key;
  appendUtf16(key, name);
  links_.named(key).target = current_;
}

void Document::link(std::uint32_t& itemId, const wchar_t* text, std::wstring_view target, const CPDFtextStyle& style) {
  if (!current_) {
    beginParagraph(itemId);
  }
  if (!takesText()) {
    return;
  }
  write(text, style);
  current_->requirePlacement();
  linkTo(target).sources.push_back(current_);
}

CPDFlink& Document::linkTo(std::wstring_view target) {
  if (isConforming() && hasScheme(target)) {
    const std::string address = asciiAddress(target);
    return links_.outside(std::u16string(address.begin(), address.end()));
  }
  if (isConforming() && target.starts_with(L'#')) {
    target.remove_prefix(1);
  }
  std::u16string name;
  appendUtf16(name, target);
  return links_.named(name);
}

void Document::addOutlineItem(std::uint32_t& itemId, const wchar_t* text, std::wstring_view target, int level,
                              const CPDFtextStyle& style) {
  if (!isCollecting_) {
    return;
  }
  auto& entry = make<CPDFoutlineItem>(itemId, OutlinePlace{outlineSize_++, level});
  CPDFitem* const interrupted = std::exchange(current_, &entry);
  TextBuffer itsText = std::exchange(text_, {});
  const bool hadText = std::exchange(hasText_, false);
  link(itemId, text, target, style);
  setCurrent(interrupted);
  text_ = std::move(itsText);
  hasText_ = hadText;
}

void Document::layOut(Pages::Purpose purpose) {
  makingPages_ = true;
  pages_.begin(purpose);
  pages_.startPage();
  Points y = paper_.top();
  for (CPDFitem* item = items_.first; item; item = item->next) {
    y = item->Layout(pages_, pages_.lines(), y);
  }
  pages_.finishPage();
  makingPages_ = false;
}

void Document::makePages() {
  if (isCollecting_ && !hasBoldVariants_) {
    addBoldVariants();
  }
  if (!std::exchange(isCollecting_, false)) {
    return;
  }
  setCurrent(nullptr);
  layOut(Pages::Purpose::Placing);
  LinkWriter writer(*file_, pages_.placements(), paper_, form_);
  for (const CPDFlink& link : links_.entries()) {
    for (const CPDFitem* const source : link.sources) {
      source->AttachLink(writer, link);
    }
  }
  writer.finishOutline();
}

void Document::setTitle(std::wstring_view title) {
  if (isConforming()) {
    TextBuffer text;
    loss_.add(text.appendTitle(title));
    title_ = text.toUnits();
  }
}

void Document::save() {
  if (!title_.empty()) {
    file_->setTitle(std::move(title_));
  }
  if (file_->beginSave()) {
    try {
      layOut(Pages::Purpose::Writing);
    } catch (const Pages::LostBytes&) {
      makingPages_ = false;
    }
    file_->endSave();
  }
}

}  // namespace scrivalen::pdf
