// One function that writes through the classic interface, into classic reports and into documents.
#include <scrivalen/scrivalen.h>

#include <cstdio>

namespace {

void writePrices(AReport& report) {
  report.Text(L"Prices", PARAGRAPH_HEADING1, L"", 0);
  report.BeginTable(L"prices", nullptr);
  report.BeginRow(nullptr, nullptr, 2);
  report.Cell(L"Article", 1, nullptr);
  report.Cell(L"Price", 1, L" style=\"text-align:right\"");
  report.EndRow(nullptr);
  report.BeginRow(nullptr, nullptr, 2);
  report.Cell(L"Nuts & bolts", 0, nullptr);
  report.Cell(L"4.50", 0, L" style=\"text-align:right\"");
  report.EndRow(nullptr);
  report.EndTable(L"prices");
}

bool write(MultiReport& report) {
  const bool opened = report.Open() == REPORT_OK;
  if (opened) {
    writePrices(report);
  }
  const bool closed = report.Close() == REPORT_OK;
  report.Clear();
  return opened && closed;
}

bool writeBefore() {
  MultiReport report;
  report.AddReport(FORMAT_HTML, L"before.html", nullptr);
  report.AddReport(FORMAT_TEXT, L"before.txt", nullptr);
  report.AddReport(FORMAT_RTF, L"before.rtf", nullptr);
  report.AddProperty(L"%TITLE%", L"Prices");
  return write(report);
}

bool writeAfter() {
  MultiReport report;
  report.AddReport(FORMAT_DOCUMENT_HTML, L"after.html", nullptr);
  report.AddReport(FORMAT_DOCUMENT_TEXT, L"after.txt", nullptr);
  report.AddReport(FORMAT_DOCUMENT_RTF, L"after.rtf", nullptr);
  report.AddReport(FORMAT_DOCUMENT_MARKDOWN, L"after.md", nullptr);
  report.AddProperty(L"%TITLE%", L"Prices");
  return write(report);
}

}  // namespace

int main() {
  if (!writeBefore() || !writeAfter()) {
    std::fputs("from_classic: a report was not written\n", stderr);
    return 1;
  }
  return 0;
}
