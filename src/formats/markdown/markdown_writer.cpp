#include "formats/markdown/markdown_writer.h"

#include "document/anchor_names.h"
#include "formats/markdown/autolink.h"
#include "formats/markdown/code_block.h"
#include "formats/markdown/inline_text.h"
#include "formats/markdown/lines.h"
#include "formats/markdown/losses.h"
#include "formats/markdown/table_rows.h"
#include "text/address.h"

#include <optional>
#include <string>
#include <vector>

namespace scrivalen::markdown {

using namespace document;

namespace {

std::optional<Mark> markOf(Span span) {
  switch (span) {
    case Span::Strong: return Mark::Strong;
    case Span::Emphasis: return Mark::Emphasis;
    case Span::Deleted: return Mark::Deleted;
    default: return std::nullopt;
  }
}

class MarkdownWriter : public DocumentWriter {
 public:
  explicit MarkdownWriter(const WriterContext& context)
      : warnings_(context.warnings),
        out_(context.out),
        lines_(out_),
        text_(out_, lines_),
        code_(out_, lines_),
        rows_(out_, lines_, losses_) {}

  void begin() override {}
  void write(const Event& event) override;
  void beginTable(const Table& table) override;
  void row(const Row& row) override;
  void endTable() override { rows_.end(); }
  void finish() override { losses_.report(warnings_); }

 private:
  void writeBlock(const Event& event);
  void writeInline(const Event& event);
  void writeText(const Event& event);

  void startBlock();
  void endItemText();
  void beginText(Place place, std::string_view lead);
  void endText();

  void writeTitle(const Event& title);
  void beginHeading(const Event& heading);
  void beginParagraph(const Event& paragraph);
  void beginItem(const Event& item);
  void endItem();
  void writeRule();
  void beginContents();
  void writeContentsItem(const Event& item);
  void endContents();
  void writeMarkupBlock(std::string_view markup);

  void beginSpan(Span span);
  void endSpan(Span span);
  void beginLink(const Event& link);
  bool holdLink(const Event& event);
  void releaseLink();
  void endLink();

  void countAlign(const Event& event);
  void write(std::string_view text) { out_.write(text.data(), text.size()); }

  OutputWarnings& warnings_;
  OutputBuffer& out_;
  Losses losses_;
  Lines lines_;
  InlineText text_;
  CodeBlock code_;
  TableRows rows_;
  AnchorNames names_;

  bool isInText_ = false;      // of a paragraph, heading or cell
  bool isInItemText_ = false;  // of an item itself
  bool isInCode_ = false;
  bool isLinkOpen_ = false;
  bool isLinkHeld_ = false;  // until it is known whether its text is its address
  std::string heldAddress_;
  std::string heldText_;
  Task task_ = Task::None;  // of the item that has begun, not written yet
  std::vector<int> contents_;
};

void MarkdownWriter::write(const Event& event) {
  if (isInline(event.kind)) {
    writeInline(event);
  } else {
    writeBlock(event);
  }
}

void MarkdownWriter::writeBlock(const Event& event) {
  switch (event.kind) {
    case EventKind::Title: return writeTitle(event);
    case EventKind::BeginHeading: return beginHeading(event);
    case EventKind::BeginParagraph: return beginParagraph(event);
    case EventKind::EndHeading:
    case EventKind::EndParagraph: return endText();
    case EventKind::BeginQuote: startBlock(); return lines_.beginQuote();
    case EventKind::EndQuote: return lines_.endQuote();
    case EventKind::BeginList: startBlock(); return lines_.beginList(event.ordered, event.number, event.tight);
    case EventKind::EndList: return lines_.endList();
    case EventKind::BeginItem: return beginItem(event);
    case EventKind::EndItem: return endItem();
    case EventKind::BeginCode:
      startBlock();
      isInCode_ = true;
      return code_.begin(event.text);
    case EventKind::EndCode: isInCode_ = false; return code_.end();
    case EventKind::Rule: return writeRule();
    case EventKind::PageBreak: return losses_.count(Loss::PageBreaks);
    case EventKind::BeginContents: return beginContents();
    case EventKind::ContentsItem: return writeContentsItem(event);
    case EventKind::EndContents: return endContents();
    default: return;
  }
}

// ---- Blocks

// Before a block that is no text.
void MarkdownWriter::startBlock() {
  endItemText();
  if (task_ != Task::None) {
    beginText(Place::Line, {});
    text_.start();
    endText();
  }
}

void MarkdownWriter::beginText(Place place, std::string_view lead) {
  std::string leads = task_ == Task::None ? "" : task_ == Task::Done ? "[x] " : "[ ] ";
  task_ = Task::None;
  text_.begin(place, place == Place::Heading ? Block::Heading : Block::Text, leads.append(lead));
  isInText_ = true;
}

void MarkdownWriter::endText() {
  if (text_.end()) {
    lines_.endLine();
  }
  isInText_ = false;
}

void MarkdownWriter::endItemText() {
  if (isInItemText_) {
    isInItemText_ = false;
    endText();
  }
}

void MarkdownWriter::countAlign(const Event& event) {
  if (event.align > Align::Left) {
    losses_.count(Loss::Aligns);
  }
}

void MarkdownWriter::writeTitle(const Event& title) {
  names_.next(title.text);
  beginText(Place::Heading, "# ");
  text_.start();
  text_.text(title.text);
  endText();
}

void MarkdownWriter::beginHeading(const Event& heading) {
  startBlock();
  countAlign(heading);
  if (names_.next(heading.text) != heading.id) {
    losses_.count(Loss::Ids);
  }
  beginText(Place::Heading, std::string(static_cast<std::size_t>(heading.number), '#') + ' ');
  text_.start();
}

void MarkdownWriter::beginParagraph(const Event& paragraph) {
  endItemText();
  countAlign(paragraph);
  beginText(Place::Line, {});
}

void MarkdownWriter::beginItem(const Event& item) {
  lines_.beginItem();
  task_ = item.task;
}

void MarkdownWriter::endItem() {
  startBlock();
  lines_.endItem();
}

// A line of hyphens would make a heading of the text before it, or begin the metadata of the file.
void MarkdownWriter::writeRule() {
  startBlock();
  lines_.startBlock(Block::Heading);
  lines_.startLine();
  write("***");
  lines_.endLine();
}

void MarkdownWriter::beginContents() {
  startBlock();
  lines_.beginList(false, 0, true);
}

// An entry of a higher number is in a list inside the entry before it. Levels that are left out make no lists.
void MarkdownWriter::writeContentsItem(const Event& item) {
  if (!contents_.empty()) {
    if (item.number > contents_.back()) {
      lines_.beginList(false, 0, true);
    } else {
      lines_.endItem();
      while (contents_.size() > 1 && contents_[contents_.size() - 2] >= item.number) {
        contents_.pop_back();
        lines_.endList();
        lines_.endItem();
      }
      contents_.pop_back();
    }
  }
  contents_.push_back(item.number);
  lines_.beginItem();
  beginText(Place::Line, {});
  text_.beginLink(std::string("#").append(item.id), {});
  text_.text(item.text);
  text_.endLink();
  endText();
}

void MarkdownWriter::endContents() {
  for (; !contents_.empty(); contents_.pop_back()) {
    lines_.endItem();
    if (contents_.size() > 1) {
      lines_.endList();
    }
  }
  lines_.endList();
}

void MarkdownWriter::writeMarkupBlock(std::string_view markup) {
  lines_.startBlock(Block::Other);
  lines_.startLine();
  lines_.writeLines(markup);
  if (!markup.ends_with('\n')) {
    lines_.endLine();
  }
}

// ---- Text

void MarkdownWriter::writeInline(const Event& event) {
  if (isInCode_) {
    return code_.text(event.text);
  }
  if (event.kind == EventKind::Anchor) {
    return losses_.count(Loss::Anchors);
  }
  if (event.kind == EventKind::Raw && event.address != "markdown") {
    return;
  }
  if (!isInText_) {
    if (!lines_.isInItem()) {
      return writeMarkupBlock(event.text);
    }
    isInItemText_ = true;
    beginText(Place::Line, {});
  }
  writeText(event);
}

void MarkdownWriter::writeText(const Event& event) {
  if (isLinkHeld_ && holdLink(event)) {
    return;
  }
  switch (event.kind) {
    case EventKind::Text: return text_.text(event.text);
    case EventKind::BeginSpan: return beginSpan(event.span);
    case EventKind::EndSpan: return endSpan(event.span);
    case EventKind::BeginColored: return losses_.count(Loss::Colors);
    case EventKind::BeginSized: return losses_.count(Loss::Sizes);
    case EventKind::BeginLanguage: return losses_.count(Loss::Languages);
    case EventKind::BeginLink: return beginLink(event);
    case EventKind::EndLink: return endLink();
    case EventKind::Image: return event.picture ? text_.picture(*event.picture, event.text) : text_.text(event.text);
    case EventKind::Raw: return text_.raw(event.text);
    default: return;
  }
}

void MarkdownWriter::beginSpan(Span span) {
  switch (span) {
    case Span::Code: return text_.beginCode();
    case Span::Underlined: return losses_.count(Loss::Underlined);
    case Span::Superscript: return losses_.count(Loss::Superscript);
    case Span::Subscript: return losses_.count(Loss::Subscript);
    default:
      if (const auto mark = markOf(span)) {
        text_.beginMark(*mark);
      }
  }
}

void MarkdownWriter::endSpan(Span span) {
  if (span == Span::Code) {
    text_.endCode();
  } else if (const auto mark = markOf(span)) {
    text_.endMark(*mark);
  }
}

void MarkdownWriter::beginLink(const Event& link) {
  isLinkOpen_ = !runsProgram(link.address, AddressUse::Link);
  if (!isLinkOpen_) {
    losses_.count(Loss::Addresses);
  } else if (link.title.empty()) {
    isLinkHeld_ = true;
    heldAddress_ = link.address;
    heldText_.clear();
  } else {
    text_.beginLink(link.address, link.title);
  }
}

// Takes the text of a link that waits, or lets the link go.
// @return whether there is nothing left to write
bool MarkdownWriter::holdLink(const Event& event) {
  if (event.kind == EventKind::Text) {
    heldText_ += event.text;
    if (mayBecomeAutolink(heldText_, heldAddress_)) {
      return true;
    }
    releaseLink();
    return true;
  }
  if (event.kind == EventKind::EndLink && isAutolink(heldText_, heldAddress_)) {
    isLinkHeld_ = false;
    text_.autolink(heldText_);
    return true;
  }
  releaseLink();
  return false;
}

void MarkdownWriter::releaseLink() {
  isLinkHeld_ = false;
  text_.beginLink(heldAddress_, {});
  text_.text(heldText_);
}

void MarkdownWriter::endLink() {
  if (isLinkOpen_) {
    text_.endLink();
  }
}

// ---- Tables

void MarkdownWriter::beginTable(const Table& table) {
  startBlock();
  rows_.begin(table);
}

void MarkdownWriter::row(const Row& row) {
  rows_.startRow(row);
  std::size_t column = 0;
  for (const Cell& cell : row.cells) {
    if (cell.content == nullptr && cell.text.size() <= TableRows::kLongestPlain) {
      rows_.writePlain(cell.text, column);
    } else {
      rows_.startCell();
      text_.begin(Place::Cell, Block::Table, {});
      isInText_ = true;
      if (cell.content == nullptr) {
        text_.text(cell.text);
      } else {
        cell.replay(*this);
      }
      text_.end();
      isInText_ = false;
      rows_.endCell(column);
    }
    rows_.finishCell(cell, column);
    column += static_cast<std::size_t>(cell.span);
  }
  rows_.endRow();
}

}  // namespace

std::unique_ptr<DocumentWriter> createMarkdownDocumentWriter(const WriterContext& context) {
  return std::make_unique<MarkdownWriter>(context);
}

}  // namespace scrivalen::markdown
