#include "system/process/stop.h"

#include <atomic>
#include <utility>

namespace scrivalen {
namespace {

std::atomic<StopQuery> stopQuery = nullptr;
thread_local StopScope* stopScope = nullptr;

}  // namespace

void setStopQuery(StopQuery query) noexcept { stopQuery = query; }

StopScope::StopScope(Query query, void* user) noexcept
    : query_(query), user_(user), before_(std::exchange(stopScope, this)) {}

StopScope::~StopScope() { stopScope = before_; }

bool canStop() noexcept { return stopScope || stopQuery.load() != nullptr; }

bool isStopRequested() noexcept {
  const StopQuery query = stopQuery;
  return (query && query()) || (stopScope && stopScope->isStopRequested());
}

}  // namespace scrivalen
