#include "addresses.h"
#include "readers/markup_text.h"
#include "text/address.h"
#include "writers/list_markers.h"
#include "writers/single_report.h"
#include "writers/visible_content.h"
#include "writers/writers.h"

#include <algorithm>
#include <array>

namespace scrivalen::command {
namespace {

// The report maps "gray" to the document's light gray.
constexpr const wchar_t* kHeaderColors = L"black;gray";

constexpr std::array<int, 6> kHeadingSizes = {36, 30, 26, 24, 22, 20};  // half-points, by level

/// Writes each block as a paragraph, with an empty paragraph between two blocks unless they are in a tight list. The
/// report has no list operations, so items are indented by tabs and begin with their markers.
class RtfWriter : public DocumentWriter {
 public:
  RtfWriter() : report_(FORMAT_RTF) {}

  bool open(const std::wstring& file, const DocumentSettings& settings) override {
    isConforming_ = settings.conforming;
    return report_.open(file, settings);
  }
  void write(const Event& event) override;
  bool close() override { return report_.close(); }
  std::wstring error() const override { return report_.error(); }

 private:
  void writeBlock(const Event& event);
  void writeTable(const Event& event);
  void writeInline(const Event& event);
  void writeContents(const Event& event);
  void beginHeading(const Event& heading);
  void endHeading(int level);
  void beginItem(const Event& item);
  void writeMarker();
  void beginRow(const Event& row);
  void beginCell(const Event& cell);
  void endCell(const Event& cell);
  void beginLink(const Event& link);
  void endLink();
  void breakLine();
  void rule();
  void markupBlock(std::wstring_view markup);

  void separate();
  void beginBlock();
  void endBlock();
  void beginBold();
  void endBold();
  void beginItalic();
  void endItalic();
  void text(std::wstring_view text);
  void codeText(std::wstring_view text);
  void put(const std::wstring& text) { report_->Text(text.c_str(), PARAGRAPH_NONE, L"", 0); }

  SingleReport report_;
  VisibleContent content_;
  ListMarkers markers_;
  std::vector<bool> tight_{false};  // for the document and each open list
  std::wstring marker_;             // of the items whose first block comes next
  std::size_t markerDepth_ = 0;     // nesting depth of the outermost of these items
  std::wstring link_;               // the text of the current link
  std::wstring address_;
  std::size_t depth_ = 0;  // open lists and quotes
  int bold_ = 0;           // nesting depth of bold; only the outermost level is written
  int italic_ = 0;
  bool inBlock_ = false;
  bool inCell_ = false;
  bool inLink_ = false;
  bool inCode_ = false;
  bool isConforming_ = true;
  bool isBreakPending_ = false;  // a line of code has ended; its break is written when another line follows
  bool isSeparated_ = true;      // the next block needs no empty paragraph before it
};

void RtfWriter::write(const Event& event) {
  if (!content_.includes(event)) {
    return;
  }
  switch (groupOf(event.kind)) {
    case EventGroup::Block: return writeBlock(event);
    case EventGroup::Table: return writeTable(event);
    case EventGroup::Inline: return writeInline(event);
    case EventGroup::Contents: return writeContents(event);
  }
}

void RtfWriter::writeBlock(const Event& event) {
  switch (event.kind) {
    case EventKind::BeginHeading: return beginHeading(event);
    case EventKind::EndHeading: return endHeading(event.number);
    case EventKind::BeginParagraph: return beginBlock();
    case EventKind::EndParagraph: return endBlock();
    case EventKind::BeginQuote:
      endBlock();
      ++depth_;
      return;
    case EventKind::EndQuote:
      endBlock();
      --depth_;
      return;
    case EventKind::BeginList:
      endBlock();
      separate();
      markers_.enter(event);
      tight_.push_back(event.tight);
      ++depth_;
      return;
    case EventKind::EndList:
      markers_.leave();
      tight_.pop_back();
      --depth_;
      return;
    case EventKind::BeginItem: return beginItem(event);
    case EventKind::EndItem: return writeMarker();
    case EventKind::BeginCodeBlock:
      beginBlock();
      inCode_ = true;
      return;
    case EventKind::EndCodeBlock:
      inCode_ = false;
      isBreakPending_ = false;
      return endBlock();
    case EventKind::Rule: return rule();
    case EventKind::MarkupBlock: return markupBlock(event.text);
    default: return;
  }
}

void RtfWriter::writeTable(const Event& event) {
  switch (event.kind) {
    case EventKind::BeginTable: writeMarker(); return report_->BeginTable(L"table", L"");
    case EventKind::EndTable:
      report_->EndTable(L"table");
      isSeparated_ = false;
      return;
    case EventKind::BeginRow: return report_->BeginRow(L"row", L"", event.number);
    case EventKind::EndRow: return report_->EndRow(L"row");
    case EventKind::BeginCell: return beginCell(event);
    case EventKind::EndCell: return endCell(event);
    default: return;
  }
}

void RtfWriter::writeInline(const Event& event) {
  // The text of an item in a tight list has no paragraph of its own.
  if (!inBlock_ && !inCell_) {
    beginBlock();
  }
  switch (event.kind) {
    case EventKind::Text: return inCode_ ? codeText(event.text) : text(event.text);
    case EventKind::Image: return text(event.text);
    case EventKind::LineBreak: return breakLine();
    case EventKind::Markup: {
      std::wstring breaks;
      content_.appendMarkup(breaks, event.text);
      for (std::size_t i = 0; i < breaks.size(); ++i) {
        writeInline({.kind = EventKind::LineBreak});
      }
      return;
    }
    case EventKind::BeginEmphasis: return beginItalic();
    case EventKind::EndEmphasis: return endItalic();
    case EventKind::BeginStrong: return beginBold();
    case EventKind::EndStrong: return endBold();
    case EventKind::BeginDeleted:
    case EventKind::EndDeleted: return text(L"~~");
    case EventKind::BeginLink: return beginLink(event);
    case EventKind::EndLink: return endLink();
    default: return;
  }
}

void RtfWriter::writeContents(const Event& event) {
  switch (event.kind) {
    case EventKind::BeginContents:
      endBlock();
      separate();
      return report_->BeginToc();
    case EventKind::ContentsItem:
      for (int level = 1; level < event.number; ++level) {
        put(L"\t");
      }
      return report_->TocItem(event.address.data(), event.text.data(), event.number);
    case EventKind::EndContents:
      report_->EndToc();
      isSeparated_ = false;
      return;
    default: return;
  }
}

void RtfWriter::beginHeading(const Event& heading) {
  const auto level = static_cast<std::size_t>(std::clamp(heading.number, 1, 6));
  beginBlock();
  report_->Ancor(heading.address.data());
  beginBold();
  report_->BeginStyle(STYLE_FONT_SIZE, kHeadingSizes[level - 1]);
}

// The end of the paragraph also ends the font size.
void RtfWriter::endHeading(int level) {
  endBold();
  report_->EndParagraph(static_cast<PARAGRAPH_TYPE>(level));
  inBlock_ = false;
}

// If an item begins with a list, the markers of both share a line.
void RtfWriter::beginItem(const Event& item) {
  endBlock();
  if (marker_.empty()) {
    markerDepth_ = depth_ - 1;
  }
  marker_ += markers_.next(item.task, L"\u2022\t", L".\t");
}

// An item without text is still written.
void RtfWriter::writeMarker() {
  endBlock();
  if (!marker_.empty()) {
    beginBlock();
    endBlock();
  }
}

void RtfWriter::rule() {
  constexpr std::size_t kRuleLength = 40;
  beginBlock();
  put(std::wstring(kRuleLength, L'_'));
  endBlock();
}

void RtfWriter::markupBlock(std::wstring_view markup) {
  std::wstring shown;
  MarkupText().appendBlock(shown, markup);
  shown.erase(shown.find_last_not_of(L" \n") + 1);
  if (shown.empty()) {
    return;
  }
  beginBlock();
  codeText(shown);
  isBreakPending_ = false;
  endBlock();
}

void RtfWriter::beginCell(const Event& cell) {
  inCell_ = true;
  report_->BeginCell(nullptr, cell.header ? 1 : 0, cell.header ? kHeaderColors : nullptr);
  if (cell.header) {
    beginBold();
  }
}

void RtfWriter::endCell(const Event& cell) {
  if (cell.header) {
    endBold();
  }
  report_->EndCell(nullptr, cell.header ? 1 : 0);
  inCell_ = false;
}

void RtfWriter::beginLink(const Event& link) {
  inLink_ = true;
  link_.clear();
  address_ = link.address;
}

// A relative address of another document is spelled out as text, because a link to it could not be followed.
void RtfWriter::endLink() {
  inLink_ = false;
  const std::wstring& shown = link_.empty() ? address_ : link_;
  const bool canBeFollowed = address_.starts_with(L'#') || scrivalen::hasScheme(address_);
  if (canBeFollowed) {
    report_->Link(shown.c_str(), address_.c_str());
  } else {
    put(withAddress(link_, address_));
  }
}

// The classic form does not convert the line feeds of a text, and readers ignore them.
void RtfWriter::breakLine() {
  if (inLink_) {
    text(isConforming_ ? L"\n" : L" ");
  } else {
    report_->EndOfLine();
  }
}

void RtfWriter::separate() {
  if (!isSeparated_ && !tight_.back()) {
    report_->EndParagraph(PARAGRAPH_NORMAL);
    isSeparated_ = true;
  }
}

void RtfWriter::beginBlock() {
  endBlock();
  separate();
  put(std::wstring(marker_.empty() ? depth_ : markerDepth_, L'\t') + marker_);
  marker_.clear();
  inBlock_ = true;
  isSeparated_ = false;
}

void RtfWriter::endBlock() {
  if (inBlock_) {
    report_->EndParagraph(PARAGRAPH_NORMAL);
    inBlock_ = false;
  }
}

// Inside a link, style groups would not nest with the groups that the report writes for the link. Styles that began
// before the link continue inside it.
void RtfWriter::beginBold() {
  if (!inLink_ && bold_++ == 0) {
    report_->BeginStyle(STYLE_BOLD, 0);
  }
}

void RtfWriter::endBold() {
  if (!inLink_ && --bold_ == 0) {
    report_->EndStyle(STYLE_BOLD, 0);
  }
}

void RtfWriter::beginItalic() {
  if (!inLink_ && italic_++ == 0) {
    report_->BeginStyle(STYLE_ITALIC, 0);
  }
}

void RtfWriter::endItalic() {
  if (!inLink_ && --italic_ == 0) {
    report_->EndStyle(STYLE_ITALIC, 0);
  }
}

void RtfWriter::text(std::wstring_view text) {
  if (inLink_) {
    link_ += text;
  } else {
    report_->Text(text.data(), PARAGRAPH_NONE, L"", 0);
  }
}

// RTF line breaks are control words, not characters. The end of the last line is the end of the block.
void RtfWriter::codeText(std::wstring_view text) {
  while (!text.empty()) {
    if (isBreakPending_) {
      report_->EndOfLine();
      put(std::wstring(depth_, L'\t'));
    }
    const std::size_t end = text.find(L'\n');
    put(std::wstring(text.substr(0, end)));
    isBreakPending_ = end != std::wstring_view::npos;
    text.remove_prefix(isBreakPending_ ? end + 1 : text.size());
  }
}

}  // namespace

std::unique_ptr<DocumentWriter> createRtfWriter() { return std::make_unique<RtfWriter>(); }

}  // namespace scrivalen::command
