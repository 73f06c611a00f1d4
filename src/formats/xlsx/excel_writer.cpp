#include "formats/xlsx/excel_writer.h"

#include "formats/xlsx/excel_formats.h"
#include "formats/xlsx/excel_sheet.h"
#include "formats/xlsx/excel_style.h"
#include "formats/xlsx/excel_text.h"
#include "formats/xlsx/workbook/cell_name.h"
#include "formats/xlsx/workbook/package.h"
#include "output/archive/zip_writer.h"
#include "output/clog.h"
#include "output/exception_barrier.h"
#include "output/failure_reason.h"
#include "output/host_handlers.h"
#include "output/log_loss.h"
#include "output/output_buffer.h"
#include "output/target_file.h"
#include "system/files/files.h"
#include "system/messages.h"
#include "text/fmt.h"
#include "text/null_text.h"
#include "text/utf.h"

#include <cstdint>
#include <exception>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

using namespace scrivalen;

namespace {

std::wstring cells(std::uint64_t count) { return FMT::Format(count == 1 ? L"%d cell" : L"%d cells", count); }

// Counts cells that were changed or dropped, and keeps the position of the first.
class CellCounter {
 public:
  void note(std::size_t sheet, std::uint32_t row, std::uint32_t column) {
    if (count_++ == 0) {
      first_ = FMT::Format(L"Sheet%d!%s", sheet, toWide(xlsx::cellName(row, column)));
    }
  }

  void log(const std::wstring& file, std::wstring_view what) const {
    if (count_ > 0) {
      CLog::Bug2(FMT::Format(L"'%s': %s %s, the first at %s.", file, cells(count_), what, first_));
    }
  }

 private:
  std::uint64_t count_ = 0;
  std::wstring first_;
};

}  // namespace

class ExcelWriter::Document : private ByteSink {
 public:
  Document(const wchar_t* file, const xlsx::SheetLimits& limits) : name_(file), limits_(limits) {}

  /// @return false, with the reason in lastSystemError
  bool open(const wchar_t* styles);
  void row(bool begin) noexcept;
  void cell(const wchar_t* value, bool bold) noexcept;
  void cell(const wchar_t* value, const wchar_t* color) noexcept;
  void fail(std::wstring_view reason) noexcept;
  /// @return why there is no workbook; empty on success
  const Reason& finish() noexcept;
  const std::wstring& name() const { return name_; }

 private:
  /// Runs a step, unless an earlier one has failed; a failure is logged at once, so that the log shows when it
  /// happened.
  template <typename Step>
  void takeStep(Step step) noexcept {
    if (failure_.empty()) {
      containedIn(failure_, step);
      logFailure();
    }
  }

  bool take(const char* data, std::size_t size) override;
  SheetStyle styleOf(const wchar_t* styles) const;
  void beginSheet();
  void endRow();
  bool takesCell();
  void put(const wchar_t* value, std::uint32_t format);
  void fail() { failure_.keep(systemErrorText(lastSystemError())); }
  void complete();
  void deliver();
  void logFailure() const noexcept;
  void logLosses() const noexcept;
  void logLostCells() const;

  const std::wstring name_;
  const xlsx::SheetLimits limits_;
  const std::int64_t time_ = currentTime();
  TargetFile target_;
  std::wstring newFile_;
  File file_;
  OutputBuffer buffer_{*this};
  std::optional<ZipWriter> zip_;
  SheetStyle style_;
  std::optional<ExcelFormats> formats_;
  ExcelText text_;

  std::vector<xlsx::SheetFacts> sheets_;  // so far
  std::optional<ExcelSheet> sheet_;       // the last of them
  bool hasLargeSheet_ = false;            // one that was full before its last row
  std::uint32_t nextRow_ = 0;
  std::uint32_t nextColumn_ = 0;
  bool inRow_ = false;

  CellCounter cut_;
  CellCounter dropped_;
  CellCounter tooLarge_;
  std::uint64_t strayed_ = 0;
  Reason failure_;  // the first one; nothing is written after it
};

bool ExcelWriter::Document::open(const wchar_t* styles) {
  if (!target_.hold(name_)) {
    return false;
  }
  newFile_ = target_.newFile();
  file_ = createNew(newFile_);
  if (!file_) {
    return false;
  }
  zip_.emplace(buffer_, time_);
  style_ = styleOf(styles);
  formats_.emplace(style_);
  beginSheet();
  return true;
}

bool ExcelWriter::Document::take(const char* data, std::size_t size) {
  if (!writeAll(file_, data, size)) {
    fail();
  }
  return failure_.empty();
}

SheetStyle ExcelWriter::Document::styleOf(const wchar_t* styles) const {
  return readStyle(orEmpty(styles), [this](const std::wstring& problem) {
    CLog::Bug2(FMT::Format(L"'%s': the style sheet is not understood: %s.", name_, problem));
  });
}

// Later sheets begin with rows of data: the header is on the first.
void ExcelWriter::Document::beginSheet() {
  xlsx::SheetFrame frame;
  if (style_.columnWidth) {
    frame.widths.assign(xlsx::kMostColumns, *style_.columnWidth);
  }
  if (sheets_.empty()) {
    frame.frozenRows = style_.frozenRows;
  }
  sheets_.push_back({.name = "Sheet" + std::to_string(sheets_.size() + 1)});
  sheet_.emplace(*zip_, sheets_.size(), std::move(frame), limits_);
  nextRow_ = 0;
}

void ExcelWriter::Document::endRow() {
  if (inRow_) {
    sheet_->endRow(nextColumn_);
    ++nextRow_;
  }
  inRow_ = false;
}

void ExcelWriter::Document::row(bool begin) noexcept {
  takeStep([&] {
    endRow();
    inRow_ = begin;
    nextColumn_ = 0;
    if (begin && (nextRow_ == xlsx::kMostRows || sheet_->isFull())) {
      hasLargeSheet_ = hasLargeSheet_ || nextRow_ < xlsx::kMostRows;
      sheet_->end();
      beginSheet();
    }
  });
}

bool ExcelWriter::Document::takesCell() {
  if (!inRow_) {
    ++strayed_;
    return false;
  }
  if (nextColumn_ == xlsx::kMostColumns) {
    dropped_.note(sheets_.size(), nextRow_, nextColumn_);
    return false;
  }
  return true;
}

void ExcelWriter::Document::cell(const wchar_t* value, bool bold) noexcept {
  takeStep([&] {
    if (takesCell()) {
      put(value, bold ? formats_->bold() : formats_->plain());
    }
  });
}

void ExcelWriter::Document::cell(const wchar_t* value, const wchar_t* color) noexcept {
  takeStep([&] {
    if (takesCell()) {
      put(value, formats_->colored(color));
    }
  });
}

void ExcelWriter::Document::fail(std::wstring_view reason) noexcept {
  takeStep([&] { failure_.keep(reason); });
}

void ExcelWriter::Document::put(const wchar_t* value, std::uint32_t format) {
  const std::uint32_t column = nextColumn_++;
  text_.assign(value);
  if (text_.isCut()) {
    cut_.note(sheets_.size(), nextRow_, column);
  }
  if (text_.isEmpty() && format == ExcelFormats::kNone) {
    return;
  }
  if (!sheet_->put(nextRow_, column, format, text_)) {
    tooLarge_.note(sheets_.size(), nextRow_, column);
  }
}

void ExcelWriter::Document::logFailure() const noexcept {
  if (!failure_.empty()) {
    logFileError(FileError::Write, name_, failure_.c_str());
  }
}

const Reason& ExcelWriter::Document::finish() noexcept {
  takeStep([&] {
    complete();
    deliver();
  });
  file_.close();
  target_.release();
  logLosses();
  return failure_;
}

void ExcelWriter::Document::complete() {
  endRow();
  sheet_->end();
  xlsx::writePackage(*zip_, {.sheets = sheets_, .styles = formats_->xml(), .places = {}}, {.created = time_});
  zip_->finish();
  buffer_.flush();
}

void ExcelWriter::Document::deliver() {
  if (failure_.empty() && !(file_.close() && target_.replaceBy(newFile_))) {
    fail();
  }
}

void ExcelWriter::Document::logLosses() const noexcept {
  logLoss(name_, text_.loss());
  logMessages([this] { logLostCells(); }, L"A spreadsheet has cells that could not be written as they were given.");
}

void ExcelWriter::Document::logLostCells() const {
  if (sheets_.size() > 1) {
    CLog::Bug2(FMT::Format(L"'%s': a sheet holds 1,048,576 rows%s, the others are on %s%s.", name_,
                           hasLargeSheet_ ? L" and 4 GB" : L"", sheets_.size() == 2 ? L"" : L"Sheet2 to ",
                           toWide(sheets_.back().name)));
  }
  cut_.log(name_, L"cut at 32,767 characters");
  dropped_.log(name_, L"dropped beyond column 16,384");
  tooLarge_.log(name_, L"left empty beyond the 4 GB of a sheet");
  if (strayed_ > 0) {
    CLog::Bug2(FMT::Format(L"'%s': %s dropped outside of any row.", name_, cells(strayed_)));
  }
  if (formats_->refused() > 0) {
    CLog::Bug2(FMT::Format(L"'%s': %s without the colour, which is not known or one too many, the first is '%s'.",
                           name_, cells(formats_->refused()), formats_->firstRefused()));
  }
}

ExcelWriter::ExcelWriter(const xlsx::SheetLimits& limits) : limits_(limits) {}
ExcelWriter::~ExcelWriter() = default;

bool ExcelWriter::Begin(const wchar_t* file, const wchar_t* styles) noexcept {
  Reason reason;
  if (document_) {
    reason.keep(kStillOpen);
  } else {
    containedIn(reason, [&] {
      auto document = std::make_unique<Document>(orEmpty(file), limits_);
      if (document->open(styles)) {
        document_ = std::move(document);
      } else {
        reason.keep(systemErrorText(lastSystemError()));
      }
    });
  }
  return keep(reason, FileError::Open, orEmpty(file));
}

void ExcelWriter::Row(bool begin) noexcept {
  if (document_) {
    document_->row(begin);
  }
}

void ExcelWriter::SetCellValue(const wchar_t*, const wchar_t* value, bool bold) noexcept {
  if (document_) {
    document_->cell(orEmpty(value), bold);
  }
}

void ExcelWriter::SetCellValue(const wchar_t*, const wchar_t* value, const wchar_t* color) noexcept {
  if (document_) {
    document_->cell(orEmpty(value), orEmpty(color));
  }
}

void ExcelWriter::Fail(std::wstring_view reason) noexcept {
  if (document_) {
    document_->fail(reason);
  }
}

bool ExcelWriter::End() noexcept {
  const std::unique_ptr<Document> document = std::move(document_);
  return !document || keep(document->finish(), FileError::Write, document->name());
}

bool ExcelWriter::keep(const Reason& reason, FileError error, std::wstring_view file) noexcept {
  error_.clear();
  try {
    if (!reason.empty()) {
      error_ = fileErrorText(error, file, reason.text());
    }
  } catch (const std::exception&) {
    error_.clear();
  }
  return reason.empty();
}
