#pragma once

#include "input.h"
#include "scrivalen/report.h"

namespace scrivalen::fuzz {

/// Makes one call of a report's content operations.
inline void callReport(AReport& report, Input& input) {
  const auto style = [&] { return static_cast<REPORT_STYLE>(input.number()); };
  const auto paragraph = [&] { return static_cast<PARAGRAPH_TYPE>(input.number()); };
  const wchar_t* const text = input.text();
  switch (input.byte() % 24) {
    case 0: return report.Text(text, paragraph(), input.text(), input.byte() & 1);
    case 1: return report.BeginAncor(text);
    case 2: return report.EndAncor();
    case 3: return report.Ancor(text);
    case 4: return report.EndOfLine();
    case 5: return report.BeginStyle(style(), input.number());
    case 6: return report.EndStyle(style(), input.number());
    case 7: return report.Space();
    case 8: return report.BeginParagraph(paragraph(), text);
    case 9: return report.EndParagraph(paragraph());
    case 10: return report.BeginToc();
    case 11: return report.TocItem(text, input.text(), input.number());
    case 12: return report.EndToc();
    case 13: return report.BeginTable(text, input.text());
    case 14: return report.EndTable(text);
    case 15: return report.BeginRow(text, input.text(), input.number() % 300);
    case 16: return report.EndRow(text);
    case 17: return report.BeginCell(text, input.byte() & 1, input.text());
    case 18: return report.EndCell(text, input.byte() & 1);
    case 19: return report.Cell(text, input.byte() & 1, input.text());
    case 20: return report.SetCellColor(text);
    case 21: return report.Link(text, input.text());
    case 22: return report.SetReportOption(static_cast<REPORT_OPTION>(input.byte()), input.byte() & 1);
    default: return report.AddProperty(text, input.text());
  }
}

}  // namespace scrivalen::fuzz
