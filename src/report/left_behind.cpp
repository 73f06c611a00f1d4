#include "report/left_behind.h"

#include <mutex>
#include <utility>
#include <vector>

namespace scrivalen {
namespace {

struct Objects {
  std::mutex mutex;
  std::vector<std::shared_ptr<void>> list;
};

// Holds an object and never releases it.
union Forgotten {
  explicit Forgotten(std::shared_ptr<void> owner) noexcept : object(std::move(owner)) {}
  Forgotten(const Forgotten&) = delete;
  Forgotten& operator=(const Forgotten&) = delete;
  ~Forgotten() {}

  std::shared_ptr<void> object;
};

// Never destroyed: these objects must not be flushed or closed at the end of the process either.
Objects& objects() {
  static Objects& kept = *new Objects;
  return kept;
}

}  // namespace

void leaveBehind(std::shared_ptr<void> object) noexcept {
  try {
    const std::lock_guard lock(objects().mutex);
    objects().list.push_back(std::move(object));
  } catch (...) {
    // When memory for the list runs out, the object is kept all the same, but a leak checker reports it.
    const Forgotten forgotten(std::move(object));
  }
}

}  // namespace scrivalen
