#include "formats/markup/xml_writer.h"

#include "document/pictures/base64.h"
#include "document/pictures/picture.h"
#include "formats/markup/xml_name.h"
#include "output/markup_text.h"
#include "text/address.h"
#include "text/ascii.h"
#include "text/utf.h"

#include <algorithm>
#include <cstring>
#include <vector>

namespace scrivalen::document {
namespace {

constexpr std::string_view kBreakElement = "<br/>";
constexpr std::string_view kStart =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<document xmlns=\"urn:scrivalen:document:1\"";

// A tag that most cells of a column have, with the space to be copied in one piece.
struct ElementTag {
  static constexpr std::size_t kSpace = 48;

  char bytes[kSpace] = {};
  std::size_t size = 0;
};

struct ColumnForm {
  std::string name;  // of its element
  ElementTag start;  // empty if the name is too long for it
  ElementTag end;
  bool isPlain = true;  // its values are shown in the plain form
};

// What the end of the output is part of: whether a line feed after it would be content.
enum class Last : std::uint8_t { StartTag, Block, Text };

std::string_view nameOf(Align align) {
  constexpr std::string_view kNames[] = {"", "left", "center", "right", "justify"};
  return kNames[static_cast<int>(align)];
}

std::string_view nameOf(ValueType type) {
  constexpr std::string_view kNames[] = {"", "text", "number", "integer", "date", "time", "boolean"};
  return kNames[static_cast<int>(type)];
}

std::string_view elementOfSpan(Span span) {
  switch (span) {
    case Span::Strong: return "strong";
    case Span::Emphasis: return "emphasis";
    case Span::Code: return "inlinecode";
    case Span::Deleted: return "deleted";
    case Span::Underlined: return "underlined";
    case Span::Superscript: return "superscript";
    case Span::Subscript: return "subscript";
    case Span::None: break;
  }
  return "span";
}

ElementTag tagOf(std::string_view text) {
  ElementTag tag;
  if (text.size() <= ElementTag::kSpace) {
    std::memcpy(tag.bytes, text.data(), text.size());
    tag.size = text.size();
  }
  return tag;
}

class XmlWriter : public DocumentWriter {
 public:
  explicit XmlWriter(const WriterContext& context)
      : context_(context),
        out_(context.out),
        isPlain_(context.settings.text("numbers") == "1234.5" && context.settings.text("dates") == "yyyy-mm-dd") {}

  void begin() override;
  void write(const Event& event) override;
  void beginTable(const Table& table) override;
  void row(const Row& row) override;
  void endTable() override;
  void finish() override;

 private:
  void put(std::string_view markup) { out_.write(markup.data(), markup.size()); }
  void putText(std::string_view text) { escaper_.content(out_, text, isInCode_ ? "\n" : kBreakElement); }
  void putStart(std::string_view element);
  void putEnd(std::string_view element);
  void putAttribute(std::string_view name, std::string_view value);
  void putAttribute(std::string_view name, double number);
  void putFlag(std::string_view name, bool isTrue) { putAttribute(name, isTrue ? "true" : ""); }
  void putColors(const std::optional<Rgb>& color, const std::optional<Rgb>& background);
  void putCreated();

  void writeBlock(const Event& event);
  void writeInline(const Event& event);
  void writePart(const Event& event);
  bool isInText() const { return isInTextBlock_ || (!items_.empty() && items_.back()); }

  void startBlock(std::string_view element);
  void beginContainer(const Event& event);
  void endContainer(std::string_view element);
  void beginTextBlock(const Event& event);
  void endTextBlock(std::string_view element);
  void putEmptyBlock(std::string_view element);
  void putTextBlock(std::string_view element, std::string_view text);
  void putContentsItem(const Event& item);
  void putProperty(std::string_view name, std::string_view value);

  void putElement(std::string_view element) {
    putStart(element);
    put(">");
  }
  void beginColored(const Event& colored);
  void beginSized(const Event& sized);
  void beginLink(const Event& link);
  void beginLanguage(const Event& language);
  void putAnchor(const Event& anchor);
  void putImage(const Event& image);

  ColumnForm formOf(const Column& column) const;
  void putColumn(const Column& column, const ColumnForm& form);
  void putSimple(const ColumnForm& form, std::string_view text);
  void putSimpleValue(const ColumnForm& form, const Cell& cell);
  void putCell(const Cell& cell, const ColumnForm& form);
  void putValue(const Cell& cell);
  std::string_view plainForm(const Cell& cell, char* out) const;

  WriterContext context_;
  OutputBuffer& out_;
  MarkupText escaper_;
  const Values plainValues_{NumberStyle(), DateStyle()};
  const bool isPlain_;  // the settings show values in the plain form
  Last last_ = Last::StartTag;
  std::vector<bool> items_;  // of each container that is open: whether it is an item, which may hold text
  bool isInTextBlock_ = false;
  bool isInCode_ = false;
  std::vector<ColumnForm> columns_;
};

void XmlWriter::begin() {
  put(kStart);
  for (const std::string_view name : {"title", "author", "subject", "keywords", "language", "date"}) {
    putAttribute(name, context_.settings.text(name));
  }
  putCreated();
  put(">");
  for (const auto& [name, value] : context_.settings.properties()) {
    putProperty(name, value);
  }
}

void XmlWriter::finish() {
  put("\n</document>\n");
  if (escaper_.replaced() > 0) {
    context_.warnings.add(WarningCode::CharactersReplaced, "characters that XML may not contain became U+FFFD",
                          escaper_.replaced());
  }
}

void XmlWriter::putStart(std::string_view element) {
  put("<");
  put(element);
}

void XmlWriter::putEnd(std::string_view element) {
  put("</");
  put(element);
  put(">");
}

void XmlWriter::putAttribute(std::string_view name, std::string_view value) {
  if (value.empty()) {
    return;
  }
  put(" ");
  put(name);
  put("=\"");
  escaper_.value(out_, value);
  put("\"");
}

void XmlWriter::putAttribute(std::string_view name, double number) {
  char digits[Values::kLongest];
  const char* const end = plainValues_.number(digits, number, ValueFormat());
  putAttribute(name, std::string_view(digits, static_cast<std::size_t>(end - digits)));
}

void XmlWriter::putColors(const std::optional<Rgb>& color, const std::optional<Rgb>& background) {
  const auto putColor = [this](std::string_view name, const std::optional<Rgb>& rgb) {
    if (rgb) {
      char text[7] = {'#'};
      for (int i = 1; i < 7; ++i) {
        text[i] = kHexDigits[*rgb >> (24 - 4 * i) & 0xF];
      }
      putAttribute(name, std::string_view(text, sizeof text));
    }
  };
  putColor("color", color);
  putColor("background", background);
}

void XmlWriter::putCreated() {
  char text[Values::kLongest];
  char* const end = plainValues_.time(text, context_.settings.clock(), ValueFormat());
  std::replace(text, end, ' ', 'T');
  *end = 'Z';
  putAttribute("created", std::string_view(text, static_cast<std::size_t>(end + 1 - text)));
}

void XmlWriter::write(const Event& event) {
  if (isInline(event.kind)) {
    writeInline(event);
  } else {
    writeBlock(event);
  }
}

// ---- Blocks

void XmlWriter::writeBlock(const Event& event) {
  switch (event.kind) {
    case EventKind::Title: return putTextBlock("title", event.text);
    case EventKind::BeginHeading:
    case EventKind::BeginParagraph:
    case EventKind::BeginCode: return beginTextBlock(event);
    case EventKind::EndHeading: return endTextBlock("heading");
    case EventKind::EndParagraph: return endTextBlock("paragraph");
    case EventKind::EndCode: return endTextBlock("code");
    case EventKind::BeginSection:
    case EventKind::BeginQuote:
    case EventKind::BeginList:
    case EventKind::BeginItem:
    case EventKind::BeginContents: return beginContainer(event);
    case EventKind::EndSection: return endContainer("section");
    case EventKind::EndQuote: return endContainer("quote");
    case EventKind::EndList: return endContainer("list");
    case EventKind::EndItem: return endContainer("item");
    case EventKind::EndContents: return endContainer("contents");
    case EventKind::ContentsItem: return putContentsItem(event);
    case EventKind::Rule: return putEmptyBlock("rule");
    case EventKind::PageBreak: return putEmptyBlock("pagebreak");
    default: return;
  }
}

// A block begins on a line of its own, unless the line feed would become part of an item's text.
void XmlWriter::startBlock(std::string_view element) {
  put(last_ == Last::Text ? "" : "\n");
  putStart(element);
}

void XmlWriter::beginContainer(const Event& event) {
  switch (event.kind) {
    case EventKind::BeginSection:
      startBlock("section");
      putAttribute("name", event.text);
      putAttribute("id", event.id);
      break;
    case EventKind::BeginList:
      startBlock("list");
      putFlag("ordered", event.ordered);
      if (event.ordered) {
        putAttribute("first", event.number);
      }
      putFlag("tight", event.tight);
      break;
    case EventKind::BeginItem:
      startBlock("item");
      putAttribute("task", event.task == Task::None ? "" : event.task == Task::Open ? "open" : "done");
      break;
    default: startBlock(event.kind == EventKind::BeginQuote ? "quote" : "contents"); break;
  }
  put(">");
  items_.push_back(event.kind == EventKind::BeginItem);
  last_ = Last::StartTag;
}

void XmlWriter::endContainer(std::string_view element) {
  put(last_ == Last::Block ? "\n" : "");
  putEnd(element);
  items_.pop_back();
  last_ = Last::Block;
}

void XmlWriter::beginTextBlock(const Event& event) {
  if (event.kind == EventKind::BeginHeading) {
    startBlock("heading");
    putAttribute("level", event.number);
    putAttribute("id", event.id);
  } else {
    startBlock(event.kind == EventKind::BeginCode ? "code" : "paragraph");
  }
  putAttribute("align", nameOf(event.align));
  isInCode_ = event.kind == EventKind::BeginCode;
  if (isInCode_) {
    putAttribute("language", event.text);
  }
  put(">");
  isInTextBlock_ = true;
}

void XmlWriter::endTextBlock(std::string_view element) {
  putEnd(element);
  isInTextBlock_ = false;
  isInCode_ = false;
  last_ = Last::Block;
}

void XmlWriter::putEmptyBlock(std::string_view element) {
  startBlock(element);
  put("/>");
  last_ = Last::Block;
}

void XmlWriter::putTextBlock(std::string_view element, std::string_view text) {
  startBlock(element);
  put(">");
  putText(text);
  endTextBlock(element);
}

void XmlWriter::putContentsItem(const Event& item) {
  startBlock("entry");
  putAttribute("level", item.number);
  putAttribute("id", item.id);
  put(">");
  putText(item.text);
  endTextBlock("entry");
}

void XmlWriter::putProperty(std::string_view name, std::string_view value) {
  startBlock("property");
  putAttribute("name", name);
  put(">");
  putText(value);
  endTextBlock("property");
}

// ---- Text

void XmlWriter::writeInline(const Event& event) {
  if (event.kind == EventKind::Raw && event.address != "xml") {
    return;
  }
  // An anchor or markup between blocks is a block.
  const bool isBlock = !isInText();
  put(isBlock ? "\n" : "");
  writePart(event);
  last_ = isBlock ? Last::Block : Last::Text;
}

void XmlWriter::writePart(const Event& event) {
  switch (event.kind) {
    case EventKind::Text: return putText(event.text);
    case EventKind::BeginSpan: return putElement(elementOfSpan(event.span));
    case EventKind::EndSpan: return putEnd(elementOfSpan(event.span));
    case EventKind::BeginColored: return beginColored(event);
    case EventKind::EndColored: return putEnd("colored");
    case EventKind::BeginSized: return beginSized(event);
    case EventKind::EndSized: return putEnd("sized");
    case EventKind::BeginLink: return beginLink(event);
    case EventKind::EndLink: return putEnd("link");
    case EventKind::BeginLanguage: return beginLanguage(event);
    case EventKind::EndLanguage: return putEnd("lang");
    case EventKind::Anchor: return putAnchor(event);
    case EventKind::Image: return putImage(event);
    case EventKind::Raw: return put(event.text);
    default: return;
  }
}

void XmlWriter::beginColored(const Event& colored) {
  putStart("colored");
  putColors(colored.color, colored.background);
  put(">");
}

void XmlWriter::beginSized(const Event& sized) {
  putStart("sized");
  putAttribute("points", sized.points);
  put(">");
}

void XmlWriter::beginLink(const Event& link) {
  const bool isSafe = !runsProgram(link.address, AddressUse::Link);
  if (!isSafe) {
    context_.warnings.add(WarningCode::SomethingLeftOut, "the address of a link that may run a program");
  }
  putStart("link");
  putAttribute("address", isSafe ? link.address : std::string_view());
  putAttribute("title", link.title);
  put(">");
}

void XmlWriter::beginLanguage(const Event& language) {
  putStart("lang");
  putAttribute("tag", language.text);
  put(">");
}

void XmlWriter::putAnchor(const Event& anchor) {
  putStart("anchor");
  putAttribute("id", anchor.id);
  put("/>");
}

void XmlWriter::putImage(const Event& image) {
  putStart("image");
  putAttribute("alternative", image.text);
  if (image.points > 0) {
    putAttribute("width", image.points);
  }
  if (image.picture == nullptr) {
    return put("/>");
  }
  putAttribute("media", image.picture->mediaType());
  put(">");
  putBase64(out_, image.picture->bytes());
  putEnd("image");
}

// ---- Tables

void XmlWriter::beginTable(const Table& table) {
  startBlock("table");
  putAttribute("name", table.name);
  put(">");
  last_ = Last::Block;
  columns_.clear();
  for (const Column& column : table.columns) {
    columns_.push_back(formOf(column));
    putColumn(column, columns_.back());
  }
}

ColumnForm XmlWriter::formOf(const Column& column) const {
  ColumnForm form;
  form.name = column.name.empty() ? "cell" : toUtf8(formats::repairedXmlName(toWide(column.name)));
  form.start = tagOf("<" + form.name + ">");
  form.end = tagOf("</" + form.name + ">");
  form.isPlain = isPlain_ && column.format.decimals() == 0 && column.format.pattern().empty();
  return form;
}

void XmlWriter::putColumn(const Column& column, const ColumnForm& form) {
  startBlock("column");
  putAttribute("name", column.name);
  putAttribute("element", form.name == column.name ? std::string_view() : form.name);
  putAttribute("type", nameOf(column.type));
  putAttribute("align", nameOf(column.align));
  if (column.width > 0) {
    putAttribute("width", column.width);
  }
  putAttribute("format", column.format.pattern());
  put("/>");
}

// The longest text that is written in place together with its tags.
constexpr std::size_t kLongestSimple = MarkupText::longestInPlace(OutputBuffer::kBlock - 2 * ElementTag::kSpace);

bool isSimple(const Cell& cell, const ColumnForm& form) {
  return cell.content == nullptr && cell.span == 1 && cell.align == Align::Auto && !cell.header && !cell.color &&
         !cell.background && form.end.size > 0 && cell.text.size() <= kLongestSimple;
}

void XmlWriter::row(const Row& row) {
  put(row.header ? "\n<row header=\"true\">" : "\n<row>");
  std::size_t column = 0;
  for (const Cell& cell : row.cells) {
    const ColumnForm& form = columns_[column];
    if (!isSimple(cell, form)) {
      putCell(cell, form);
    } else if (form.isPlain || !cell.isValue()) {
      putSimple(form, cell.text);
    } else {
      putSimpleValue(form, cell);
    }
    column += static_cast<std::size_t>(cell.span);
  }
  put("</row>");
}

void XmlWriter::putSimple(const ColumnForm& form, std::string_view text) {
  char* at = out_.reserve(2 * ElementTag::kSpace + MarkupText::spaceFor(text.size()));
  std::memcpy(at, form.start.bytes, ElementTag::kSpace);
  at = escaper_.content(at + form.start.size, text, kBreakElement);
  std::memcpy(at, form.end.bytes, ElementTag::kSpace);
  out_.advance(at + form.end.size);
}

// The characters of a value's plain form are never escaped.
void XmlWriter::putSimpleValue(const ColumnForm& form, const Cell& cell) {
  char plain[Values::kLongest];
  const std::string_view value = plainForm(cell, plain);
  if (value.empty() || value == cell.text) {
    return putSimple(form, cell.text);
  }
  char* at = out_.reserve(3 * ElementTag::kSpace + Values::kLongest + MarkupText::spaceFor(cell.text.size()));
  const auto append = [&at](std::string_view text) {
    std::memcpy(at, text.data(), text.size());
    at += text.size();
  };
  append({form.start.bytes, form.start.size - 1});
  append(" type=\"");
  append(nameOf(cell.type));
  append("\" value=\"");
  append(value);
  append("\">");
  at = escaper_.content(at, cell.text, kBreakElement);
  append({form.end.bytes, form.end.size});
  out_.advance(at);
}

void XmlWriter::putCell(const Cell& cell, const ColumnForm& form) {
  putStart(form.name);
  putFlag("header", cell.header);
  if (cell.span > 1) {
    putAttribute("span", cell.span);
  }
  putAttribute("align", nameOf(cell.align));
  putColors(cell.color, cell.background);
  if (cell.isValue() && !form.isPlain) {
    putValue(cell);
  }
  put(">");
  if (cell.content != nullptr) {
    isInTextBlock_ = true;
    cell.replay(*this);
    isInTextBlock_ = false;
  } else {
    putText(cell.text);
  }
  putEnd(form.name);
}

// Writes the value in the plain form, where the text shows another one.
void XmlWriter::putValue(const Cell& cell) {
  char plain[Values::kLongest];
  const std::string_view value = plainForm(cell, plain);
  if (!value.empty() && value != cell.text) {
    putAttribute("type", nameOf(cell.type));
    putAttribute("value", value);
  }
}

// Empty for a value that has only one form.
std::string_view XmlWriter::plainForm(const Cell& cell, char* out) const {
  char* end = out;
  switch (cell.type) {
    case ValueType::Number: end = plainValues_.number(out, cell.number, ValueFormat()); break;
    case ValueType::Integer: end = plainValues_.integer(out, cell.integer, ValueFormat()); break;
    case ValueType::Date: end = plainValues_.date(out, static_cast<std::int32_t>(cell.integer), ValueFormat()); break;
    case ValueType::Time: end = plainValues_.time(out, cell.integer, ValueFormat()); break;
    default: break;
  }
  return {out, static_cast<std::size_t>(end - out)};
}

void XmlWriter::endTable() {
  put("\n</table>");
  last_ = Last::Block;
}

}  // namespace

std::unique_ptr<DocumentWriter> createXmlDocumentWriter(const WriterContext& context) {
  return std::make_unique<XmlWriter>(context);
}

}  // namespace scrivalen::document
