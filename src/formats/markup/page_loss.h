#pragma once

#include "output/log_loss.h"
#include "scrivalen/html_report.h"

namespace scrivalen::formats {

/// The characters that a page could not represent, for a report that makes one file of several pages.
struct PageLoss {
  /// Moves the count out of a page, so that its Close does not log it.
  static scrivalen::LossCounter takeFrom(HtmlReport& page);
};

}  // namespace scrivalen::formats
