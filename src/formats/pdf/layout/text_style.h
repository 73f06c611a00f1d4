#pragma once

#include "scrivalen/pdf_doc.h"

#include <array>
#include <bit>
#include <cstdint>
#include <map>
#include <vector>

namespace scrivalen::pdf {

inline constexpr _RGB_COLOR kBlack{0, 0, 0};

/// The style of an item's text.
struct CPDFtextStyle {
  int font = 0;
  int size = 12;
  int paragraphType = 0;
  bool bold = false;
  bool italic = false;
  _RGB_COLOR color = kBlack;
};

/// The index of the style of items without text.
inline constexpr std::uint32_t kDefaultStyle = 0;

using PoolKey = std::array<std::uint64_t, 5>;

inline PoolKey keyOf(const _RGB_COLOR& color) {
  return {std::bit_cast<std::uint64_t>(color.red), std::bit_cast<std::uint64_t>(color.green),
          std::bit_cast<std::uint64_t>(color.blue)};
}

inline PoolKey keyOf(const CPDFtextStyle& style) {
  PoolKey key = keyOf(style.color);
  key[3] = (std::uint64_t{static_cast<std::uint32_t>(style.font)} << 32) | static_cast<std::uint32_t>(style.size);
  key[4] = (std::uint64_t{static_cast<std::uint32_t>(style.paragraphType)} << 2) | (style.bold ? 2u : 0u) |
           (style.italic ? 1u : 0u);
  return key;
}

/// Stores each distinct value once, so that items keep only a 32-bit index.
template <typename Value>
class Pool {
 public:
  std::uint32_t indexOf(const Value& value) {
    const PoolKey key = keyOf(value);
    if (values_.empty() || key != lastKey_) {
      const auto [found, added] = indexes_.try_emplace(key, static_cast<std::uint32_t>(values_.size()));
      if (added) {
        values_.push_back(value);
      }
      last_ = found->second;
      lastKey_ = key;
    }
    return last_;
  }

  const Value& operator[](std::uint32_t index) const { return values_[index]; }

 private:
  std::vector<Value> values_;
  std::map<PoolKey, std::uint32_t> indexes_;
  PoolKey lastKey_{};
  std::uint32_t last_ = 0;
};

}  // namespace scrivalen::pdf
