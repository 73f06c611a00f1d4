#include "formats/excel_report.h"

#include "platform/reason.h"

#include <utility>

using namespace scrivalen::platform;

namespace {

constexpr const wchar_t* kType = L"String";

// A flag that is taken back at the end, also when something passes that an override raises.
class Passing {
 public:
  Passing(bool& flag, bool value) : flag_(flag) { flag_ = value; }
  Passing(const Passing&) = delete;
  Passing& operator=(const Passing&) = delete;
  ~Passing() { flag_ = false; }

 private:
  bool& flag_;
};

}  // namespace

ExcelReport::ExcelReport() { error_.reserve(kErrorRoom); }

REPORT_ERRORS ExcelReport::Open(const wchar_t* file) {
  const bool begun = writer_.Begin(file, styles_.empty() ? nullptr : styles_.c_str());
  inRow_ = inRow_ && !begun;
  return answer(begun);
}

REPORT_ERRORS ExcelReport::Close() { return answer(writer_.End()); }

REPORT_ERRORS ExcelReport::answer(bool isDone) noexcept {
  if (!isDone) {
    assignWhatFits(error_, writer_.Error());
  }
  return isDone ? REPORT_OK : REPORT_FILE_ERROR;
}

void ExcelReport::Text(const wchar_t* text, PARAGRAPH_TYPE type, const wchar_t*, int) {
  const Passing madeRow(textMadeRow_, !inRow_);
  if (textMadeRow_) {
    BeginRow(nullptr, nullptr, 0);
  }
  writeCell(text, bold_ || type != PARAGRAPH_NONE);
  if (textMadeRow_) {
    EndRow(nullptr);
  }
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
    writer_.FailRaised();
  }
}

void ExcelReport::writeCell(const wchar_t* text, bool bold) {
  if (pendingColor_.empty()) {
    writer_.SetCellValue(kType, text, bold);
  } else {
    writer_.SetCellValue(kType, text, std::exchange(pendingColor_, {}).c_str());
  }
}
