#include "formats/text/text_report.h"

#include "output/encode.h"
#include "report/report_closing.h"

using namespace scrivalen;

REPORT_ERRORS TextReport::Open(const wchar_t* file) {
  if (!OpenReportFile(file_, file)) {
    return REPORT_FILE_ERROR;
  }
  out_ = bufferOf(file_);
  loss_.reset();
  if (!singleByte_) {
    write(L"\uFEFF");
  }
  return REPORT_OK;
}

REPORT_ERRORS TextReport::Close() {
  out_ = nullptr;
  return closeReportFile(file_, loss_, ReportError(error_, lost_));
}

void TextReport::SetColumnSeparator(const std::wstring& separator) {
  ReportError(error_, lost_).keepSetting([&] { separator_ = separator.c_str(); });  // up to its NUL, like every text
}

void TextReport::SetReportOption(REPORT_OPTION option, int value) {
  if (option == OPTION_SINGLE_BYTE_TEXT) {
    singleByte_ = value != 0;
  }
}

void TextReport::write(std::wstring_view text) {
  if (!out_) {
    return;
  }
  if (singleByte_) {
    putLowBytes(*out_, text, loss_);
  } else {
    putUtf16(*out_, text);
  }
}

void TextReport::Text(const wchar_t* text, PARAGRAPH_TYPE type, const wchar_t*, int) {
  if (text) {
    write(text);
  }
  if (type != PARAGRAPH_NONE) {
    EndOfLine();
  }
}

void TextReport::EndOfLine() { write(L"\r\n"); }
void TextReport::Space() { write(L" "); }
void TextReport::EndParagraph(PARAGRAPH_TYPE) { EndOfLine(); }
void TextReport::BeginRow(const wchar_t*, const wchar_t*, int) { firstCell_ = true; }
void TextReport::EndRow(const wchar_t*) { EndOfLine(); }

void TextReport::BeginCell(const wchar_t*, int, const wchar_t*) {
  if (!firstCell_) {
    write(separator_);
  }
  firstCell_ = false;
}

void TextReport::Cell(const wchar_t* text, int, const wchar_t*) {
  BeginCell(nullptr, 0, nullptr);
  Text(text, PARAGRAPH_NONE, L"", 0);
  EndCell(nullptr, 0);
}
