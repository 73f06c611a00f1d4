#pragma once

#include "formats/pdf/typeset/file/pdf_file.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace scrivalen::typeset {

/// Writes the tree that leads from content to its structure elements, by ascending keys (PDF 1.7, 14.7.4.4). A node is
/// written once it is full. Only the nodes that are not full are kept, one a level.
class ParentTree {
 public:
  /// @param file  not owned; must outlive this object
  explicit ParentTree(PdfFile& file) : file_(file), levels_(1) {}

  /// Reserves the key of a page or annotation.
  std::int64_t newKey() { return nextKey_++; }
  std::int64_t nextKey() const { return nextKey_; }
  /// @param key     higher than those before
  /// @param object  the element, or the array of the elements of a page
  void add(std::int64_t key, int object);
  /// Writes the nodes that are left. @return the number of the root
  int finish();

 private:
  struct Node {
    std::int64_t first = 0;
    std::int64_t last = 0;
    std::size_t count = 0;
    std::string kids;  // of a leaf pairs of key and object, else the nodes below
  };

  static constexpr std::size_t kKids = 64;

  void addKid(std::size_t level, std::int64_t first, std::int64_t last, int object);
  int write(std::size_t level, bool isRoot);

  PdfFile& file_;
  std::vector<Node> levels_;
  std::int64_t nextKey_ = 0;
};

}  // namespace scrivalen::typeset
