#include "formats/xlsx/workbook.h"

#include "formats/xlsx/host_state.h"
#include "formats/xlsx/stream_watch.h"
#include "formats/xlsx/workbook_check.h"
#include "system/clock.h"
#include "system/files/files.h"
#include "system/messages.h"
#include "text/utf.h"

#include <xlsxwriter.h>

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <mutex>
#include <new>
#include <optional>
#include <stdexcept>
#include <utility>

namespace scrivalen {
namespace {

constexpr const char* kWholeSheet = "A1:XFD1048576";
constexpr std::uint64_t kLargestPlainSheet = 0xFFFF0000;  // bytes; a larger one needs Zip64
constexpr lxw_color_t kBlack = LXW_COLOR_BLACK;           // 0 means no colour

// libxlsxwriter and the C library have state for the whole process: the seed of names for temporary files, and the date
// that gmtime returns.
std::mutex& libraryMutex() {
  static std::mutex& mutex = *new std::mutex;
  return mutex;
}

/// Surrounds each library call that opens files.
class LibraryCall {
 private:
  const std::lock_guard<std::mutex> lock_{libraryMutex()};
  const CLocale locale_;
  const HostState hostState_;
};

// The library takes 0 for the current time, and would write an invalid date for a time that has none.
std::time_t creationTime(std::int64_t seconds) {
  constexpr int kYearZero = -1900;
  constexpr int kYear9999 = 9999 - 1900;
  const auto date = utcTime(seconds);
  const bool isDate = seconds != 0 && date && date->tm_year > kYearZero && date->tm_year <= kYear9999;
  return isDate ? static_cast<std::time_t>(seconds) : std::time_t{1};
}

lxw_color_t libraryColor(Rgb color) { return color == 0 ? kBlack : color; }

struct StreamCloser {
  void operator()(std::FILE* stream) const { std::fclose(stream); }
};

using Stream = std::unique_ptr<std::FILE, StreamCloser>;

std::wstring systemReason() { return systemErrorText(lastSystemError()); }

// Whether a folder's disk has enough free space, as far as the system reports it.
bool hasFreeSpace(const std::string& folder, std::uint64_t size) {
  return freeSpaceIn(widePath(folder)).value_or(size) >= size;
}

}  // namespace

Workbook::Workbook(const std::wstring& folder, std::int64_t created) : folder_(narrowPath(folder)) {
  const CLocale locale;
  lxw_workbook_options options{};
  options.constant_memory = LXW_TRUE;
  options.tmpdir = folder_.data();
  book_ = workbook_new_opt("", &options);
  if (!book_) {
    throw std::bad_alloc();
  }
  lxw_doc_properties properties{};
  properties.created = creationTime(created);
  workbook_set_properties(book_, &properties);
}

Workbook::~Workbook() {
  if (book_) {
    for (const Sheet& sheet : sheets_) {
      std::fclose(sheet.rows);
    }
    lxw_workbook_free(book_);
  }
}

bool Workbook::addSheet() {
  sheets_.reserve(sheets_.size() + 1);
  const LibraryCall call;
  lxw_worksheet* const sheet = workbook_add_worksheet(book_, nullptr);
  if (!sheet) {
    return false;
  }
  sheets_.push_back({sheet, sheet->optimize_tmpfile});
  flushedRow_ = 0;
  worksheet_ignore_errors(sheet, LXW_IGNORE_NUMBER_STORED_AS_TEXT, kWholeSheet);
  if (sheets_.size() == 1) {
    worksheet_activate(sheet);
  }
  return true;
}

lxw_format* Workbook::addFormat(const CellStyle& style, bool bold) {
  const CLocale locale;
  lxw_format* const format = workbook_add_format(book_);
  if (!format) {
    throw std::bad_alloc();
  }
  if (bold) {
    format_set_bold(format);
  }
  if (style.fontFamily) {
    format_set_font_name(format, toUtf8(*style.fontFamily).c_str());
  }
  if (style.fontSize) {
    format_set_font_size(format, *style.fontSize);
  }
  if (style.color) {
    format_set_font_color(format, libraryColor(*style.color));
  }
  if (style.background) {
    format_set_pattern(format, LXW_PATTERN_SOLID);
    format_set_bg_color(format, libraryColor(*style.background));
  }
  return format;
}

bool Workbook::write(std::uint32_t row, std::uint16_t column, const char* text, lxw_format* format) {
  const CLocale locale;
  const Sheet& sheet = sheets_.back();
  const lxw_error error = worksheet_write_string(sheet.sheet, row, column, text, format);
  if (error == LXW_ERROR_MEMORY_MALLOC_FAILED) {
    throw std::bad_alloc();
  }
  if (error != LXW_NO_ERROR) {
    throw std::runtime_error(lxw_strerror(error));
  }
  if (row == flushedRow_) {
    return true;
  }
  flushedRow_ = row;
  return std::ferror(sheet.rows) == 0;
}

void Workbook::setWidth(std::uint16_t first, std::uint16_t last, double width) {
  const CLocale locale;
  worksheet_set_column(sheets_.back().sheet, first, last, width, nullptr);
}

void Workbook::freeze(std::uint32_t rows) {
  const CLocale locale;
  worksheet_freeze_panes(sheets_.back().sheet, rows, 0);
}

bool Workbook::hasRows(const Sheet& sheet) const { return sheet.sheet->dim_rowmin != LXW_ROW_MAX; }

// Checked here, because the library then rewinds the file, which clears its error flag.
bool Workbook::flushRows(const Sheet& sheet) {
  lxw_worksheet_write_single_row(sheet.sheet);
  return std::fflush(sheet.rows) == 0 && std::ferror(sheet.rows) == 0;
}

// Has the library write the sheet once without its rows, to measure the rest.
bool Workbook::measureFrame(const Sheet& sheet, std::uint64_t& size) {
  const Stream frame(lxw_tmpfile(folder_.data()));
  Stream noRows(frame ? lxw_tmpfile(folder_.data()) : nullptr);
  if (!noRows) {
    return false;
  }
  sheet.sheet->file = frame.get();
  sheet.sheet->optimize_tmpfile = noRows.get();
  lxw_worksheet_assemble_xml_file(sheet.sheet);
  sheet.sheet->file = sheet.rows;
  sheet.sheet->optimize_tmpfile = sheet.rows;
  if (hasRows(sheet)) {
    noRows.release();  // the library has closed it
  }
  const bool isWritten = std::fflush(frame.get()) == 0 && std::ferror(frame.get()) == 0;
  const auto position = isWritten ? streamPosition(frame.get()) : std::nullopt;
  size = position.value_or(0);
  return position.has_value();
}

bool Workbook::measureSheets(std::vector<std::uint64_t>& sizes) {
  for (const Sheet& sheet : sheets_) {
    std::uint64_t frame = 0;
    if (!flushRows(sheet) || !measureFrame(sheet, frame)) {
      return false;
    }
    const auto rows = streamPosition(sheet.rows);
    if (!rows) {
      return false;
    }
    sizes.push_back(frame + *rows);
  }
  return true;
}

// Each sheet is assembled in a file of its own before it is packed. On a full disk the library prints to standard error
// and reports success, so the free space is checked first.
std::wstring Workbook::close(const std::wstring& file) {
  constexpr std::uint64_t kSmallestWorkbook = 16384;
  const LibraryCall call;
  std::vector<std::uint64_t> sizes;
  if (!measureSheets(sizes)) {
    return systemReason();
  }
  const std::uint64_t largest = *std::max_element(sizes.begin(), sizes.end());
  if (!hasFreeSpace(folder_, largest + kSmallestWorkbook)) {
    return systemErrorText(diskFullError());
  }
  const std::wstring reason = assemble(file, largest > kLargestPlainSheet);
  return reason.empty() ? workbookDefect(file, sizes) : reason;
}

// Closing releases the workbook, whatever it returns, but not the files of all of its sheets.
std::wstring Workbook::assemble(const std::wstring& file, bool isLarge) {
  std::vector<StreamWatch> watches;
  for (const Sheet& sheet : sheets_) {
    watches.emplace_back(sheet.rows);
  }
  char* const name = lxw_strdup(narrowPath(file).c_str());
  if (!name) {
    throw std::bad_alloc();
  }
  std::free(std::exchange(book_->filename, name));
  book_->options.use_zip64 = isLarge ? LXW_TRUE : LXW_FALSE;
  const lxw_error error = workbook_close(std::exchange(book_, nullptr));
  const std::uint32_t system = lastSystemError();
  closeRows(watches);
  if (error == LXW_NO_ERROR) {
    return {};
  }
  return system == 0 ? toWide(lxw_strerror(error)) : systemErrorText(system);
}

void Workbook::closeRows(const std::vector<StreamWatch>& watches) {
  for (std::size_t i = 0; i < sheets_.size(); ++i) {
    if (watches[i].isOpen()) {
      std::fclose(sheets_[i].rows);
    }
  }
  sheets_.clear();
}

}  // namespace scrivalen
