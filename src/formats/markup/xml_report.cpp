#include "formats/markup/xml_report.h"

#include "formats/markup/xml_name.h"
#include "output/clog.h"
#include "output/exception_barrier.h"
#include "report/report_closing.h"
#include "text/fmt.h"

using namespace scrivalen::formats;
using namespace scrivalen;

REPORT_ERRORS XmlReport::Open(const wchar_t* file) {
  if (!OpenReportFile(file_, file)) {
    return REPORT_FILE_ERROR;
  }
  openConforming_ = conforming_;
  renamed_ = 0;
  firstRenamed_.clear();
  writer_.Open(file_);
  writer_.HeadXML();
  writer_.OpenTag(L"report", nullptr, nullptr);
  return REPORT_OK;
}

REPORT_ERRORS XmlReport::Close() {
  writer_.CloseTag(L"report");
  writer_.Flush();
  const REPORT_ERRORS result = closeReportFile(file_, writer_.Loss(), ReportError(error_, lost_));
  contained([&] { logRenamed(); });
  writer_.Unbind();
  return result;
}

void XmlReport::SetReportOption(REPORT_OPTION option, int value) {
  if (option == OPTION_CONFORMING) {
    conforming_ = value != 0;
  }
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
void XmlReport::BeginTable(const wchar_t* name, const wchar_t*) { openElement(name); }
void XmlReport::EndTable(const wchar_t* name) { closeElement(name); }
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
    openElement(name);
  }
}

void XmlReport::closeNamed(const wchar_t* name) {
  if (name && *name) {
    closeElement(name);
  }
}

void XmlReport::openElement(const wchar_t* name) {
  const std::wstring_view given = name ? name : L"";
  if (openConforming_ && !isXmlName(given)) {
    noteRenamed(given);
    writeRepairedTag("<", given);
  } else {
    writer_.OpenTag(name, nullptr, nullptr);
  }
}

void XmlReport::closeElement(const wchar_t* name) {
  const std::wstring_view given = name ? name : L"";
  if (openConforming_ && !isXmlName(given)) {
    writeRepairedTag("</", given);
  } else {
    writer_.CloseTag(name);
  }
}

// Nothing here allocates, so that every element that begins also ends.
void XmlReport::writeRepairedTag(std::string_view begin, std::wstring_view name) {
  writer_.Literal(begin);
  repairXmlName(name, [this](std::wstring_view piece) { writer_.Text(piece); });
  writer_.Literal(">");
}

void XmlReport::noteRenamed(std::wstring_view name) {
  if (file_.IsOpen() && renamed_++ == 0) {
    contained([&] { firstRenamed_ = name; });
  }
}

void XmlReport::logRenamed() const {
  if (renamed_ > 0) {
    const wchar_t* const format =
        renamed_ == 1
            ? L"'%s': %d element was renamed because XML does not allow its name, from '%s' to '%s'."
            : L"'%s': %d elements were renamed because XML does not allow their names, the first from '%s' to '%s'.";
    CLog::Bug2(FMT::Format(format, file_.Name(), renamed_, firstRenamed_, repairedXmlName(firstRenamed_)));
  }
}
