#pragma once

#include "formats/markup/xml_report.h"
#include "formats/pdf/layout/pdf_report.h"
#include "formats/rtf/rtf_report.h"
#include "formats/text/text_report.h"
#include "formats/xlsx/excel_report.h"
#include "scrivalen/html_report.h"

#include <gtest/gtest.h>

#include <string>
#include <type_traits>

namespace scrivalen::test {

/// Every report that writes one file of its own, for typed tests of their common behaviour.
using FileReports = testing::Types<TextReport, HtmlReport, XmlReport, RTFReport, PDFReport, ExcelReport>;

struct FileReportName {
  template <typename Report>
  static std::string GetName(int) {
    if constexpr (std::is_same_v<Report, TextReport>) {
      return "Text";
    } else if constexpr (std::is_same_v<Report, HtmlReport>) {
      return "Html";
    } else if constexpr (std::is_same_v<Report, XmlReport>) {
      return "Xml";
    } else if constexpr (std::is_same_v<Report, RTFReport>) {
      return "Rtf";
    } else if constexpr (std::is_same_v<Report, PDFReport>) {
      return "Pdf";
    } else {
      static_assert(std::is_same_v<Report, ExcelReport>);
      return "Excel";
    }
  }
};

}  // namespace scrivalen::test
