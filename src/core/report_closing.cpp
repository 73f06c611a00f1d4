#include "core/report_closing.h"

#include "platform/fmt.h"

namespace scrivalen::core {

REPORT_ERRORS closeReportFile(ReportFile& file, const platform::LossCounter& loss, std::wstring& error) {
  if (!file.IsOpen()) {
    return REPORT_OK;
  }
  const bool whole = file.Close();
  platform::logLoss(file.Name(), loss);
  if (whole) {
    return REPORT_OK;
  }
  error = FMT::Format(L"File write error for '%s'. %s", file.Name(), file.WriteError());
  return REPORT_FILE_ERROR;
}

}  // namespace scrivalen::core
