#include "formats/markup/xml_writer.h"

#include "formats/markup/xml_markup.h"
#include "formats/markup/xml_spans.h"
#include "formats/markup/xml_tables.h"

#include <algorithm>
#include <vector>

namespace scrivalen::document {
namespace {

constexpr std::string_view kStart =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<document xmlns=\"urn:scrivalen:document:1\"";

// What the end of the output is part of: whether a line feed after it would be content.
enum class Last : std::uint8_t { StartTag, Block, Text };

class XmlWriter : public DocumentWriter {
 public:
  explicit XmlWriter(const WriterContext& context)
      : context_(context),
        markup_(context.out),
        spans_(markup_, context.warnings),
        tables_(markup_, context.settings, *this) {}

  void begin() override;
  void write(const Event& event) override;
  void beginTable(const Table& table) override;
  void row(const Row& row) override;
  void endTable() override;
  void finish() override;

 private:
  void put(std::string_view markup) { markup_.put(markup); }
  void putText(std::string_view text) { markup_.putText(text, isInCode_ ? "\n" : XmlMarkup::kBreak); }
  void putCreated();

  void writeBlock(const Event& event);
  void writeInline(const Event& event);
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

  WriterContext context_;
  XmlMarkup markup_;
  XmlSpans spans_;
  XmlTables tables_;
  Last last_ = Last::StartTag;
  std::vector<bool> items_;  // of each container that is open: whether it is an item, which may hold text
  bool isInTextBlock_ = false;
  bool isInCode_ = false;
};

void XmlWriter::begin() {
  put(kStart);
  for (const std::string_view name : {"title", "author", "subject", "keywords", "language", "date"}) {
    markup_.putAttribute(name, context_.settings.text(name));
  }
  putCreated();
  put(">");
  for (const auto& [name, value] : context_.settings.properties()) {
    putProperty(name, value);
  }
}

void XmlWriter::finish() {
  put("\n</document>\n");
  if (markup_.escaper().replaced() > 0) {
    context_.warnings.add(WarningCode::CharactersReplaced, "characters that XML may not contain became U+FFFD",
                          markup_.escaper().replaced());
  }
}

void XmlWriter::putCreated() {
  char text[Values::kLongest];
  char* const end = markup_.plainValues().time(text, context_.settings.clock(), ValueFormat());
  std::replace(text, end, ' ', 'T');
  *end = 'Z';
  markup_.putAttribute("created", std::string_view(text, static_cast<std::size_t>(end + 1 - text)));
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
  markup_.putStart(element);
}

void XmlWriter::beginContainer(const Event& event) {
  switch (event.kind) {
    case EventKind::BeginSection:
      startBlock("section");
      markup_.putAttribute("name", event.text);
      markup_.putAttribute("id", event.id);
      break;
    case EventKind::BeginList:
      startBlock("list");
      markup_.putFlag("ordered", event.ordered);
      if (event.ordered) {
        markup_.putAttribute("first", event.number);
      }
      markup_.putFlag("tight", event.tight);
      break;
    case EventKind::BeginItem:
      startBlock("item");
      markup_.putAttribute("task", event.task == Task::None ? "" : event.task == Task::Open ? "open" : "done");
      break;
    default: startBlock(event.kind == EventKind::BeginQuote ? "quote" : "contents"); break;
  }
  put(">");
  items_.push_back(event.kind == EventKind::BeginItem);
  last_ = Last::StartTag;
}

void XmlWriter::endContainer(std::string_view element) {
  put(last_ == Last::Block ? "\n" : "");
  markup_.putEnd(element);
  items_.pop_back();
  last_ = Last::Block;
}

void XmlWriter::beginTextBlock(const Event& event) {
  if (event.kind == EventKind::BeginHeading) {
    startBlock("heading");
    markup_.putAttribute("level", event.number);
    markup_.putAttribute("id", event.id);
  } else {
    startBlock(event.kind == EventKind::BeginCode ? "code" : "paragraph");
  }
  markup_.putAlign(event.align);
  isInCode_ = event.kind == EventKind::BeginCode;
  if (isInCode_) {
    markup_.putAttribute("language", event.text);
  }
  put(">");
  isInTextBlock_ = true;
}

void XmlWriter::endTextBlock(std::string_view element) {
  markup_.putEnd(element);
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
  markup_.putAttribute("level", item.number);
  markup_.putAttribute("id", item.id);
  put(">");
  putText(item.text);
  endTextBlock("entry");
}

void XmlWriter::putProperty(std::string_view name, std::string_view value) {
  startBlock("property");
  markup_.putAttribute("name", name);
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
  if (event.kind == EventKind::Text) {
    putText(event.text);
  } else {
    spans_.write(event);
  }
  last_ = isBlock ? Last::Block : Last::Text;
}

// ---- Tables

void XmlWriter::beginTable(const Table& table) {
  put(last_ == Last::Text ? "" : "\n");
  tables_.begin(table);
  last_ = Last::Block;
}

// Texts outside cells are in other parts, so all of a row is text.
void XmlWriter::row(const Row& row) {
  isInTextBlock_ = true;
  tables_.row(row);
  isInTextBlock_ = false;
}

void XmlWriter::endTable() {
  tables_.end();
  last_ = Last::Block;
}

}  // namespace

std::unique_ptr<DocumentWriter> createXmlDocumentWriter(const WriterContext& context) {
  return std::make_unique<XmlWriter>(context);
}

}  // namespace scrivalen::document
