#include "core/left_behind.h"

#include <mutex>
#include <utility>
#include <vector>

namespace scrivalen::core {
namespace {

struct Objects {
  std::mutex mutex;
  std::vector<std::shared_ptr<void>> list;
};

// Never destroyed: what is kept here must not be flushed or closed at the end of the process either.
Objects& objects() {
  static Objects& kept = *new Objects;
  return kept;
}

}  // namespace

void leaveBehind(std::shared_ptr<void> object) {
  const std::lock_guard lock(objects().mutex);
  objects().list.push_back(std::move(object));
}

}  // namespace scrivalen::core
