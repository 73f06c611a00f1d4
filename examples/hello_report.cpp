// The smallest useful program: one table, written as a web page, as XML and as plain text at the same time.
#include <scrivalen/scrivalen.h>

int main() {
  MultiReport report;
  report.AddReport(FORMAT_HTML, L"hello.html", L"default.htm");
  report.AddReport(FORMAT_XML, L"hello.xml", nullptr);
  report.AddReport(FORMAT_TEXT, L"hello.txt", nullptr);
  report.AddProperty(L"%TITLE%", L"Hello");
  report.SetReportOption(OPTION_CONFORMING, 1);
  const bool opened = report.Open() == REPORT_OK;
  if (opened) {
    report.Text(L"Hello", PARAGRAPH_HEADING1, L"", 0);
    report.BeginTable(L"facts", nullptr);
    report.Row2(L"Written", L"once, in three formats", 0, nullptr, nullptr);
    report.EndTable(L"facts");
  }
  const bool closed = report.Close() == REPORT_OK;
  report.Clear();
  return opened && closed ? 0 : 1;
}
