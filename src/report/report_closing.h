#pragma once

#include "report/report_error.h"
#include "scrivalen/report.h"
#include "text/loss_counter.h"

namespace scrivalen {

/// Closes a report's file and logs which characters it could not represent.
/// @param error  gets the reason when bytes were lost, or when content was lost because memory ran out
REPORT_ERRORS closeReportFile(ReportFile& file, const scrivalen::LossCounter& loss, ReportError error) noexcept;

}  // namespace scrivalen
