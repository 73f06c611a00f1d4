#include "formats/pdf/document/pdf_writer.h"

#include "document/plain/link_text.h"
#include "document/plain/list_markers.h"
#include "document/plain/private_file.h"
#include "formats/pdf/layout/pdf_report.h"
#include "text/replaced_all.h"
#include "text/utf.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace scrivalen::pdf {
namespace {

using document::Cell;
using document::Event;
using document::EventKind;
using document::Span;
using document::WarningCode;

constexpr std::string_view kTabAsBlanks = "    ";
constexpr _RGB_COLOR kBlackText{0, 0, 0};
constexpr _RGB_COLOR kPlainCell{1, 1, 1};
constexpr _RGB_COLOR kHeaderCell{0.75, 0.75, 0.75};

_RGB_COLOR colorOf(std::optional<Rgb> color, const _RGB_COLOR& usual) {
  if (!color) {
    return usual;
  }
  constexpr double kFull = 255;
  return {(*color >> 16 & 0xFF) / kFull, (*color >> 8 & 0xFF) / kFull, (*color & 0xFF) / kFull};
}

/// Writes each block as a paragraph. The report draws a paragraph in one style, so each paragraph is collected first
/// and then drawn in the style of most of its text. Lists and quotes are indented by blanks.
class PdfWriter final : public document::DocumentWriter {
 public:
  explicit PdfWriter(const document::WriterContext& context)
      : settings_(context.settings), warnings_(context.warnings), file_(context) {}
  PdfWriter(const PdfWriter&) = delete;
  PdfWriter& operator=(const PdfWriter&) = delete;
  ~PdfWriter() override {
    file_.with([this] { report_.reset(); });
  }

  void begin() override;
  void write(const Event& event) override {
    file_.with([&] { isInline(event.kind) ? writeInline(event) : writeBlock(event); });
  }
  void beginTable(const document::Table& table) override;
  void row(const document::Row& row) override;
  void endTable() override { report_->EndTable(nullptr); }
  void finish() override;

 private:
  // A part of a block: plain or bold, and a link if it has a target.
  struct Part {
    std::string text;
    std::string target;
    bool bold;
  };

  void open();
  void writeBlock(const Event& event);
  void writeInline(const Event& event);
  void writeTitle(std::string_view text);
  void beginHeading(const Event& heading);
  void endHeading();
  void beginList(const Event& list);
  void leave();
  void beginItem(document::Task task);
  void writeMarker();
  void writeRule();
  void writeContentsItem(const Event& item);
  void beginPage();
  void cell(const Cell& cell, bool header);
  void endLink();
  void addImage(const Event& image);

  int outlineLevel(int headingLevel);
  void add(std::string_view text);
  void addLines(std::string_view text);
  void addAnchor(std::string_view id);
  void placeAnchors();
  void endBlock();
  void writeParagraph(PARAGRAPH_TYPE type, bool bold);
  void writeParts(bool bold);
  bool isMostlyBold() const;
  const wchar_t* wide(std::string_view text);
  static std::string indentation(std::size_t depth) {
    return std::string(kBlanksPerLevel * std::min(depth, kDeepestIndented), ' ');
  }

  static constexpr std::size_t kBlanksPerLevel = 6;
  static constexpr std::size_t kDeepestIndented = 10;  // about a third of a line

  const document::FormatSettings& settings_;
  document::OutputWarnings& warnings_;
  document::PrivateFile file_;
  std::optional<PDFReport> report_;

  document::ListMarkers markers_;
  std::vector<Part> parts_;           // of the current block or cell
  std::vector<int> headingLevels_;    // of the headings that the next one may be nested under
  std::vector<std::string> anchors_;  // of the paragraph that comes next
  std::string marker_;                // of the items whose first block comes next
  std::size_t markerDepth_ = 0;       // nesting depth of the outermost of these items
  std::string linkTarget_;
  std::size_t linkStart_ = 0;  // the first part of the link
  std::size_t depth_ = 0;      // open lists and quotes
  int headingLevel_ = 0;       // of the heading that is open
  int bold_ = 0;
  bool inCell_ = false;
  std::wstring wide_;
};

void PdfWriter::begin() {
  file_.create(L"document.pdf");
  file_.with([this] { open(); });
}

void PdfWriter::open() {
  report_.emplace();
  report_->SetReportOption(OPTION_CONFORMING, 1);
  report_->SetReportOption(OPTION_LANDSCAPE, settings_.flag("landscape") ? 1 : 0);
  report_->AddProperty(L"%TITLE%", wide(settings_.text("title")));
  if (report_->Open(file_.path().c_str()) != REPORT_OK) {
    file_.fail(report_->GetError());
  }
}

void PdfWriter::finish() {
  file_.with([this] {
    endBlock();
    if (!anchors_.empty()) {
      writeParagraph(PARAGRAPH_NORMAL, false);
    }
    if (report_->Close() != REPORT_OK) {
      file_.fail(report_->GetError());
    }
  });
  file_.deliver();
}

void PdfWriter::writeBlock(const Event& event) {
  switch (event.kind) {
    case EventKind::EndHeading: return endHeading();
    case EventKind::EndItem: return writeMarker();
    default: break;
  }
  endBlock();
  switch (event.kind) {
    case EventKind::Title: return writeTitle(event.text);
    case EventKind::BeginSection: beginPage(); return addAnchor(event.id);
    case EventKind::PageBreak: return beginPage();
    case EventKind::BeginHeading: return beginHeading(event);
    case EventKind::BeginQuote: ++depth_; return;
    case EventKind::EndQuote: --depth_; return;
    case EventKind::BeginList: return beginList(event);
    case EventKind::EndList: return leave();
    case EventKind::BeginItem: return beginItem(event.task);
    case EventKind::Rule: return writeRule();
    case EventKind::ContentsItem: return writeContentsItem(event);
    default: return;
  }
}

void PdfWriter::writeInline(const Event& event) {
  switch (event.kind) {
    case EventKind::Text: return addLines(replacedAll<char>(event.text, "\t", kTabAsBlanks));
    case EventKind::Image: return addImage(event);
    case EventKind::Anchor: return addAnchor(event.id);
    case EventKind::BeginSpan:
    case EventKind::EndSpan:
      if (event.span == Span::Strong) {
        bold_ += event.kind == EventKind::BeginSpan ? 1 : -1;
      } else if (event.span == Span::Deleted) {
        add("~~");
      }
      return;
    case EventKind::BeginLink:
      add("");
      linkTarget_ = event.address;
      linkStart_ = parts_.size();
      parts_.push_back({"", "", bold_ > 0});
      return;
    case EventKind::EndLink: return endLink();
    default: return;
  }
}

void PdfWriter::writeTitle(std::string_view text) {
  parts_.push_back({std::string(text), "", true});
  writeParagraph(PARAGRAPH_HEADING1, true);
}

void PdfWriter::beginHeading(const Event& heading) {
  headingLevel_ = heading.number;
  const std::wstring id = toWide(heading.id);
  report_->TocItem(id.c_str(), wide(heading.text), outlineLevel(heading.number));
  addAnchor(heading.id);
}

// If the document skips a level, entries would have no parent. Levels are therefore renumbered without gaps.
int PdfWriter::outlineLevel(int headingLevel) {
  while (!headingLevels_.empty() && headingLevels_.back() >= headingLevel) {
    headingLevels_.pop_back();
  }
  headingLevels_.push_back(headingLevel);
  return static_cast<int>(headingLevels_.size()) - 1;
}

void PdfWriter::endHeading() { writeParagraph(static_cast<PARAGRAPH_TYPE>(headingLevel_), true); }

void PdfWriter::beginList(const Event& list) {
  markers_.enter(list);
  ++depth_;
}

void PdfWriter::leave() {
  markers_.leave();
  --depth_;
}

// If an item begins with a list, the markers of both share a line.
void PdfWriter::beginItem(document::Task task) {
  if (marker_.empty()) {
    markerDepth_ = depth_ - 1;
  }
  marker_ += markers_.next(task, "\xE2\x80\xA2 ");
}

// An item without text is still written.
void PdfWriter::writeMarker() {
  if (!marker_.empty()) {
    add("");
  }
  endBlock();
}

void PdfWriter::writeRule() {
  constexpr std::size_t kRuleLength = 40;
  add(std::string(kRuleLength, '_'));
  endBlock();
}

// The headings make the outline; this table of contents is printed on the page.
void PdfWriter::writeContentsItem(const Event& item) {
  parts_.push_back({indentation(static_cast<std::size_t>(item.number - 1)), "", false});
  parts_.push_back({std::string(item.text), '#' + std::string(item.id), false});
  endBlock();
}

void PdfWriter::beginPage() { report_->breakPage(); }

// The report takes a table's font and size from the last paragraph, and there may be none yet.
void PdfWriter::beginTable(const document::Table&) {
  file_.with([this] {
    writeMarker();
    writeParagraph(PARAGRAPH_NORMAL, false);
    report_->BeginTable(nullptr, nullptr);
  });
}

void PdfWriter::row(const document::Row& row) {
  file_.with([&] {
    int columns = 0;
    for (const Cell& each : row.cells) {
      columns += each.span;
    }
    report_->BeginRow(nullptr, nullptr, columns);
    for (const Cell& each : row.cells) {
      cell(each, row.header || each.header);
    }
    report_->EndRow(nullptr);
  });
}

// The columns that a cell spans beside its own are cells without text.
void PdfWriter::cell(const Cell& cell, bool header) {
  const _RGB_COLOR background = colorOf(cell.background, header ? kHeaderCell : kPlainCell);
  inCell_ = true;
  report_->beginCell(header, background);
  cell.replay(*this);
  if (parts_.empty()) {
    add("");
  }
  report_->setTextColor(colorOf(cell.color, kBlackText));
  writeParts(!header && isMostlyBold());
  report_->setTextColor(kBlackText);
  report_->EndCell(nullptr, header ? 1 : 0);
  inCell_ = false;
  for (int i = 1; i < cell.span; ++i) {
    report_->beginCell(false, background);
    report_->EndCell(nullptr, 0);
  }
  if (cell.span > 1) {
    warnings_.add(WarningCode::SomethingLeftOut, "cells that span columns, which became one cell and empty ones");
  }
}

// A link out of the document is spelled out as text: paper cannot be clicked, and in the report a link covers the whole
// paragraph.
void PdfWriter::endLink() {
  const auto begin = parts_.begin() + static_cast<std::ptrdiff_t>(linkStart_);
  std::string shown;
  for (auto part = begin; part != parts_.end(); ++part) {
    shown += part->text;
  }
  const bool bold = begin->bold;
  parts_.erase(begin, parts_.end());
  const bool isInner = linkTarget_.starts_with('#');
  parts_.push_back({isInner ? shown : document::withAddress(shown, linkTarget_), isInner ? linkTarget_ : "", bold});
}

void PdfWriter::addImage(const Event& image) {
  add(image.text);
  if (image.picture) {
    warnings_.add(WarningCode::SomethingLeftOut, "pictures, which became their alternative texts");
  }
}

void PdfWriter::addAnchor(std::string_view id) {
  if (inCell_) {
    report_->BeginAncor(wide(id));
  } else if (!id.empty()) {
    anchors_.emplace_back(id);
  }
}

void PdfWriter::placeAnchors() {
  for (const std::string& anchor : anchors_) {
    report_->BeginAncor(wide(anchor));
  }
  anchors_.clear();
}

void PdfWriter::add(std::string_view text) {
  if (parts_.empty() && !inCell_) {
    parts_.push_back({indentation(marker_.empty() ? depth_ : markerDepth_) + marker_, "", false});
    marker_.clear();
  }
  const bool bold = bold_ > 0;
  if (parts_.empty() || parts_.back().bold != bold || !parts_.back().target.empty()) {
    parts_.push_back({"", "", bold});
  }
  parts_.back().text += text;
}

// Indents each line of an indented block.
void PdfWriter::addLines(std::string_view text) {
  while (!text.empty()) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    add(text.substr(0, end));
    if (end < text.size()) {
      add("\n");
      add(inCell_ ? std::string() : indentation(depth_));
    }
    text.remove_prefix(std::min(end + 1, text.size()));
  }
}

void PdfWriter::endBlock() {
  if (parts_.empty()) {
    return;
  }
  // The end of the last line is the end of the block.
  std::string& last = parts_.back().text;
  last.erase(last.find_last_not_of(" \n") + 1);
  writeParagraph(PARAGRAPH_NORMAL, isMostlyBold());
}

void PdfWriter::writeParagraph(PARAGRAPH_TYPE type, bool bold) {
  report_->BeginParagraph(type, nullptr);
  placeAnchors();
  writeParts(bold);
  report_->EndParagraph(type);
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
      report_->Text(wide(part.text), PARAGRAPH_NONE, nullptr, 0);
    } else {
      const std::wstring target = toWide(part.target);
      report_->Link(wide(part.text), target.c_str());
    }
  }
  if (bold) {
    report_->EndStyle(STYLE_BOLD, 0);
  }
  parts_.clear();
}

// Valid until the next call.
const wchar_t* PdfWriter::wide(std::string_view text) {
  wide_.clear();
  appendWide(wide_, text);
  return wide_.c_str();
}

}  // namespace

std::unique_ptr<document::DocumentWriter> createPdfDocumentWriter(const document::WriterContext& context) {
  return std::make_unique<PdfWriter>(context);
}

}  // namespace scrivalen::pdf
