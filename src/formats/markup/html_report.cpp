#include "scrivalen/html_report.h"

#include "formats/markup/html.h"
#include "formats/markup/page_loss.h"
#include "output/exception_barrier.h"
#include "output/log_loss.h"
#include "report/left_behind.h"
#include "report/report_closing.h"
#include "report/report_error.h"
#include "system/files/files.h"
#include "text/fmt.h"
#include "text/letter_case.h"
#include "text/null_text.h"
#include "text/utf.h"

#include <algorithm>
#include <new>

using namespace scrivalen;

namespace {

struct PageFile : ReportFile, LeftBehind {};

}  // namespace

struct HtmlReport::State {
  // Used when memory for a state runs out; bound to no file and never changed.
  static State& none() {
    static State state;
    return state;
  }

  bool isNone() const { return this == &none(); }

  // A file that is still open stays open until the process ends: only Close finishes a file.
  void leaveFile() noexcept {
    if (file && file.use_count() == 1 && file->IsOpen()) {
      scrivalen::leaveBehind(std::move(file));
    }
  }

  // Writes a text, which in the classic form is markup.
  void put(const wchar_t* text) {
    if (openConforming) {
      writer.QuotedOnce(text);
    } else {
      writer.Text(text);
    }
  }

  void writeStartOfAnchor(const wchar_t* name) {
    writer.Literal("<a name=\"");
    put(name);
    writer.Literal("\">");
  }

  // Operations on HtmlReport that are not its members, because those would be exported.
  static void take(HtmlReport& report, const State& state);
  static void drop(HtmlReport& report);
  static void beginPage(HtmlReport& report, std::wstring& page);
  static void abandon(HtmlReport& report);
  static REPORT_ERRORS closeOwnFile(HtmlReport& report);
  static REPORT_ERRORS closeHostsFile(HtmlReport& report, bool isWhole);

  HTML writer;
  std::shared_ptr<PageFile> file;  // null until the first Open by name; shared by copies
  std::wstring tail;               // the template's text after "%BODY%"
  std::int32_t externalFile = 0;
  bool conforming = false;      // the option, for the next Open
  bool openConforming = false;  // of the open report
};

namespace {

constexpr const wchar_t* kDefaultTable = L"class=\"table table-hover table-bordered\"";
constexpr std::wstring_view kBody = L"%BODY%";

// Decodes a template, which was read as one character per byte, from UTF-8. A byte-order mark, which some editors
// write, is dropped.
std::wstring decodeUtf8(std::wstring_view bytes, HTML& writer) {
  std::string utf8(bytes.size(), '\0');
  std::transform(bytes.begin(), bytes.end(), utf8.begin(), [](wchar_t c) { return static_cast<char>(c); });
  std::wstring text;
  for (std::size_t replaced = appendWide(text, utf8); replaced > 0; --replaced) {
    writer.NoteLoss(kReplacement);
  }
  if (text.starts_with(L'\uFEFF')) {
    text.erase(0, 1);
  }
  return text;
}

std::wstring displayName(std::wstring file) {
  const auto dot = file.rfind(L'.');
  if (dot != std::wstring::npos && dot > 0) {
    file.resize(dot);
  }
  if (!file.empty()) {
    file[0] = static_cast<wchar_t>(toUpperCase(static_cast<char32_t>(file[0])));
  }
  return file;
}

void writeStartOfCell(HTML& writer, int header, const wchar_t* attributes) {
  if (isEmpty(attributes)) {
    writer.Literal(header ? "<th>" : "<td>");
    return;
  }
  writer.Literal(header ? "<th" : "<td");
  writer.Text(attributes);
  writer.Literal(">");
}

void writeEndOfCell(HTML& writer, int header) { writer.Literal(header ? "</th>" : "</td>"); }

const char* styleTag(REPORT_STYLE style) { return style == STYLE_BOLD ? "b" : style == STYLE_ITALIC ? "i" : ""; }

}  // namespace

HtmlReport::HtmlReport() : state_(&State::none()) { State::take(*this, State::none()); }

HtmlReport::HtmlReport(const HtmlReport& other) : AReport(other), state_(&State::none()) {
  State::take(*this, *other.state_);
}

HtmlReport& HtmlReport::operator=(const HtmlReport& other) {
  if (this != &other) {
    AReport::operator=(other);
    State::take(*this, *other.state_);
  }
  return *this;
}

HtmlReport::~HtmlReport() { State::drop(*this); }

void HtmlReport::State::take(HtmlReport& report, const State& state) {
  const bool isTaken = ReportError(report.error_, report.lost_).keepSetting([&] {
    auto copy = std::make_unique<State>(state);
    drop(report);
    report.state_ = std::move(copy);
  });
  if (!isTaken) {
    report.openFlag_ = 0;
  }
}

void HtmlReport::State::drop(HtmlReport& report) {
  if (report.state_->isNone()) {
    report.state_.release();
  } else {
    report.state_->leaveFile();
  }
}

int HtmlReport::GetTemplatesList(const wchar_t* folder, std::vector<std::wstring>* names) {
  if (!names) {
    return -1;
  }
  return contained(-1, [&] {
    names->clear();
    std::wstring path = orEmpty(folder);
    if (path.empty() || kPathSeparators.find(path.back()) == std::wstring_view::npos) {
      path += kPathSeparator;
    }
    for (std::wstring& file : filesEndingWith(path, L".htm")) {
      names->push_back(displayName(std::move(file)));
    }
    return names->empty() ? -1 : static_cast<int>(names->size());
  });
}

REPORT_ERRORS HtmlReport::Open() {
  return ReportError(error_, lost_).resultOf([&] {
    std::wstring path;
    const int found = MakeTemplateName(path, GetTemplateFileName());
    if (!templateFileName_.empty() && found) {
      return OpenWithTemplate(GetOutputFileName(), GetTemplateFileName());
    }
    return OpenWithHeader(GetOutputFileName(), GetProperty(L"%TITLE%"));
  });
}

REPORT_ERRORS HtmlReport::Open(const wchar_t* file) {
  return ReportError(error_, lost_).resultOf([&] {
    if (state_->isNone()) {
      throw std::bad_alloc();
    }
    if (!state_->file) {
      state_->file = std::make_shared<PageFile>();
    }
    if (!OpenReportFile(*state_->file, file)) {
      return REPORT_FILE_ERROR;
    }
    state_->externalFile = 0;
    state_->openConforming = state_->conforming;
    state_->tail.clear();
    state_->writer.Open(*state_->file);
    openFlag_ = 1;
    return REPORT_OK;
  });
}

REPORT_ERRORS HtmlReport::Open(OutputFile* file) {
  ReportError error(error_, lost_);
  return error.resultOf([&] {
    if (!file) {
      error.set(L"There is no output file.");
      return REPORT_FILE_ERROR;
    }
    if (error.reportLoss()) {
      return REPORT_FILE_ERROR;
    }
    state_->writer.Open(*file);
    state_->leaveFile();
    state_->file.reset();
    state_->externalFile = 1;
    state_->openConforming = state_->conforming;
    openFlag_ = 1;
    return REPORT_OK;
  });
}

REPORT_ERRORS HtmlReport::OpenWithTemplate(const wchar_t* output, const wchar_t* templateName) {
  ReportError error(error_, lost_);
  return error.resultOf([&] {
    std::wstring page;
    if (LoadTemplate(&page, templateName, 0) != REPORT_OK) {
      return REPORT_TEMPLATE_NOT_FOUND;
    }
    if (Open(output) != REPORT_OK) {
      return REPORT_FILE_ERROR;
    }
    error.keepContent([&] { State::beginPage(*this, page); });
    if (error.reportLoss()) {
      State::abandon(*this);
      return REPORT_FILE_ERROR;
    }
    return REPORT_OK;
  });
}

void HtmlReport::State::beginPage(HtmlReport& report, std::wstring& page) {
  if (report.state_->openConforming) {
    page = decodeUtf8(page, report.state_->writer);
  }
  report.PrepareTemplate(page);
  const std::wstring_view text = page;
  const std::size_t body = text.find(kBody);
  if (body != std::wstring_view::npos) {
    report.state_->tail = text.substr(body + kBody.size());
  }
  report.state_->writer.Text(text.substr(0, body));
}

void HtmlReport::State::abandon(HtmlReport& report) {
  report.openFlag_ = 0;
  report.state_->writer.Unbind();
  report.state_->file.reset();
}

LossCounter scrivalen::formats::PageLoss::takeFrom(HtmlReport& page) {
  return page.state_->isNone() ? LossCounter() : page.state_->writer.TakeLoss();
}

REPORT_ERRORS HtmlReport::OpenWithHeader(const wchar_t* file, const wchar_t* title) {
  if (Open(file) != REPORT_OK) {
    return REPORT_FILE_ERROR;
  }
  state_->writer.Head(title, nullptr, 1);
  return REPORT_OK;
}

REPORT_ERRORS HtmlReport::Close() {
  if (openFlag_ == 0) {
    return REPORT_OK;
  }
  openFlag_ = 0;
  HTML& writer = state_->writer;
  bool isWhole = true;
  if (!state_->tail.empty()) {
    writer.Text(state_->tail);
    isWhole = writer.Flush();
  } else {
    isWhole = writer.Close(1);
  }
  const REPORT_ERRORS result =
      state_->externalFile ? State::closeHostsFile(*this, isWhole) : State::closeOwnFile(*this);
  writer.Unbind();
  return result;
}

REPORT_ERRORS HtmlReport::State::closeOwnFile(HtmlReport& report) {
  const REPORT_ERRORS result = scrivalen::closeReportFile(*report.state_->file, report.state_->writer.Loss(),
                                                          ReportError(report.error_, report.lost_));
  report.state_->file.reset();
  return result;
}

REPORT_ERRORS HtmlReport::State::closeHostsFile(HtmlReport& report, bool isWhole) {
  ReportError error(report.error_, report.lost_);
  logLoss(report.outputFileName_, report.state_->writer.Loss());
  const bool hasLoss = error.reportLoss();
  if (!isWhole) {
    error.set(FileError::Write, report.outputFileName_, report.state_->writer.Error());
    logLine(report.GetError());
  }
  return isWhole && !hasLoss ? REPORT_OK : REPORT_FILE_ERROR;
}

void HtmlReport::SetReportOption(REPORT_OPTION option, int value) {
  if (option == OPTION_CONFORMING && !state_->isNone()) {
    state_->conforming = value != 0;
  }
}

std::wstring HtmlReport::Quoting(const std::wstring& text) {
  std::wstring quoted;
  ReportError(error_, lost_).keepContent([&] {
    quoted = state_->isNone() ? HTML::Quoting(text, 1) : state_->writer.CountedQuoting(text);
  });
  return quoted;
}

void HtmlReport::Text(const wchar_t* text, PARAGRAPH_TYPE type, const wchar_t* style, int raw) {
  if (type != PARAGRAPH_NONE) {
    BeginParagraph(type, style);
  }
  if (raw) {
    state_->writer.Text(text);
  } else {
    state_->writer.QuotedText(text);
  }
  if (type != PARAGRAPH_NONE) {
    EndParagraph(type);
  }
}

void HtmlReport::BeginParagraph(PARAGRAPH_TYPE type, const wchar_t* attributes) {
  HTML& writer = state_->writer;
  if (type == PARAGRAPH_NORMAL) {
    writer.Literal("<p>");
    return;
  }
  writer.Literal("<h");
  writer.Number(type);
  if (!isEmpty(attributes)) {
    writer.Literal(" ");
    writer.Text(attributes);
  }
  writer.Literal(">");
}

void HtmlReport::EndParagraph(PARAGRAPH_TYPE type) {
  HTML& writer = state_->writer;
  if (type == PARAGRAPH_NORMAL) {
    writer.Literal("</p>");
    return;
  }
  writer.Literal("</h");
  writer.Number(type);
  writer.Literal(">");
}

void HtmlReport::BeginStyle(REPORT_STYLE style, int) {
  if (style == STYLE_FONT_SIZE) {
    return;
  }
  state_->writer.Literal("<");
  state_->writer.Literal(styleTag(style));
  state_->writer.Literal(">");
}

void HtmlReport::EndStyle(REPORT_STYLE style, int) {
  if (style == STYLE_FONT_SIZE) {
    return;
  }
  state_->writer.Literal("</");
  state_->writer.Literal(styleTag(style));
  state_->writer.Literal(">");
}

void HtmlReport::EndOfLine() { state_->writer.Literal("<br>"); }
void HtmlReport::Space() { state_->writer.Literal("&nbsp;"); }

void HtmlReport::BeginAncor(const wchar_t* name) { state_->writeStartOfAnchor(name); }

void HtmlReport::EndAncor() { state_->writer.Literal("</a>"); }

void HtmlReport::Ancor(const wchar_t* name) {
  state_->writeStartOfAnchor(name);
  state_->writer.Literal(" </a>");
}

void HtmlReport::Link(const wchar_t* text, const wchar_t* target) {
  state_->writer.Literal("<a href=\"");
  state_->put(target);
  state_->writer.Literal("\">");
  state_->put(text);
  state_->writer.Literal("</a>");
}

void HtmlReport::BeginToc() { state_->writer.Literal("<ul>"); }

void HtmlReport::TocItem(const wchar_t* anchor, const wchar_t* text, int) {
  state_->writer.Literal("<li><a href=\"#");
  state_->put(anchor);
  state_->writer.Literal("\">");
  state_->put(text);
  state_->writer.Literal("</a></li>");
}

void HtmlReport::EndToc() { state_->writer.Literal("</ul>"); }

void HtmlReport::BeginTable(const wchar_t*, const wchar_t* attributes) {
  state_->writer.Table(1, -1, attributes ? attributes : kDefaultTable);
}

void HtmlReport::EndTable(const wchar_t*) { state_->writer.Table(0, 1, nullptr); }

void HtmlReport::BeginRow(const wchar_t*, const wchar_t* attributes, int) {
  if (isEmpty(attributes)) {
    state_->writer.Literal("<tr>");
    return;
  }
  state_->writer.Literal("<tr ");
  state_->writer.Text(attributes);
  state_->writer.Literal(">");
}

void HtmlReport::EndRow(const wchar_t*) { state_->writer.Literal("</tr>"); }

void HtmlReport::BeginCell(const wchar_t*, int header, const wchar_t* attributes) {
  writeStartOfCell(state_->writer, header, attributes);
}

void HtmlReport::EndCell(const wchar_t*, int header) { writeEndOfCell(state_->writer, header); }

void HtmlReport::Cell(const wchar_t* text, int header, const wchar_t* attributes) {
  writeStartOfCell(state_->writer, header, attributes);
  state_->put(text);
  writeEndOfCell(state_->writer, header);
}

void HtmlReport::ValueToHtml(const wchar_t* format, const wchar_t* text) {
  ReportError(error_, lost_).keepContent([&] { state_->writer.Text(FMT::Format(orEmpty(format), text)); });
}

void HtmlReport::ValueToHtml(const wchar_t* format, int value) {
  ReportError(error_, lost_).keepContent([&] { state_->writer.Text(FMT::Format(orEmpty(format), value)); });
}
