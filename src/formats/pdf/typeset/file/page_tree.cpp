#include "formats/pdf/typeset/file/page_tree.h"

#include "formats/pdf/typeset/file/syntax.h"

#include <utility>

namespace scrivalen::typeset {

// The open node of a level. A full one is written first: its parent is needed for that, and a node that turns out to be
// the last of its level is the root.
PageTree::Node& PageTree::nodeFor(std::size_t level) {
  Node& node = nodes_[level];
  if (node.kids.size() == kKids) {
    close(level);
  }
  if (node.number == 0) {
    node.number = file_.newNumber();
  }
  return node;
}

void PageTree::close(std::size_t level) {
  const Node full = std::exchange(nodes_[level], {});
  Node& parent = nodeFor(level + 1);
  parent.kids.push_back(full.number);
  parent.pages += full.pages;
  writeNode(full, parent.number);
}

void PageTree::writeNode(const Node& node, int parent) {
  std::string object = "<</Type/Pages";
  if (parent != 0) {
    object += "/Parent ";
    appendReference(object, parent);
  }
  object += "/Count ";
  appendInteger(object, node.pages);
  object += "/Kids[";
  for (const int kid : node.kids) {
    object += object.back() == '[' ? "" : " ";
    appendReference(object, kid);
  }
  object += "]>>";
  file_.writeObject(node.number, object);
}

int PageTree::add(int page) {
  Node& node = nodeFor(0);
  node.kids.push_back(page);
  ++node.pages;
  ++count_;
  return node.number;
}

int PageTree::finish() {
  std::size_t level = 0;
  const auto hasNodesAbove = [&] {
    for (std::size_t above = level + 1; above < kLevels; ++above) {
      if (nodes_[above].number != 0) {
        return true;
      }
    }
    return false;
  };
  for (; hasNodesAbove(); ++level) {
    if (nodes_[level].number != 0) {
      close(level);
    }
  }
  // The root may be full, so this is not the node for another kid.
  Node& root = nodes_[level];
  if (root.number == 0) {
    root.number = file_.newNumber();
  }
  writeNode(root, 0);
  return root.number;
}

}  // namespace scrivalen::typeset
