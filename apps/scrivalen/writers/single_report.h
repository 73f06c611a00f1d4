#pragma once

#include "events/document.h"

#include <scrivalen/scrivalen.h>

namespace scrivalen::command {

/// A single report of a format that can only be created through a MultiReport.
class SingleReport {
 public:
  explicit SingleReport(REPORT_FORMAT format) : format_(format) {}
  SingleReport(const SingleReport&) = delete;
  SingleReport& operator=(const SingleReport&) = delete;
  ~SingleReport();

  bool open(const std::wstring& file, const DocumentSettings& settings);
  bool close();
  /// Keeps the report from being closed. No file of it may be open.
  void abandon() { isOpen_ = false; }
  std::wstring error() const { return report_.GetError(); }

  AReport& get() { return report_; }
  AReport* operator->() { return &report_; }

 private:
  REPORT_FORMAT format_;
  MultiReport report_;
  bool isOpen_ = false;
};

/// Sets the options that apply to all formats.
void applySettings(AReport& report, const DocumentSettings& settings);

}  // namespace scrivalen::command
