#include "formats/xlsx/excel_report.h"

#include "output/failure_reason.h"
#include "report/report_error.h"

#include <string_view>
#include <utility>

using namespace scrivalen;

namespace {

constexpr const wchar_t* kType = L"String";

}  // namespace

REPORT_ERRORS ExcelReport::Open(const wchar_t* file) {
  ReportError error(error_, lost_);
  if (error.reportLoss()) {
    return REPORT_FILE_ERROR;
  }
  const bool begun = writer_.Begin(file, styles_.empty() ? nullptr : styles_.c_str());
  inRow_ = inRow_ && !begun;
  return resultOf(begun);
}

REPORT_ERRORS ExcelReport::Close() {
  if (writer_.IsBegun() && ReportError(error_, lost_).reportLoss()) {
    writer_.Fail(kOutOfMemory);
  }
  return resultOf(writer_.End());
}

REPORT_ERRORS ExcelReport::resultOf(bool isDone) noexcept {
  if (!isDone) {
    const std::wstring_view reason = writer_.Error();
    ReportError(error_, lost_).set(reason.empty() ? kOutOfMemory : reason);
  }
  return isDone ? REPORT_OK : REPORT_FILE_ERROR;
}

void ExcelReport::Text(const wchar_t* text, PARAGRAPH_TYPE type, const wchar_t*, int) {
  textMadeRow_ = !inRow_;
  if (textMadeRow_) {
    BeginRow(nullptr, nullptr, 0);
  }
  writeCell(text, bold_ || type != PARAGRAPH_NONE);
  if (textMadeRow_) {
    EndRow(nullptr);
  }
  textMadeRow_ = false;
}

void ExcelReport::BeginStyle(REPORT_STYLE style, int) { bold_ = bold_ || style == STYLE_BOLD; }
void ExcelReport::EndStyle(REPORT_STYLE style, int) { bold_ = bold_ && style != STYLE_BOLD; }
void ExcelReport::BeginParagraph(PARAGRAPH_TYPE, const wchar_t*) { BeginCell(nullptr, 0, nullptr); }
void ExcelReport::EndParagraph(PARAGRAPH_TYPE) { EndCell(nullptr, 0); }

void ExcelReport::BeginRow(const wchar_t*, const wchar_t*, int) {
  inRow_ = true;
  writer_.Row(true);
}

void ExcelReport::EndRow(const wchar_t*) {
  writer_.Row(false);
  inRow_ = false;
}

void ExcelReport::Cell(const wchar_t* text, int header, const wchar_t*) { writeCell(text, bold_ || header != 0); }

void ExcelReport::SetCellColor(const wchar_t* color) {
  try {
    pendingColor_ = color ? color : L"";
  } catch (...) {
    loseColor();
  }
}

// Called in a catch clause. The workbook fails at once, so that nothing more is written to it.
void ExcelReport::loseColor() noexcept {
  if (writer_.IsBegun()) {
    writer_.Fail(kOutOfMemory);
  } else {
    ReportError(error_, lost_).keepContent([] { throw; });
  }
}

void ExcelReport::writeCell(const wchar_t* text, bool bold) {
  if (pendingColor_.empty()) {
    writer_.SetCellValue(kType, text, bold);
  } else {
    writer_.SetCellValue(kType, text, std::exchange(pendingColor_, {}).c_str());
  }
}
