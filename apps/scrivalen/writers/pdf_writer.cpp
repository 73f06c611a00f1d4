#include "addresses.h"
#include "readers/markup_text.h"
#include "text/utf.h"
#include "writers/list_markers.h"
#include "writers/single_report.h"
#include "writers/visible_content.h"
#include "writers/writers.h"

#include <algorithm>
#include <numeric>

namespace scrivalen::command {
namespace {

// PDF 1.4, 3.2.3. The classic report writes the low byte of each UTF-16 unit of an outline title as it is.
bool endsString(char32_t unit) {
  const char32_t byte = unit & 0xFF;
  return byte == U'(' || byte == U')' || byte == U'\\';
}

// The backslash escapes the byte that is written for the character. A character of two units would need one between
// them.
std::wstring escapedTitle(std::wstring_view title) {
  std::wstring escaped;
  const wchar_t* at = title.data();
  const wchar_t* const end = at + title.size();
  while (at != end) {
    const char32_t c = scrivalen::nextCharacter(at, end);
    if (c > 0xFFFF && (endsString(scrivalen::highSurrogate(c)) || endsString(scrivalen::lowSurrogate(c)))) {
      scrivalen::appendCharacter(escaped, scrivalen::kReplacement);
      continue;
    }
    if (c <= 0xFFFF && endsString(c)) {
      escaped += L'\\';
    }
    scrivalen::appendCharacter(escaped, c);
  }
  return escaped;
}

/// Writes each block as a paragraph. The report draws a paragraph in one style, so each paragraph is collected first
/// and then drawn in the style of most of its text. Lists and quotes are indented by blanks.
class PdfWriter : public DocumentWriter {
 public:
  PdfWriter() : report_(FORMAT_PDF) {}

  bool open(const std::wstring& file, const DocumentSettings& settings) override {
    isClassic_ = !settings.conforming;
    return report_.open(file, settings);
  }
  void write(const Event& event) override;
  bool close() override { return report_.close(); }
  std::wstring error() const override { return report_.error(); }

 private:
  // A part of a block: plain or bold, and a link if it has a target.
  struct Part {
    std::wstring text;
    std::wstring target;
    bool bold;
  };

  void writeBlock(const Event& event);
  void writeTable(const Event& event);
  void writeInline(const Event& event);
  void writeContents(const Event& event);
  void beginHeading(const Event& heading);
  void endHeading(int level);
  void beginItem(Task task);
  void writeMarker();
  void rule();
  void markupBlock(std::wstring_view markup);
  void beginTable();
  void endCell(bool header);
  void endLink();

  int outlineLevel(int headingLevel);
  void add(std::wstring_view text);
  void addLines(std::wstring_view text);
  void endBlock();
  void writeParts(bool bold);
  bool isMostlyBold() const;
  std::wstring indentation(std::size_t depth) const { return std::wstring(kBlanksPerLevel * depth, L' '); }

  static constexpr std::size_t kBlanksPerLevel = 6;

  SingleReport report_;
  VisibleContent content_;
  ListMarkers markers_;
  std::vector<Part> parts_;         // of the current block or cell
  std::vector<int> headingLevels_;  // of the headings that the next one may be nested under
  std::wstring marker_;             // of the items whose first block comes next
  std::size_t markerDepth_ = 0;     // nesting depth of the outermost of these items
  std::wstring linkTarget_;
  std::size_t linkStart_ = 0;  // the first part of the link
  std::size_t depth_ = 0;      // open lists and quotes
  int bold_ = 0;
  bool inCell_ = false;
  bool isClassic_ = false;
};

void PdfWriter::write(const Event& event) {
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

void PdfWriter::writeBlock(const Event& event) {
  switch (event.kind) {
    case EventKind::EndHeading: return endHeading(event.number);
    case EventKind::EndItem: return writeMarker();
    default: break;
  }
  endBlock();
  switch (event.kind) {
    case EventKind::BeginHeading: return beginHeading(event);
    case EventKind::BeginQuote: ++depth_; return;
    case EventKind::EndQuote: --depth_; return;
    case EventKind::BeginList:
      markers_.enter(event);
      ++depth_;
      return;
    case EventKind::EndList:
      markers_.leave();
      --depth_;
      return;
    case EventKind::BeginItem: return beginItem(event.task);
    case EventKind::Rule: return rule();
    case EventKind::MarkupBlock: return markupBlock(event.text);
    default: return;
  }
}

void PdfWriter::writeTable(const Event& event) {
  switch (event.kind) {
    case EventKind::BeginTable: return beginTable();
    case EventKind::EndTable: return report_->EndTable(L"table");
    case EventKind::BeginRow: return report_->BeginRow(L"row", L"", event.number);
    case EventKind::EndRow: return report_->EndRow(L"row");
    case EventKind::BeginCell: inCell_ = true; return report_->BeginCell(nullptr, event.header ? 1 : 0, nullptr);
    case EventKind::EndCell: return endCell(event.header);
    default: return;
  }
}

void PdfWriter::writeInline(const Event& event) {
  switch (event.kind) {
    case EventKind::Text: return addLines(event.text);
    case EventKind::Image: return add(event.text);
    case EventKind::LineBreak: return addLines(L"\n");
    case EventKind::Markup: {
      std::wstring text;
      content_.appendMarkup(text, event.text);
      return addLines(text);
    }
    case EventKind::BeginStrong: ++bold_; return;
    case EventKind::EndStrong: --bold_; return;
    case EventKind::BeginDeleted:
    case EventKind::EndDeleted: return add(L"~~");
    case EventKind::BeginLink:
      add(L"");
      linkTarget_ = event.address;
      linkStart_ = parts_.size();
      return parts_.push_back({L"", L"", bold_ > 0});
    case EventKind::EndLink: return endLink();
    default: return;
  }
}

// The headings make the outline; this table of contents is printed on the page.
void PdfWriter::writeContents(const Event& event) {
  endBlock();
  if (event.kind == EventKind::ContentsItem) {
    parts_.push_back({indentation(static_cast<std::size_t>(std::max(event.number, 1) - 1)), L"", false});
    parts_.push_back({std::wstring(event.text), L'#' + std::wstring(event.address), false});
    endBlock();
  }
}

void PdfWriter::beginHeading(const Event& heading) {
  const std::wstring title = isClassic_ ? escapedTitle(heading.text) : std::wstring(heading.text);
  report_->TocItem(heading.address.data(), title.c_str(), outlineLevel(heading.number));
  report_->BeginParagraph(static_cast<PARAGRAPH_TYPE>(std::clamp(heading.number, 1, 6)), L"");
  report_->BeginAncor(heading.address.data());
}

// If the document skips a level, entries would have no parent. Levels are therefore renumbered without gaps.
int PdfWriter::outlineLevel(int headingLevel) {
  while (!headingLevels_.empty() && headingLevels_.back() >= headingLevel) {
    headingLevels_.pop_back();
  }
  headingLevels_.push_back(headingLevel);
  return static_cast<int>(headingLevels_.size()) - 1;
}

void PdfWriter::endHeading(int level) {
  writeParts(true);
  report_->EndParagraph(static_cast<PARAGRAPH_TYPE>(level));
}

// If an item begins with a list, the markers of both share a line.
void PdfWriter::beginItem(Task task) {
  if (marker_.empty()) {
    markerDepth_ = depth_ - 1;
  }
  marker_ += markers_.next(task, L"\u2022 ", L". ");
}

// An item without text is still written.
void PdfWriter::writeMarker() {
  if (!marker_.empty()) {
    add(L"");
  }
  endBlock();
}

void PdfWriter::rule() {
  constexpr std::size_t kRuleLength = 40;
  add(std::wstring(kRuleLength, L'_'));
  endBlock();
}

void PdfWriter::markupBlock(std::wstring_view markup) {
  std::wstring shown;
  MarkupText().appendBlock(shown, markup);
  addLines(shown);
  endBlock();
}

// The report takes a table's font and size from the last paragraph, and there may be none yet.
void PdfWriter::beginTable() {
  writeMarker();
  report_->BeginParagraph(PARAGRAPH_NORMAL, L"");
  report_->EndParagraph(PARAGRAPH_NORMAL);
  report_->BeginTable(L"table", L"");
}

void PdfWriter::endCell(bool header) {
  if (parts_.empty()) {
    add(L"");
  }
  writeParts(!header && isMostlyBold());
  report_->EndCell(nullptr, header ? 1 : 0);
  inCell_ = false;
}

// A link out of the document is spelled out as text: paper cannot be clicked, and in the report a link covers the whole
// paragraph.
void PdfWriter::endLink() {
  const auto begin = parts_.begin() + static_cast<std::ptrdiff_t>(linkStart_);
  const std::wstring shown = std::accumulate(begin, parts_.end(), std::wstring(),
                                             [](std::wstring text, const Part& part) { return text += part.text; });
  const bool bold = begin->bold;
  parts_.erase(begin, parts_.end());
  if (linkTarget_.starts_with(L'#')) {
    parts_.push_back({shown, linkTarget_, bold});
  } else {
    parts_.push_back({withAddress(shown, linkTarget_), L"", bold});
  }
}

void PdfWriter::add(std::wstring_view text) {
  if (parts_.empty() && !inCell_) {
    parts_.push_back({indentation(marker_.empty() ? depth_ : markerDepth_) + marker_, L"", false});
    marker_.clear();
  }
  const bool bold = bold_ > 0;
  if (parts_.empty() || parts_.back().bold != bold || !parts_.back().target.empty()) {
    parts_.push_back({L"", L"", bold});
  }
  parts_.back().text += text;
}

// Indents each line of an indented block.
void PdfWriter::addLines(std::wstring_view text) {
  while (!text.empty()) {
    const std::size_t end = std::min(text.find(L'\n'), text.size());
    add(text.substr(0, end));
    if (end < text.size()) {
      add(L"\n" + (inCell_ ? std::wstring() : indentation(depth_)));
    }
    text.remove_prefix(std::min(end + 1, text.size()));
  }
}

void PdfWriter::endBlock() {
  if (parts_.empty()) {
    return;
  }
  // The end of the last line is the end of the block.
  std::wstring& last = parts_.back().text;
  last.erase(last.find_last_not_of(L" \n") + 1);
  report_->BeginParagraph(PARAGRAPH_NORMAL, L"");
  writeParts(isMostlyBold());
  report_->EndParagraph(PARAGRAPH_NORMAL);
}

bool PdfWriter::isMostlyBold() const {
  std::ptrdiff_t excess = 0;
  for (const Part& part : parts_) {
    const auto size = static_cast<std::ptrdiff_t>(part.text.size());
    excess += part.bold ? size : -size;
  }
  return excess > 0;
}

void PdfWriter::writeParts(bool bold) {
  if (bold) {
    report_->BeginStyle(STYLE_BOLD, 0);
  }
  for (const Part& part : parts_) {
    if (part.target.empty()) {
      report_->Text(part.text.c_str(), PARAGRAPH_NONE, L"", 0);
    } else {
      report_->Link(part.text.c_str(), part.target.c_str());
    }
  }
  if (bold) {
    report_->EndStyle(STYLE_BOLD, 0);
  }
  parts_.clear();
}

}  // namespace

std::unique_ptr<DocumentWriter> createPdfWriter() { return std::make_unique<PdfWriter>(); }

}  // namespace scrivalen::command
