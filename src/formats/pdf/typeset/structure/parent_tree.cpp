#include "formats/pdf/typeset/structure/parent_tree.h"

#include "formats/pdf/typeset/file/syntax.h"

#include <utility>

namespace scrivalen::typeset {

void ParentTree::add(std::int64_t key, int object) { addKid(0, key, key, object); }

void ParentTree::addKid(std::size_t level, std::int64_t first, std::int64_t last, int object) {
  if (level == levels_.size()) {
    levels_.emplace_back();
  }
  if (levels_[level].count == kKids) {
    const Node full = levels_[level];
    addKid(level + 1, full.first, full.last, write(level, false));
  }
  Node& node = levels_[level];
  node.first = node.count == 0 ? first : node.first;
  node.last = last;
  node.kids += node.count == 0 ? "" : " ";
  if (level == 0) {
    appendInteger(node.kids, first);
    node.kids += ' ';
  }
  appendReference(node.kids, object);
  ++node.count;
}

// Writes the node of a level, which is then empty.
int ParentTree::write(std::size_t level, bool isRoot) {
  const Node node = std::exchange(levels_[level], {});
  std::string object = "<<";
  if (!isRoot) {
    object += "/Limits[";
    appendInteger(object, node.first);
    object += ' ';
    appendInteger(object, node.last);
    object += ']';
  }
  object.append(level == 0 ? "/Nums[" : "/Kids[").append(node.kids).append("]>>");
  const int number = file_.newNumber();
  file_.writeStructureObject(number, object);
  return number;
}

int ParentTree::finish() {
  for (std::size_t level = 0; level + 1 < levels_.size(); ++level) {
    if (levels_[level].count > 0) {
      const std::int64_t first = levels_[level].first;
      const std::int64_t last = levels_[level].last;
      addKid(level + 1, first, last, write(level, false));
    }
  }
  return write(levels_.size() - 1, true);
}

}  // namespace scrivalen::typeset
