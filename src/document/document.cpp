#include "document/document.h"

#include <algorithm>
#include <cmath>

namespace scrivalen::document {
namespace {

constexpr std::size_t kCleanedPiece = 4096;
constexpr int kWidestSpan = 16384;
constexpr double kLargestSize = 1000;
constexpr double kWidestPicture = 14400;  // points; 200 inches, the largest page of PDF 1.4 (appendix C)

bool isLevel(int level) { return level >= 1 && level <= 6; }

// The kinds of the parts' events come in pairs.
// The end of contents comes after their items.
EventKind endOf(EventKind begin) {
  return begin == EventKind::BeginContents ? EventKind::EndContents
                                           : static_cast<EventKind>(static_cast<int>(begin) + 1);
}

// The end of a piece of at most kCleanedPiece bytes, between two characters and not within CR LF.
std::size_t pieceOf(std::string_view text) {
  if (text.size() <= kCleanedPiece) {
    return text.size();
  }
  std::size_t end = kCleanedPiece;
  for (int i = 0; i < 3 && (static_cast<unsigned char>(text[end]) & 0xC0) == 0x80; ++i) {
    --end;
  }
  return text[end - 1] == '\r' ? end - 1 : end;
}

}  // namespace

Status Document::refuse(Status status, std::string_view text) {
  callText_ = text;
  return status;
}

Status Document::runOutOfMemory() noexcept {
  run_.runOutOfMemory();
  callText_.clear();
  for (const auto& output : outputs_) {
    output->abandon();
  }
  return Status::OutOfMemory;
}

Status Document::answer(Status status) {
  if (status != Status::Ok) {
    callText_.clear();
  }
  return status;
}

Status Document::setUpOnly(std::string_view call) {
  if (state_ == State::SetUp) {
    return Status::Ok;
  }
  return misuse(std::string(call) + " comes before the first content");
}

Status Document::addFile(const Format& format, std::string path) {
  if (const Status status = setUpOnly("an output"); status != Status::Ok) {
    return status;
  }
  outputs_.push_back(std::make_unique<Output>(format, std::move(path), outputs_.size(), settings_, warnings_, run_));
  return Status::Ok;
}

Status Document::addStream(const Format& format, StreamWrite stream, void* user) {
  if (const Status status = setUpOnly("an output"); status != Status::Ok) {
    return status;
  }
  outputs_.push_back(std::make_unique<Output>(format, stream, user, outputs_.size(), settings_, warnings_, run_));
  return Status::Ok;
}

Status Document::set(std::string_view name, std::string_view value) {
  if (const Status status = setUpOnly("a setting"); status != Status::Ok) {
    return status;
  }
  Replaced replaced;
  if (!Settings::isPath(name)) {
    text_.clear();
    appendClean(text_, value, TextKind::Line, replaced);
    value = text_;
  }
  std::string reason;
  if (!settings_.set(name, value, reason)) {
    return refuse(Status::UnknownSetting, reason);
  }
  replaced_.badBytes += replaced.badBytes;
  replaced_.controls += replaced.controls;
  return Status::Ok;
}

Status Document::setProgress(Progress progress, void* user) {
  if (const Status status = setUpOnly("progress"); status != Status::Ok) {
    return status;
  }
  run_.setProgress(progress, user);
  return Status::Ok;
}

Status Document::open() {
  if (const Status status = setUpOnly("opening"); status != Status::Ok) {
    return status;
  }
  if (outputs_.empty()) {
    return misuse("the document has no outputs");
  }
  openOutputs();
  return answer(run_.result());
}

void Document::openOutputs() {
  state_ = State::Open;
  const FormatSettings settings(settings_, "");
  values_.emplace(NumberStyle::of(settings.text("numbers")).value_or(NumberStyle()),
                  DateStyle::of(settings.text("dates")).value_or(DateStyle()));
  for (auto output = outputs_.begin(); output != outputs_.end(); ++output) {
    const bool isTaken = std::any_of(outputs_.begin(), output,
                                     [&](const auto& earlier) { return (*output)->sharesTargetWith(*earlier); });
    if (isTaken) {
      (*output)->refuse("another output writes to it");
    } else {
      (*output)->open();
    }
  }
}

Status Document::ready() {
  if (state_ == State::Closed) {
    return misuse("the document is closed");
  }
  if (outputs_.empty()) {
    return misuse("the document has no outputs");
  }
  const bool isStill = state_ == State::SetUp && !run_.isOutOfMemory();
  return isStill || run_.isGoing() ? Status::Ok : answer(run_.result());
}

Status Document::opened() {
  if (state_ == State::SetUp) {
    openOutputs();
    openStatus_ = run_.result();
  }
  return run_.isGoing() ? Status::Ok : answer(run_.result());
}

Status Document::readyFor(Part part) {
  if (const Status status = ready(); status != Status::Ok) {
    return status;
  }
  if (!nesting_.mayHold(part)) {
    return misplaced(part);
  }
  if (inCell_ && table_->hasValue()) {
    return misuse("a cell has one value, and no text");
  }
  return nesting_.isFull() ? misuse("the parts are nested deeper than 1,000") : opened();
}

Status Document::misplaced(Part part) {
  if (part == Part::Link && nesting_.innermost().inLink) {
    return misuse("a link cannot be in a link");
  }
  return misuse(std::string(nameOf(part)) + " cannot be in " + nameOf(nesting_.innermost().part));
}

Status Document::taken() {
  if (!run_.isGoing()) {
    return answer(run_.result());
  }
  return answer(std::exchange(openStatus_, Status::Ok));
}

void Document::begin(Part part, const Event& event) {
  endedWithCarriageReturn_ = false;
  nesting_.begin(part, event);
}

Status Document::beginSection(std::string_view name, std::string_view id) {
  if (const Status status = readyFor(Part::Section); status != Status::Ok) {
    return status;
  }
  const Event event{.kind = EventKind::BeginSection, .text = cleanLine(name, line_), .id = claimed(id)};
  forward(event);
  begin(Part::Section, event);
  return taken();
}

Status Document::beginHeading(int level, std::string_view id, Align align) {
  if (const Status status = ready(); status != Status::Ok) {
    return status;
  }
  if (!isLevel(level)) {
    return misuse("the level of a heading is 1 to 6");
  }
  if (const Status status = readyFor(Part::Heading); status != Status::Ok) {
    return status;
  }
  headingId_ = claimed(id);
  headingText_.clear();
  held_.clear();
  inHeading_ = true;
  begin(Part::Heading, {.kind = EventKind::BeginHeading, .align = align, .number = level});
  return taken();
}

Status Document::beginParagraph(Align align) {
  if (const Status status = readyFor(Part::Paragraph); status != Status::Ok) {
    return status;
  }
  const Event event{.kind = EventKind::BeginParagraph, .align = align};
  writeBlock(event);
  begin(Part::Paragraph, event);
  return taken();
}

Status Document::beginQuote() {
  if (const Status status = readyFor(Part::Quote); status != Status::Ok) {
    return status;
  }
  const Event event{.kind = EventKind::BeginQuote};
  writeBlock(event);
  begin(Part::Quote, event);
  return taken();
}

Status Document::beginList(bool ordered, int first, bool tight) {
  if (const Status status = ready(); status != Status::Ok) {
    return status;
  }
  if (ordered && first < 0) {
    return misuse("the first number of a list is not negative");
  }
  if (const Status status = readyFor(Part::List); status != Status::Ok) {
    return status;
  }
  const Event event{.kind = EventKind::BeginList, .ordered = ordered, .tight = tight, .number = ordered ? first : 0};
  writeBlock(event);
  begin(Part::List, event);
  return taken();
}

Status Document::beginItem(Task task) {
  if (const Status status = readyFor(Part::Item); status != Status::Ok) {
    return status;
  }
  const Event event{.kind = EventKind::BeginItem, .task = task};
  forward(event);
  begin(Part::Item, event);
  return taken();
}

Status Document::beginCode(std::string_view language) {
  if (const Status status = readyFor(Part::Code); status != Status::Ok) {
    return status;
  }
  const Event event{.kind = EventKind::BeginCode, .text = cleanLine(language, line_)};
  writeBlock(event);
  begin(Part::Code, event);
  return taken();
}

Status Document::beginContents() {
  if (const Status status = readyFor(Part::Contents); status != Status::Ok) {
    return status;
  }
  const Event event{.kind = EventKind::BeginContents};
  writeBlock(event);
  begin(Part::Contents, event);
  return taken();
}

Status Document::contentsItem(int level, std::string_view id, std::string_view text) {
  if (const Status status = ready(); status != Status::Ok) {
    return status;
  }
  if (!nesting_.isIn(Part::Contents)) {
    return misuse("an item of the contents is only in the contents");
  }
  if (!isLevel(level)) {
    return misuse("the level of an item of the contents is 1 to 6");
  }
  const std::string_view place = cleanLine(id, line_);
  refer(place);
  forward({.kind = EventKind::ContentsItem, .number = level, .text = cleanLine(text, otherLine_), .id = place});
  return taken();
}

Status Document::beginTable(std::vector<Column> columns, std::string_view name) {
  if (const Status status = ready(); status != Status::Ok) {
    return status;
  }
  if (columns.size() > kMostColumns) {
    return misuse(kTooManyColumns);
  }
  if (const Status status = readyFor(Part::Table); status != Status::Ok) {
    return status;
  }
  beginContent(false);
  for (Column& column : columns) {
    column.name = std::string(cleanLine(column.name, line_));
  }
  Table table{std::string(cleanLine(name, line_)), std::move(columns)};
  table_.emplace(std::move(table), *values_, static_cast<TableTarget&>(*this), warnings_, replaced_);
  nesting_.begin(Part::Table);
  return taken();
}

Status Document::beginRow(bool header) {
  if (const Status status = readyFor(Part::Row); status != Status::Ok) {
    return status;
  }
  table_->beginRow(header);
  nesting_.begin(Part::Row);
  return taken();
}

Status Document::markRow(bool header) {
  if (const Status status = ready(); status != Status::Ok) {
    return status;
  }
  if (!nesting_.isIn(Part::Row)) {
    return misuse("no row is open that could be a header row");
  }
  table_->markRow(header);
  return taken();
}

Status Document::describeColumn(std::size_t column, const Column& description) {
  if (const Status status = ready(); status != Status::Ok) {
    return status;
  }
  if (!table_ || column >= kMostColumns) {
    return misuse("no table is open that could have this column");
  }
  table_->describeColumn(column, description);
  return taken();
}

Status Document::beginCell(const CellStyle& style) {
  if (const Status status = readyFor(Part::Cell); status != Status::Ok) {
    return status;
  }
  if (style.span < 1 || style.span > kWidestSpan) {
    return misuse("a cell spans 1 to 16,384 columns");
  }
  table_->beginCell(style);
  inCell_ = true;
  nesting_.begin(Part::Cell);
  return taken();
}

Status Document::beginSpan(Span span) {
  if (const Status status = readyFor(Part::Span); status != Status::Ok) {
    return status;
  }
  const Event event{.kind = EventKind::BeginSpan, .span = span};
  writeInline(event);
  begin(Part::Span, event);
  return taken();
}

Status Document::beginColored(std::optional<Rgb> color, std::optional<Rgb> background) {
  if (const Status status = readyFor(Part::Colored); status != Status::Ok) {
    return status;
  }
  const Event event{.kind = EventKind::BeginColored, .color = color, .background = background};
  writeInline(event);
  begin(Part::Colored, event);
  return taken();
}

Status Document::beginSized(double points) {
  if (const Status status = ready(); status != Status::Ok) {
    return status;
  }
  if (!(points > 0 && points <= kLargestSize)) {
    return misuse("a size is more than 0 and at most 1,000 points");
  }
  if (const Status status = readyFor(Part::Sized); status != Status::Ok) {
    return status;
  }
  const Event event{.kind = EventKind::BeginSized, .points = points};
  writeInline(event);
  begin(Part::Sized, event);
  return taken();
}

Status Document::beginLink(std::string_view address, std::string_view title) {
  if (const Status status = readyFor(Part::Link); status != Status::Ok) {
    return status;
  }
  const std::string_view cleaned = cleanLine(address, line_);
  if (cleaned.starts_with('#')) {
    refer(cleaned.substr(1));
  }
  const Event event{.kind = EventKind::BeginLink, .address = cleaned, .title = cleanLine(title, otherLine_)};
  writeInline(event);
  begin(Part::Link, event);
  return taken();
}

Status Document::beginLanguage(std::string_view tag) {
  if (const Status status = readyFor(Part::Language); status != Status::Ok) {
    return status;
  }
  const Event event{.kind = EventKind::BeginLanguage, .text = cleanLine(tag, line_)};
  writeInline(event);
  begin(Part::Language, event);
  return taken();
}

Status Document::end() {
  if (const Status status = ready(); status != Status::Ok) {
    return status;
  }
  if (nesting_.isEmpty()) {
    return misuse("nothing is open that could end");
  }
  endInnermost();
  return taken();
}

void Document::endInnermost() {
  endedWithCarriageReturn_ = false;
  const Part part = nesting_.innermost().part;
  if (part == Part::Cell || part == Part::Row || part == Part::Table) {
    nesting_.end();
    return endPartOfTable(part);
  }
  const Event begun = nesting_.innermost().event();
  nesting_.end();
  Event event = begun;
  event.kind = endOf(begun.kind);
  switch (part) {
    case Part::Document: return;
    case Part::Heading: return endHeading(begun);
    case Part::Span:
    case Part::Colored:
    case Part::Sized:
    case Part::Link:
    case Part::Language: return writeInline(event);
    default: return forward(event);
  }
}

void Document::endPartOfTable(Part part) {
  if (part == Part::Cell) {
    inCell_ = false;
    table_->endCell();
  } else if (part == Part::Row) {
    table_->endRow();
  } else {
    table_->finish();
    table_.reset();
  }
}

Status Document::text(std::string_view text) {
  if (const Status status = ready(); status != Status::Ok) {
    return status;
  }
  const Nesting::OpenPart& inner = nesting_.innermost();
  const bool isCode = inner.part == Part::Code;
  if (!isCode && !inner.holdsText) {
    return misuse(std::string("text cannot be in ") + nameOf(inner.part));
  }
  if (inCell_ && table_->hasValue()) {
    return misuse("a cell has one value, and no text");
  }
  if (endedWithCarriageReturn_ && text.starts_with('\n')) {
    text.remove_prefix(1);
    endedWithCarriageReturn_ = false;
  }
  if (!text.empty()) {
    endedWithCarriageReturn_ = text.back() == '\r';
    writeClean(text, isCode ? TextKind::Code : TextKind::Flowing);
  }
  return taken();
}

Status Document::lineBreak() {
  if (const Status status = ready(); status != Status::Ok) {
    return status;
  }
  if (!nesting_.innermost().holdsText) {
    return misuse(std::string("a line break cannot be in ") + nameOf(nesting_.innermost().part));
  }
  if (inCell_ && table_->hasValue()) {
    return misuse("a cell has one value, and no text");
  }
  endedWithCarriageReturn_ = false;
  writeText("\n");
  return taken();
}

Status Document::pageBreak() {
  if (const Status status = ready(); status != Status::Ok) {
    return status;
  }
  if (!nesting_.innermost().holdsBlocks) {
    return misuse(std::string("a page break cannot be in ") + nameOf(nesting_.innermost().part));
  }
  if (const Status status = opened(); status != Status::Ok) {
    return status;
  }
  forward({.kind = EventKind::PageBreak});
  return taken();
}

Status Document::rule() {
  if (const Status status = ready(); status != Status::Ok) {
    return status;
  }
  if (!nesting_.innermost().holdsBlocks) {
    return misuse(std::string("a rule cannot be in ") + nameOf(nesting_.innermost().part));
  }
  if (const Status status = opened(); status != Status::Ok) {
    return status;
  }
  writeBlock({.kind = EventKind::Rule});
  return taken();
}

Status Document::readyForContent(const char* what) {
  if (const Status status = ready(); status != Status::Ok) {
    return status;
  }
  const Nesting::OpenPart& inner = nesting_.innermost();
  if (!inner.holdsText && !inner.holdsBlocks) {
    return misuse(std::string(what) + " cannot be in " + nameOf(inner.part));
  }
  if (inCell_ && table_->hasValue()) {
    return misuse("a cell has one value, and no text");
  }
  endedWithCarriageReturn_ = false;
  return opened();
}

Status Document::anchor(std::string_view id) {
  if (const Status status = readyForContent("an anchor"); status != Status::Ok) {
    return status;
  }
  if (const std::string_view place = claimed(id); !place.empty()) {
    writeInline({.kind = EventKind::Anchor, .id = place});
  }
  return taken();
}

Status Document::readyForImage(double width) {
  if (const Status status = ready(); status != Status::Ok) {
    return status;
  }
  if (!(width >= 0 && width <= kWidestPicture)) {
    return misuse("the width of a picture is 0 to 14,400 points");
  }
  return readyForContent("a picture");
}

Status Document::image(const std::shared_ptr<const Picture>& picture, std::string_view alternative, double width,
                       std::string_view reason) {
  if (const Status status = readyForImage(width); status != Status::Ok) {
    return status;
  }
  if (!picture) {
    warn(WarningCode::SomethingLeftOut, reason);
  }
  const Event event{
      .kind = EventKind::Image, .points = width, .text = cleanLine(alternative, line_), .picture = picture.get()};
  if (nesting_.innermost().holdsText) {
    writeInline(event);
  } else {
    writeBlock({.kind = EventKind::BeginParagraph});
    forward(event);
    forward({.kind = EventKind::EndParagraph});
  }
  return taken();
}

Status Document::raw(std::string_view format, std::string_view markup) {
  if (const Status status = readyForContent("markup"); status != Status::Ok) {
    return status;
  }
  if (!nesting_.innermost().holdsText) {
    for (const auto& output : outputs_) {
      if (output->format().name == format) {
        output->beginContent(true);
      }
    }
  }
  writeInline({.kind = EventKind::Raw, .text = markup, .address = format});
  return taken();
}

Status Document::heading(int level, std::string_view text) {
  const std::size_t depth = nesting_.depth();
  return wholeOf(beginHeading(level, {}, Align::Auto), depth, text);
}

Status Document::paragraph(std::string_view text) {
  const std::size_t depth = nesting_.depth();
  return wholeOf(beginParagraph(Align::Auto), depth, text);
}

// The call that began the block may have been taken and yet have reported an output that could not be opened.
Status Document::wholeOf(Status begun, std::size_t depth, std::string_view text) {
  if (nesting_.depth() == depth) {
    return begun;
  }
  writeClean(text, TextKind::Flowing);
  endInnermost();
  const Status ended = taken();
  return begun == Status::Ok ? ended : begun;
}

Status Document::readyForCell() {
  if (const Status status = ready(); status != Status::Ok) {
    return status;
  }
  if (nesting_.isIn(Part::Row)) {
    return Status::Ok;
  }
  if (!nesting_.isIn(Part::Cell)) {
    return misplaced(Part::Cell);
  }
  return table_->isCellEmpty() ? Status::Ok : misuse("a cell has one value, and no text");
}

Status Document::cell(std::string_view text) {
  if (const Status status = readyForCell(); status != Status::Ok) {
    return status;
  }
  if (inCell_) {
    table_->setText(text);
  } else {
    table_->addText(text);
  }
  return taken();
}

Status Document::value(ValueType type, double number, std::int64_t integer) {
  if (const Status status = readyForCell(); status != Status::Ok) {
    return status;
  }
  if (inCell_) {
    table_->setValue(type, number, integer);
  } else {
    table_->addValue(type, number, integer);
  }
  return taken();
}

Status Document::readyForRows() {
  if (const Status status = ready(); status != Status::Ok) {
    return status;
  }
  return nesting_.isIn(Part::Table) ? Status::Ok : misplaced(Part::Row);
}

Status Document::rows(const ColumnData* columns, std::size_t count, std::size_t rows) {
  if (const Status status = readyForRows(); status != Status::Ok) {
    return status;
  }
  table_->addRows(columns, count, rows);
  return taken();
}

Status Document::close() {
  if (state_ == State::Closed) {
    return answer(run_.result());
  }
  if (outputs_.empty()) {
    return misuse("the document has no outputs");
  }
  try {
    closeWithMemory();
  } catch (const std::bad_alloc&) {
    runOutOfMemory();
  }
  state_ = State::Closed;
  return answer(run_.result());
}

void Document::closeWithMemory() {
  if (state_ == State::SetUp && !run_.isOutOfMemory()) {
    openOutputs();
  }
  while (run_.isGoing() && !nesting_.isEmpty()) {
    endInnermost();
  }
  warnOfMended();
  finishOutputs();
}

void Document::finishOutputs() {
  for (const auto& output : outputs_) {
    output->finish();
  }
  // Before the delivery, which memory that runs out must not follow.
  toReport_ = warnings_.all();
  if (run_.isGoing() && run_.report()) {
    for (const auto& output : outputs_) {
      output->deliver();
    }
  }
  for (const auto& output : outputs_) {
    output->abandon();
  }
}

void Document::warnOfMended() {
  if (replaced_.badBytes > 0) {
    warn(WarningCode::CharactersReplaced, "bytes that are not UTF-8, replaced by U+FFFD", replaced_.badBytes);
  }
  if (replaced_.controls > 0) {
    warn(WarningCode::CharactersReplaced, "control characters, replaced by U+FFFD", replaced_.controls);
  }
  for (const std::string& target : targets_) {
    if (!names_.isUsed(target)) {
      warn(WarningCode::InputMended, "a link leads to '#" + target + "', which is nowhere in the document");
    }
  }
}

const Warning* Document::nextWarning() { return reported_ < toReport_.size() ? &toReport_[reported_++] : nullptr; }

void Document::writeBlock(const Event& event) {
  endedWithCarriageReturn_ = false;
  beginContent(false);
  forward(event);
}

void Document::beginContent(bool isHeading) {
  for (const auto& output : outputs_) {
    output->beginContent(isHeading);
  }
}

void Document::writeInline(const Event& event) {
  if (inHeading_) {
    held_.write(event);
    if (event.kind == EventKind::Image) {
      headingText_ += event.text;
    }
  } else if (inCell_) {
    table_->write(event);
  } else {
    forward(event);
  }
}

void Document::endHeading(const Event& begun) {
  inHeading_ = false;
  beginContent(true);
  Event event = begun;
  event.text = headingText_;
  event.id = headingId_.empty() ? names_.next(headingText_) : headingId_;
  forward(event);
  held_.replay(*this);
  event = begun;
  event.kind = EventKind::EndHeading;
  forward(event);
}

void Document::forward(const Event& event) {
  for (const auto& output : outputs_) {
    output->write(event);
  }
}

void Document::writeClean(std::string_view text, TextKind kind) {
  while (!text.empty()) {
    if (const std::size_t clean = cleanLength(text, kind); clean > 0) {
      writeText(text.substr(0, clean));
      text.remove_prefix(clean);
      continue;
    }
    const std::size_t piece = pieceOf(text);
    text_.clear();
    appendClean(text_, text.substr(0, piece), kind, replaced_);
    writeText(text_);
    text.remove_prefix(piece);
  }
}

void Document::writeText(std::string_view text) {
  if (inHeading_) {
    held_.write({.kind = EventKind::Text, .text = text});
    headingText_ += text;
    std::replace(headingText_.end() - static_cast<std::ptrdiff_t>(text.size()), headingText_.end(), '\n', ' ');
  } else if (inCell_) {
    table_->text(text);
  } else {
    forward({.kind = EventKind::Text, .text = text});
  }
}

std::string_view Document::cleanLine(std::string_view text, std::string& storage) {
  if (cleanLength(text, TextKind::Line) == text.size()) {
    return text;
  }
  storage.clear();
  appendClean(storage, text, TextKind::Line, replaced_);
  return storage;
}

// Of two equal ids the first counts.
std::string_view Document::claimed(std::string_view id) {
  const std::string_view place = cleanLine(id, otherLine_);
  if (place.empty() || names_.claim(place)) {
    return place;
  }
  warn(WarningCode::InputMended, "the id '" + std::string(place) + "' is in use already; the first place counts");
  return {};
}

void Document::refer(std::string_view id) {
  if (!id.empty() && targets_.find(id) == targets_.end()) {
    targets_.emplace(id);
  }
}

void Document::beginTable(const Table& table) {
  for (const auto& output : outputs_) {
    output->beginTable(table);
  }
}

void Document::row(const Row& row) {
  run_.countRow();
  for (const auto& output : outputs_) {
    output->row(row);
  }
}

void Document::endTable() {
  for (const auto& output : outputs_) {
    output->endTable();
  }
}

bool Document::isWanted() const { return run_.isGoing(); }

}  // namespace scrivalen::document
