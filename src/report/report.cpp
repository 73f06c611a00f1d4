#include "scrivalen/report.h"

#include "output/clog.h"
#include "output/exception_barrier.h"
#include "output/host_handlers.h"
#include "report/report_error.h"
#include "report/template_path.h"
#include "system/clock.h"
#include "system/files/files.h"
#include "text/fmt.h"
#include "text/null_text.h"
#include "text/replaced_all.h"

#include <algorithm>
#include <cstdlib>
#include <cwchar>
#include <memory>
#include <type_traits>

using namespace scrivalen;

namespace {

constexpr const wchar_t* kRow = L"row";

// Each byte becomes a character of the same number.
bool appendFile(std::wstring& text, NativeFile file) {
  return readRest(file, [&text](std::string_view bytes) {
    const auto* const first = reinterpret_cast<const unsigned char*>(bytes.data());
    text.append(first, first + bytes.size());
    return true;
  });
}

[[noreturn]] void failFatally(const wchar_t* reason) {
  CLog::Bug2(reason);
  std::abort();
}

std::wstring localDate(std::int64_t seconds) {
  const auto time = localTime(seconds);
  if (!time) {
    failFatally(L"Invalid argument: the current time cannot be converted to local time.");
  }
  wchar_t date[128];
  const std::size_t length = std::wcsftime(date, std::size(date), L"%d-%b-%Y %H:%M", &*time);
  return std::wstring(date, length);
}

}  // namespace

AReport::AReport() = default;
AReport::AReport(const AReport& other) { *this = other; }
AReport::~AReport() = default;

AReport& AReport::operator=(const AReport& other) {
  if (this != &other) {
    openFlag_ = other.openFlag_;
    lost_ = other.lost_;
    ReportError(error_, lost_).set(other.error_);
    ReportError(error_, lost_).keepSetting([&] {
      reserved_ = other.reserved_;
      outputFileName_ = other.outputFileName_;
      templateFileName_ = other.templateFileName_;
      styles_ = other.styles_;
      properties_ = other.properties_;
    });
  }
  return *this;
}

void AReport::AddProperty(const wchar_t* name, const wchar_t* value) {
  ReportError(error_, lost_).keepSetting([&] {
    properties_.push_back(std::make_shared<PropertyRecord>(PropertyRecord{orEmpty(name), orEmpty(value)}));
  });
}

void AReport::SetColumnSeparator(const std::wstring&) {}

std::wstring AReport::Quoting(const std::wstring& text) {
  std::wstring copy;
  ReportError(error_, lost_).keepContent([&] { copy = text; });
  return copy;
}

REPORT_ERRORS AReport::BeginSubDocument(const wchar_t*, const wchar_t*, const wchar_t*) { return REPORT_OK; }
void AReport::EndSubDocument() {}
void AReport::BeginParagraph(PARAGRAPH_TYPE, const wchar_t*) {}
void AReport::EndParagraph(PARAGRAPH_TYPE) {}
void AReport::SetCellColor(const wchar_t*) {}
void AReport::SetReportOption(REPORT_OPTION, int) {}

const wchar_t* AReport::GetProperty(const wchar_t* name) const {
  const std::wstring_view wanted = orEmpty(name);
  const auto found = std::find_if(properties_.begin(), properties_.end(),
                                  [wanted](const auto& property) { return property->name == wanted; });
  return found == properties_.end() ? nullptr : (*found)->value.c_str();
}

void AReport::SetStyles(const wchar_t* text) {
  ReportError(error_, lost_).keepSetting([&] { styles_ = orEmpty(text); });
}

void AReport::SetOutputFileName(const wchar_t* name) {
  ReportError(error_, lost_).keepSetting([&] { outputFileName_ = orEmpty(name); });
}

void AReport::SetTemplateFileName(const wchar_t* name) {
  if (name && *name) {
    ReportError(error_, lost_).keepSetting([&] { templateFileName_ = name; });
  }
}

const wchar_t* AReport::GetOutputFileName() const { return outputFileName_.c_str(); }
const wchar_t* AReport::GetTemplateFileName() const { return templateFileName_.c_str(); }
const wchar_t* AReport::GetError() const { return ReportError::textOf(error_, lost_); }

int AReport::OpenReportFile(ReportFile& file, const wchar_t* name) {
  ReportError error(error_, lost_);
  if (error.reportLoss()) {
    return 0;
  }
  if (!file.Open(name)) {
    error.set(FileError::Open, orEmpty(name), file.Error());
    return 0;
  }
  return 1;
}

int AReport::MakeTemplateName(std::wstring& path, const wchar_t* name) {
  int found = 0;
  ReportError(error_, lost_).keepContent([&] {
    const auto inFolder = scrivalen::templatePath(homePath(), orEmpty(name));
    if (!inFolder) {
      return;
    }
    path = *inFolder;
    found = pathExists(path) ? 1 : 0;
    if (!found) {
      CLog::Bug2(FMT::Format(L"Template '%s' not found.", path));
    }
  });
  return found;
}

REPORT_ERRORS AReport::LoadTemplate(std::wstring* text, const wchar_t* name, int fullPath) {
  ReportError error(error_, lost_);
  return error.resultOf([&] {
    std::wstring path = orEmpty(name);
    if (!fullPath && !MakeTemplateName(path, name)) {
      return REPORT_TEMPLATE_NOT_FOUND;
    }
    const File file = openForReading(path);
    if (file && (!text || appendFile(*text, file))) {
      return REPORT_OK;
    }
    std::wstring reason;
    CLog::FormatLastError(reason);
    error.set(FileError::Open, path, reason);
    return REPORT_FILE_ERROR;
  });
}

void AReport::PrepareTemplate(std::wstring& text) {
  ReportError(error_, lost_).keepContent([&] {
    for (const auto& property : properties_) {
      if (!property->name.empty()) {
        text = replacedAll<wchar_t>(text, property->name, property->value);
      }
    }
  });
}

void AReport::Row2(const wchar_t* t1, const wchar_t* t2, int header, const wchar_t* a1, const wchar_t* a2) {
  BeginRow(kRow, nullptr, 2);
  Cell(t1, header, a1);
  Cell(t2, header, a2);
  EndRow(kRow);
}

void AReport::Row3(const wchar_t* t1, const wchar_t* t2, const wchar_t* t3, int header) {
  BeginRow(kRow, nullptr, 3);
  Cell(t1, header, nullptr);
  Cell(t2, header, nullptr);
  Cell(t3, header, nullptr);
  EndRow(kRow);
}

void AReport::Row2NotEmptyWithQuote(const wchar_t* name, const wchar_t* value) {
  if (!value || !*value) {
    return;
  }
  std::wstring quoted;
  if (ReportError(error_, lost_).keepContent([&] { quoted = Quoting(value); })) {
    Row2(name, quoted.c_str(), 0, nullptr, nullptr);
  }
}

void AReport::AttributeRowHeader() {
  BeginRow(kRow, nullptr, 2);
  Cell(L"Report Attribute", 1, L" width=\"25%\"");
  Cell(L"Value", 1, nullptr);
  EndRow(kRow);
}

void AReport::ReportCreated() {
  std::wstring date;
  ReportError(error_, lost_).keepContent([&] { date = localDate(currentTime()); });
  Row2(L"Report Created", date.c_str(), 0, nullptr, nullptr);
}

void AReport::ProductRow(const wchar_t* label) {
  std::wstring product;
  ReportError(error_, lost_).keepContent([&] { product = CLog::VersionStr(0) + L", Unicode, x64"; });
  Row2(label, product.c_str(), 0, nullptr, nullptr);
}
