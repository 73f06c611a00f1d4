// Writes a classic PDF of several pages, and its text: write_classic_pdf FILE.pdf FILE.txt

#include <scrivalen/scrivalen.h>

#include <iostream>
#include <string>

namespace {

constexpr int kSections = 12;
constexpr int kRows = 12;

void writeSection(AReport& report, int section) {
  report.Text((L"Section " + std::to_wstring(section)).c_str(), PARAGRAPH_HEADING1, L"", 0);
  report.Text(L"Each section has a table of two columns, which other programs must find.", PARAGRAPH_NORMAL, L"", 0);
  report.BeginTable(L"rows", L"");
  for (int row = 0; row < kRows; ++row) {
    const std::wstring name = std::to_wstring(section) + L"." + std::to_wstring(row);
    report.Row2(name.c_str(), (L"value of " + name).c_str(), 0, L"", L"");
  }
  report.EndTable(L"rows");
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) {
    std::cerr << "usage: write_classic_pdf FILE.pdf FILE.txt\n";
    return 2;
  }
  MultiReport report;
  report.AddReport(FORMAT_PDF, scrivalen::FromUtf8(argv[1]).c_str(), nullptr);
  report.AddReport(FORMAT_TEXT, scrivalen::FromUtf8(argv[2]).c_str(), nullptr);
  report.SetReportOption(OPTION_SINGLE_BYTE_TEXT, 1);
  const bool opened = report.Open() == REPORT_OK;
  for (int section = 1; opened && section <= kSections; ++section) {
    writeSection(report, section);
  }
  const bool closed = report.Close() == REPORT_OK;
  report.Clear();
  return opened && closed ? 0 : 1;
}
