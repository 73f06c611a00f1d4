#pragma once

#include "text/loss_counter.h"

#include <string_view>

namespace scrivalen {

/// Logs one line that tells how many characters of a report were lost and which the first was; nothing without a loss.
/// When memory runs out here, the report stays good and the line says less.
void logLoss(std::wstring_view file, const LossCounter& loss) noexcept;

}  // namespace scrivalen
