#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace scrivalen::test {

/// Captures the log for its lifetime. One at a time.
class CapturedLog {
 public:
  CapturedLog();
  CapturedLog(const CapturedLog&) = delete;
  CapturedLog& operator=(const CapturedLog&) = delete;
  ~CapturedLog();

  const std::vector<std::wstring>& lines() const;
};

/// Captures the error box for its lifetime. One at a time.
class CapturedErrorBox {
 public:
  struct Shown {
    std::wstring title;
    std::wstring text;
  };

  CapturedErrorBox();
  CapturedErrorBox(const CapturedErrorBox&) = delete;
  CapturedErrorBox& operator=(const CapturedErrorBox&) = delete;
  ~CapturedErrorBox();

  const std::vector<Shown>& shown() const;
};

/// Stops the clock at a time, in seconds since 1970-01-01 UTC, for its lifetime. One at a time.
class FixedClock {
 public:
  explicit FixedClock(std::int64_t seconds);
  FixedClock(const FixedClock&) = delete;
  FixedClock& operator=(const FixedClock&) = delete;
  ~FixedClock();
};

}  // namespace scrivalen::test
