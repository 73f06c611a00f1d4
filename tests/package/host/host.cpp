// Part of a host's own library.
#include <scrivalen/scrivalen.h>

int writeGreeting(const wchar_t* file) {
  HtmlReport report;
  report.SetTemplateFileName(L"default.htm");
  report.SetOutputFileName(file);
  if (report.Open() != REPORT_OK) {
    return 1;
  }
  report.Text(L"Hello", PARAGRAPH_NORMAL, L"", 0);
  return report.Close() == REPORT_OK ? 0 : 1;
}
