#include "formats/pdf/typeset/typeset_writer.h"

#include "document/settings/page.h"
#include "formats/pdf/typeset/blocks/contents_setter.h"
#include "formats/pdf/typeset/blocks/inline_collector.h"
#include "formats/pdf/typeset/blocks/list_nesting.h"
#include "formats/pdf/typeset/blocks/text_setter.h"
#include "formats/pdf/typeset/file/metadata.h"
#include "formats/pdf/typeset/file/syntax.h"
#include "formats/pdf/typeset/pages/running_lines.h"
#include "formats/pdf/typeset/tables/table_setter.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace scrivalen::typeset {
namespace {

using document::Align;
using document::Event;
using document::EventKind;
using document::WarningCode;

constexpr Length kTextSize = 10 * kPoint;
constexpr Length kTextLeading = 1300;
constexpr Length kAfterParagraph = 6 * kPoint;

struct HeadingForm {
  Length size;
  Length before;
  Length after;
};

constexpr Rgb kHeadingColor = 0x1F3349;
constexpr Length kHeadingLeading = 1200;
constexpr HeadingForm kTitle{24 * kPoint, 0, 14 * kPoint};
constexpr std::array<HeadingForm, 6> kHeadings{{{18 * kPoint, 18 * kPoint, 8 * kPoint},
                                                {14 * kPoint, 15 * kPoint, 6 * kPoint},
                                                {12 * kPoint, 12 * kPoint, 4 * kPoint},
                                                {11 * kPoint, 10 * kPoint, 3 * kPoint},
                                                {10 * kPoint, 8 * kPoint, 2 * kPoint},
                                                {10 * kPoint, 8 * kPoint, 2 * kPoint}}};

constexpr Length kCodeSize = 8500;
constexpr Length kCodeLeading = 1250;
constexpr Length kCodePadding = 6 * kPoint;
constexpr Rgb kCodeShade = 0xF4F4F4;
constexpr std::size_t kTabWidth = 4;

constexpr Length kQuoteIndent = 14 * kPoint;
constexpr Length kQuoteBar = 2 * kPoint;
constexpr Rgb kQuoteColor = 0xC2CAD2;
constexpr Rgb kQuoteText = 0x404850;

constexpr Length kRuleHeight = kPoint * 3 / 4;
constexpr Length kRuleSpace = 8 * kPoint;
constexpr Rgb kRuleColor = 0xB0B0B0;

// Tabs lead to the next of the columns that are a tab's width apart.
std::string withoutTabs(std::string_view text, std::size_t& column) {
  std::string plain;
  for (const char c : text) {
    if (c == '\t') {
      const std::size_t blanks = kTabWidth - column % kTabWidth;
      plain.append(blanks, ' ');
      column += blanks;
    } else {
      plain += c;
      column = c == '\n' ? 0 : column + ((static_cast<unsigned char>(c) & 0xC0) == 0x80 ? 0 : 1);
    }
  }
  return plain;
}

class TypesetWriter final : public document::DocumentWriter {
 public:
  explicit TypesetWriter(const document::WriterContext& context);

  void begin() override { file_.begin(); }
  void write(const Event& event) override;
  void beginTable(const document::Table& table) override;
  void row(const document::Row& row) override { tables_.row(row); }
  void endTable() override { tables_.end(); }
  void finish() override;

 private:
  void writeBlock(const Event& event);
  TextStyle bodyStyle() const;
  void beginText(const TextStyle& style, const BlockRule& rule);
  void endText(std::optional<OutlineEntry> entry = std::nullopt);
  void endLooseText();
  void writeTitle(std::string_view text);
  void beginHeading(const Event& heading);
  void beginQuote();
  void endQuote();
  void beginItem(document::Task task);
  void endItem();
  void beginCode();
  void endCode();
  void writeRule();
  void endPage();
  void beginSection(const Event& section);
  Length indentBy(Length width);
  Metadata metadata() const;
  int writeCatalog();
  void warn();

  const document::FormatSettings& settings_;
  document::OutputWarnings& warnings_;
  const Family family_;
  PdfFile file_;
  FontSet fonts_;
  Shaper shaper_;
  PictureWriter pictures_;
  NamedPlaces places_;
  Outline outline_;
  RunningLines running_;
  PageMaker pages_;
  Flow flow_;
  TextDrawer drawer_;
  TextSetter texts_;
  TableSetter tables_;
  ContentsSetter contents_;
  InlineCollector collector_;
  BlockRule rule_;

  ListNesting lists_;
  std::vector<Length> indents_;  // of the quotes and lists that are open
  std::string headingText_;
  int headingLevel_ = 0;
  std::size_t quotes_ = 0;
  std::size_t codeColumn_ = 0;
  bool isInText_ = false;
  bool isInCode_ = false;
};

TypesetWriter::TypesetWriter(const document::WriterContext& context)
    : settings_(context.settings),
      warnings_(context.warnings),
      family_(familyOf(context.settings.text("font")).value_or(Family::Sans)),
      file_(context.out),
      shaper_(fonts_),
      pictures_(file_),
      outline_(file_),
      running_(context.settings, file_, fonts_, shaper_, family_),
      pages_(file_, running_),
      flow_(pages_, shapeOf(document::pageOf(context.settings))),
      drawer_(pages_, fonts_, shaper_, places_),
      texts_(flow_, pages_, shaper_, drawer_, outline_),
      tables_(context.settings, flow_, pages_, texts_, drawer_, fonts_, shaper_, pictures_, context.warnings, family_),
      contents_(file_, flow_, pages_, texts_, drawer_, fonts_, shaper_),
      collector_(&pictures_, &context.warnings) {}

void TypesetWriter::write(const Event& event) {
  if (!isInline(event.kind)) {
    return writeBlock(event);
  }
  if (isInCode_ && event.kind == EventKind::Text) {
    return collector_.add(withoutTabs(event.text, codeColumn_));
  }
  if (!isInText_ && event.kind != EventKind::Anchor && event.kind != EventKind::Raw) {
    beginText(bodyStyle(), {.after = kAfterParagraph, .leading = kTextLeading});
  }
  collector_.write(event);
}

void TypesetWriter::writeBlock(const Event& event) {
  switch (event.kind) {
    case EventKind::EndHeading: return endText(OutlineEntry{headingLevel_, std::exchange(headingText_, {})});
    case EventKind::EndParagraph: return endText();
    case EventKind::EndCode: return endCode();
    default: endLooseText();
  }
  switch (event.kind) {
    case EventKind::Title: return writeTitle(event.text);
    case EventKind::BeginSection: return beginSection(event);
    case EventKind::BeginHeading: return beginHeading(event);
    case EventKind::BeginParagraph:
      return beginText(bodyStyle(), {.align = event.align,
                                     .after = lists_.isTight() ? lists_.kTightGap : kAfterParagraph,
                                     .leading = kTextLeading});
    case EventKind::BeginQuote: return beginQuote();
    case EventKind::EndQuote: return endQuote();
    case EventKind::BeginList:
      lists_.begin(event);
      indents_.push_back(indentBy(lists_.indent()));
      return;
    case EventKind::EndList:
      texts_.setWaiting(0);
      lists_.end();
      flow_.indentBy(-indents_.back());
      indents_.pop_back();
      return flow_.space(lists_.isTight() ? 0 : kAfterParagraph);
    case EventKind::BeginItem: return beginItem(event.task);
    case EventKind::EndItem: return endItem();
    case EventKind::BeginCode: return beginCode();
    case EventKind::Rule: return writeRule();
    case EventKind::PageBreak: return endPage();
    case EventKind::ContentsItem: return contents_.add(event.number, event.id, event.text, bodyStyle());
    case EventKind::EndContents: return flow_.space(2 * kAfterParagraph);
    default: return;
  }
}

TextStyle TypesetWriter::bodyStyle() const {
  TextStyle style;
  style.font = fontOf(family_, false, false);
  style.size = kTextSize;
  style.color = quotes_ > 0 ? kQuoteText : 0;
  return style;
}

void TypesetWriter::beginText(const TextStyle& style, const BlockRule& rule) {
  rule_ = rule;
  rule_.usual = style;
  collector_.begin(style);
  isInText_ = true;
}

void TypesetWriter::endText(std::optional<OutlineEntry> entry) {
  isInText_ = false;
  texts_.set(collector_.take(), rule_, std::move(entry));
}

// Text of an item without a paragraph.
void TypesetWriter::endLooseText() {
  if (isInText_) {
    rule_.after = lists_.isTight() ? lists_.kTightGap : rule_.after;
    endText();
  }
}

void TypesetWriter::writeTitle(std::string_view text) {
  TextStyle style = bodyStyle();
  style.font = fontOf(family_, true, false);
  style.size = kTitle.size;
  style.color = kHeadingColor;
  beginText(style, {.after = kTitle.after, .leading = kHeadingLeading, .staysWithNext = true});
  collector_.add(text);
  endText();
}

void TypesetWriter::beginHeading(const Event& heading) {
  const HeadingForm& form = kHeadings[static_cast<std::size_t>(heading.number) - 1];
  TextStyle style = bodyStyle();
  style.font = fontOf(family_, true, heading.number == static_cast<int>(kHeadings.size()));
  style.size = form.size;
  style.color = kHeadingColor;
  beginText(style, {.align = heading.align,
                    .before = form.before,
                    .after = form.after,
                    .leading = kHeadingLeading,
                    .staysWithNext = true});
  collector_.addAnchor(heading.id);
  headingText_ = heading.text;
  headingLevel_ = heading.number;
}

// Deep nesting never leaves less than a third of the width.
Length TypesetWriter::indentBy(Length width) {
  const Length most = flow_.shape().textWidth() * 2 / 3 - flow_.indent();
  const Length taken = std::clamp<Length>(width, 0, std::max<Length>(most, 0));
  flow_.indentBy(taken);
  return taken;
}

void TypesetWriter::beginQuote() {
  texts_.setWaiting(0);
  flow_.space(kAfterParagraph + kPoint * 2);
  flow_.beginBackdrop({flow_.left() + kQuoteBar, kQuoteBar, kQuoteColor});
  indents_.push_back(indentBy(kQuoteIndent));
  ++quotes_;
}

void TypesetWriter::endQuote() {
  texts_.setWaiting(0);
  flow_.endBackdrop();
  flow_.indentBy(-indents_.back());
  indents_.pop_back();
  --quotes_;
  flow_.space(kAfterParagraph + kPoint * 2);
}

void TypesetWriter::beginItem(document::Task task) {
  texts_.addMarker({lists_.next(task), bodyStyle(), flow_.left() - lists_.kMarkerGap});
}

void TypesetWriter::endItem() {
  if (texts_.hasMarkers()) {
    beginText(bodyStyle(), {.after = lists_.kTightGap, .leading = kTextLeading});
    endText();
  }
}

void TypesetWriter::beginCode() {
  TextStyle style = bodyStyle();
  style.font = fontOf(Family::Mono, false, false);
  style.size = kCodeSize;
  beginText(style, {.leading = kCodeLeading, .keepsBlanks = true, .isKerned = false, .padding = kCodePadding});
  isInCode_ = true;
  codeColumn_ = 0;
}

void TypesetWriter::endCode() {
  isInCode_ = false;
  texts_.setWaiting(2 * kCodePadding + 2 * scaled(kCodeLeading, kCodeSize));
  flow_.keepTogether(2 * kCodePadding + 2 * scaled(kCodeLeading, kCodeSize));
  flow_.beginBackdrop({flow_.left(), flow_.width(), kCodeShade});
  flow_.take(kCodePadding);
  endText();
  if (flow_.room() >= kCodePadding) {
    flow_.take(kCodePadding);
  }
  flow_.endBackdrop();
  flow_.space(kAfterParagraph + kPoint * 2);
}

void TypesetWriter::writeRule() {
  texts_.setWaiting(0);
  flow_.space(kRuleSpace);
  const Length top = flow_.take(kRuleHeight);
  pages_.canvas().area(flow_.left(), top, flow_.width(), kRuleHeight, kRuleColor);
  texts_.drawMarkers(top);
  flow_.space(kRuleSpace);
}

void TypesetWriter::endPage() {
  texts_.setWaiting(0);
  flow_.endPage();
}

void TypesetWriter::beginSection(const Event& section) {
  endPage();
  running_.setSection(section.text);
  if (!section.id.empty()) {
    collector_.addAnchor(section.id);
  }
}

void TypesetWriter::beginTable(const document::Table& table) {
  endLooseText();
  tables_.begin(table);
}

void TypesetWriter::finish() {
  endLooseText();
  endPage();
  if (pages_.count() == 0) {
    flow_.take(0);
    flow_.endPage();
  }
  contents_.finish(places_);
  running_.finish(pages_);
  const FileRoots roots{writeCatalog(), writeInformation(file_, metadata())};
  file_.finish(roots);
  warn();
}

Metadata TypesetWriter::metadata() const {
  const auto text = [this](std::string_view name) { return std::string(settings_.text(name)); };
  return {text("title"), text("author"), text("subject"), text("keywords"), text("language"), settings_.clock()};
}

int TypesetWriter::writeCatalog() {
  std::string fonts;
  fonts_.write(file_, fonts);
  file_.writeObject(pages_.fontResources(), fonts);
  const int catalog = file_.newNumber();
  std::string object = "<</Type/Catalog/Pages ";
  appendReference(object, pages_.finish());
  if (const int names = places_.write(file_)) {
    object += "/Names<</Dests ";
    appendReference(object, names);
    object += ">>";
  }
  if (!outline_.isEmpty()) {
    object += "/Outlines ";
    appendReference(object, outline_.finish());
  }
  const Metadata properties = metadata();
  object += "/Metadata ";
  appendReference(object, writeXmp(file_, properties));
  object += "/Lang";
  appendText(object, properties.language);
  object += properties.title.empty() ? "" : "/ViewerPreferences<</DisplayDocTitle true>>";
  object += ">>";
  file_.writeObject(catalog, object);
  return catalog;
}

void TypesetWriter::warn() {
  for (const auto& [script, count] : shaper_.missing()) {
    warnings_.add(WarningCode::CharactersReplaced,
                  "characters" + (script == kNoScript ? "" : " of the script " + nameOf(script)) +
                      " that no font has, drawn as empty boxes; the setting \"font-file\" adds a font",
                  count);
  }
}

}  // namespace

std::unique_ptr<document::DocumentWriter> createPdfDocumentWriter(const document::WriterContext& context) {
  return std::make_unique<TypesetWriter>(context);
}

}  // namespace scrivalen::typeset
