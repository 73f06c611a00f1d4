#pragma once

#include "scrivalen/report.h"

#include <iosfwd>
#include <span>

namespace scrivalen::test {

/// The content of one report, to be played between Open and Close of any format.
struct Scenario {
  const char* name;  ///< letters and underscores; also the title and the name of the golden files
  void (*play)(AReport& report);
};

void PrintTo(const Scenario& scenario, std::ostream* out);

/// Every scenario. Those with the current date need a stopped clock.
std::span<const Scenario> scenarios();

}  // namespace scrivalen::test
