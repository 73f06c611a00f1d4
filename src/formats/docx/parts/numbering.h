#pragma once

#include "output/output_buffer.h"

#include <cstdint>
#include <vector>

namespace scrivalen::document::docx {

inline constexpr int kListLevels = 9;

// The lists of all documents; numbered ones follow.
inline constexpr int kBulletList = 1;
inline constexpr int kTaskList = 2;

/// The numbered lists of a document. Each is one of its own, so that it begins at its own number.
class Numbering {
 public:
  static constexpr std::size_t kMostLists = 2000;  ///< they are kept until the end

  /// @param level  0 to kListLevels - 1
  /// @return the list's number; 0 when there are too many lists
  int addList(int level, std::int64_t first);
  /// Writes the part of all lists.
  void write(OutputBuffer& out) const;

 private:
  struct List {
    int level;
    std::int64_t first;
  };

  std::vector<List> lists_;
};

}  // namespace scrivalen::document::docx
