#include "formats/pdf/typeset/typeset_writer.h"

#include "document/plain/tabs.h"
#include "document/settings/page.h"
#include "formats/pdf/typeset/blocks/contents_setter.h"
#include "formats/pdf/typeset/blocks/inline_collector.h"
#include "formats/pdf/typeset/blocks/list_nesting.h"
#include "formats/pdf/typeset/blocks/text_setter.h"
#include "formats/pdf/typeset/file/color_profile.h"
#include "formats/pdf/typeset/file/metadata.h"
#include "formats/pdf/typeset/file/syntax.h"
#include "formats/pdf/typeset/fonts/host_fonts.h"
#include "formats/pdf/typeset/pages/running_lines.h"
#include "formats/pdf/typeset/structure/tagger.h"
#include "formats/pdf/typeset/tables/table_setter.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdio>
#include <optional>
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
constexpr Length kEdge = 4 * kPoint;  // of the paper, which no marker touches

struct HeadingForm {
  Length size;
  Length before;
  Length after;
};

// On paper with less room for text than this, headings are smaller.
constexpr Length kUsualTextWidth = 300 * kPoint;

constexpr Rgb kHeadingColor = 0x1F3349;
constexpr Length kHeadingLeading = 1200;
constexpr HeadingForm kTitle{24 * kPoint, 0, 14 * kPoint};
constexpr std::array<HeadingForm, 6> kHeadings{{{18 * kPoint, 18 * kPoint, 8 * kPoint},
                                                {14 * kPoint, 15 * kPoint, 6 * kPoint},
                                                {12 * kPoint, 12 * kPoint, 4 * kPoint},
                                                {11 * kPoint, 10 * kPoint, 3 * kPoint},
                                                {10 * kPoint, 8 * kPoint, 2 * kPoint},
                                                {10 * kPoint, 8 * kPoint, 2 * kPoint}}};

constexpr std::array<std::string_view, 6> kHeadingRoles{"H1", "H2", "H3", "H4", "H5", "H6"};

constexpr Length kCodeSize = 8500;
constexpr Length kCodeLeading = 1250;
constexpr Length kCodePadding = 6 * kPoint;
constexpr Rgb kCodeShade = 0xF4F4F4;
constexpr Length kAroundCode = 8 * kPoint;

constexpr Length kQuoteIndent = 14 * kPoint;
constexpr Length kQuoteBar = 2 * kPoint;
constexpr Length kAroundQuote = 8 * kPoint;
constexpr Rgb kQuoteColor = 0xC2CAD2;
constexpr Rgb kQuoteText = 0x404850;

Family chosenFamily(const FontSet& fonts, const document::WriterContext& context) {
  const std::string name(context.settings.text("font"));
  const std::optional<Family> family = name.empty() ? Family::Sans : fonts.familyOf(name);
  if (!family) {
    context.warnings.add(WarningCode::SomethingLeftOut, "the font '" + name + "' is not among " + fonts.familyNames() +
                                                            "; the setting \"font-file\" adds a font");
  }
  return family.value_or(Family::Sans);
}

// A character as people look it up: U+1F389.
std::string unicodeNumberOf(char32_t c) {
  char number[16];
  std::snprintf(number, sizeof number, "U+%04lX", static_cast<unsigned long>(c));
  return number;
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
  Length headingSize(Length usual) const;
  void beginText(const TextStyle& style, const BlockRule& rule);
  void endText(std::optional<OutlineEntry> entry = std::nullopt);
  void endLooseText();
  void writeTitle(std::string_view text);
  void beginHeading(const Event& heading);
  void beginQuote();
  void endQuote();
  void beginItem(document::Task task);
  void endItem();
  void setLine(std::string_view text, std::string_view role = "P");
  void beginCode();
  void endCode();
  void writeRule();
  void endPage();
  void beginSection(const Event& section);
  void endSection();
  void markPlaces();
  Length indentBy(Length width);
  bool areTagsOn() const;
  void beginTag(std::string_view role, std::string texts = {});
  void endTag();
  std::string_view fitting(std::string_view text) const;
  Metadata metadata() const;
  int writeCatalog();
  void warnOfLimits();
  void warn();

  const document::FormatSettings& settings_;
  document::OutputWarnings& warnings_;
  FontSet fonts_;
  const Family family_;
  PdfFile file_;
  Shaper shaper_;
  PictureWriter pictures_;
  NamedPlaces places_;
  Outline outline_;
  RunningLines running_;
  std::unique_ptr<Tagger> tagger_;  // null: no tags
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
      fonts_(readHostFonts(context.settings), standardOf(context.settings.text("standard")) != Standard::None),
      family_(chosenFamily(fonts_, context)),
      file_(context.out, standardOf(context.settings.text("standard"))),
      shaper_(fonts_),
      pictures_(file_),
      outline_(file_),
      running_(context.settings, context.warnings, file_, shaper_, pictures_, family_),
      tagger_(areTagsOn() ? std::make_unique<Tagger>(file_) : nullptr),
      pages_(file_, running_, context.run, tagger_.get()),
      flow_(pages_, places_, running_.withRoom(shapeOf(document::pageOf(context.settings)))),
      drawer_(pages_, fonts_, shaper_, places_),
      texts_(flow_, pages_, shaper_, drawer_, outline_, tagger_.get()),
      tables_(context.settings, flow_, pages_, texts_, drawer_, fonts_, shaper_, pictures_, context.warnings, family_,
              tagger_.get()),
      contents_(file_, flow_, pages_, texts_, drawer_, shaper_, tagger_.get()),
      collector_(&pictures_, &context.warnings) {}

void TypesetWriter::write(const Event& event) {
  if (!isInline(event.kind)) {
    return writeBlock(event);
  }
  if (isInCode_ && event.kind == EventKind::Text) {
    return collector_.add(document::withoutTabs(event.text, codeColumn_));
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
      beginTag("L", event.ordered ? "/A<</O/List/ListNumbering/Decimal>>" : "");
      lists_.begin(event);
      indents_.push_back(indentBy(lists_.indent()));
      return;
    case EventKind::EndList:
      endTag();
      lists_.end();
      flow_.indentBy(-indents_.back());
      indents_.pop_back();
      return texts_.space(lists_.isTight() ? 0 : kAfterParagraph);
    case EventKind::BeginItem: return beginItem(event.task);
    case EventKind::EndItem: return endItem();
    case EventKind::BeginCode: return beginCode();
    case EventKind::Rule: return writeRule();
    case EventKind::PageBreak: return endPage();
    case EventKind::ContentsItem: markPlaces(); return contents_.add(event.number, event.id, event.text, bodyStyle());
    case EventKind::BeginContents: contents_.begin(); return beginTag("TOC");
    case EventKind::EndSection: return endSection();
    case EventKind::EndContents: endTag(); return texts_.space(2 * kAfterParagraph);
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

// Smaller paper makes headings less larger than the text.
Length TypesetWriter::headingSize(Length usual) const {
  const Length width = std::min(flow_.shape().textWidth(), kUsualTextWidth);
  return kTextSize + (usual - kTextSize) * width / kUsualTextWidth;
}

void TypesetWriter::beginText(const TextStyle& style, const BlockRule& rule) {
  rule_ = rule;
  rule_.usual = style;
  // A letter of a size that text asks for has room in the line, and the line on the page.
  const Length tallest = flow_.shape().textHeight() * 1000 / rule.leading;
  collector_.begin(style, std::max(std::min(flow_.width() - 2 * rule.padding, tallest), style.size));
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
  style.size = headingSize(kTitle.size);
  style.color = kHeadingColor;
  beginText(style, {.after = kTitle.after,
                    .leading = kHeadingLeading,
                    .staysWithNext = true,
                    .smallestSize = kTextSize,
                    .role = "Title"});
  collector_.add(text);
  endText();
}

void TypesetWriter::beginHeading(const Event& heading) {
  const HeadingForm& form = kHeadings[static_cast<std::size_t>(heading.number) - 1];
  TextStyle style = bodyStyle();
  style.font = fontOf(family_, true, heading.number == static_cast<int>(kHeadings.size()));
  style.size = headingSize(form.size);
  style.color = kHeadingColor;
  beginText(style, {.align = heading.align,
                    .before = form.before,
                    .after = form.after,
                    .leading = kHeadingLeading,
                    .staysWithNext = true,
                    .smallestSize = kTextSize,
                    .role = kHeadingRoles[static_cast<std::size_t>(heading.number) - 1]});
  collector_.addAnchor(heading.id);
  headingText_ = heading.text;
  headingLevel_ = heading.number;
}

// PDF/A-1b is for files without tags.
bool TypesetWriter::areTagsOn() const { return settings_.flag("tagged") && file_.standard() != Standard::A1b; }

void TypesetWriter::beginTag(std::string_view role, std::string texts) {
  if (tagger_) {
    tagger_->tree().begin(role, {}, std::move(texts));
  }
}

void TypesetWriter::endTag() {
  if (tagger_) {
    tagger_->tree().end();
  }
}

// Deep nesting never leaves less than a third of the width.
Length TypesetWriter::indentBy(Length width) {
  const Length most = flow_.shape().textWidth() * 2 / 3 - flow_.indent();
  const Length taken = std::clamp<Length>(width, 0, std::max<Length>(most, 0));
  flow_.indentBy(taken);
  return taken;
}

// A quote that is nested too deep to be indented has no bar of its own.
void TypesetWriter::beginQuote() {
  beginTag("BlockQuote");
  texts_.space(kAroundQuote);
  const Length left = flow_.left();
  indents_.push_back(indentBy(kQuoteIndent));
  if (indents_.back() == kQuoteIndent) {
    flow_.beginBackdrop({left + kQuoteBar, kQuoteBar, kQuoteColor});
  }
  ++quotes_;
}

void TypesetWriter::endQuote() {
  endTag();
  texts_.setWaiting(2 * scaled(kTextLeading, kTextSize));
  if (indents_.back() == kQuoteIndent) {
    flow_.endBackdrop();
  }
  flow_.indentBy(-indents_.back());
  indents_.pop_back();
  --quotes_;
  texts_.space(kAroundQuote);
}

// A marker that needs more than its list is indented by indents this item and the next ones further. Where that leaves
// no room for it, it is in a line of its own.
void TypesetWriter::beginItem(document::Task task) {
  if (texts_.hasMarkerAt(flow_.left() - lists_.kMarkerGap)) {
    setLine({});
  }
  const std::string marker = lists_.next(task);
  const Length width = drawer_.widthOf(marker, bodyStyle());
  if (width <= lists_.kWidestMarker) {
    indents_.back() += indentBy(width + lists_.kMarkerGap - indents_.back());
  }
  const Length right = flow_.left() - lists_.kMarkerGap;
  beginTag("LI");
  if (width > lists_.kWidestMarker || width > right - kEdge) {
    setLine(marker, "Lbl");
  } else {
    texts_.addMarker({marker, bodyStyle(), right, tagger_ ? tagger_->tree().add("Lbl") : Element()});
  }
  beginTag("LBody");
}

void TypesetWriter::endItem() {
  if (texts_.hasMarkers()) {
    setLine({});
  }
  endTag();
  endTag();
}

void TypesetWriter::setLine(std::string_view text, std::string_view role) {
  beginText(bodyStyle(), {.after = lists_.kTightGap, .leading = kTextLeading, .role = role});
  collector_.add(text);
  endText();
}

void TypesetWriter::beginCode() {
  TextStyle style = bodyStyle();
  style.font = fontOf(Family::Mono, false, false);
  style.size = kCodeSize;
  beginText(style, {.before = kAroundCode,
                    .after = kAroundCode,
                    .leading = kCodeLeading,
                    .keepsBlanks = true,
                    .isKerned = false,
                    .padding = kCodePadding,
                    .shade = kCodeShade,
                    .role = "Code"});
  isInCode_ = true;
  codeColumn_ = 0;
}

void TypesetWriter::endCode() {
  isInCode_ = false;
  endText();
}

void TypesetWriter::writeRule() {
  markPlaces();
  texts_.setRule();
}

void TypesetWriter::endPage() {
  texts_.setWaiting(0);
  flow_.endPage();
}

void TypesetWriter::beginSection(const Event& section) {
  endPage();
  beginTag("Sect");
  running_.beginSection(section.text);
  if (!section.id.empty()) {
    collector_.addAnchor(section.id);
  }
}

void TypesetWriter::endSection() {
  texts_.setWaiting(2 * scaled(kTextLeading, kTextSize));
  running_.endSection(pages_.isOpen());
  endTag();
}

// Names the places that no text has come after.
void TypesetWriter::markPlaces() {
  for (TextAnchor& anchor : collector_.takeAnchors()) {
    flow_.mark(std::move(anchor.name));
  }
}

void TypesetWriter::beginTable(const document::Table& table) {
  endLooseText();
  markPlaces();
  tables_.begin(table);
}

void TypesetWriter::finish() {
  endLooseText();
  endPage();
  if (pages_.count() == 0) {
    flow_.take(0);
    flow_.endPage();
  }
  markPlaces();
  flow_.markEnd();
  contents_.finish(places_);
  running_.finish(pages_);
  const Metadata properties = metadata();
  const FileRoots roots{writeCatalog(), writeInformation(file_, properties), properties.identity()};
  file_.finish(roots);
  warn();
}

// As much of a text as the standard of the file has room for.
std::string_view TypesetWriter::fitting(std::string_view text) const {
  return fittingText(text, longestString(file_.standard()));
}

Metadata TypesetWriter::metadata() const {
  const auto text = [this](std::string_view name) { return std::string(fitting(settings_.text(name))); };
  Metadata metadata{text("title"),    text("author"),   text("subject"),
                    text("keywords"), text("language"), settings_.clock()};
  for (const auto& [name, value] : settings_.properties()) {
    if (isPropertyName(name)) {
      metadata.properties.emplace_back(name, fitting(value));
    }
  }
  return metadata;
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
  if (file_.standard() != Standard::None) {
    object += "/OutputIntents[";
    appendReference(object, writeOutputIntent(file_));
    object += ']';
  }
  object += "/Lang";
  appendText(object, properties.language);
  object += properties.title.empty() ? "" : "/ViewerPreferences<</DisplayDocTitle true>>";
  if (tagger_) {
    object += "/MarkInfo<</Marked true>>/StructTreeRoot ";
    appendReference(object, tagger_->finish());
  }
  object += ">>";
  file_.writeObject(catalog, object);
  return catalog;
}

// What the standard of the file has no room for.
void TypesetWriter::warnOfLimits() {
  std::size_t cut = outline_.cutTexts();
  for (const std::string_view name : {"title", "author", "subject", "keywords"}) {
    const std::string_view text = settings_.text(name);
    cut += fitting(text).size() < text.size() ? 1 : 0;
  }
  for (const auto& [name, value] : settings_.properties()) {
    cut += isPropertyName(name) && fitting(value).size() < value.size() ? 1 : 0;
  }
  if (cut > 0) {
    warnings_.add(WarningCode::SomethingLeftOut,
                  "the ends of properties and outline entries that are too long for PDF/A", cut);
  }
  if (pages_.linksLeftOut() > 0) {
    warnings_.add(WarningCode::SomethingLeftOut, "links that are too long, or too many on a page, for PDF/A",
                  pages_.linksLeftOut());
  }
}

void TypesetWriter::warn() {
  warnOfLimits();
  if (settings_.flag("tagged") && !tagger_) {
    warnings_.add(WarningCode::SomethingLeftOut, "the tags, which a file for PDF/A-1b does not have");
  }
  for (const auto& [name, value] : settings_.properties()) {
    if (!isPropertyName(name)) {
      warnings_.add(WarningCode::SomethingLeftOut,
                    "the property '" + std::string(name) + "', a name that the file cannot have");
    }
  }
  for (const auto& [script, missing] : shaper_.missing()) {
    std::string message("characters ");
    message += script == kNoScript ? "such as " : "of the script ";
    message += script == kNoScript ? unicodeNumberOf(missing.first) : nameOf(script);
    message += " that no font has, drawn as empty boxes; the setting \"font-file\" adds a font";
    warnings_.add(WarningCode::CharactersReplaced, message, missing.count);
  }
}

}  // namespace

std::unique_ptr<document::DocumentWriter> createPdfDocumentWriter(const document::WriterContext& context) {
  return std::make_unique<TypesetWriter>(context);
}

}  // namespace scrivalen::typeset
