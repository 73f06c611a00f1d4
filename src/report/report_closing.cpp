#include "report/report_closing.h"
#include "output/log_loss.h"

namespace scrivalen {

REPORT_ERRORS closeReportFile(ReportFile& file, const scrivalen::LossCounter& loss, ReportError error) noexcept {
  if (!file.IsOpen()) {
    return REPORT_OK;
  }
  const bool whole = file.Close();
  scrivalen::logLoss(file.Name(), loss);
  const bool hasLoss = error.reportLoss();
  if (!whole) {
    error.set(scrivalen::FileError::Write, file.Name(), file.WriteError());
  }
  return whole && !hasLoss ? REPORT_OK : REPORT_FILE_ERROR;
}

}  // namespace scrivalen
