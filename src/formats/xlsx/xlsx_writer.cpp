#include "formats/xlsx/xlsx_writer.h"

#include "document/plain/link_text.h"
#include "document/plain/list_markers.h"
#include "document/plain/private_file.h"
#include "formats/xlsx/excel_writer.h"
#include "system/files/files.h"
#include "system/messages.h"
#include "text/utf.h"

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <optional>
#include <string>
#include <string_view>

namespace scrivalen::xlsx {
namespace {

using document::Cell;
using document::Event;
using document::EventKind;
using document::Span;
using document::WarningCode;

constexpr const wchar_t* kType = L"String";

// The style sheet, whose bytes are UTF-8. Its byte-order mark stays, because it is reported as no part of a style
// sheet.
std::wstring readStyles(std::string_view setting) {
  const std::wstring path = widePath(setting);
  std::string bytes;
  const File file = openForReading(path);
  const bool isRead = file && readRest(file, [&bytes](std::string_view part) {
                        bytes.append(part);
                        return true;
                      });
  if (!isRead) {
    const std::string reason = toUtf8(systemErrorText(lastSystemError()));
    throw document::OutputFailure(document::Status::FileError,
                                  "cannot read the style sheet '" + toUtf8(path) + "': " + reason);
  }
  return toWide(bytes);
}

std::string colorText(std::optional<Rgb> color) {
  if (!color) {
    return {};
  }
  char text[16];
  std::snprintf(text, sizeof text, "#%06X", static_cast<unsigned>(*color));
  return text;
}

/// Writes each block into the first cell of a row, and each row of a table as a row. Quotes and lists are indented by
/// blanks.
class XlsxWriter final : public document::DocumentWriter {
 public:
  explicit XlsxWriter(const document::WriterContext& context)
      : settings_(context.settings), warnings_(context.warnings), file_(context) {}
  XlsxWriter(const XlsxWriter&) = delete;
  XlsxWriter& operator=(const XlsxWriter&) = delete;
  ~XlsxWriter() override {
    file_.with([this] { book_.reset(); });
  }

  void begin() override;
  void write(const Event& event) override {
    file_.with([&] { isInline(event.kind) ? writeInline(event) : writeBlock(event); });
  }
  void beginTable(const document::Table& table) override;
  void row(const document::Row& row) override;
  void endTable() override {}
  void finish() override;

 private:
  ExcelWriter& book();
  void openBook(bool isHeaderFrozen);
  void writeBlock(const Event& event);
  void writeInline(const Event& event);
  void beginList(const Event& list);
  void endList();
  void beginItem(document::Task task);
  void endItem();
  void endHeading();
  void endParagraph();
  void endCode();
  void cell(const Cell& cell, bool header);
  void endLink();
  void addImage(const Event& image);
  void put(std::string_view text);
  void putRow(std::string_view text, bool bold);
  void leaveOut(std::string_view what) { warnings_.add(WarningCode::SomethingLeftOut, what); }
  const wchar_t* wide(std::string_view text);

  const document::FormatSettings& settings_;
  document::OutputWarnings& warnings_;
  document::PrivateFile file_;
  std::optional<ExcelWriter> book_;
  std::wstring styles_;

  document::ListMarkers markers_;
  std::string text_;    // of the current block or cell
  std::string marker_;  // of the item whose first block comes next
  std::string linkAddress_;
  std::size_t linkStart_ = 0;
  std::size_t depth_ = 0;  // open lists and quotes
  std::wstring wide_;
};

void XlsxWriter::begin() {
  if (const std::string_view styles = settings_.text("styles"); !styles.empty()) {
    styles_ = readStyles(styles);
  }
  file_.create(L"document.xlsx");
}

ExcelWriter& XlsxWriter::book() {
  if (!book_) {
    openBook(false);
  }
  return *book_;
}

// The frozen row gives way to that of the style sheet.
void XlsxWriter::openBook(bool isHeaderFrozen) {
  if (isHeaderFrozen) {
    styles_.insert(0, L"sheet { freeze-rows: 1 }\n");
  }
  book_.emplace();
  if (!book_->Begin(file_.path().c_str(), styles_.c_str())) {
    file_.fail(book_->Error());
  }
}

void XlsxWriter::finish() {
  file_.with([this] {
    endParagraph();
    if (!book().End()) {
      file_.fail(book_->Error());
    }
  });
  file_.deliver();
}

void XlsxWriter::writeBlock(const Event& event) {
  switch (event.kind) {
    case EventKind::EndHeading: return endHeading();
    case EventKind::EndCode: return endCode();
    default: endParagraph();
  }
  switch (event.kind) {
    case EventKind::BeginSection: return leaveOut("sections, which begin no sheet");
    case EventKind::ContentsItem: return leaveOut("lines of a table of contents, which are left out");
    case EventKind::BeginQuote: ++depth_; return;
    case EventKind::EndQuote: --depth_; return;
    case EventKind::BeginList: return beginList(event);
    case EventKind::EndList: return endList();
    case EventKind::BeginItem: return beginItem(event.task);
    case EventKind::EndItem: return endItem();
    default: return;
  }
}

void XlsxWriter::writeInline(const Event& event) {
  switch (event.kind) {
    case EventKind::Text: text_ += event.text; return;
    case EventKind::Image: return addImage(event);
    case EventKind::BeginSpan:
    case EventKind::EndSpan: text_ += event.span == Span::Deleted ? "~~" : ""; return;
    case EventKind::BeginLink:
      linkStart_ = text_.size();
      linkAddress_ = event.address;
      return;
    case EventKind::EndLink: return endLink();
    default: return;
  }
}

void XlsxWriter::beginList(const Event& list) {
  markers_.enter(list);
  ++depth_;
}

void XlsxWriter::endList() {
  markers_.leave();
  --depth_;
}

void XlsxWriter::beginItem(document::Task task) { marker_ += markers_.next(task, "- "); }

// An item without text is still written.
void XlsxWriter::endItem() {
  if (!marker_.empty()) {
    put("");
  }
}

void XlsxWriter::endHeading() {
  text_.erase(text_.find_last_not_of(" \n") + 1);
  if (!text_.empty()) {
    putRow(marker_ + text_, true);
    marker_.clear();
    text_.clear();
  }
}

// Also ends the text of an item, which has no paragraph of its own.
void XlsxWriter::endParagraph() {
  text_.erase(text_.find_last_not_of(" \n") + 1);
  if (!text_.empty()) {
    put(text_);
    text_.clear();
  }
}

void XlsxWriter::endCode() {
  if (text_.ends_with('\n')) {
    text_.pop_back();
  }
  for (std::size_t start = 0; start <= text_.size();) {
    const std::size_t end = std::min(text_.find('\n', start), text_.size());
    put(std::string_view(text_).substr(start, end - start));
    start = end + 1;
  }
  text_.clear();
}

void XlsxWriter::beginTable(const document::Table&) {
  file_.with([this] {
    endParagraph();
    endItem();
  });
}

// The header row of a table with which the document begins is frozen.
void XlsxWriter::row(const document::Row& row) {
  file_.with([&] {
    if (!book_) {
      openBook(row.header);
    }
    book_->Row(true);
    for (const Cell& each : row.cells) {
      cell(each, row.header || each.header);
    }
    book_->Row(false);
  });
}

// The columns that a cell spans beside its own are empty cells.
void XlsxWriter::cell(const Cell& cell, bool header) {
  text_.clear();
  cell.replay(*this);
  if (cell.color || cell.background) {
    const std::wstring colors = toWide(colorText(cell.color) + ';' + colorText(cell.background));
    book_->SetCellValue(kType, wide(text_), colors.c_str());
  } else {
    book_->SetCellValue(kType, wide(text_), header);
  }
  text_.clear();
  for (int i = 1; i < cell.span; ++i) {
    book_->SetCellValue(kType, L"", false);
  }
  if (cell.span > 1) {
    leaveOut("cells that span columns, which became one cell and empty ones");
  }
}

void XlsxWriter::endLink() {
  const std::string shown = text_.substr(linkStart_);
  text_.resize(linkStart_);
  text_ += document::withAddress(shown, linkAddress_);
}

void XlsxWriter::addImage(const Event& image) {
  text_ += image.text;
  if (image.picture) {
    leaveOut("pictures, which became their alternative texts");
  }
}

// The outermost list is not indented, because its markers already set it off; the deepest leave half of the column.
void XlsxWriter::put(std::string_view text) {
  constexpr std::size_t kBlanksADepth = 4;
  constexpr std::size_t kDeepestIndented = 8;
  const std::size_t blanks = depth_ > 1 ? std::min(depth_ - 1, kDeepestIndented) * kBlanksADepth : 0;
  std::string line(blanks, ' ');
  putRow(line.append(marker_).append(text), false);
  marker_.clear();
}

void XlsxWriter::putRow(std::string_view text, bool bold) {
  book().Row(true);
  book().SetCellValue(kType, wide(text), bold);
  book().Row(false);
}

// Valid until the next call.
const wchar_t* XlsxWriter::wide(std::string_view text) {
  wide_.clear();
  appendWide(wide_, text);
  return wide_.c_str();
}

}  // namespace

std::unique_ptr<document::DocumentWriter> createXlsxDocumentWriter(const document::WriterContext& context) {
  return std::make_unique<XlsxWriter>(context);
}

}  // namespace scrivalen::xlsx
