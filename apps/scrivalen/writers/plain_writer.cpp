#include "writers/plain_writer.h"

#include "addresses.h"
#include "readers/markup_text.h"

namespace scrivalen::command {
namespace {

void trimEnd(std::wstring& text) { text.erase(text.find_last_not_of(L" \n") + 1); }

}  // namespace

bool PlainWriter::open(const std::wstring& file, const DocumentSettings& settings) {
  return report_.open(file, settings);
}

void PlainWriter::write(const Event& event) {
  if (!content_.includes(event)) {
    return;
  }
  switch (groupOf(event.kind)) {
    case EventGroup::Block: return writeBlock(event);
    case EventGroup::Table: return writeTable(event);
    case EventGroup::Inline: return writeInline(event);
    case EventGroup::Contents: return;
  }
}

void PlainWriter::writeBlock(const Event& event) {
  switch (event.kind) {
    case EventKind::EndHeading: return endHeading(event.number);
    case EventKind::EndCodeBlock:
      if (text_.ends_with(L'\n')) {
        text_.pop_back();
      }
      codeBlock(text_);
      return text_.clear();
    default: break;
  }
  endParagraph();
  switch (event.kind) {
    case EventKind::BeginQuote: return beginQuote();
    case EventKind::EndQuote: return endQuote();
    case EventKind::BeginList: return enterList(event);
    case EventKind::EndList: return leaveList();
    case EventKind::BeginItem: return beginItem(markers_.next(event.task, L"- ", L". "));
    case EventKind::EndItem: return endItem();
    case EventKind::Rule: return rule();
    case EventKind::MarkupBlock: MarkupText().appendBlock(text_, event.text); return endParagraph();
    default: return;
  }
}

void PlainWriter::writeTable(const Event& event) {
  switch (event.kind) {
    case EventKind::BeginTable: endParagraph(); return beginTable();
    case EventKind::EndTable: return endTable();
    case EventKind::BeginRow: return beginRow(event.header, event.number);
    case EventKind::EndRow: return endRow(event.header);
    case EventKind::EndCell: cell(text_); return text_.clear();
    default: return;
  }
}

void PlainWriter::writeInline(const Event& event) {
  switch (event.kind) {
    case EventKind::Text:
    case EventKind::Image: text_ += event.text; return;
    case EventKind::LineBreak: text_ += L'\n'; return;
    case EventKind::Markup: return content_.appendMarkup(text_, event.text);
    case EventKind::BeginDeleted:
    case EventKind::EndDeleted: text_ += L"~~"; return;
    case EventKind::BeginLink:
      linkStart_ = text_.size();
      linkAddress_ = event.address;
      return;
    case EventKind::EndLink: return endLink();
    default: return;
  }
}

void PlainWriter::endHeading(int level) {
  trimEnd(text_);
  if (!text_.empty()) {
    heading(level, text_);
    text_.clear();
  }
}

// Also ends the text of an item in a tight list, which has no paragraph of its own.
void PlainWriter::endParagraph() {
  trimEnd(text_);
  if (!text_.empty()) {
    paragraph(text_);
    text_.clear();
  }
}

void PlainWriter::enterList(const Event& event) {
  markers_.enter(event);
  beginList(event.tight);
}

void PlainWriter::leaveList() {
  markers_.leave();
  endList();
}

void PlainWriter::endLink() {
  const std::wstring shown = text_.substr(linkStart_);
  text_.resize(linkStart_);
  text_ += withAddress(shown, linkAddress_);
}

}  // namespace scrivalen::command
