#include "report/report_closing.h"
#include "output/loss.h"

namespace scrivalen::core {

REPORT_ERRORS closeReportFile(ReportFile& file, const platform::LossCounter& loss, ReportError error) noexcept {
  if (!file.IsOpen()) {
    return REPORT_OK;
  }
  const bool whole = file.Close();
  platform::logLoss(file.Name(), loss);
  const bool hasLoss = error.reportLoss();
  if (!whole) {
    error.set(platform::FileError::Write, file.Name(), file.WriteError());
  }
  return whole && !hasLoss ? REPORT_OK : REPORT_FILE_ERROR;
}

}  // namespace scrivalen::core
