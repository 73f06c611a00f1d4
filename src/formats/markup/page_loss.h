#pragma once

#include "output/log_loss.h"
#include "scrivalen/html_report.h"

namespace scrivalen::formats {

/// The characters that a page could not hold, for a report whose pages are parts of one file.
struct PageLoss {
  /// Takes their count from a page, whose Close then does not log it.
  static scrivalen::LossCounter takeFrom(HtmlReport& page);
};

}  // namespace scrivalen::formats
