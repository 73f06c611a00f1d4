#pragma once

#include "report/report_error.h"
#include "scrivalen/report.h"
#include "text/loss_counter.h"

namespace scrivalen {

/// Closes a report's file and tells in the log which characters it could not hold.
/// @param error  receives the reason when bytes were lost, or content because memory ran out
REPORT_ERRORS closeReportFile(ReportFile& file, const scrivalen::LossCounter& loss, ReportError error) noexcept;

}  // namespace scrivalen
