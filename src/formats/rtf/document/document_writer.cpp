#include "formats/rtf/document/document_writer.h"

#include "document/language.h"
#include "document/model/event_log.h"
#include "document/word/bookmark_name.h"
#include "document/word/held_headings.h"
#include "formats/rtf/document/containers.h"
#include "formats/rtf/document/escape.h"
#include "formats/rtf/document/inline_writer.h"
#include "formats/rtf/document/paragraphs.h"
#include "formats/rtf/document/prolog/color_table.h"
#include "formats/rtf/document/prolog/prolog.h"
#include "formats/rtf/document/sections.h"
#include "formats/rtf/document/tables/table_writer.h"
#include "text/direction.h"

#include <algorithm>
#include <string>
#include <utility>

namespace scrivalen::document::rtf {
namespace {

class RtfDocumentWriter : public DocumentWriter {
 public:
  explicit RtfDocumentWriter(const WriterContext& context)
      : out_(context.out),
        settings_(context.settings),
        isRightToLeft_(isRightToLeft(settings_.text("language"))),
        font_(fontOf(settings_.text("font"))),
        styles_(colors_, font_),
        sections_(context, styles_),
        inlines_(out_, colors_, context.warnings),
        table_(out_, colors_, inlines_, font_, isRightToLeft_),
        containers_(out_, styles_, sections_.paper().textWidth()),
        paragraphs_(out_, styles_, sections_, containers_, inlines_, isRightToLeft_) {}

  void begin() override { writeProlog(out_, settings_, colors_, styles_, sections_.paper()); }
  void write(const Event& event) override;
  void beginTable(const Table& table) override;
  void row(const Row& row) override { table_.row(row); }
  void endTable() override { table_.end(); }
  void finish() override;

 private:
  // Where headings go that have waited.
  struct HeadingSink : EventSink {
    explicit HeadingSink(RtfDocumentWriter& owner) : writer(owner) {}
    void write(const Event& event) override { writer.writeNow(event); }
    RtfDocumentWriter& writer;
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

  OutputBuffer& out_;
  const FormatSettings& settings_;
  const ColorTable colors_;
  const bool isRightToLeft_;
  const int font_;
  const StyleSheet styles_;
  Sections sections_;
  InlineWriter inlines_;
  TableWriter table_;

  Containers containers_;
  Paragraphs paragraphs_;
  HeldHeadings headings_;
  bool isInCode_ = false;
  std::size_t codeBreaks_ = 0;  // line breaks that more code may follow
};

void RtfDocumentWriter::write(const Event& event) {
  if (headings_.hold(event)) {
    return;
  }
  writeHeadings(Orientation::Upright);
  writeNow(event);
}

void RtfDocumentWriter::writeHeadings(Orientation orientation) {
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

void RtfDocumentWriter::writeNow(const Event& event) {
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

void RtfDocumentWriter::writeInline(const Event& event) {
  if (isInCode_ && event.kind == EventKind::Text) {
    return writeCode(event.text);
  }
  if (!paragraphs_.isOpen()) {
    if (event.kind == EventKind::Anchor) {
      return inlines_.hold(event.id);
    }
    if (event.kind == EventKind::Raw) {
      sections_.prepare(Orientation::Upright);
      return inlines_.write(event);
    }
    paragraphs_.begin({.style = containers_.style()});
  }
  paragraphs_.write(event);
}

void RtfDocumentWriter::finish() {
  writeHeadings(Orientation::Upright);
  paragraphs_.close();
  sections_.finish();
  if (!sections_.hasContent() || inlines_.holdsPlaces()) {
    paragraphs_.write({}, {});
  }
  put(out_, "}\n");
}

void RtfDocumentWriter::beginTable(const Table& table) {
  paragraphs_.close();
  const int left = containers_.indent();
  const PageTwips* turned = sections_.turnedPaper();
  const TableSpace space{sections_.paper().textWidth() - left, turned == nullptr ? 0 : turned->textWidth() - left};
  // Readers do not agree on where a narrow table from right to left is.
  const WidthRule rule{.isEqual = settings_.text("widths") == "equal", .isFilled = isRightToLeft_};
  TablePlan plan = planTable(table, space, rule);
  writeHeadings(plan.orientation);
  flushMarker();
  sections_.prepare(plan.orientation);
  if (sections_.takeBreak()) {
    put(out_, kTinyParagraph);
    put(out_, "\\pagebb\\par\n");
  }
  const bool isTurned = plan.orientation == Orientation::Turned;
  const PageTwips& paper = isTurned ? *turned : sections_.paper();
  inlines_.setRoom({isTurned ? space.turned : space.upright, paper.textHeight()});
  sections_.addContent();
  table_.begin(table, std::move(plan), left);
}

void RtfDocumentWriter::beginSection(const Event& section) {
  sections_.begin(section.text);
  inlines_.hold(section.id);
}

void RtfDocumentWriter::breakPage() {
  if (sections_.breaksPage()) {
    paragraphs_.writeEmpty();
  }
  sections_.breakPage();
}

void RtfDocumentWriter::flushMarker() {
  if (containers_.hasMarker()) {
    paragraphs_.writeEmpty();
  }
}

void RtfDocumentWriter::beginHeading(const Event& heading) {
  inlines_.hold(heading.id);
  const int style = static_cast<int>(Style::Heading1) + heading.number - 1;
  paragraphs_.begin({.style = static_cast<Style>(style), .align = heading.align}, firstDirection(heading.text));
}

void RtfDocumentWriter::beginList(const Event& list) {
  flushMarker();
  containers_.beginList(list);
}

// One paragraph, whose last line break ends it.
void RtfDocumentWriter::writeCode(std::string_view text) {
  if (!paragraphs_.isOpen()) {
    paragraphs_.begin({.style = Style::Code}, Direction::LeftToRight);
  }
  const std::size_t end = text.find_last_not_of('\n') + 1;
  if (end > 0) {
    for (; codeBreaks_ > 0; --codeBreaks_) {
      writeText(out_, "\n");
    }
    inlines_.write({.kind = EventKind::Text, .text = text.substr(0, end)});
  }
  codeBreaks_ += text.size() - end;
}

void RtfDocumentWriter::writeRule() {
  flushMarker();
  const std::string color = std::to_string(colors_.indexOf(kLineColor));
  paragraphs_.write({.words = "\\fs8\\brdrb\\brdrs\\brdrw10\\brdrcf" + color}, {});
}

void RtfDocumentWriter::contentsItem(const Event& item) {
  constexpr int kIndent = 240;
  const std::string indent = std::to_string((item.number - 1) * kIndent);
  const Direction direction = firstDirection(item.text);
  const bool isRight = direction == Direction::Neutral ? isRightToLeft_ : direction == Direction::RightToLeft;
  const std::string words = "\\li" + indent + (isRight ? "\\ri0\\rin0\\lin" + indent : "") + "\\tqr\\tldot\\tx" +
                            std::to_string(sections_.paper().textWidth());
  const Event text{.kind = EventKind::Text, .text = item.text};
  paragraphs_.begin({.style = Style::Contents, .words = words}, direction);
  if (item.id.empty()) {
    inlines_.write(text);
  } else {
    beginLinkField(out_, std::string("#").append(item.id), {});
    inlines_.write(text);
    if (isRight) {
      beginRightToLeftRun(out_, styles_.run(Style::Contents));
    }
    put(out_, "\\tab {\\field\\flddirty{\\*\\fldinst{PAGEREF ");
    writeArgument(out_, bookmarkName(item.id));
    put(out_, " \\\\h}}{\\fldrslt }}");
    put(out_, isRight ? "}}}}" : "}}}");
  }
  paragraphs_.close();
}

std::unique_ptr<DocumentWriter> makeWriter(const WriterContext& context) {
  return std::make_unique<RtfDocumentWriter>(context);
}

}  // namespace
}  // namespace scrivalen::document::rtf

namespace scrivalen::document {

std::unique_ptr<DocumentWriter> createRtfDocumentWriter(const WriterContext& context) {
  return rtf::makeWriter(context);
}

}  // namespace scrivalen::document
