#include "formats/pdf/layout/pdf_report.h"

#include "formats/pdf/layout/pdf_doc_state.h"
#include "output/exception_barrier.h"
#include "output/failure_reason.h"
#include "report/report_closing.h"
#include "text/ascii.h"
#include "text/fmt.h"
#include "text/null_text.h"
#include "text/utf.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <new>
#include <string>
#include <string_view>

using namespace scrivalen;
using PDFStuffer::Form;
using scrivalen::pdf::OffPaper;
using scrivalen::pdf::Summary;

namespace {

constexpr int kFont = 1;
constexpr int kBodySize = 8;         // points
constexpr int kSizeAfterStyle = 10;  // whatever the size was before

struct HeadingSize {
  PARAGRAPH_TYPE type;
  int points;
};

constexpr HeadingSize kHeadingSizes[] = {{PARAGRAPH_HEADING1, 20}, {PARAGRAPH_HEADING2, 18}, {PARAGRAPH_HEADING3, 16},
                                         {PARAGRAPH_HEADING4, 15}, {PARAGRAPH_HEADING5, 14}, {PARAGRAPH_HEADING6, 12}};

int sizeOf(PARAGRAPH_TYPE type) {
  const auto found = std::find_if(std::begin(kHeadingSizes), std::end(kHeadingSizes),
                                  [type](const HeadingSize& row) { return row.type == type; });
  return found == std::end(kHeadingSizes) ? kBodySize : found->points;
}

struct NamedColor {
  std::wstring_view name;
  _RGB_COLOR color;
};

constexpr NamedColor kColors[] = {{L"black", {0, 0, 0}},
                                  {L"blue", {0, 0, 1}},
                                  {L"cyan", {0, 1, 1}},
                                  {L"darkgrey", {0.25, 0.25, 0.25}},
                                  {L"gray", {0.5, 0.5, 0.5}},
                                  {L"green", {0, 1, 0}},
                                  {L"lightgrey", {0.75, 0.75, 0.75}},
                                  {L"magenta", {1, 0, 1}},
                                  {L"red", {1, 0, 0}},
                                  {L"white", {1, 1, 1}},
                                  {L"yellow", {1, 1, 0}}};

constexpr _RGB_COLOR kWhite{1, 1, 1};
constexpr _RGB_COLOR kHeaderGrey{0.75, 0.75, 0.75};

// The first letter must be lower case; the case of the others is ignored. Kept for compatibility.
_RGB_COLOR colorNamed(const wchar_t* text) {
  const std::wstring_view name = text ? text : L"";
  const auto found = std::find_if(std::begin(kColors), std::end(kColors), [name](const NamedColor& row) {
    return !name.empty() && name.front() == row.name.front() && equalIgnoringCase(name, row.name);
  });
  return found == std::end(kColors) ? kWhite : found->color;
}

// Poppler trusts a stream's Length, which in the classic form is twice the true one.
void logMisreading(const wchar_t* file) noexcept {
  logMessage(
      [file] {
        return FMT::Format(
            L"'%s': programs that use poppler (Evince, Okular, pdftotext) draw the next page over the one shown. "
            L"OPTION_CONFORMING, set before Open, prevents that.",
            file);
      },
      L"Programs that use poppler draw the next page of a classic PDF over the one shown. OPTION_CONFORMING prevents "
      L"that.");
}

std::wstring counted(std::uint64_t count, const wchar_t* noun) {
  return FMT::Format(count == 1 ? L"%d %s" : L"%d %ss", count, noun);
}

std::wstring described(const OffPaper& found) {
  std::wstring what = found.paragraphs > 0 ? counted(found.paragraphs, L"paragraph") : L"";
  if (found.tables > 0) {
    what += (what.empty() ? L"" : L" and ") + counted(found.tables, L"table");
  }
  return what;
}

void logOffPaper(const wchar_t* file, const OffPaper& found) noexcept {
  logMessage(
      [&] {
        const bool isOne = found.paragraphs + found.tables == 1;
        return FMT::Format(
            isOne ? L"'%s': %s leaves the paper, on page %d." : L"'%s': %s leave the paper, the first on page %d.",
            file, described(found), found.firstPage);
      },
      L"Paragraphs or tables of a PDF leave the paper.");
}

}  // namespace

PDFReport::PDFReport() {
  if (!document_.state_) {
    throw std::bad_alloc();
  }
}

REPORT_ERRORS PDFReport::Open(const wchar_t* file) {
  if (!OpenReportFile(file_, file)) {
    return REPORT_FILE_ERROR;
  }
  document_.state_->begin(*bufferOf(file_), landscape_);
  const wchar_t* const title = GetProperty(L"%TITLE%");
  CPDFdoc::State::withDocument(document_.state_,
                               [title](scrivalen::pdf::Document& document) { document.setTitle(orEmpty(title)); });
  document_.AddFont(kFont, PDF_TIMES_ROMAN);
  return REPORT_OK;
}

REPORT_ERRORS PDFReport::Close() {
  document_.EndDoc(nullptr);
  if (const Reason& failure = document_.state_->failure; !failure.empty()) {
    giveUp(file_, failure.c_str());
  }
  const bool wasOpen = file_.IsOpen();
  const Summary document = document_.state_->summary();
  const REPORT_ERRORS result = scrivalen::closeReportFile(file_, document.loss, {error_, lost_});
  if (!wasOpen || result != REPORT_OK) {
    return result;
  }
  if (document.form == Form::Classic && document.pages > 1) {
    logMisreading(file_.Name());
  }
  if (document.offPaper.firstPage > 0) {
    logOffPaper(file_.Name(), document.offPaper);
  }
  return result;
}

void PDFReport::SetReportOption(REPORT_OPTION option, int value) {
  if (option == OPTION_LANDSCAPE) {
    landscape_ = value != 0;
  } else if (option == OPTION_CONFORMING) {
    document_.SetConforming(value);
  }
}

void PDFReport::Text(const wchar_t* text, PARAGRAPH_TYPE type, const wchar_t* style, int) {
  if (type != PARAGRAPH_NONE) {
    BeginParagraph(type, style);
  }
  document_.write(text);
  if (type != PARAGRAPH_NONE) {
    EndParagraph(PARAGRAPH_NORMAL);
  }
}

void PDFReport::BeginParagraph(PARAGRAPH_TYPE type, const wchar_t*) {
  document_.Paragraf(0);
  document_.FontNo(kFont);
  document_.FontSize(sizeOf(type));
}

void PDFReport::EndParagraph(PARAGRAPH_TYPE) { document_.FontSize(kBodySize); }

void PDFReport::Ancor(const wchar_t* name) {
  document_.Paragraf(0);
  document_.BookMark(name);
}

void PDFReport::BeginStyle(REPORT_STYLE style, int value) {
  switch (style) {
    case STYLE_BOLD: document_.BoldOn(); break;
    case STYLE_ITALIC: document_.ItalicOn(); break;
    case STYLE_FONT_SIZE: document_.FontSize(value); break;
    default: break;
  }
}

void PDFReport::EndStyle(REPORT_STYLE style, int) {
  switch (style) {
    case STYLE_BOLD: document_.BoldOff(); break;
    case STYLE_ITALIC: document_.ItalicOff(); break;
    case STYLE_FONT_SIZE: document_.FontSize(kSizeAfterStyle); break;
    default: break;
  }
}

void PDFReport::TocItem(const wchar_t* anchor, const wchar_t* text, int level) {
  document_.AddOutlineItem(text, anchor, level);
}

void PDFReport::BeginTable(const wchar_t*, const wchar_t*) {
  document_.Paragraf(0);
  document_.BeginTable();
}

void PDFReport::BeginRow(const wchar_t*, const wchar_t*, int columns) { document_.BeginRow(columns); }

void PDFReport::BeginCell(const wchar_t*, int header, const wchar_t* attributes) {
  if (header) {
    document_.BoldOn();
  }
  document_.BeginCell(header ? kHeaderGrey : colorNamed(attributes));
}

void PDFReport::EndCell(const wchar_t*, int header) {
  if (header) {
    document_.BoldOff();
  }
  document_.EndCell();
}

void PDFReport::Cell(const wchar_t* text, int header, const wchar_t*) {
  BeginCell(nullptr, header, nullptr);
  document_.write(text);
  EndCell(nullptr, header);
}
