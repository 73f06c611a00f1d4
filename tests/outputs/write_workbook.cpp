// Writes a spreadsheet with content that tends to break one, for third-party programs to read.
#include <scrivalen/scrivalen.h>

#include <cstdio>

int main() {
  MultiReport report;
  report.AddReport(FORMAT_EXCEL, L"odd.xlsx", nullptr);
  report.SetStyles(
      L"sheet { font-family: 'Liberation Sans'; freeze-rows: 1 } cell { font-size: 9 }"
      L"bold { color: white; background-color: navy }");
  if (report.Open() != REPORT_OK) {
    std::fprintf(stderr, "%s\n", scrivalen::ToUtf8(report.GetError()).c_str());
    return 1;
  }
  report.Text(L"Heading <1> & \"more\"", PARAGRAPH_HEADING1, L"", 0);
  report.BeginTable(L"table", nullptr);
  report.Row3(L"Name", L"Number", L"Remark", 1);
  report.Row3(L"M\u00FCller & S\u00F6hne", L"0042", L"\u20AC \u03A9\u03BC\u03AD\u03B3\u03B1 \u4E2D\u6587", 0);
  report.Row3(L"<b>", L"", L"=1+1", 0);
  report.Row3(L" blanks ", L"two\nlines", L"a,b;c\td", 0);
  report.Row3(L"1.5", L"2024-11-05", L"TRUE", 0);
  report.SetCellColor(L"red");
  report.Row2(L"alarm", L"quiet", 0, nullptr, nullptr);
  report.SetCellColor(L"#102030;#FFEEDD");
  report.Row2(L"both", L"neither", 0, nullptr, nullptr);
  report.EndTable(L"table");
  report.Text(L"The end, in a line that is longer than the widest column may become in this sheet.", PARAGRAPH_NONE,
              L"", 0);
  const bool closed = report.Close() == REPORT_OK;
  if (!closed) {
    std::fprintf(stderr, "%s\n", scrivalen::ToUtf8(report.GetError()).c_str());
  }
  report.Clear();
  return closed ? 0 : 1;
}
