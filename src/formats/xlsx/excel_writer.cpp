#include "formats/xlsx/excel_writer.h"

#include "formats/xlsx/excel_style.h"
#include "formats/xlsx/excel_text.h"
#include "formats/xlsx/workbook.h"
#include "output/clog.h"
#include "output/exception_barrier.h"
#include "output/failure_reason.h"
#include "output/host_handlers.h"
#include "output/log_loss.h"
#include "output/target_file.h"
#include "system/files/files.h"
#include "system/messages.h"
#include "text/fmt.h"
#include "text/null_text.h"

#include <algorithm>
#include <cstdint>
#include <cwchar>
#include <exception>
#include <map>
#include <optional>
#include <set>
#include <string_view>
#include <utility>
#include <vector>

using namespace scrivalen;

namespace {

constexpr std::size_t kMaxWidth = 60;
constexpr std::size_t kMinWidth = 9;  // a narrower column keeps the default width, which is about this

std::wstring nameOfColumn(std::uint32_t column) {
  std::wstring name;
  for (std::uint32_t rest = column + 1; rest > 0; rest = (rest - 1) / 26) {
    name.insert(name.begin(), static_cast<wchar_t>(L'A' + (rest - 1) % 26));
  }
  return name;
}

std::wstring cells(std::uint64_t count) { return FMT::Format(count == 1 ? L"%d cell" : L"%d cells", count); }

// Counts cells that were changed or dropped, and keeps the position of the first.
class CellCounter {
 public:
  void note(std::size_t sheet, std::uint32_t row, std::uint32_t column) {
    if (count_++ == 0) {
      first_ = FMT::Format(L"Sheet%d!%s%d", sheet, nameOfColumn(column), row + 1);
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

// The formats of coloured cells, one for each pair of colours.
class ColorFormats {
 public:
  /// @param plain  the format without the colours
  /// @return null if the text yields no format
  lxw_format* find(const std::wstring& text, const CellStyle& plain, Workbook& book);
  /// How many texts were not understood, or exceeded the number of colours.
  std::uint64_t refused() const { return refused_; }
  const std::wstring& firstRefused() const { return firstRefused_; }

 private:
  struct Entry {
    lxw_format* format;
    bool isUnderstood;
  };

  Entry make(const std::wstring& text, const CellStyle& plain, Workbook& book);
  bool canAdd(const CellColors& colors) const;
  void refuse(const std::wstring& text);

  static constexpr std::size_t kMaxTexts = 100000;

  std::map<std::wstring, Entry, std::less<>> byText_;
  std::map<std::pair<std::optional<Rgb>, std::optional<Rgb>>, lxw_format*> byColors_;
  std::set<std::optional<Rgb>> fontColors_;
  std::uint64_t refused_ = 0;
  std::wstring firstRefused_;
};

lxw_format* ColorFormats::find(const std::wstring& text, const CellStyle& plain, Workbook& book) {
  const auto known = byText_.find(text);
  const Entry entry = known != byText_.end() ? known->second : make(text, plain, book);
  if (known == byText_.end() && byText_.size() < kMaxTexts) {
    byText_.emplace(text, entry);
  }
  if (!entry.isUnderstood) {
    refuse(text);
  }
  return entry.format;
}

ColorFormats::Entry ColorFormats::make(const std::wstring& text, const CellStyle& plain, Workbook& book) {
  const CellColors colors = readColors(text);
  if (!colors.color && !colors.background) {
    return {nullptr, colors.isUnderstood};
  }
  const auto pair = std::make_pair(colors.color, colors.background);
  const auto known = byColors_.find(pair);
  if (known != byColors_.end()) {
    return {known->second, colors.isUnderstood};
  }
  if (!canAdd(colors)) {
    return {nullptr, false};
  }
  CellStyle style = plain;
  style.color = colors.color ? colors.color : plain.color;
  style.background = colors.background ? colors.background : plain.background;
  lxw_format* const format = book.addFormat(style, false);
  byColors_.emplace(pair, format);
  fontColors_.insert(colors.color);
  return {format, colors.isUnderstood};
}

bool ColorFormats::canAdd(const CellColors& colors) const {
  return byColors_.size() < Workbook::kFormats &&
         (fontColors_.size() < Workbook::kFonts || fontColors_.count(colors.color) > 0);
}

void ColorFormats::refuse(const std::wstring& text) {
  if (refused_++ == 0) {
    firstRefused_ = text;
  }
}

bool isPlain(const CellStyle& style) {
  return !style.fontFamily && !style.fontSize && !style.color && !style.background;
}

}  // namespace

class ExcelWriter::Document {
 public:
  explicit Document(const wchar_t* file) : name_(file) {}

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
  void take(Step step) noexcept {
    if (failure_.empty()) {
      containedIn(failure_, step);
      logFailure();
    }
  }

  void readStyles(const wchar_t* styles);
  bool beginSheet();
  void endSheet();
  bool takesCell();
  void put(const wchar_t* value, lxw_format* format);
  void widen(std::size_t width);
  void fail() { failure_.keep(systemErrorText(lastSystemError())); }
  void assemble();
  void logFailure() const noexcept;
  void logLosses() const noexcept;
  void logLostCells() const;

  const std::wstring name_;
  TargetFile target_;
  std::optional<Workbook> book_;
  SheetStyle style_;
  lxw_format* plain_ = nullptr;
  lxw_format* bold_ = nullptr;
  ColorFormats colors_;
  ExcelText text_;

  std::size_t sheet_ = 0;
  std::uint32_t nextRow_ = 0;
  std::uint32_t nextColumn_ = 0;
  bool inRow_ = false;
  std::vector<std::uint8_t> widths_;  // of the sheet's columns so far

  CellCounter cut_;
  CellCounter dropped_;
  std::uint64_t strayed_ = 0;
  Reason failure_;  // the first one; nothing is written after it
};

bool ExcelWriter::Document::open(const wchar_t* styles) {
  if (!target_.hold(name_)) {
    return false;
  }
  book_.emplace(target_.folder(), currentTime());
  readStyles(styles);
  plain_ = isPlain(style_.cell) ? nullptr : book_->addFormat(style_.cell, false);
  bold_ = book_->addFormat(style_.bold, true);
  return beginSheet();
}

void ExcelWriter::Document::readStyles(const wchar_t* styles) {
  style_ = readStyle(orEmpty(styles), [this](const std::wstring& problem) {
    CLog::Bug2(FMT::Format(L"'%s': the style sheet is not understood: %s.", name_, problem));
  });
}

bool ExcelWriter::Document::beginSheet() {
  nextRow_ = 0;
  widths_.clear();
  if (!book_->addSheet()) {
    return false;
  }
  ++sheet_;
  // Later sheets begin with rows of data: the header is on the first.
  if (sheet_ == 1 && style_.frozenRows > 0) {
    book_->freeze(style_.frozenRows);
  }
  return true;
}

void ExcelWriter::Document::endSheet() {
  if (style_.columnWidth) {
    book_->setWidth(0, Workbook::kColumns - 1, *style_.columnWidth);
    return;
  }
  const std::size_t count = widths_.size();
  for (std::size_t first = 0, next = 0; first < count; first = next) {
    while (next < count && widths_[next] == widths_[first]) {
      ++next;
    }
    if (widths_[first] >= kMinWidth) {
      book_->setWidth(static_cast<std::uint16_t>(first), static_cast<std::uint16_t>(next - 1), widths_[first]);
    }
  }
}

void ExcelWriter::Document::row(bool begin) noexcept {
  take([&] {
    nextRow_ += inRow_ ? 1 : 0;
    inRow_ = begin;
    nextColumn_ = 0;
    if (begin && nextRow_ == Workbook::kRows) {
      endSheet();
      if (!beginSheet()) {
        fail();
      }
    }
  });
}

bool ExcelWriter::Document::takesCell() {
  if (!inRow_) {
    ++strayed_;
    return false;
  }
  if (nextColumn_ == Workbook::kColumns) {
    dropped_.note(sheet_, nextRow_, nextColumn_);
    return false;
  }
  return true;
}

void ExcelWriter::Document::cell(const wchar_t* value, bool bold) noexcept {
  take([&] {
    if (takesCell()) {
      put(value, bold ? bold_ : plain_);
    }
  });
}

void ExcelWriter::Document::cell(const wchar_t* value, const wchar_t* color) noexcept {
  take([&] {
    if (takesCell()) {
      lxw_format* const format = colors_.find(color, style_.cell, *book_);
      put(value, format ? format : plain_);
    }
  });
}

void ExcelWriter::Document::fail(std::wstring_view reason) noexcept {
  take([&] { failure_.keep(reason); });
}

void ExcelWriter::Document::put(const wchar_t* value, lxw_format* format) {
  const std::uint32_t column = nextColumn_++;
  text_.assign(value);
  if (text_.isCut()) {
    cut_.note(sheet_, nextRow_, column);
  }
  if (text_.isEmpty() && !format) {
    return;
  }
  widen(text_.width());
  if (!book_->write(nextRow_, static_cast<std::uint16_t>(column), text_.c_str(), format)) {
    fail();
  }
}

void ExcelWriter::Document::widen(std::size_t width) {
  const std::size_t column = nextColumn_ - 1;
  if (column >= widths_.size()) {
    widths_.resize(column + 1);
  }
  widths_[column] = std::max(widths_[column], static_cast<std::uint8_t>(std::min(width, kMaxWidth)));
}

void ExcelWriter::Document::logFailure() const noexcept {
  if (!failure_.empty()) {
    logFileError(FileError::Write, name_, failure_.c_str());
  }
}

const Reason& ExcelWriter::Document::finish() noexcept {
  take([&] {
    endSheet();
    assemble();
  });
  book_.reset();
  target_.release();
  logLosses();
  return failure_;
}

void ExcelWriter::Document::assemble() {
  const std::wstring file = target_.newFile();
  const std::wstring defect = book_->close(file);
  if (!defect.empty()) {
    failure_.keep(defect);
  } else if (!target_.replaceBy(file)) {
    fail();
  }
}

void ExcelWriter::Document::logLosses() const noexcept {
  logLoss(name_, text_.loss());
  logMessages([this] { logLostCells(); }, L"A spreadsheet has cells that could not be written as they were given.");
}

void ExcelWriter::Document::logLostCells() const {
  if (sheet_ > 1) {
    CLog::Bug2(FMT::Format(L"'%s': a sheet holds 1,048,576 rows, the others are on %s%s.", name_,
                           sheet_ == 2 ? L"" : L"Sheet2 to ", FMT::Format(L"Sheet%d", sheet_)));
  }
  cut_.log(name_, L"cut at 32,767 characters");
  dropped_.log(name_, L"dropped beyond column 16,384");
  if (strayed_ > 0) {
    CLog::Bug2(FMT::Format(L"'%s': %s dropped outside of any row.", name_, cells(strayed_)));
  }
  if (colors_.refused() > 0) {
    CLog::Bug2(FMT::Format(L"'%s': %s without the colour, which is not known or one too many, the first is '%s'.",
                           name_, cells(colors_.refused()), colors_.firstRefused()));
  }
}

ExcelWriter::ExcelWriter() = default;
ExcelWriter::~ExcelWriter() = default;

bool ExcelWriter::Begin(const wchar_t* file, const wchar_t* styles) noexcept {
  Reason reason;
  if (document_) {
    reason.keep(kStillOpen);
  } else {
    containedIn(reason, [&] {
      auto document = std::make_unique<Document>(orEmpty(file));
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
