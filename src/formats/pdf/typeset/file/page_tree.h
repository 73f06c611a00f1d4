#pragma once

#include "formats/pdf/typeset/file/pdf_file.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace scrivalen::typeset {

/// Writes the tree of the pages (PDF 1.7, 7.7.3) while they come: a node is written once it is full. Only the nodes
/// that are not full are kept, one a level.
class PageTree {
 public:
  /// @param file  not owned; must outlive this object
  explicit PageTree(PdfFile& file) : file_(file) {}

  /// Adds a page. @return the number of its parent
  int add(int page);
  std::int64_t count() const { return count_; }
  /// Writes the nodes that are left. @return the number of the root
  int finish();

 private:
  struct Node {
    int number = 0;
    int parent = 0;  // 0: not known yet
    std::int64_t pages = 0;
    std::vector<int> kids;
  };

  // 64 to the power of 6 pages are more than a file can hold.
  static constexpr std::size_t kLevels = 6;
  static constexpr std::size_t kKids = 64;

  Node& nodeFor(std::size_t level);
  void close(std::size_t level);
  void writeNode(const Node& node, int parent);

  PdfFile& file_;
  std::array<Node, kLevels> nodes_;
  std::int64_t count_ = 0;
};

}  // namespace scrivalen::typeset
