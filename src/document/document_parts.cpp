// Parts that begin and end.

#include "document/document.h"

namespace scrivalen::document {
namespace {

constexpr double kLargestSize = 1000;

bool isLevel(int level) { return level >= 1 && level <= 6; }

// The kinds of the parts' events come in pairs, but the end of contents comes after their items.
EventKind endOf(EventKind begin) {
  return begin == EventKind::BeginContents ? EventKind::EndContents
                                           : static_cast<EventKind>(static_cast<int>(begin) + 1);
}

}  // namespace

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

}  // namespace scrivalen::document
