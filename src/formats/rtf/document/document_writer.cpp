#include "formats/rtf/document/document_writer.h"

#include "document/model/event_log.h"
#include "formats/rtf/document/containers.h"
#include "formats/rtf/document/escape.h"
#include "formats/rtf/document/inline_writer.h"
#include "formats/rtf/document/prolog/color_table.h"
#include "formats/rtf/document/prolog/prolog.h"
#include "formats/rtf/document/sections.h"
#include "formats/rtf/document/tables/table_writer.h"

#include <algorithm>
#include <string>
#include <utility>

namespace scrivalen::document::rtf {
namespace {

std::string_view paragraphAlignment(Align align) {
  switch (align) {
    case Align::Center: return "\\qc";
    case Align::Right: return "\\qr";
    case Align::Justify: return "\\qj";
    default: return "";
  }
}

class RtfDocumentWriter : public DocumentWriter {
 public:
  explicit RtfDocumentWriter(const WriterContext& context)
      : out_(context.out),
        settings_(context.settings),
        styles_(colors_),
        sections_(context, styles_),
        inlines_(out_, colors_, context.warnings),
        table_(out_, colors_, inlines_),
        containers_(out_, styles_, sections_.paper().textWidth()) {}

  void begin() override { writeProlog(out_, settings_, colors_, styles_, sections_.paper()); }
  void write(const Event& event) override;
  void beginTable(const Table& table) override;
  void row(const Row& row) override { table_.row(row); }
  void endTable() override { table_.end(); }
  void finish() override;

 private:
  // Where headings go that have been kept.
  struct KeptHeadings : EventSink {
    explicit KeptHeadings(RtfDocumentWriter& owner) : writer(owner) {}
    void write(const Event& event) override { writer.writeNow(event); }
    RtfDocumentWriter& writer;
  };

  bool keepHeading(const Event& event);
  void writeKept(Orientation orientation);
  void writeNow(const Event& event);
  void writeInline(const Event& event);

  void beginSection(const Event& section);
  void endSection();
  void prepare(Orientation orientation);
  void breakPage();
  void beginParagraph(Style style, std::string_view words);
  void closeParagraph();
  void writeEmptyParagraph();
  void flushMarker();

  void beginHeading(const Event& heading);
  void writeTitle(std::string_view title);
  void beginList(const Event& list);
  void writeCode(std::string_view text);
  void writeRule();
  void contentsItem(const Event& item);

  OutputBuffer& out_;
  const FormatSettings& settings_;
  const ColorTable colors_;
  const StyleSheet styles_;
  Sections sections_;
  InlineWriter inlines_;
  TableWriter table_;

  Containers containers_;
  EventLog kept_;
  bool isInHeading_ = false;
  Orientation orientation_ = Orientation::Upright;  // of the next paragraph's page
  bool hasParagraph_ = false;
  bool isInParagraph_ = false;
  bool isInCode_ = false;
  std::size_t codeBreaks_ = 0;  // line breaks that more code may follow
  bool breaksPage_ = false;     // before the next paragraph
};

void RtfDocumentWriter::write(const Event& event) {
  if (keepHeading(event)) {
    return;
  }
  writeKept(Orientation::Upright);
  writeNow(event);
}

// A heading is written with what comes after it: to a turned page if that is a table there.
bool RtfDocumentWriter::keepHeading(const Event& event) {
  const bool begins = event.kind == EventKind::BeginHeading;
  const bool belongs = begins || isInHeading_ || (event.kind == EventKind::Anchor && kept_.size() > 0);
  if (belongs) {
    kept_.write(event);
    isInHeading_ = event.kind != EventKind::EndHeading && (begins || isInHeading_);
  }
  return belongs;
}

void RtfDocumentWriter::writeKept(Orientation orientation) {
  if (kept_.size() == 0) {
    return;
  }
  orientation_ = orientation;
  const EventLog headings = std::exchange(kept_, {});
  KeptHeadings sink(*this);
  headings.replay(sink);
  closeParagraph();
  orientation_ = Orientation::Upright;
}

void RtfDocumentWriter::writeNow(const Event& event) {
  if (isInline(event.kind)) {
    return writeInline(event);
  }
  closeParagraph();
  switch (event.kind) {
    case EventKind::Title: return writeTitle(event.text);
    case EventKind::BeginSection: return beginSection(event);
    case EventKind::EndSection: return endSection();
    case EventKind::BeginHeading: return beginHeading(event);
    case EventKind::BeginParagraph: return beginParagraph(containers_.style(), paragraphAlignment(event.align));
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
  if (!isInParagraph_) {
    if (event.kind == EventKind::Anchor) {
      return inlines_.hold(event.id);
    }
    if (event.kind == EventKind::Raw) {
      prepare(Orientation::Upright);
      return inlines_.write(event);
    }
    beginParagraph(containers_.style(), {});
  }
  inlines_.write(event);
}

void RtfDocumentWriter::finish() {
  writeKept(Orientation::Upright);
  closeParagraph();
  sections_.finish();
  if (!hasParagraph_ || inlines_.holdsPlaces()) {
    beginParagraph(Style::Normal, {});
    closeParagraph();
  }
  put(out_, "}\n");
}

void RtfDocumentWriter::beginTable(const Table& table) {
  closeParagraph();
  const int left = containers_.indent();
  const PageTwips* turned = sections_.turnedPaper();
  const TableSpace space{sections_.paper().textWidth() - left, turned == nullptr ? 0 : turned->textWidth() - left};
  TablePlan plan = planTable(table, space, settings_.text("widths") == "equal");
  writeKept(plan.orientation);
  flushMarker();
  prepare(plan.orientation);
  if (std::exchange(breaksPage_, false)) {
    put(out_, kTinyParagraph);
    put(out_, "\\pagebb\\par\n");
  }
  const bool isTurned = plan.orientation == Orientation::Turned;
  const PageTwips& paper = isTurned ? *turned : sections_.paper();
  inlines_.setRoom({isTurned ? space.turned : space.upright, paper.textHeight()});
  sections_.leaveTop();
  table_.begin(table, std::move(plan), left);
  hasParagraph_ = true;
}

void RtfDocumentWriter::beginSection(const Event& section) {
  sections_.begin(section.text);
  inlines_.hold(section.id);
  breaksPage_ = false;
}

void RtfDocumentWriter::endSection() {
  sections_.end();
  breaksPage_ = false;
}

void RtfDocumentWriter::prepare(Orientation orientation) {
  if (sections_.prepare(orientation)) {
    breaksPage_ = false;
  }
}

void RtfDocumentWriter::breakPage() {
  if (breaksPage_) {
    writeEmptyParagraph();
  }
  breaksPage_ = hasParagraph_ && !sections_.isAtTop();
}

void RtfDocumentWriter::beginParagraph(Style style, std::string_view words) {
  prepare(orientation_);
  put(out_, "\\pard\\plain");
  put(out_, styles_.words(style));
  put(out_, sections_.isAtTop() || breaksPage_ ? "\\sb0" : "");
  sections_.leaveTop();
  put(out_, std::exchange(breaksPage_, false) ? "\\pagebb" : "");
  containers_.writeWords();
  put(out_, words);
  out_.put(' ');
  containers_.writeMarker();
  inlines_.setRoom({sections_.paper().textWidth() - containers_.indent(), sections_.paper().textHeight()});
  inlines_.writeHeld();
  isInParagraph_ = true;
  hasParagraph_ = true;
}

void RtfDocumentWriter::closeParagraph() {
  if (std::exchange(isInParagraph_, false)) {
    put(out_, "\\par\n");
  }
}

void RtfDocumentWriter::writeEmptyParagraph() {
  beginParagraph(containers_.style(), {});
  closeParagraph();
}

void RtfDocumentWriter::flushMarker() {
  if (containers_.hasMarker()) {
    writeEmptyParagraph();
  }
}

void RtfDocumentWriter::beginHeading(const Event& heading) {
  inlines_.hold(heading.id);
  const int style = static_cast<int>(Style::Heading1) + heading.number - 1;
  beginParagraph(static_cast<Style>(style), paragraphAlignment(heading.align));
}

void RtfDocumentWriter::writeTitle(std::string_view title) {
  beginParagraph(Style::Title, {});
  writeText(out_, title);
  closeParagraph();
}

void RtfDocumentWriter::beginList(const Event& list) {
  flushMarker();
  containers_.beginList(list);
}

// One paragraph, whose last line break ends it.
void RtfDocumentWriter::writeCode(std::string_view text) {
  if (!isInParagraph_) {
    beginParagraph(Style::Code, {});
  }
  const std::size_t end = text.find_last_not_of('\n') + 1;
  if (end > 0) {
    for (; codeBreaks_ > 0; --codeBreaks_) {
      writeText(out_, "\n");
    }
    writeText(out_, text.substr(0, end));
  }
  codeBreaks_ += text.size() - end;
}

void RtfDocumentWriter::writeRule() {
  flushMarker();
  beginParagraph(
      Style::Normal,
      std::string("\\fs8\\brdrb\\brdrs\\brdrw10\\brdrcf").append(std::to_string(colors_.indexOf(kLineColor))));
  closeParagraph();
}

void RtfDocumentWriter::contentsItem(const Event& item) {
  constexpr int kIndent = 240;
  std::string words("\\li");
  words += std::to_string((item.number - 1) * kIndent);
  words += "\\tqr\\tldot\\tx";
  words += std::to_string(sections_.paper().textWidth());
  beginParagraph(Style::Contents, words);
  if (item.id.empty()) {
    writeText(out_, item.text);
  } else {
    beginLinkField(out_, std::string("#").append(item.id), {});
    writeText(out_, item.text);
    put(out_, "\\tab {\\field\\flddirty{\\*\\fldinst{PAGEREF ");
    writeArgument(out_, bookmarkName(item.id));
    put(out_, " \\\\h}}{\\fldrslt }}}}}");
  }
  closeParagraph();
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
