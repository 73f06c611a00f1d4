#include "formats/document_report.h"

#include "formats/markup_reading.h"
#include "formats/report_translation.h"
#include "output/clog.h"
#include "output/exception_barrier.h"
#include "output/file_error.h"
#include "output/host_handlers.h"
#include "report/report_error.h"
#include "report/template_path.h"
#include "system/files/files.h"
#include "text/ascii.h"
#include "text/fmt.h"
#include "text/null_text.h"
#include "text/utf.h"

#include <set>
#include <string_view>

namespace scrivalen {

using document::Document;
using document::Status;
using document::WarningCode;

namespace {

struct DocumentProperty {
  std::wstring_view name;
  const char* setting;
};

constexpr DocumentProperty kDocumentProperties[] = {
    {L"%TITLE%", "title"}, {L"%AUTHOR%", "author"}, {L"%LANGUAGE%", "language"}};

bool takesHtml(const document::Format& format) { return format.takesMarkupOf("html"); }

std::string plainText(std::wstring_view text) {
  std::string plain = toUtf8(text);
  decodeReferences(plain);
  return plain;
}

// A setting that the document does not take is left out.
void set(Document& document, const std::string& name, const std::string& value) {
  if (document.set(name, value) != Status::Ok) {
    document.warn(WarningCode::SomethingLeftOut, document.error());
  }
}

}  // namespace

struct DocumentReport::Session {
  Session(std::wstring_view path, const document::Format& format)
      : file(path), translation(document, takesHtml(format)) {}

  std::wstring file;
  Document document;
  ReportTranslation translation;
  bool hasContent = false;
  bool isStale = false;  // settings have changed since it was opened
};

DocumentReport::DocumentReport(const document::Format& format) : format_(format) {}
DocumentReport::~DocumentReport() = default;

REPORT_ERRORS DocumentReport::Open(const wchar_t* file) {
  ReportError error(error_, lost_);
  if (error.reportLoss()) {
    return REPORT_FILE_ERROR;
  }
  if (session_) {
    error.set(FileError::Open, orEmpty(file), kStillOpen);
    return REPORT_FILE_ERROR;
  }
  const REPORT_ERRORS result = error.resultOf([&] {
    auto session = std::make_unique<Session>(orEmpty(file), format_);
    if (!lock(session->file)) {
      return REPORT_FILE_ERROR;
    }
    const REPORT_ERRORS opened = resultOf(open(*session), FileError::Open, *session);
    if (opened == REPORT_OK) {
      session_ = std::move(session);
    } else if (opened == REPORT_TEMPLATE_NOT_FOUND) {
      CLog::Bug2(error_);
    }
    return opened;
  });
  if (!session_) {
    target_.release();
  }
  return result;
}

// A device or a pipe is locked by the document, which writes to it.
bool DocumentReport::lock(const std::wstring& file) {
  if (isSpecialFile(file) || isOpenFilesName(file) || target_.lock(file)) {
    return true;
  }
  std::wstring reason;
  CLog::FormatLastError(reason);
  ReportError(error_, lost_).set(FileError::Open, file, reason);
  return false;
}

Status DocumentReport::open(Session& session) {
  Document& document = session.document;
  document.addFile(format_, narrowPath(session.file));
  applySettings(document);
  return document.open();
}

void DocumentReport::applySettings(Document& document) {
  if (isLandscape_) {
    document.set("landscape", "yes");
  }
  if (isSingleByte_) {
    document.set("text.encoding", "latin-1");
  }
  applyTemplate(document);
  applyProperties(document);
}

// A name in the template folder comes before a path.
void DocumentReport::applyTemplate(Document& document) {
  if (templateFileName_.empty()) {
    return;
  }
  const auto installed = templatePath(homePath(), templateFileName_);
  set(document, "template", narrowPath(installed && pathExists(*installed) ? *installed : templateFileName_));
}

// Of several properties with one name the first counts; the document takes names in any case for one.
void DocumentReport::applyProperties(Document& document) {
  for (const auto& property : kDocumentProperties) {
    if (const wchar_t* const value = GetProperty(std::wstring(property.name).c_str())) {
      set(document, property.setting, plainText(value));
    }
  }
  std::set<std::string> names;
  for (const auto& property : properties_) {
    const std::string name = toUtf8(property->name);
    if (names.insert(asciiLowered(std::string_view(name))).second) {
      set(document, "property:" + name, plainText(property->value));
    }
  }
}

REPORT_ERRORS DocumentReport::Close() {
  if (!session_) {
    return REPORT_OK;
  }
  ReportError error(error_, lost_);
  Document& document = session_->document;
  const bool hasLoss = error.reportLoss();
  if (hasLoss) {
    document.runOutOfMemory();
  }
  const REPORT_ERRORS result = error.resultOf([&] {
    if (!hasLoss) {
      session_->translation.finish();
    }
    target_.release();  // to be replaced
    const Status status = document.close();
    logWarnings();
    if (hasLoss) {
      return REPORT_FILE_ERROR;
    }
    const REPORT_ERRORS closed = resultOf(status, FileError::Write, *session_);
    if (closed != REPORT_OK) {
      CLog::Bug2(error_);
    }
    return closed;
  });
  session_.reset();
  target_.release();
  return result;
}

// What a document says of its file is said as the other reports do.
REPORT_ERRORS DocumentReport::resultOf(Status status, FileError error, Session& session) {
  if (status == Status::Ok) {
    return REPORT_OK;
  }
  const std::wstring text = toWide(session.document.error());
  const std::wstring start = L"cannot write '" + session.file + L"': ";
  if (text.starts_with(start)) {
    ReportError(error_, lost_).set(error, session.file, std::wstring_view(text).substr(start.size()));
  } else {
    ReportError(error_, lost_).set(text);
  }
  return status == Status::TemplateNotFound ? REPORT_TEMPLATE_NOT_FOUND : REPORT_FILE_ERROR;
}

void DocumentReport::logWarnings() noexcept {
  logMessages(
      [this] {
        while (const document::Warning* const warning = session_->document.nextWarning()) {
          const std::wstring message = toWide(warning->message);
          CLog::Bug2(warning->count == 1
                         ? FMT::Format(L"'%s': %s.", session_->file, message)
                         : FMT::Format(L"'%s': %s (%d times).", session_->file, message, warning->count));
        }
      },
      L"A document has warnings.");
}

// Writes content; the document fails when memory runs out for it.
template <typename Action>
void DocumentReport::write(Action&& action) noexcept {
  if (!session_) {
    return;
  }
  const bool isWritten = ReportError(error_, lost_).keepContent([&] {
    if (session_->isStale) {
      session_ = std::make_unique<Session>(session_->file, format_);
      open(*session_);
    }
    session_->hasContent = true;
    action(session_->translation);
  });
  if (!isWritten) {
    session_->document.runOutOfMemory();
  }
}

// An open document without content begins again with the new settings. A device or a pipe cannot: what was written to
// it stays.
void DocumentReport::changeSetting() noexcept {
  if (!session_) {
    return;
  }
  contained([this] {
    if (!session_->hasContent && !isSpecialFile(session_->file)) {
      session_->isStale = true;
    } else {
      session_->document.warn(WarningCode::InputMended,
                              "a property or an option came too late; it counts from the next document on");
    }
  });
}

void DocumentReport::AddProperty(const wchar_t* name, const wchar_t* value) {
  AReport::AddProperty(name, value);
  changeSetting();
}

void DocumentReport::SetReportOption(REPORT_OPTION option, int value) {
  if (option == OPTION_LANDSCAPE) {
    isLandscape_ = value != 0;
    changeSetting();
  } else if (option == OPTION_SINGLE_BYTE_TEXT) {
    isSingleByte_ = value != 0;
    changeSetting();
  }
}

void DocumentReport::Text(const wchar_t* text, PARAGRAPH_TYPE type, const wchar_t* style, int raw) {
  write([&](ReportTranslation& to) { to.text(text, type, style, raw != 0); });
}

REPORT_ERRORS DocumentReport::BeginSubDocument(const wchar_t*, const wchar_t* file, const wchar_t* title) {
  write([&](ReportTranslation& to) { to.beginSection(file, title); });
  return REPORT_OK;
}

void DocumentReport::EndSubDocument() {
  write([](ReportTranslation& to) { to.endSection(); });
}

void DocumentReport::BeginAncor(const wchar_t* name) { Ancor(name); }

void DocumentReport::Ancor(const wchar_t* name) {
  write([&](ReportTranslation& to) { to.anchor(name); });
}

void DocumentReport::EndOfLine() {
  write([](ReportTranslation& to) { to.endOfLine(); });
}

void DocumentReport::BeginStyle(REPORT_STYLE style, int value) {
  write([&](ReportTranslation& to) { to.beginStyle(style, value); });
}

void DocumentReport::EndStyle(REPORT_STYLE style, int) {
  write([&](ReportTranslation& to) { to.endStyle(style); });
}

void DocumentReport::Space() {
  write([](ReportTranslation& to) { to.space(); });
}

void DocumentReport::BeginParagraph(PARAGRAPH_TYPE type, const wchar_t* attributes) {
  write([&](ReportTranslation& to) { to.beginParagraph(type, attributes); });
}

void DocumentReport::EndParagraph(PARAGRAPH_TYPE) {
  write([](ReportTranslation& to) { to.endParagraph(); });
}

void DocumentReport::BeginToc() {
  write([](ReportTranslation& to) { to.beginContents(); });
}

void DocumentReport::TocItem(const wchar_t* anchor, const wchar_t* text, int level) {
  write([&](ReportTranslation& to) { to.contentsItem(anchor, text, level); });
}

void DocumentReport::EndToc() {
  write([](ReportTranslation& to) { to.endContents(); });
}

void DocumentReport::BeginTable(const wchar_t* name, const wchar_t*) {
  write([&](ReportTranslation& to) { to.beginTable(name); });
}

void DocumentReport::EndTable(const wchar_t*) {
  write([](ReportTranslation& to) { to.endTable(); });
}

void DocumentReport::BeginRow(const wchar_t*, const wchar_t* attributes, int) {
  write([&](ReportTranslation& to) { to.beginRow(attributes); });
}

void DocumentReport::EndRow(const wchar_t*) {
  write([](ReportTranslation& to) { to.endRow(); });
}

void DocumentReport::BeginCell(const wchar_t* text, int header, const wchar_t* attributes) {
  write([&](ReportTranslation& to) { to.beginCell(text, header != 0, attributes); });
}

void DocumentReport::EndCell(const wchar_t*, int) {
  write([](ReportTranslation& to) { to.endCell(); });
}

void DocumentReport::Cell(const wchar_t* text, int header, const wchar_t* attributes) {
  write([&](ReportTranslation& to) { to.cell(text, header != 0, attributes); });
}

void DocumentReport::SetCellColor(const wchar_t* color) {
  write([&](ReportTranslation& to) { to.setCellColor(color); });
}

void DocumentReport::Link(const wchar_t* text, const wchar_t* target) {
  write([&](ReportTranslation& to) { to.link(text, target); });
}

}  // namespace scrivalen
