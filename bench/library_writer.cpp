#include "ledger.h"
#include "prose.h"
#include "writers.h"

#include <scrivalen/scrivalen.h>

namespace scrivalen::bench {
namespace {

constexpr REPORT_FORMAT reportFormat(Format format) {
  switch (format) {
    case Format::Text: return FORMAT_TEXT;
    case Format::Html: return FORMAT_HTML;
    case Format::Xml: return FORMAT_XML;
    case Format::Rtf: return FORMAT_RTF;
    case Format::Pdf: return FORMAT_PDF;
    case Format::Xlsx: break;
  }
  return FORMAT_EXCEL;
}

void writeWholeCell(AReport& report, const wchar_t* text) { report.Cell(text, 0, nullptr); }

// Cell takes markup in HTML; this way the text is escaped in every format.
void writeCellInParts(AReport& report, const wchar_t* text) {
  report.BeginCell(L"cell", 0, nullptr);
  report.Text(text, PARAGRAPH_NONE, nullptr, 0);
  report.EndCell(L"cell", 0);
}

using WriteCell = void (*)(AReport& report, const wchar_t* text);

void writeContent(AReport& report, long rows, WriteCell writeCell) {
  report.Text(kTitle, PARAGRAPH_HEADING1, nullptr, 0);
  report.BeginTable(L"ledger", nullptr);
  Ledger ledger;
  for (long i = 0; i < rows; ++i) {
    report.BeginRow(L"row", nullptr, static_cast<int>(kColumns));
    for (const wchar_t* text : ledger.next()) {
      writeCell(report, text);
    }
    report.EndRow(L"row");
  }
  report.EndTable(L"ledger");
}

std::string failure(const AReport& report) { return ToUtf8(report.GetError()); }

std::string closed(MultiReport& report) {
  const bool closed = report.Close() == REPORT_OK;
  report.Clear();
  return closed ? std::string() : failure(report);
}

std::string writeOneFormat(Format format, long rows, const std::string& file, WriteCell writeCell) {
  const std::wstring name = FromUtf8(file);
  MultiReport report;
  report.AddReport(reportFormat(format), name.c_str(), nullptr);
  if (report.Open(name.c_str()) != REPORT_OK) {
    return "cannot open " + file;
  }
  writeContent(report, rows, writeCell);
  return closed(report);
}

void writeDocument(RTFdoc& document, long rows) {
  document.write(kTitle, 0);
  document.Paragraf(RTFdoc::PAR_DEFAULT, PARAGRAPH_HEADING1);
  document.BeginTable();
  Ledger ledger;
  for (long i = 0; i < rows; ++i) {
    document.BeginRow(static_cast<int>(kColumns), -1);
    for (const wchar_t* text : ledger.next()) {
      document.BeginCell();
      document.write(text, 0);
      document.EndCell();
    }
    document.EndRow();
  }
  document.EndTable();
}

}  // namespace

std::string writeWithLibrary(Format format, long rows, const std::string& file) {
  return writeOneFormat(format, rows, file, format == Format::Html ? writeCellInParts : writeWholeCell);
}

std::string writeWithCommonCalls(Format format, long rows, const std::string& file) {
  return writeOneFormat(format, rows, file, writeCellInParts);
}

std::string writeWithDocument(Format format, long rows, const std::string& file) {
  if (format != Format::Rtf) {
    return "the only document writer is that of rtf";
  }
  ReportFile out;
  if (!out.Open(FromUtf8(file).c_str())) {
    return "cannot open " + file + ": " + ToUtf8(out.Error());
  }
  RTFdoc document;
  document.BegDoc(&out, L"Report", 0);
  writeDocument(document, rows);
  document.EndDoc();
  return out.Close() ? std::string() : "cannot write " + file + ": " + ToUtf8(out.WriteError());
}

std::string writeProseWithLibrary(long sections, const std::string& file) {
  const std::wstring name = FromUtf8(file);
  MultiReport report;
  report.AddReport(FORMAT_PDF, name.c_str(), nullptr);
  if (report.Open(name.c_str()) != REPORT_OK) {
    return "cannot open " + file;
  }
  Prose prose;
  for (long section = 0; section < sections; ++section) {
    report.Text(prose.nextHeading().c_str(), PARAGRAPH_HEADING1, nullptr, 0);
    for (int i = 0; i < kParagraphsOfASection; ++i) {
      report.Text(prose.nextParagraph().c_str(), PARAGRAPH_NORMAL, nullptr, 0);
    }
  }
  return closed(report);
}

std::string writeAllWithCommonCalls(long rows, const std::string& file) {
  MultiReport report;
  report.AddReport(FORMAT_TEXT, FromUtf8(file + ".txt").c_str(), nullptr);
  report.AddReport(FORMAT_HTML, FromUtf8(file + ".html").c_str(), nullptr);
  report.AddReport(FORMAT_XML, FromUtf8(file + ".xml").c_str(), nullptr);
  if (report.Open() != REPORT_OK) {
    return failure(report);
  }
  writeContent(report, rows, writeCellInParts);
  return closed(report);
}

}  // namespace scrivalen::bench
