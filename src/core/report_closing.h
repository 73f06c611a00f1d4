#pragma once

#include "platform/loss.h"
#include "scrivalen/report.h"

#include <string>

namespace scrivalen::core {

/// Closes a report's file and tells in the log which characters it could not hold.
/// @param error  receives the reason when bytes were lost
REPORT_ERRORS closeReportFile(ReportFile& file, const platform::LossCounter& loss, std::wstring& error);

}  // namespace scrivalen::core
