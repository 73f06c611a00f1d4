#pragma once

#include "document/document.h"

#include <scrivalen/scrivalen.h>

namespace scrivalen::command {

/// One report of a format that only a MultiReport reaches.
class SingleReport {
 public:
  explicit SingleReport(REPORT_FORMAT format) : format_(format) {}
  SingleReport(const SingleReport&) = delete;
  SingleReport& operator=(const SingleReport&) = delete;
  ~SingleReport();

  bool open(const std::wstring& file, const DocumentSettings& settings);
  bool close();
  /// Lets the report be that is not to be finished. It must have no file open.
  void abandon() { isOpen_ = false; }
  std::wstring error() const { return report_.GetError(); }

  AReport& get() { return report_; }
  AReport* operator->() { return &report_; }

 private:
  REPORT_FORMAT format_;
  MultiReport report_;
  bool isOpen_ = false;
};

/// Gives a report what every format may use of the settings.
void applySettings(AReport& report, const DocumentSettings& settings);

}  // namespace scrivalen::command
