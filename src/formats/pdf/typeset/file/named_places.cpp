#include "formats/pdf/typeset/file/named_places.h"

#include "formats/pdf/typeset/file/syntax.h"

#include <algorithm>
#include <utility>

namespace scrivalen::typeset {
namespace {

constexpr std::size_t kNamesInLeaf = 64;
constexpr std::size_t kKidsInNode = 64;

using Entry = std::pair<const std::string, Place>;

// A node of the tree, with the least and greatest name in it.
struct Node {
  int number;
  std::string_view first;
  std::string_view last;
};

void appendLimits(std::string& object, std::string_view first, std::string_view last) {
  object += "/Limits[";
  appendString(object, first);
  appendString(object, last);
  object += ']';
}

Node writeLeaf(PdfFile& file, const Entry* const* begin, const Entry* const* end) {
  const Node node{file.newNumber(), (*begin)->first, end[-1]->first};
  std::string object = "<<";
  appendLimits(object, node.first, node.last);
  object += "/Names[";
  for (; begin != end; ++begin) {
    appendString(object, (*begin)->first);
    appendDestination(object, (*begin)->second);
  }
  object += "]>>";
  file.writeObject(node.number, object);
  return node;
}

Node writeNode(PdfFile& file, const Node* begin, const Node* end, bool isRoot) {
  const Node node{file.newNumber(), begin->first, end[-1].last};
  std::string object = "<<";
  if (!isRoot) {
    appendLimits(object, node.first, node.last);
  }
  object += "/Kids[";
  for (; begin != end; ++begin) {
    object += object.back() == '[' ? "" : " ";
    appendReference(object, begin->number);
  }
  object += "]>>";
  file.writeObject(node.number, object);
  return node;
}

}  // namespace

void NamedPlaces::add(std::string_view name, const Place& place) {
  if (places_.find(name) == places_.end()) {
    places_.emplace(name, place);
  }
}

const Place* NamedPlaces::find(std::string_view name) const {
  const auto found = places_.find(name);
  return found == places_.end() ? nullptr : &found->second;
}

int NamedPlaces::write(PdfFile& file) const {
  std::vector<const Entry*> sorted;
  sorted.reserve(places_.size());
  for (const Entry& entry : places_) {
    if (entry.first.size() <= longestString(file.standard())) {
      sorted.push_back(&entry);
    }
  }
  if (sorted.empty()) {
    return 0;
  }
  std::sort(sorted.begin(), sorted.end(), [](const Entry* a, const Entry* b) { return a->first < b->first; });
  std::vector<Node> nodes;
  for (std::size_t at = 0; at < sorted.size(); at += kNamesInLeaf) {
    const std::size_t end = std::min(at + kNamesInLeaf, sorted.size());
    nodes.push_back(writeLeaf(file, sorted.data() + at, sorted.data() + end));
  }
  do {
    std::vector<Node> parents;
    const bool isRoot = nodes.size() <= kKidsInNode;
    for (std::size_t at = 0; at < nodes.size(); at += kKidsInNode) {
      const std::size_t end = std::min(at + kKidsInNode, nodes.size());
      parents.push_back(writeNode(file, nodes.data() + at, nodes.data() + end, isRoot));
    }
    nodes = std::move(parents);
  } while (nodes.size() > 1);
  return nodes.front().number;
}

}  // namespace scrivalen::typeset
