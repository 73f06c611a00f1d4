#include "system/process/stop.h"

#include <atomic>

namespace scrivalen {
namespace {

std::atomic<StopQuery> stopQuery = nullptr;

}  // namespace

void setStopQuery(StopQuery query) noexcept { stopQuery = query; }

bool canStop() noexcept { return stopQuery.load() != nullptr; }

bool isStopRequested() noexcept {
  const StopQuery query = stopQuery;
  return query && query();
}

}  // namespace scrivalen
