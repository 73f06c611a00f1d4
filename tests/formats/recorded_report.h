#pragma once

#include "scrivalen/report.h"

#include <functional>
#include <string>

namespace scrivalen::test {

using Play = std::function<void(AReport& report)>;

/// Plays a document report and returns the events, as RecordedDocument writes them, of a format that is not HTML.
std::string recorded(const Play& play);
/// The same for HTML.
std::string recordedAsHtml(const Play& play);

}  // namespace scrivalen::test
