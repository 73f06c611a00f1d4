#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace scrivalen::test {

/// Takes over the log while it lives. One at a time.
class CapturedLog {
 public:
  CapturedLog();
  CapturedLog(const CapturedLog&) = delete;
  CapturedLog& operator=(const CapturedLog&) = delete;
  ~CapturedLog();

  const std::vector<std::wstring>& lines() const;
};

/// Takes over the error box while it lives. One at a time.
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

/// Lets the clock stand still at a time while it lives: seconds since 1970-01-01 UTC. One at a time.
class FixedClock {
 public:
  explicit FixedClock(std::int64_t seconds);
  FixedClock(const FixedClock&) = delete;
  FixedClock& operator=(const FixedClock&) = delete;
  ~FixedClock();
};

}  // namespace scrivalen::test
