#include "formats/docx/docx_writer.h"

#include "document/language.h"
#include "document/model/event_log.h"
#include "document/pictures/waiting_pictures.h"
#include "document/word/held_headings.h"
#include "document/word/table_plan.h"
#include "formats/docx/containers.h"
#include "formats/docx/paragraphs.h"
#include "formats/docx/parts/numbering.h"
#include "formats/docx/parts/package_parts.h"
#include "formats/docx/parts/page_header.h"
#include "formats/docx/parts/styles.h"
#include "formats/docx/sections.h"
#include "formats/docx/tables/table_writer.h"
#include "formats/docx/text/fields.h"
#include "formats/docx/xml.h"
#include "output/archive/zip_writer.h"
#include "text/direction.h"

#include <algorithm>
#include <string>
#include <utility>

namespace scrivalen::document::docx {
namespace {

class DocxWriter : public DocumentWriter {
 public:
  explicit DocxWriter(const WriterContext& context)
      : settings_(context.settings),
        isRightToLeft_(isRightToLeft(settings_.text("language"))),
        paper_(pageOf(settings_)),
        archive_(context.out, settings_.clock()),
        out_(archive_.content()),
        styles_(settings_, paper_.textWidth()),
        header_(settings_, paper_, pictures_, context.warnings),
        sections_(out_, header_, paper_, isRightToLeft_),
        inlines_(out_, pictures_, context.warnings),
        table_(out_, styles_, inlines_, isRightToLeft_),
        containers_(numbering_, paper_.textWidth()),
        paragraphs_(out_, sections_, containers_, inlines_, isRightToLeft_) {}

  void begin() override;
  void write(const Event& event) override;
  void beginTable(const Table& table) override;
  void row(const Row& row) override { table_.row(row); }
  void endTable() override { table_.end(); }
  void finish() override;

 private:
  // Where headings go that have waited.
  struct HeadingSink : EventSink {
    explicit HeadingSink(DocxWriter& owner) : writer(owner) {}
    void write(const Event& event) override { writer.writeNow(event); }
    DocxWriter& writer;
  };

  void writeHeadings(Orientation orientation);
  void writeNow(const Event& event);
  void writeInline(const Event& event);

  void beginSection(const Event& section);
  void breakPage();
  void flushMarker();

  void beginHeading(const Event& heading);
  void beginList(const Event& list);
  void writeCode(std::string_view text);
  void writeRule();
  void contentsItem(const Event& item);

  const FormatSettings& settings_;
  const bool isRightToLeft_;
  const PageTwips paper_;
  ZipWriter archive_;
  OutputBuffer& out_;  // of the archive's open part
  WaitingPictures pictures_;
  Numbering numbering_;
  StyleSheet styles_;
  PageHeader header_;
  Sections sections_;
  InlineWriter inlines_;
  TableWriter table_;
  Containers containers_;
  Paragraphs paragraphs_;

  HeldHeadings headings_;
  bool isInCode_ = false;
  std::size_t codeBreaks_ = 0;  // line breaks that more code may follow
};

void DocxWriter::begin() {
  writeProperties(archive_, settings_);
  archive_.beginEntry("word/document.xml");
  put(out_, kXmlStart);
  put(out_, "<w:document");
  put(out_, kNamespaces);
  put(out_, "<w:body>\n");
}

void DocxWriter::write(const Event& event) {
  if (headings_.hold(event)) {
    return;
  }
  writeHeadings(Orientation::Upright);
  writeNow(event);
}

void DocxWriter::writeHeadings(Orientation orientation) {
  if (headings_.isEmpty()) {
    return;
  }
  paragraphs_.setOrientation(orientation);
  const EventLog headings = headings_.take();
  HeadingSink sink(*this);
  headings.replay(sink);
  paragraphs_.close();
  paragraphs_.setOrientation(Orientation::Upright);
}

void DocxWriter::writeNow(const Event& event) {
  if (isInline(event.kind)) {
    return writeInline(event);
  }
  paragraphs_.close();
  switch (event.kind) {
    case EventKind::Title: return paragraphs_.write({.style = Style::Title}, event.text);
    case EventKind::BeginSection: return beginSection(event);
    case EventKind::EndSection: return sections_.end();
    case EventKind::BeginHeading: return beginHeading(event);
    case EventKind::BeginParagraph: return paragraphs_.begin({.style = containers_.style(), .align = event.align});
    case EventKind::BeginQuote: return containers_.beginQuote();
    case EventKind::BeginList: return beginList(event);
    case EventKind::EndQuote:
    case EventKind::EndList: return containers_.end();
    case EventKind::BeginItem: return containers_.beginItem(event.task);
    case EventKind::EndItem: return flushMarker();
    case EventKind::BeginCode:
    case EventKind::EndCode:
      isInCode_ = event.kind == EventKind::BeginCode;
      codeBreaks_ = 0;
      return;
    case EventKind::Rule: return writeRule();
    case EventKind::PageBreak: return breakPage();
    case EventKind::ContentsItem: return contentsItem(event);
    default: return;
  }
}

void DocxWriter::writeInline(const Event& event) {
  if (event.kind == EventKind::Raw) {
    return;
  }
  if (isInCode_ && event.kind == EventKind::Text) {
    return writeCode(event.text);
  }
  if (!paragraphs_.isOpen()) {
    if (event.kind == EventKind::Anchor) {
      return inlines_.hold(event.id);
    }
    paragraphs_.begin({.style = containers_.style()});
  }
  paragraphs_.write(event);
}

void DocxWriter::finish() {
  writeHeadings(Orientation::Upright);
  paragraphs_.close();
  if (!sections_.hasContent() || inlines_.holdsPlaces()) {
    paragraphs_.write({}, {});
  }
  sections_.finish();
  put(out_, "\n</w:body></w:document>\n");
  archive_.endEntry();
  header_.write(archive_);
  archive_.beginEntry("word/styles.xml");
  styles_.write(out_);
  archive_.endEntry();
  archive_.beginEntry("word/numbering.xml");
  numbering_.write(out_);
  archive_.endEntry();
  writeSettings(archive_, settings_);
  writeLists(archive_, settings_, header_, pictures_);
  archive_.finish();
}

void DocxWriter::beginTable(const Table& table) {
  paragraphs_.close();
  const int left = containers_.indent();
  const PageTwips* turned = sections_.turnedPaper();
  const TableSpace space{paper_.textWidth() - left, turned == nullptr ? 0 : turned->textWidth() - left};
  // Readers do not agree on where a narrow table from right to left is.
  const WidthRule rule{.isEqual = settings_.text("widths") == "equal", .isFilled = isRightToLeft_};
  TablePlan plan = planTable(table, space, rule);
  writeHeadings(plan.orientation);
  flushMarker();
  sections_.prepare(plan.orientation);
  if (sections_.takeBreak()) {
    put(out_, "<w:p><w:pPr>");
    put(out_, styleReference(Style::SectionEnd));
    put(out_, "<w:pageBreakBefore/></w:pPr></w:p>\n");
  }
  const bool isTurned = plan.orientation == Orientation::Turned;
  const PageTwips& paper = isTurned ? *turned : paper_;
  inlines_.setRoom({isTurned ? space.turned : space.upright, paper.textHeight()});
  sections_.addContent();
  table_.begin(table, std::move(plan), left);
}

void DocxWriter::beginSection(const Event& section) {
  sections_.begin(section.text);
  inlines_.hold(section.id);
}

void DocxWriter::breakPage() {
  if (sections_.breaksPage()) {
    paragraphs_.writeEmpty();
  }
  sections_.breakPage();
}

void DocxWriter::flushMarker() {
  if (containers_.hasMarker()) {
    paragraphs_.writeEmpty();
  }
}

void DocxWriter::beginHeading(const Event& heading) {
  inlines_.hold(heading.id);
  const int style = static_cast<int>(Style::Heading1) + heading.number - 1;
  paragraphs_.begin({.style = static_cast<Style>(style), .align = heading.align}, firstDirection(heading.text));
}

void DocxWriter::beginList(const Event& list) {
  flushMarker();
  containers_.beginList(list);
}

// One paragraph, whose last line break ends it.
void DocxWriter::writeCode(std::string_view text) {
  if (!paragraphs_.isOpen()) {
    paragraphs_.begin({.style = Style::Code}, Direction::LeftToRight);
  }
  const std::size_t end = text.find_last_not_of('\n') + 1;
  if (end > 0) {
    for (; codeBreaks_ > 0; --codeBreaks_) {
      inlines_.writeText("\n");
    }
    inlines_.writeText(text.substr(0, end));
  }
  codeBreaks_ += text.size() - end;
}

void DocxWriter::writeRule() {
  flushMarker();
  paragraphs_.write({.style = Style::Rule}, {});
}

void DocxWriter::contentsItem(const Event& item) {
  const int style = static_cast<int>(Style::Contents1) + item.number - 1;
  paragraphs_.begin({.style = static_cast<Style>(style)}, firstDirection(item.text));
  if (item.id.empty()) {
    inlines_.writeText(item.text);
  } else {
    beginPlaceLink(out_, item.id, {});
    inlines_.writeText(item.text);
    inlines_.writeText("\t");
    writePageReference(out_, item.id);
    endPlaceLink(out_);
  }
  paragraphs_.close();
}

std::unique_ptr<DocumentWriter> makeWriter(const WriterContext& context) {
  return std::make_unique<DocxWriter>(context);
}

}  // namespace
}  // namespace scrivalen::document::docx

namespace scrivalen::document {

std::unique_ptr<DocumentWriter> createDocxDocumentWriter(const WriterContext& context) {
  return docx::makeWriter(context);
}

}  // namespace scrivalen::document
