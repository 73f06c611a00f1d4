#include "process_usage.h"

#include <sys/resource.h>

namespace scrivalen::bench {
namespace {

double seconds(const timeval& time) {
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) * 1e-6;
}

}  // namespace

ProcessUsage processUsage() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  return {seconds(usage.ru_utime) + seconds(usage.ru_stime), usage.ru_maxrss};
}

}  // namespace scrivalen::bench
