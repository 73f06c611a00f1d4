#pragma once

#include "output/output_buffer.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace scrivalen::document::docx {

inline constexpr int kListLevels = 9;

// The lists of all documents; numbered ones follow.
inline constexpr int kBulletList = 1;
inline constexpr int kTaskList = 2;

/// The level of the items of a list. Lists that are deeper than levels go have the last one.
inline int levelOf(int depth) { return std::min(depth, kListLevels - 1); }

/// The numbered lists of a document. Each is one of its own, so that it begins at its own number.
class Numbering {
 public:
  static constexpr std::size_t kMostLists = 2000;        ///< they are kept until the end
  static constexpr std::int64_t kLargestFirst = 0x7FFF;  ///< number that word processors begin a list at

  /// @param depth  of lists around it, from 0
  /// @return the list's number; 0 when there are too many lists, or it begins at too large a number
  int addList(int depth, std::int64_t first);
  /// Writes the part of all lists.
  void write(OutputBuffer& out) const;

 private:
  struct List {
    int depth;
    std::int64_t first;
  };

  std::vector<List> lists_;
  int deepest_ = 0;  // of their depths
};

}  // namespace scrivalen::document::docx
