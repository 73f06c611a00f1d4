#pragma once

#include "text/loss_counter.h"

#include <string_view>

namespace scrivalen {

/// Logs in one line how many characters of a report were lost and which was the first; logs nothing without a loss.
/// When memory runs out here, the line says less and the report is unaffected.
void logLoss(std::wstring_view file, const LossCounter& loss) noexcept;

}  // namespace scrivalen
