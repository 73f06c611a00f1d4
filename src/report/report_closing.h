#pragma once

#include "report/report_error.h"
#include "text/loss_counter.h"
#include "scrivalen/report.h"

namespace scrivalen::core {

/// Closes a report's file and tells in the log which characters it could not hold.
/// @param error  receives the reason when bytes were lost, or content because memory ran out
REPORT_ERRORS closeReportFile(ReportFile& file, const platform::LossCounter& loss, ReportError error) noexcept;

}  // namespace scrivalen::core
