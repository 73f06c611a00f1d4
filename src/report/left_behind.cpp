#include "report/left_behind.h"

#include <mutex>
#include <utility>

namespace scrivalen {
namespace {

struct Objects {
  std::mutex mutex;
  std::shared_ptr<LeftBehind> first;
};

// Never destroyed: these objects must not be flushed or closed at the end of the process either.
union Forever {
  Forever() noexcept : objects() {}
  Forever(const Forever&) = delete;
  Forever& operator=(const Forever&) = delete;
  ~Forever() {}

  Objects objects;
};

Objects& leftBehind() {
  static Forever forever;
  return forever.objects;
}

}  // namespace

void leaveBehind(std::shared_ptr<LeftBehind> object) noexcept {
  Objects& objects = leftBehind();
  const std::lock_guard lock(objects.mutex);
  object->nextLeftBehind = std::move(objects.first);
  objects.first = std::move(object);
}

}  // namespace scrivalen
