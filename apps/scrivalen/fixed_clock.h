#pragma once

#include "host.h"

namespace scrivalen::command {

/// Sets the library's clock to what SOURCE_DATE_EPOCH says, so that equal inputs give equal bytes, while this object
/// lives. Raises UsageError when that is no number of seconds.
class FixedClock {
 public:
  explicit FixedClock(const Host& host);
  FixedClock(const FixedClock&) = delete;
  FixedClock& operator=(const FixedClock&) = delete;
  ~FixedClock();
};

}  // namespace scrivalen::command
