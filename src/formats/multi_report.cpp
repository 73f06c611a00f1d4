#include "scrivalen/multi_report.h"

#include "formats/document_formats.h"
#include "formats/document_report.h"
#include "formats/help/chm_report.h"
#include "formats/markup/xml_report.h"
#include "formats/pdf/layout/pdf_report.h"
#include "formats/rtf/rtf_report.h"
#include "formats/text/text_report.h"
#include "formats/xlsx/excel_report.h"
#include "output/clog.h"
#include "output/exception_barrier.h"
#include "report/left_behind.h"
#include "report/report_error.h"
#include "scrivalen/html_report.h"
#include "text/fmt.h"

#include <algorithm>
#include <iterator>
#include <new>
#include <string_view>
#include <utility>
#include <vector>

using namespace scrivalen;

namespace {

// A report in the list. The pointer destroys it as an object of its concrete class.
struct Child : LeftBehind {
  explicit Child(std::shared_ptr<AReport> made) : report(std::move(made)) {}

  std::shared_ptr<AReport> report;
  bool open = false;
  bool cleared = false;  // by a MultiReport that contained it
};

struct FormatRow {
  REPORT_FORMAT format;
  std::shared_ptr<AReport> (*create)();
};

template <typename Report>
std::shared_ptr<AReport> create() {
  return std::make_shared<Report>();
}

constexpr FormatRow kFormats[] = {
    {FORMAT_RTF, &create<RTFReport>}, {FORMAT_HTML, &create<HtmlReport>}, {FORMAT_PDF, &create<PDFReport>},
    {FORMAT_XML, &create<XmlReport>}, {FORMAT_TEXT, &create<TextReport>}, {FORMAT_EXCEL, &create<ExcelReport>},
    {FORMAT_CHM, &create<CHMReport>},
};

struct DocumentRow {
  REPORT_FORMAT format;
  std::string_view name;
};

constexpr DocumentRow kDocumentFormats[] = {
    {FORMAT_DOCUMENT_RTF, "rtf"},    {FORMAT_DOCUMENT_HTML, "html"}, {FORMAT_DOCUMENT_XML, "xml"},
    {FORMAT_DOCUMENT_TEXT, "text"},  {FORMAT_DOCUMENT_CHM, "chm"},   {FORMAT_DOCUMENT_PDF, "pdf"},
    {FORMAT_DOCUMENT_EXCEL, "xlsx"}, {FORMAT_DOCUMENT_DOCX, "docx"}, {FORMAT_DOCUMENT_MARKDOWN, "markdown"},
};

template <typename Row, std::size_t kCount>
const Row* rowOf(const Row (&rows)[kCount], REPORT_FORMAT format) {
  const auto* const row = std::find_if(std::begin(rows), std::end(rows),
                                       [format](const Row& candidate) { return candidate.format == format; });
  return row == std::end(rows) ? nullptr : row;
}

// Null for a number without a format, and for a format that documents are not written in.
std::shared_ptr<AReport> createReport(REPORT_FORMAT format) {
  if (const FormatRow* const row = rowOf(kFormats, format)) {
    return row->create();
  }
  const DocumentRow* const row = rowOf(kDocumentFormats, format);
  const document::Format* const known = row ? documentFormatOf(row->name) : nullptr;
  return known ? std::make_shared<DocumentReport>(*known) : nullptr;
}

}  // namespace

struct MultiReport::Children {
  // Used when memory for a list runs out; empty and never changed.
  static Children& none() {
    static Children children;
    return children;
  }

  bool isNone() const { return this == &none(); }

  // Operations on MultiReport that are not its members, because those would be exported.
  static void take(MultiReport& report, const Children& children);
  static void drop(MultiReport& report);

  // Copies of a MultiReport share the children and their state.
  std::vector<std::shared_ptr<Child>> list;

  // Calls an operation on every child, even after one of them has failed.
  template <typename... Parameters, typename... Arguments>
  void forward(void (AReport::*operation)(Parameters...), const Arguments&... arguments) {
    for (const auto& child : list) {
      contained([&] { (child->report.get()->*operation)(arguments...); });
    }
  }

  // Calls an operation that has a result on every child.
  // @return the first result that is not REPORT_OK; `error` then has that child's text
  template <typename Operation>
  REPORT_ERRORS callEach(ReportError error, Operation operation) {
    REPORT_ERRORS first = REPORT_OK;
    for (const auto& child : list) {
      const REPORT_ERRORS result = contained(REPORT_FILE_ERROR, [&] { return operation(*child); });
      if (first == REPORT_OK && result != REPORT_OK) {
        first = result;
        error.set(child->report->GetError());
      }
    }
    return first;
  }

  // Drops the list. A child in no other MultiReport is destroyed, unless it is open or was never cleared.
  void release() noexcept {
    const auto released = std::exchange(list, {});
    for (const auto& child : released) {
      if (child.use_count() == 1 && (child->open || !child->cleared)) {
        leaveBehind(child);
      }
    }
  }

  void clear() noexcept {
    for (const auto& child : list) {
      child->cleared = true;
    }
    release();
  }
};

MultiReport::MultiReport() : children_(&Children::none()) { Children::take(*this, Children::none()); }

MultiReport::MultiReport(const MultiReport& other) : AReport(other), children_(&Children::none()) {
  Children::take(*this, *other.children_);
}

MultiReport& MultiReport::operator=(const MultiReport& other) {
  if (this != &other) {
    AReport::operator=(other);
    Children::take(*this, *other.children_);
  }
  return *this;
}

MultiReport::~MultiReport() { Children::drop(*this); }

void MultiReport::Children::take(MultiReport& report, const Children& children) {
  ReportError(report.error_, report.lost_).keepSetting([&] {
    auto copy = std::make_unique<Children>(children);
    drop(report);
    report.children_ = std::move(copy);
  });
}

void MultiReport::Children::drop(MultiReport& report) {
  if (report.children_->isNone()) {
    report.children_.release();
  } else {
    report.children_->release();
  }
}

void MultiReport::AddReport(REPORT_FORMAT format, const wchar_t* file, const wchar_t* templateFile) {
  if (!file || !*file) {
    return;
  }
  ReportError(error_, lost_).keepSetting([&] {
    if (children_->isNone()) {
      throw std::bad_alloc();
    }
    const std::shared_ptr<AReport> report = createReport(format);
    if (!report) {
      CLog::Bug2(
          FMT::Format(L"Report format %d is not available; '%s' was not added.", static_cast<int>(format), file));
      return;
    }
    report->SetOutputFileName(file);
    report->SetTemplateFileName(templateFile);
    children_->list.push_back(std::make_shared<Child>(report));
  });
}

void MultiReport::Clear() {
  if (!children_->isNone()) {
    children_->clear();
    ReportError(error_, lost_).forgetLoss();
  }
}

void MultiReport::SetStyles(const wchar_t* text) { children_->forward(&AReport::SetStyles, text); }

REPORT_ERRORS MultiReport::Open() {
  ReportError error(error_, lost_);
  if (error.reportLoss()) {
    return REPORT_FILE_ERROR;
  }
  return contained(REPORT_FILE_ERROR, [&] {
    for (const auto& child : children_->list) {
      if (child->report->Open() != REPORT_OK) {
        error.set(child->report->GetError());
        return REPORT_FILE_ERROR;
      }
      child->open = true;
    }
    return REPORT_OK;
  });
}

REPORT_ERRORS MultiReport::Open(const wchar_t* file) {
  if (ReportError(error_, lost_).reportLoss()) {
    return REPORT_FILE_ERROR;
  }
  return contained(REPORT_FILE_ERROR, [&] {
    for (const auto& child : children_->list) {
      if (child->report->Open(file) != REPORT_OK) {
        return REPORT_FILE_ERROR;
      }
      child->open = true;
    }
    return REPORT_OK;
  });
}

REPORT_ERRORS MultiReport::Close() {
  ReportError error(error_, lost_);
  const bool hasLoss = error.reportLoss(ReportError::kContent);
  const REPORT_ERRORS result = children_->callEach(error, [](Child& child) {
    child.open = false;
    return child.report->Close();
  });
  return hasLoss && result == REPORT_OK ? REPORT_FILE_ERROR : result;
}

REPORT_ERRORS MultiReport::BeginSubDocument(const wchar_t* folder, const wchar_t* file, const wchar_t* title) {
  return children_->callEach(ReportError(error_, lost_),
                             [&](Child& child) { return child.report->BeginSubDocument(folder, file, title); });
}

void MultiReport::AddProperty(const wchar_t* name, const wchar_t* value) {
  children_->forward(&AReport::AddProperty, name, value);
}

void MultiReport::SetColumnSeparator(const std::wstring& separator) {
  children_->forward(&AReport::SetColumnSeparator, separator);
}

void MultiReport::Text(const wchar_t* text, PARAGRAPH_TYPE type, const wchar_t* style, int raw) {
  children_->forward(&AReport::Text, text, type, style, raw);
}

void MultiReport::EndSubDocument() { children_->forward(&AReport::EndSubDocument); }
void MultiReport::BeginAncor(const wchar_t* name) { children_->forward(&AReport::BeginAncor, name); }
void MultiReport::EndAncor() { children_->forward(&AReport::EndAncor); }
void MultiReport::Ancor(const wchar_t* name) { children_->forward(&AReport::Ancor, name); }
void MultiReport::EndOfLine() { children_->forward(&AReport::EndOfLine); }
void MultiReport::BeginStyle(REPORT_STYLE style, int value) { children_->forward(&AReport::BeginStyle, style, value); }
void MultiReport::EndStyle(REPORT_STYLE style, int value) { children_->forward(&AReport::EndStyle, style, value); }
void MultiReport::Space() { children_->forward(&AReport::Space); }

void MultiReport::BeginParagraph(PARAGRAPH_TYPE type, const wchar_t* attributes) {
  children_->forward(&AReport::BeginParagraph, type, attributes);
}

void MultiReport::EndParagraph(PARAGRAPH_TYPE type) { children_->forward(&AReport::EndParagraph, type); }
void MultiReport::BeginToc() { children_->forward(&AReport::BeginToc); }

void MultiReport::TocItem(const wchar_t* anchor, const wchar_t* text, int level) {
  children_->forward(&AReport::TocItem, anchor, text, level);
}

void MultiReport::EndToc() { children_->forward(&AReport::EndToc); }

void MultiReport::BeginTable(const wchar_t* name, const wchar_t* attributes) {
  children_->forward(&AReport::BeginTable, name, attributes);
}

void MultiReport::EndTable(const wchar_t* name) { children_->forward(&AReport::EndTable, name); }

void MultiReport::BeginRow(const wchar_t* name, const wchar_t* attributes, int columns) {
  children_->forward(&AReport::BeginRow, name, attributes, columns);
}

void MultiReport::EndRow(const wchar_t* name) { children_->forward(&AReport::EndRow, name); }

void MultiReport::BeginCell(const wchar_t* text, int header, const wchar_t* attributes) {
  children_->forward(&AReport::BeginCell, text, header, attributes);
}

void MultiReport::EndCell(const wchar_t* text, int header) { children_->forward(&AReport::EndCell, text, header); }

void MultiReport::Cell(const wchar_t* text, int header, const wchar_t* attributes) {
  children_->forward(&AReport::Cell, text, header, attributes);
}

void MultiReport::SetCellColor(const wchar_t* color) { children_->forward(&AReport::SetCellColor, color); }
void MultiReport::Link(const wchar_t* text, const wchar_t* target) { children_->forward(&AReport::Link, text, target); }

void MultiReport::SetReportOption(REPORT_OPTION option, int value) {
  children_->forward(&AReport::SetReportOption, option, value);
}
