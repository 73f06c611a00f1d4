#pragma once

#include <cstddef>
#include <cstring>
#include <memory>
#include <string_view>
#include <vector>

namespace scrivalen::document {

/// Memory for texts that are all given up at once. Their addresses stay the same until then.
class Arena {
 public:
  /// Space for a text whose length is known only once it is written; keep() takes the part in use.
  char* reserve(std::size_t size) {
    if (size > static_cast<std::size_t>(end_ - at_)) {
      grow(size);
    }
    return at_;
  }
  /// @param end  where the text ends that begins where reserve said
  std::string_view keep(const char* end) {
    const std::string_view kept(at_, static_cast<std::size_t>(end - at_));
    at_ += kept.size();
    used_ += kept.size();
    return kept;
  }
  std::string_view copy(std::string_view text) {
    if (text.empty()) {
      return {};
    }
    char* const out = reserve(text.size());
    std::memcpy(out, text.data(), text.size());
    return keep(out + text.size());
  }

  /// Bytes of texts since the last reset.
  std::size_t used() const { return used_; }

  void reset() {
    if (chunks_.size() > 1 || firstSize_ > kChunk) {
      chunks_.clear();
      firstSize_ = 0;
      at_ = end_ = nullptr;
    } else if (!chunks_.empty()) {
      at_ = chunks_.front().get();
      end_ = at_ + firstSize_;
    }
    used_ = 0;
  }

 private:
  static constexpr std::size_t kChunk = 16384;

  void grow(std::size_t size) {
    const std::size_t chunk = size > kChunk ? size : kChunk;
    chunks_.push_back(std::make_unique_for_overwrite<char[]>(chunk));
    at_ = chunks_.back().get();
    end_ = at_ + chunk;
    if (chunks_.size() == 1) {
      firstSize_ = chunk;
    }
  }

  std::vector<std::unique_ptr<char[]>> chunks_;
  std::size_t firstSize_ = 0;
  char* at_ = nullptr;
  char* end_ = nullptr;
  std::size_t used_ = 0;
};

}  // namespace scrivalen::document
