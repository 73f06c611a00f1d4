#pragma once

namespace scrivalen::bench {

struct ProcessUsage {
  double cpuSeconds;   // user and system, since the process started
  long peakMemoryKiB;  // the most that was resident at a time
};

ProcessUsage processUsage();

}  // namespace scrivalen::bench
