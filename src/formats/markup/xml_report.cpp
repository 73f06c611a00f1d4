#include "formats/markup/xml_report.h"

#include "report/report_closing.h"

using scrivalen::core::closeReportFile;
using scrivalen::core::ReportError;

REPORT_ERRORS XmlReport::Open(const wchar_t* file) {
  if (!OpenReportFile(file_, file)) {
    return REPORT_FILE_ERROR;
  }
  writer_.Open(file_);
  writer_.HeadXML();
  writer_.OpenTag(L"report", nullptr, nullptr);
  return REPORT_OK;
}

REPORT_ERRORS XmlReport::Close() {
  writer_.CloseTag(L"report");
  writer_.Flush();
  const REPORT_ERRORS result = closeReportFile(file_, writer_.Loss(), ReportError(error_, lost_));
  writer_.Unbind();
  return result;
}

std::wstring XmlReport::Quoting(const std::wstring& text) {
  std::wstring quoted;
  ReportError(error_, lost_).keepContent([&] { quoted = writer_.CountedQuoting(text); });
  return quoted;
}

void XmlReport::Text(const wchar_t* text, PARAGRAPH_TYPE type, const wchar_t*, int raw) {
  if (suppressText_) {
    return;
  }
  if (type != PARAGRAPH_NONE) {
    writer_.OpenTag(L"text", nullptr, nullptr);
  }
  if (raw) {
    writer_.Text(text);
  } else {
    writer_.QuotedText(text);
  }
  if (type != PARAGRAPH_NONE) {
    writer_.CloseTag(L"text");
  }
}

void XmlReport::EndOfLine() { writer_.Text(L"\r\n"); }
void XmlReport::BeginParagraph(PARAGRAPH_TYPE, const wchar_t*) { writer_.OpenTag(L"paragraph", nullptr, nullptr); }
void XmlReport::EndParagraph(PARAGRAPH_TYPE) { writer_.CloseTag(L"paragraph"); }
void XmlReport::BeginTable(const wchar_t* name, const wchar_t*) { writer_.OpenTag(name, nullptr, nullptr); }
void XmlReport::EndTable(const wchar_t* name) { writer_.CloseTag(name); }
void XmlReport::BeginRow(const wchar_t* name, const wchar_t*, int) { openNamed(name); }
void XmlReport::EndRow(const wchar_t* name) { closeNamed(name); }

void XmlReport::BeginCell(const wchar_t* name, int header, const wchar_t*) {
  if (!name) {
    suppressText_ = 1;
  }
  if (!header) {
    openNamed(name);
  }
}

void XmlReport::EndCell(const wchar_t* name, int header) {
  suppressText_ = 0;
  if (!header) {
    closeNamed(name);
  }
}

void XmlReport::Cell(const wchar_t* text, int header, const wchar_t*) {
  if (!header) {
    writer_.Literal("<cell>");
    writer_.Content(text);
    writer_.Literal("</cell>");
  }
}

void XmlReport::openNamed(const wchar_t* name) {
  if (name && *name) {
    writer_.OpenTag(name, nullptr, nullptr);
  }
}

void XmlReport::closeNamed(const wchar_t* name) {
  if (name && *name) {
    writer_.CloseTag(name);
  }
}
