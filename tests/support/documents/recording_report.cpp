#include "support/documents/recording_report.h"

#include "scrivalen/text.h"

namespace scrivalen::test {
namespace {

std::string noted(const wchar_t* text) { return text ? '"' + ToUtf8(text) + '"' : "null"; }
std::string noted(const std::wstring& text) { return noted(text.c_str()); }
std::string noted(int value) { return std::to_string(value); }

}  // namespace

template <typename... Arguments>
void RecordingReport::note(const char* operation, const Arguments&... arguments) {
  std::string list;
  ((list += (list.empty() ? "" : ", ") + noted(arguments)), ...);
  calls_.push_back(operation + ('(' + list + ')'));
}

REPORT_ERRORS RecordingReport::Open() {
  note("Open");
  return REPORT_OK;
}

REPORT_ERRORS RecordingReport::Open(const wchar_t* file) {
  note("Open", file);
  return REPORT_OK;
}

REPORT_ERRORS RecordingReport::Close() {
  note("Close");
  return REPORT_OK;
}

void RecordingReport::AddProperty(const wchar_t* name, const wchar_t* value) { note("AddProperty", name, value); }
void RecordingReport::SetColumnSeparator(const std::wstring& separator) { note("SetColumnSeparator", separator); }

std::wstring RecordingReport::Quoting(const std::wstring& text) {
  note("Quoting", text);
  return L'[' + text + L']';
}

void RecordingReport::Text(const wchar_t* text, PARAGRAPH_TYPE type, const wchar_t* style, int raw) {
  note("Text", text, type, style, raw);
}

REPORT_ERRORS RecordingReport::BeginSubDocument(const wchar_t* folder, const wchar_t* file, const wchar_t* title) {
  note("BeginSubDocument", folder, file, title);
  return REPORT_OK;
}

void RecordingReport::EndSubDocument() { note("EndSubDocument"); }
void RecordingReport::BeginAncor(const wchar_t* name) { note("BeginAncor", name); }
void RecordingReport::EndAncor() { note("EndAncor"); }
void RecordingReport::Ancor(const wchar_t* name) { note("Ancor", name); }
void RecordingReport::EndOfLine() { note("EndOfLine"); }
void RecordingReport::BeginStyle(REPORT_STYLE style, int value) { note("BeginStyle", style, value); }
void RecordingReport::EndStyle(REPORT_STYLE style, int value) { note("EndStyle", style, value); }
void RecordingReport::Space() { note("Space"); }

void RecordingReport::BeginParagraph(PARAGRAPH_TYPE type, const wchar_t* attributes) {
  note("BeginParagraph", type, attributes);
}

void RecordingReport::EndParagraph(PARAGRAPH_TYPE type) { note("EndParagraph", type); }
void RecordingReport::BeginToc() { note("BeginToc"); }

void RecordingReport::TocItem(const wchar_t* anchor, const wchar_t* text, int level) {
  note("TocItem", anchor, text, level);
}

void RecordingReport::EndToc() { note("EndToc"); }
void RecordingReport::BeginTable(const wchar_t* name, const wchar_t* attributes) {
  note("BeginTable", name, attributes);
}
void RecordingReport::EndTable(const wchar_t* name) { note("EndTable", name); }

void RecordingReport::BeginRow(const wchar_t* name, const wchar_t* attributes, int columns) {
  note("BeginRow", name, attributes, columns);
}

void RecordingReport::EndRow(const wchar_t* name) { note("EndRow", name); }

void RecordingReport::BeginCell(const wchar_t* text, int header, const wchar_t* attributes) {
  note("BeginCell", text, header, attributes);
}

void RecordingReport::EndCell(const wchar_t* text, int header) { note("EndCell", text, header); }

void RecordingReport::Cell(const wchar_t* text, int header, const wchar_t* attributes) {
  note("Cell", text, header, attributes);
}

void RecordingReport::SetCellColor(const wchar_t* color) { note("SetCellColor", color); }
void RecordingReport::Link(const wchar_t* text, const wchar_t* target) { note("Link", text, target); }
void RecordingReport::SetReportOption(REPORT_OPTION option, int value) { note("SetReportOption", option, value); }

}  // namespace scrivalen::test
