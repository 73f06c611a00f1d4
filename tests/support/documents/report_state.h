#pragma once

#include "scrivalen/report.h"

namespace scrivalen::test {

/// Opens the state that a report keeps for its formats to the tests.
struct ReportState : AReport {
  static std::int32_t openFlag(const AReport& report) { return report.*(&ReportState::openFlag_); }
  static const std::wstring& styles(const AReport& report) { return report.*(&ReportState::styles_); }
};

}  // namespace scrivalen::test
