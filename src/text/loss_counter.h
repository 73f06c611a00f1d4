#pragma once

#include <cstdint>
#include <string_view>

namespace scrivalen {

/// Counts the characters that an output could not represent, and keeps the first of them.
class LossCounter {
 public:
  LossCounter() = default;
  LossCounter(std::uint64_t count, char32_t first) : count_(count), first_(first) {}

  void note(char32_t character) {
    if (count_++ == 0) {
      first_ = character;
    }
  }
  void add(const LossCounter& other) {
    if (count_ == 0) {
      first_ = other.first_;
    }
    count_ += other.count_;
  }
  void reset() { count_ = 0; }
  std::uint64_t count() const { return count_; }
  char32_t first() const { return first_; }

 private:
  std::uint64_t count_ = 0;
  char32_t first_ = 0;
};

}  // namespace scrivalen
