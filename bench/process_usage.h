#pragma once

namespace scrivalen::bench {

struct ProcessUsage {
  double cpuSeconds;   // user and system, since the process started
  long peakMemoryKiB;  // the largest resident size
};

ProcessUsage processUsage();

}  // namespace scrivalen::bench
