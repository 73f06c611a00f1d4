#include "formats/markup/html/html_writer.h"

#include "document/language.h"
#include "document/pictures/picture.h"
#include "formats/markup/base64.h"
#include "formats/markup/html/html_links.h"
#include "formats/markup/html/html_page.h"
#include "formats/markup/html/html_style.h"
#include "output/markup_text.h"
#include "text/address.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>
#include <vector>

namespace scrivalen::document {
namespace {

constexpr std::string_view kFormatName = "html";  // of the markup that scrivalen_raw passes on
constexpr std::string_view kLineBreak = "<br>\n";

constexpr std::string_view kDate = "<td class=\"date\"";

// The start tag of most cells of a column, with the space to be copied in one piece.
struct CellTag {
  static constexpr std::size_t kSpace = 48;

  char bytes[kSpace] = {};
  std::size_t size = 0;
};

struct ColumnTags {
  CellTag data;
  CellTag date;
  CellTag columnHeader;
  CellTag rowHeader;
};

// What holds blocks.
struct Container {
  bool isItem = false;
  bool isTight = false;
  bool isLineOpen = false;  // of an item: it has text whose line, or paragraph, has not ended
  Task task = Task::None;   // of an item: not written yet
};

enum class RowGroup { None, Head, Body };

void append(std::string& text, double number, int precision) {
  char digits[64];
  const auto end = std::to_chars(digits, digits + sizeof digits, number, std::chars_format::fixed, precision).ptr;
  text.append(digits, end);
  if (precision > 0) {
    text.erase(text.find_last_not_of('0') + 1);
    text.erase(text.back() == '.' ? text.size() - 1 : text.size());
  }
}

void append(std::string& text, int number) {
  char digits[16];
  text.append(digits, std::to_chars(digits, digits + sizeof digits, number).ptr);
}

std::string colorOf(Rgb color) {
  constexpr char kDigits[] = "0123456789abcdef";
  std::string text = "#";
  for (int shift = 20; shift >= 0; shift -= 4) {
    text += kDigits[color >> shift & 0xF];
  }
  return text;
}

// The declarations of a style attribute.
void appendColors(std::string& style, const std::optional<Rgb>& color, const std::optional<Rgb>& background) {
  if (color) {
    style.append(style.empty() ? "" : ";").append("color:").append(colorOf(*color));
  }
  if (background) {
    style.append(style.empty() ? "" : ";").append("background-color:").append(colorOf(*background));
  }
}

void appendStyle(std::string& tag, std::string_view style) {
  if (!style.empty()) {
    tag.append(" style=\"").append(style).append("\"");
  }
}

std::string_view elementOf(Span span) {
  switch (span) {
    case Span::Strong: return "strong";
    case Span::Emphasis: return "em";
    case Span::Code: return "code";
    case Span::Deleted: return "del";
    case Span::Underlined: return "u";
    case Span::Superscript: return "sup";
    case Span::Subscript: return "sub";
    case Span::None: break;
  }
  return "span";
}

// The first word of a code block's language; a class name ends there.
std::string_view firstWord(std::string_view text) {
  constexpr std::string_view kWhiteSpace = " \t\n\f\r";
  text.remove_prefix(std::min(text.find_first_not_of(kWhiteSpace), text.size()));
  return text.substr(0, text.find_first_of(kWhiteSpace));
}

class HtmlWriter : public DocumentWriter {
 public:
  explicit HtmlWriter(const WriterContext& context)
      : context_(context),
        out_(context.out),
        isRightToLeft_(document::isRightToLeft(context.settings.text("language"))) {}

  void begin() override;
  void write(const Event& event) override;
  void beginTable(const Table& table) override;
  void row(const Row& row) override;
  void endTable() override;
  void finish() override;

 private:
  void put(std::string_view markup) { out_.write(markup.data(), markup.size()); }
  void putText(std::string_view text) { escaper_.content(out_, text, isInCode_ ? "\n" : kLineBreak); }
  void putAttribute(std::string_view name, std::string_view value);
  void putId(std::string_view id);
  void putStart(std::string_view element, std::string_view id, Align align);
  void putEnd(std::string_view element);
  std::string_view alignment(Align align) const;

  void writeBlock(const Event& event);
  void writeInline(const Event& event);

  void beginBlock();
  void closeLine(std::string_view after);
  void putTask();
  void beginInline();
  bool isInTightItem() const { return !containers_.empty() && containers_.back().isItem && containers_.back().isTight; }

  void beginSection(const Event& section);
  void beginHeading(const Event& heading);
  void endHeading(const Event& heading);
  void beginParagraph(const Event& paragraph);
  void endParagraph();
  void beginList(const Event& list);
  void endList(const Event& list);
  void beginItem(const Event& item);
  void endItem();
  void beginCode(const Event& code);
  void endCode();
  void beginContents();
  void contentsItem(const Event& item);
  void endContents();

  void beginSpan(Span span);
  void beginColored(const Event& colored);
  void beginSized(const Event& sized);
  void beginLink(const Event& link);
  void endLink();
  void beginLanguage(const Event& language);
  void endLanguage();
  void anchor(const Event& anchor);
  void image(const Event& image);

  void putWidths(const Table& table);
  CellTag cellTag(std::string_view start, Align align) const;
  void enterRowGroup(RowGroup group);
  void putPlainCell(const CellTag& tag, std::string_view text, bool isHeader);
  void putCell(const Cell& cell, std::size_t column, bool isInHeaderRow);
  void putCellStart(const Cell& cell, std::size_t column, bool isInHeaderRow);

  WriterContext context_;
  OutputBuffer& out_;
  const bool isRightToLeft_;
  MarkupText escaper_;
  std::string tail_;    // of the page
  std::string markup_;  // of one tag, kept for its memory

  std::vector<Container> containers_;
  std::vector<bool> tightLists_;
  bool isInParagraph_ = false;    // or in a heading or the like, where text needs no element of its own
  bool isParagraphBare_ = false;  // a line of a tight item
  bool isInCode_ = false;
  bool isLinkOpen_ = false;  // written, rather than left out
  std::vector<bool> rightToLeft_;
  std::vector<int> contents_;  // the levels of the lists that are open

  std::vector<Align> aligns_;
  std::vector<ColumnTags> tags_;
  RowGroup rowGroup_ = RowGroup::None;
};

void HtmlWriter::begin() {
  HtmlPage page = htmlPageOf(context_);
  put(page.head);
  tail_ = std::move(page.tail);
}

void HtmlWriter::finish() {
  put(tail_);
  if (escaper_.replaced() > 0) {
    context_.warnings.add(WarningCode::CharactersReplaced, "characters that no page may contain became U+FFFD",
                          escaper_.replaced());
  }
}

void HtmlWriter::write(const Event& event) {
  if (isInline(event.kind)) {
    writeInline(event);
  } else {
    writeBlock(event);
  }
}

void HtmlWriter::writeBlock(const Event& event) {
  switch (event.kind) {
    case EventKind::Title:
      put("<h1 class=\"title\">");
      putText(event.text);
      return put("</h1>\n");
    case EventKind::BeginSection: return beginSection(event);
    case EventKind::EndSection: containers_.pop_back(); return put("</section>\n");
    case EventKind::BeginHeading: return beginHeading(event);
    case EventKind::EndHeading: return endHeading(event);
    case EventKind::BeginParagraph: return beginParagraph(event);
    case EventKind::EndParagraph: return endParagraph();
    case EventKind::BeginQuote:
      beginBlock();
      containers_.emplace_back();
      return put("<blockquote>\n");
    case EventKind::EndQuote: containers_.pop_back(); return put("</blockquote>\n");
    case EventKind::BeginList: return beginList(event);
    case EventKind::EndList: return endList(event);
    case EventKind::BeginItem: return beginItem(event);
    case EventKind::EndItem: return endItem();
    case EventKind::BeginCode: return beginCode(event);
    case EventKind::EndCode: return endCode();
    case EventKind::Rule: beginBlock(); return put("<hr>\n");
    case EventKind::PageBreak: beginBlock(); return put("<div style=\"break-after:page\"></div>\n");
    case EventKind::BeginContents: return beginContents();
    case EventKind::ContentsItem: return contentsItem(event);
    case EventKind::EndContents: return endContents();
    default: return;
  }
}

// Markup that is directly in an item may be a block.
void HtmlWriter::writeInline(const Event& event) {
  if (event.kind == EventKind::Raw) {
    if (event.address == kFormatName) {
      put(event.text);
    }
    return;
  }
  beginInline();
  switch (event.kind) {
    case EventKind::Text: return putText(event.text);
    case EventKind::BeginSpan: return beginSpan(event.span);
    case EventKind::EndSpan: return putEnd(elementOf(event.span));
    case EventKind::BeginColored: return beginColored(event);
    case EventKind::BeginSized: return beginSized(event);
    case EventKind::EndColored:
    case EventKind::EndSized: return put("</span>");
    case EventKind::BeginLink: return beginLink(event);
    case EventKind::EndLink: return endLink();
    case EventKind::BeginLanguage: return beginLanguage(event);
    case EventKind::EndLanguage: return endLanguage();
    case EventKind::Anchor: return anchor(event);
    case EventKind::Image: return image(event);
    default: return;
  }
}

void HtmlWriter::putAttribute(std::string_view name, std::string_view value) {
  put(" ");
  put(name);
  put("=\"");
  escaper_.value(out_, value);
  put("\"");
}

void HtmlWriter::putId(std::string_view id) {
  if (!id.empty()) {
    putAttribute("id", htmlId(id));
  }
}

void HtmlWriter::putStart(std::string_view element, std::string_view id, Align align) {
  put("<");
  put(element);
  putId(id);
  put(alignment(align));
  put(">");
}

void HtmlWriter::putEnd(std::string_view element) {
  put("</");
  put(element);
  put(">");
}

// Text begins at the left unless the language is written from the right.
std::string_view HtmlWriter::alignment(Align align) const {
  switch (align) {
    case Align::Auto: return "";
    case Align::Left: return isRightToLeft_ ? " style=\"text-align:left\"" : "";
    case Align::Center: return " style=\"text-align:center\"";
    case Align::Right: return isRightToLeft_ ? "" : " style=\"text-align:right\"";
    case Align::Justify: return " style=\"text-align:justify\"";
  }
  return "";
}

void HtmlWriter::beginBlock() {
  if (!containers_.empty() && containers_.back().isItem) {
    closeLine("\n");
    putTask();
  }
}

// Ends the text of an item that is in no paragraph of the document's.
void HtmlWriter::closeLine(std::string_view after) {
  Container& item = containers_.back();
  if (item.isLineOpen) {
    put(item.isTight ? "" : "</p>");
    put(after);
    item.isLineOpen = false;
  }
}

void HtmlWriter::putTask() {
  Task& task = containers_.back().task;
  if (task != Task::None) {
    put(task == Task::Done ? "<input type=\"checkbox\" checked disabled> " : "<input type=\"checkbox\" disabled> ");
    task = Task::None;
  }
}

void HtmlWriter::beginInline() {
  if (isInParagraph_ || containers_.empty() || !containers_.back().isItem || containers_.back().isLineOpen) {
    return;
  }
  containers_.back().isLineOpen = true;
  put(isInTightItem() ? "" : "<p>");
  putTask();
}

void HtmlWriter::beginSection(const Event& section) {
  beginBlock();
  containers_.emplace_back();
  put("<section");
  putId(section.id);
  if (!section.text.empty()) {
    putAttribute("aria-label", section.text);
  }
  put(">\n");
}

void HtmlWriter::beginHeading(const Event& heading) {
  beginBlock();
  isInParagraph_ = true;
  const char element[] = {'h', static_cast<char>('0' + heading.number)};
  putStart({element, sizeof element}, heading.id, heading.align);
}

void HtmlWriter::endHeading(const Event& heading) {
  isInParagraph_ = false;
  const char element[] = {'h', static_cast<char>('0' + heading.number)};
  putEnd({element, sizeof element});
  put("\n");
}

// A paragraph of a tight item is a line.
void HtmlWriter::beginParagraph(const Event& paragraph) {
  isInParagraph_ = true;
  isParagraphBare_ = isInTightItem() && alignment(paragraph.align).empty();
  if (isParagraphBare_) {
    put(containers_.back().isLineOpen ? kLineBreak : "");
    containers_.back().isLineOpen = true;
    return putTask();
  }
  const bool isInItem = !containers_.empty() && containers_.back().isItem;
  if (isInItem) {
    closeLine("\n");
  }
  putStart("p", {}, paragraph.align);
  if (isInItem) {
    putTask();
  }
}

void HtmlWriter::endParagraph() {
  isInParagraph_ = false;
  put(isParagraphBare_ ? "" : "</p>\n");
}

void HtmlWriter::beginList(const Event& list) {
  beginBlock();
  tightLists_.push_back(list.tight);
  if (!list.ordered || list.number == 1) {
    return put(list.ordered ? "<ol>\n" : "<ul>\n");
  }
  markup_ = "<ol start=\"";
  append(markup_, list.number);
  put(markup_.append("\">\n"));
}

void HtmlWriter::endList(const Event& list) {
  tightLists_.pop_back();
  put(list.ordered ? "</ol>\n" : "</ul>\n");
}

void HtmlWriter::beginItem(const Event& item) {
  const bool isTight = !tightLists_.empty() && tightLists_.back();
  containers_.push_back({.isItem = true, .isTight = isTight, .task = item.task});
  put(item.task == Task::None ? "<li>" : "<li class=\"task\">");
}

void HtmlWriter::endItem() {
  closeLine("");
  putTask();
  containers_.pop_back();
  put("</li>\n");
}

// Code is written from the left in every language.
void HtmlWriter::beginCode(const Event& code) {
  beginBlock();
  isInParagraph_ = true;
  isInCode_ = true;
  put(isRightToLeft_ ? "<pre dir=\"ltr\"><code" : "<pre><code");
  const std::string_view language = firstWord(code.text);
  if (!language.empty()) {
    putAttribute("class", std::string("language-").append(language));
  }
  put(">");
}

void HtmlWriter::endCode() {
  isInParagraph_ = false;
  isInCode_ = false;
  put("</code></pre>\n");
}

void HtmlWriter::beginContents() {
  beginBlock();
  put("<nav>\n");
}

// An item of a higher number is in a list inside the item before it. Levels that are left out make no lists.
void HtmlWriter::contentsItem(const Event& item) {
  if (contents_.empty() || item.number > contents_.back()) {
    put(contents_.empty() ? "<ol>\n" : "\n<ol>\n");
    contents_.push_back(item.number);
  } else {
    put("</li>\n");
    while (contents_.size() > 1 && contents_[contents_.size() - 2] >= item.number) {
      contents_.pop_back();
      put("</ol>\n</li>\n");
    }
    contents_.back() = item.number;
  }
  put("<li><a");
  putAttribute("href", htmlPlace(item.id));
  put(">");
  putText(item.text);
  put("</a>");
}

void HtmlWriter::endContents() {
  for (; !contents_.empty(); contents_.pop_back()) {
    put("</li>\n</ol>\n");
  }
  put("</nav>\n");
}

void HtmlWriter::beginSpan(Span span) {
  if (span == Span::Code && isRightToLeft_) {
    return put("<code dir=\"ltr\">");
  }
  putStart(elementOf(span), {}, Align::Auto);
}

void HtmlWriter::beginColored(const Event& colored) {
  std::string style;
  appendColors(style, colored.color, colored.background);
  markup_ = "<span";
  appendStyle(markup_, style);
  put(markup_.append(">"));
}

void HtmlWriter::beginSized(const Event& sized) {
  markup_ = "<span style=\"font-size:";
  append(markup_, sized.points, 2);
  put(markup_.append("pt\">"));
}

void HtmlWriter::beginLink(const Event& link) {
  isLinkOpen_ = !link.address.empty() && !runsProgram(link.address, AddressUse::Link);
  if (!isLinkOpen_) {
    if (!link.address.empty()) {
      context_.warnings.add(WarningCode::SomethingLeftOut, "the address of a link that may run a program");
    }
    return;
  }
  put("<a");
  putAttribute("href", htmlAddress(link.address));
  if (!link.title.empty()) {
    putAttribute("title", link.title);
  }
  put(">");
}

void HtmlWriter::endLink() {
  put(isLinkOpen_ ? "</a>" : "");
  isLinkOpen_ = false;
}

void HtmlWriter::beginLanguage(const Event& language) {
  const bool isOuterRightToLeft = rightToLeft_.empty() ? isRightToLeft_ : rightToLeft_.back();
  rightToLeft_.push_back(document::isRightToLeft(language.text));
  put("<span");
  putAttribute("lang", language.text);
  if (rightToLeft_.back() != isOuterRightToLeft) {
    putAttribute("dir", rightToLeft_.back() ? "rtl" : "ltr");
  }
  put(">");
}

void HtmlWriter::endLanguage() {
  rightToLeft_.pop_back();
  put("</span>");
}

// No <a>: an anchor may be inside a link.
void HtmlWriter::anchor(const Event& anchor) {
  if (!anchor.id.empty()) {
    putStart("span", anchor.id, Align::Auto);
    put("</span>");
  }
}

void HtmlWriter::image(const Event& image) {
  constexpr double kPixelsPerPoint = 96.0 / 72;
  if (image.picture == nullptr) {
    return putText(image.text);
  }
  put("<img src=\"data:");
  put(image.picture->mediaType());
  put(";base64,");
  putBase64(out_, image.picture->bytes());
  put("\"");
  putAttribute("alt", image.text);
  const double width = (image.points > 0 ? image.points : image.picture->widthPt()) * kPixelsPerPoint;
  markup_ = " width=\"";
  append(markup_, std::max(1.0, std::round(width)), 0);
  put(markup_.append("\">"));
}

void HtmlWriter::beginTable(const Table& table) {
  beginBlock();
  containers_.emplace_back();
  rowGroup_ = RowGroup::None;
  tags_.clear();
  aligns_.clear();
  for (const Column& column : table.columns) {
    // A column of texts begins where its language does.
    const Align align = column.align == Align::Left ? Align::Auto : column.align;
    aligns_.push_back(align);
    tags_.push_back({.data = cellTag("<td", align),
                     .date = cellTag(kDate, align),
                     .columnHeader = cellTag("<th scope=\"col\"", align),
                     .rowHeader = cellTag("<th scope=\"row\"", align)});
  }
  const bool hasWidths =
      std::any_of(table.columns.begin(), table.columns.end(), [](const Column& c) { return c.width > 0; });
  std::string style = hasWidths ? "width:100%" : "";
  markup_ = "<table";
  if (const HtmlPrintSize size = htmlPrintSize(table, context_.settings); size.points > 0) {
    markup_ += size.wordsAreDivided ? " class=\"wide crowded\"" : " class=\"wide\"";
    style.append(style.empty() ? "" : ";").append("--print:");
    append(style, size.points, 1);
    style += "pt";
  }
  appendStyle(markup_, style);
  put(markup_.append(">\n"));
  if (hasWidths) {
    putWidths(table);
  }
}

// Columns without a width get what is left, as if each had the mean of the others.
void HtmlWriter::putWidths(const Table& table) {
  double sum = 0;
  double given = 0;
  for (const Column& column : table.columns) {
    sum += column.width;
    given += column.width > 0 ? 1 : 0;
  }
  const double whole = sum * static_cast<double>(table.columns.size()) / given;
  put("<colgroup>");
  for (const Column& column : table.columns) {
    markup_ = column.width > 0 ? "<col style=\"width:" : "<col>";
    if (column.width > 0) {
      append(markup_, 100 * column.width / whole, 2);
      markup_ += "%\">";
    }
    put(markup_);
  }
  put("</colgroup>\n");
}

CellTag HtmlWriter::cellTag(std::string_view start, Align align) const {
  CellTag tag;
  for (const std::string_view part : {start, alignment(align), std::string_view(">")}) {
    std::memcpy(tag.bytes + tag.size, part.data(), part.size());
    tag.size += part.size();
  }
  return tag;
}

void HtmlWriter::enterRowGroup(RowGroup group) {
  if (group == rowGroup_) {
    return;
  }
  put(rowGroup_ == RowGroup::None ? "" : rowGroup_ == RowGroup::Head ? "</thead>\n" : "</tbody>\n");
  put(group == RowGroup::None ? "" : group == RowGroup::Head ? "<thead>\n" : "<tbody>\n");
  rowGroup_ = group;
}

// The longest text that is written in place together with its tags.
constexpr std::size_t kLongestPlain = MarkupText::longestInPlace(OutputBuffer::kBlock - 2 * CellTag::kSpace);

bool isPlain(const Cell& cell) {
  return cell.content == nullptr && cell.span == 1 && cell.align == Align::Auto && !cell.color && !cell.background &&
         cell.text.size() <= kLongestPlain;
}

// Browsers divide dates at their hyphens unless the style sheet forbids it.
bool isDate(const Cell& cell) {
  constexpr std::size_t kSize = std::string_view("yyyy-mm-dd").size();
  return cell.type == ValueType::Date || cell.type == ValueType::Time ||
         (cell.text.size() == kSize && isIsoDate(cell.text));
}

void HtmlWriter::row(const Row& row) {
  enterRowGroup(row.repeated ? RowGroup::Head : RowGroup::Body);
  put("<tr>");
  std::size_t column = 0;
  for (const Cell& cell : row.cells) {
    if (isPlain(cell)) {
      const ColumnTags& tags = tags_[column];
      const CellTag& tag = row.header     ? tags.columnHeader
                           : cell.header  ? tags.rowHeader
                           : isDate(cell) ? tags.date
                                          : tags.data;
      putPlainCell(tag, cell.text, row.header || cell.header);
    } else {
      putCell(cell, column, row.header);
    }
    column += static_cast<std::size_t>(cell.span);
  }
  put("</tr>\n");
}

void HtmlWriter::putPlainCell(const CellTag& tag, std::string_view text, bool isHeader) {
  constexpr std::size_t kEndTag = 5;
  char* at = out_.reserve(2 * CellTag::kSpace + MarkupText::spaceFor(text.size()));
  std::memcpy(at, tag.bytes, CellTag::kSpace);
  at = escaper_.content(at + tag.size, text, kLineBreak);
  std::memcpy(at, isHeader ? "</th>" : "</td>", kEndTag);
  out_.advance(at + kEndTag);
}

void HtmlWriter::putCell(const Cell& cell, std::size_t column, bool isInHeaderRow) {
  putCellStart(cell, column, isInHeaderRow);
  if (cell.content != nullptr) {
    cell.replay(*this);
  } else {
    putText(cell.text);
  }
  put(isInHeaderRow || cell.header ? "</th>" : "</td>");
}

void HtmlWriter::putCellStart(const Cell& cell, std::size_t column, bool isInHeaderRow) {
  markup_ = isInHeaderRow ? "<th scope=\"col\"" : cell.header ? "<th scope=\"row\"" : isDate(cell) ? kDate : "<td";
  if (cell.span > 1) {
    markup_ += " colspan=\"";
    append(markup_, cell.span);
    markup_ += '"';
  }
  std::string style;
  const std::string_view align = alignment(cell.align == Align::Auto ? aligns_[column] : cell.align);
  if (!align.empty()) {
    style = align.substr(align.find('"') + 1, align.rfind('"') - align.find('"') - 1);
  }
  appendColors(style, cell.color, cell.background);
  appendStyle(markup_, style);
  put(markup_.append(">"));
}

void HtmlWriter::endTable() {
  enterRowGroup(RowGroup::None);
  containers_.pop_back();
  put("</table>\n");
}

}  // namespace

std::unique_ptr<DocumentWriter> createHtmlDocumentWriter(const WriterContext& context) {
  return std::make_unique<HtmlWriter>(context);
}

}  // namespace scrivalen::document
