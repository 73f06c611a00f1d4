#include "formats/markup/html/html_writer.h"

#include "document/language.h"
#include "formats/markup/html/html_lists.h"
#include "formats/markup/html/html_markup.h"
#include "formats/markup/html/html_page.h"
#include "formats/markup/html/html_spans.h"
#include "formats/markup/html/html_tables.h"

#include <algorithm>
#include <utility>

namespace scrivalen::document {
namespace {

constexpr std::string_view kFormatName = "html";  // of the markup that scrivalen_raw passes on

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
        markup_(context.out, isRightToLeft(context.settings.text("language"))),
        spans_(markup_, context.warnings),
        lists_(markup_),
        contents_(markup_),
        tables_(markup_, context.settings, *this) {}

  void begin() override;
  void write(const Event& event) override;
  void beginTable(const Table& table) override;
  void row(const Row& row) override { tables_.row(row); }
  void endTable() override;
  void finish() override;

 private:
  void put(std::string_view markup) { markup_.put(markup); }
  void putBlock(std::string_view markup);
  void writeBlock(const Event& event);
  void writeInline(const Event& event);

  void title(const Event& title);
  void beginSection(const Event& section);
  void beginQuote();
  void endContainer(std::string_view endTag);
  void beginHeading(const Event& heading);
  void endHeading(const Event& heading);
  void beginParagraph(const Event& paragraph);
  void endParagraph();
  void beginCode(const Event& code);
  void endCode();
  void beginContents();

  WriterContext context_;
  HtmlMarkup markup_;
  HtmlSpans spans_;
  HtmlLists lists_;
  HtmlContents contents_;
  HtmlTables tables_;
  std::string tail_;              // of the page
  bool isInParagraph_ = false;    // or in a heading or the like, where text needs no element of its own
  bool isParagraphBare_ = false;  // a line of a tight item
};

void HtmlWriter::begin() {
  HtmlPage page = htmlPageOf(context_);
  put(page.head);
  tail_ = std::move(page.tail);
}

void HtmlWriter::finish() {
  put(tail_);
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
  if (isInline(event.kind)) {
    writeInline(event);
  } else {
    writeBlock(event);
  }
}

void HtmlWriter::writeBlock(const Event& event) {
  switch (event.kind) {
    case EventKind::Title: return title(event);
    case EventKind::BeginSection: return beginSection(event);
    case EventKind::EndSection: return endContainer("</section>\n");
    case EventKind::BeginHeading: return beginHeading(event);
    case EventKind::EndHeading: return endHeading(event);
    case EventKind::BeginParagraph: return beginParagraph(event);
    case EventKind::EndParagraph: return endParagraph();
    case EventKind::BeginQuote: return beginQuote();
    case EventKind::EndQuote: return endContainer("</blockquote>\n");
    case EventKind::BeginList: return lists_.begin(event);
    case EventKind::EndList: return lists_.end(event);
    case EventKind::BeginItem: return lists_.beginItem(event);
    case EventKind::EndItem: return lists_.endItem();
    case EventKind::BeginCode: return beginCode(event);
    case EventKind::EndCode: return endCode();
    case EventKind::Rule: return putBlock("<hr>\n");
    case EventKind::PageBreak: return putBlock("<div style=\"break-after:page\"></div>\n");
    case EventKind::BeginContents: return beginContents();
    case EventKind::ContentsItem: return contents_.item(event);
    case EventKind::EndContents: return contents_.end();
    default: return;
  }
}

// Markup that is directly in an item may be a block.
void HtmlWriter::writeInline(const Event& event) {
  if (event.kind == EventKind::Raw) {
    return put(event.address == kFormatName ? event.text : std::string_view());
  }
  if (!isInParagraph_) {
    lists_.beginText();
  }
  spans_.write(event);
}

void HtmlWriter::putBlock(std::string_view markup) {
  lists_.beginBlock();
  put(markup);
}

void HtmlWriter::title(const Event& title) {
  put("<h1 class=\"title\">");
  markup_.putText(title.text);
  put("</h1>\n");
}

void HtmlWriter::beginSection(const Event& section) {
  putBlock("<section");
  lists_.enter();
  markup_.putId(section.id);
  if (!section.text.empty()) {
    markup_.putAttribute("aria-label", section.text);
  }
  put(">\n");
}

void HtmlWriter::beginQuote() {
  putBlock("<blockquote>\n");
  lists_.enter();
}

void HtmlWriter::endContainer(std::string_view endTag) {
  lists_.leave();
  put(endTag);
}

void HtmlWriter::beginHeading(const Event& heading) {
  lists_.beginBlock();
  isInParagraph_ = true;
  const char element[] = {'h', static_cast<char>('0' + heading.number)};
  markup_.putStart({element, sizeof element}, heading.id, heading.align);
}

void HtmlWriter::endHeading(const Event& heading) {
  isInParagraph_ = false;
  const char element[] = {'h', static_cast<char>('0' + heading.number)};
  markup_.putEnd({element, sizeof element});
  put("\n");
}

void HtmlWriter::beginParagraph(const Event& paragraph) {
  isInParagraph_ = true;
  isParagraphBare_ = lists_.beginParagraph(paragraph.align);
  if (!isParagraphBare_) {
    markup_.putStart("p", {}, paragraph.align);
  }
  lists_.putTask();
}

void HtmlWriter::endParagraph() {
  isInParagraph_ = false;
  put(isParagraphBare_ ? "" : "</p>\n");
}

// Code is written from the left in every language.
void HtmlWriter::beginCode(const Event& code) {
  putBlock(markup_.isRightToLeft() ? "<pre dir=\"ltr\"><code" : "<pre><code");
  isInParagraph_ = true;
  markup_.setInCode(true);
  const std::string_view language = firstWord(code.text);
  if (!language.empty()) {
    markup_.putAttribute("class", std::string("language-").append(language));
  }
  put(">");
}

void HtmlWriter::endCode() {
  isInParagraph_ = false;
  markup_.setInCode(false);
  put("</code></pre>\n");
}

void HtmlWriter::beginContents() {
  lists_.beginBlock();
  contents_.begin();
}

}  // namespace

std::unique_ptr<DocumentWriter> createHtmlDocumentWriter(const WriterContext& context) {
  return std::make_unique<HtmlWriter>(context);
}

}  // namespace scrivalen::document
