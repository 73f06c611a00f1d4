#include "formats/rtf/document/document_writer.h"

#include "document/settings/page.h"
#include "formats/rtf/document/containers.h"
#include "formats/rtf/document/escape.h"
#include "formats/rtf/document/inline_writer.h"
#include "formats/rtf/document/page_header.h"
#include "formats/rtf/document/prolog/color_table.h"
#include "formats/rtf/document/prolog/prolog.h"
#include "formats/rtf/document/tables/table_writer.h"

#include <algorithm>
#include <string>
#include <utility>

namespace scrivalen::document::rtf {
namespace {

constexpr std::string_view kTinyParagraph = "\\pard\\plain\\sl-20\\slmult0\\fs2";

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
        paper_(pageOf(settings_)),
        header_(settings_, styles_, paper_.textWidth()),
        inlines_(out_, colors_, context.warnings),
        table_(out_, colors_, inlines_),
        containers_(out_, styles_, paper_.textWidth()) {}

  void begin() override { writeProlog(out_, settings_, colors_, styles_, paper_); }
  void write(const Event& event) override;
  void beginTable(const Table& table) override;
  void row(const Row& row) override { table_.row(row); }
  void endTable() override { table_.end(); }
  void finish() override;

 private:
  void writeInline(const Event& event);

  void beginBody();
  void beginSection(std::string_view name);
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
  const PageTwips paper_;
  const PageHeader header_;
  InlineWriter inlines_;
  TableWriter table_;

  Containers containers_;
  bool hasBody_ = false;
  bool hasParagraph_ = false;
  bool isAfterSection_ = false;
  bool isAtTop_ = false;  // of the first page of a section
  bool isInParagraph_ = false;
  bool isInCode_ = false;
  std::size_t codeBreaks_ = 0;  // line breaks that more code may follow
  bool breaksPage_ = false;     // before the next paragraph
};

void RtfDocumentWriter::write(const Event& event) {
  if (isInline(event.kind)) {
    return writeInline(event);
  }
  closeParagraph();
  switch (event.kind) {
    case EventKind::Title: return writeTitle(event.text);
    case EventKind::BeginSection: beginSection(event.text); return inlines_.hold(event.id);
    case EventKind::EndSection: isAfterSection_ = true; return;
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
      beginBody();
      return inlines_.write(event);
    }
    beginParagraph(containers_.style(), {});
  }
  inlines_.write(event);
}

void RtfDocumentWriter::finish() {
  closeParagraph();
  isAfterSection_ = false;
  if (!hasParagraph_ || inlines_.holdsPlaces()) {
    beginParagraph(Style::Normal, {});
    closeParagraph();
  }
  put(out_, "}\n");
}

void RtfDocumentWriter::beginTable(const Table& table) {
  closeParagraph();
  flushMarker();
  beginBody();
  if (std::exchange(breaksPage_, false)) {
    put(out_, kTinyParagraph);
    put(out_, "\\pagebb\\par\n");
  }
  const int left = containers_.indent();
  const int space = paper_.textWidth() - left;
  inlines_.setRoom({space, paper_.textHeight()});
  isAtTop_ = false;
  table_.begin(table, left, space, settings_.text("widths") == "equal");
  hasParagraph_ = true;
}

void RtfDocumentWriter::beginBody() {
  if (isAfterSection_ || !hasBody_) {
    beginSection({});
  }
}

void RtfDocumentWriter::beginSection(std::string_view name) {
  if (hasBody_) {
    put(out_, kTinyParagraph);
    put(out_, "\\sect");
  }
  put(out_, "\\sectd\\sbkpage");
  put(out_, "\\headery", paper_.top / 2);
  put(out_, "\\footery", paper_.bottom / 2);
  put(out_, paper_.width > paper_.height ? "\\lndscpsxn\n" : "\n");
  if (!hasBody_ || header_.namesSections()) {
    header_.write(out_, name);
  }
  hasBody_ = true;
  isAfterSection_ = false;
  breaksPage_ = false;
  isAtTop_ = true;
}

void RtfDocumentWriter::breakPage() {
  if (breaksPage_) {
    writeEmptyParagraph();
  }
  breaksPage_ = hasParagraph_ && !isAtTop_;
}

void RtfDocumentWriter::beginParagraph(Style style, std::string_view words) {
  beginBody();
  put(out_, "\\pard\\plain");
  put(out_, styles_.words(style));
  put(out_, std::exchange(isAtTop_, false) || breaksPage_ ? "\\sb0" : "");
  put(out_, std::exchange(breaksPage_, false) ? "\\pagebb" : "");
  containers_.writeWords();
  put(out_, words);
  out_.put(' ');
  containers_.writeMarker();
  inlines_.setRoom({paper_.textWidth() - containers_.indent(), paper_.textHeight()});
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
  words += std::to_string(paper_.textWidth());
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
