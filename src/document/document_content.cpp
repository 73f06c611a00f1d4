// Texts, values and whatever else is in a part.

#include "document/document.h"

#include <algorithm>
#include <utility>

namespace scrivalen::document {
namespace {

constexpr std::size_t kCleanedPiece = 4096;
constexpr double kWidestPicture = 14400;  // points; 200 inches, the largest page of PDF 1.4 (appendix C)

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
      if (output->format().takesMarkupOf(format)) {
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

Status Document::value(ValueType type, double number, std::int64_t integer, int decimals) {
  if (const Status status = readyForCell(); status != Status::Ok) {
    return status;
  }
  if (inCell_) {
    table_->setValue(type, number, integer, decimals);
  } else {
    table_->addValue(type, number, integer, decimals);
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

}  // namespace scrivalen::document
