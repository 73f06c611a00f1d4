#include "writers/single_report.h"

namespace scrivalen::command {

// Destroying an open child would leave its file open.
SingleReport::~SingleReport() {
  close();
  report_.Clear();
}

bool SingleReport::open(const std::wstring& file, const DocumentSettings& settings) {
  report_.AddReport(format_, file.c_str(), settings.templateFile.c_str());
  applySettings(report_, settings);
  report_.SetStyles(settings.styles.c_str());
  report_.AddProperty(L"%TITLE%", settings.title.c_str());
  for (const auto& [name, value] : settings.properties) {
    report_.AddProperty(name.c_str(), value.c_str());
  }
  isOpen_ = report_.Open() == REPORT_OK;
  return isOpen_;
}

bool SingleReport::close() {
  const bool wasOpen = isOpen_;
  isOpen_ = false;
  return !wasOpen || report_.Close() == REPORT_OK;
}

void applySettings(AReport& report, const DocumentSettings& settings) {
  report.SetColumnSeparator(settings.columnSeparator);
  report.SetReportOption(OPTION_LANDSCAPE, settings.landscape ? 1 : 0);
  report.SetReportOption(OPTION_SINGLE_BYTE_TEXT, settings.singleByte ? 1 : 0);
  report.SetReportOption(OPTION_CONFORMING, settings.conforming ? 1 : 0);
}

}  // namespace scrivalen::command
