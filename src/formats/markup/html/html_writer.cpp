#include "formats/markup/html/html_writer.h"

#include "document/language.h"
#include "formats/markup/html/html_blocks.h"
#include "formats/markup/html/html_lists.h"
#include "formats/markup/html/html_markup.h"
#include "formats/markup/html/html_page.h"
#include "formats/markup/html/html_spans.h"
#include "formats/markup/html/html_tables.h"

#include <optional>
#include <string>
#include <utility>

namespace scrivalen::document {
namespace {

constexpr std::string_view kFormatName = "html";  // of the markup that scrivalen_raw passes on

class HtmlWriter : public DocumentWriter {
 public:
  HtmlWriter(const WriterContext& context, std::optional<HtmlPage> page, HtmlPageSet* set)
      : context_(context),
        page_(std::move(page)),
        set_(set),
        markup_(context.out, isRightToLeft(context.settings.text("language"))),
        spans_(markup_, context.warnings, set),
        lists_(markup_),
        blocks_(markup_, lists_),
        contents_(markup_),
        tables_(markup_, set ? nullptr : &context.settings, *this) {}

  void begin() override;
  void write(const Event& event) override;
  void beginTable(const Table& table) override;
  void row(const Row& row) override { tables_.row(row); }
  void endTable() override;
  void finish() override;

 private:
  void put(std::string_view markup) { markup_.put(markup); }
  void writeBlock(const Event& event);
  void writeInline(const Event& event);

  void putMarkup(std::string_view markup);
  void beginContents();

  WriterContext context_;
  std::optional<HtmlPage> page_;  // nothing: that of the settings, once it is begun
  HtmlPageSet* const set_;
  HtmlMarkup markup_;
  HtmlSpans spans_;
  HtmlLists lists_;
  HtmlBlocks blocks_;
  HtmlContents contents_;
  HtmlTables tables_;
};

void HtmlWriter::begin() {
  if (!page_) {
    page_ = htmlPageOf(context_);
  }
  put(std::exchange(page_->head, {}));
}

void HtmlWriter::finish() {
  put(page_->tail);
  if (markup_.escaper().replaced() > 0) {
    context_.warnings.add(WarningCode::CharactersReplaced, "characters that no page may contain became U+FFFD",
                          markup_.escaper().replaced());
  }
}

void HtmlWriter::beginTable(const Table& table) {
  lists_.beginBlock();
  lists_.enter();
  tables_.begin(table);
}

void HtmlWriter::endTable() {
  tables_.end();
  lists_.leave();
}

void HtmlWriter::write(const Event& event) {
  if (set_ && !event.id.empty() && event.kind != EventKind::ContentsItem) {
    set_->addPlace(event.id);
  }
  if (isInline(event.kind)) {
    writeInline(event);
  } else {
    writeBlock(event);
  }
}

void HtmlWriter::writeBlock(const Event& event) {
  switch (event.kind) {
    case EventKind::Title: return blocks_.title(event);
    case EventKind::BeginSection: return blocks_.beginSection(event);
    case EventKind::EndSection: return blocks_.endSection();
    case EventKind::BeginHeading: return blocks_.beginHeading(event);
    case EventKind::EndHeading: return blocks_.endHeading(event);
    case EventKind::BeginParagraph: return blocks_.beginParagraph(event);
    case EventKind::EndParagraph: return blocks_.endParagraph();
    case EventKind::BeginQuote: return blocks_.beginQuote();
    case EventKind::EndQuote: return blocks_.endQuote();
    case EventKind::BeginList: return lists_.begin(event);
    case EventKind::EndList: return lists_.end(event);
    case EventKind::BeginItem: return lists_.beginItem(event);
    case EventKind::EndItem: return lists_.endItem();
    case EventKind::BeginCode: return blocks_.beginCode(event);
    case EventKind::EndCode: return blocks_.endCode();
    case EventKind::Rule: return blocks_.put("<hr>\n");
    case EventKind::PageBreak: return blocks_.put("<div style=\"break-after:page\"></div>\n");
    case EventKind::BeginContents: return beginContents();
    case EventKind::ContentsItem: return contents_.item(event);
    case EventKind::EndContents: return contents_.end();
    default: return;
  }
}

// Markup that is directly in an item may be a block.
void HtmlWriter::writeInline(const Event& event) {
  if (event.kind == EventKind::Raw) {
    return putMarkup(event.address == kFormatName ? event.text : std::string_view());
  }
  blocks_.beginInline();
  spans_.write(event);
}

void HtmlWriter::putMarkup(std::string_view markup) {
  if (set_) {
    put(set_->markupOf(markup));
  } else {
    put(markup);
  }
}

void HtmlWriter::beginContents() {
  lists_.beginBlock();
  contents_.begin();
}

}  // namespace

std::unique_ptr<DocumentWriter> createHtmlDocumentWriter(const WriterContext& context) {
  return std::make_unique<HtmlWriter>(context, std::nullopt, nullptr);
}

std::unique_ptr<DocumentWriter> createHtmlPageWriter(const WriterContext& context, HtmlPage page, HtmlPageSet& set) {
  return std::make_unique<HtmlWriter>(context, std::move(page), &set);
}

}  // namespace scrivalen::document
