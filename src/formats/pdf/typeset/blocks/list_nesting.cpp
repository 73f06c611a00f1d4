#include "formats/pdf/typeset/blocks/list_nesting.h"

namespace scrivalen::typeset {
namespace {

constexpr Length kBulletIndent = 16 * kPoint;
constexpr Length kNumberIndent = 22 * kPoint;

}  // namespace

void ListNesting::begin(const document::Event& list) { lists_.push_back({list.ordered, list.tight, list.number}); }

Length ListNesting::indent() const { return lists_.back().isOrdered ? kNumberIndent : kBulletIndent; }

std::string ListNesting::next(document::Task task) {
  List& list = lists_.back();
  std::string marker;
  if (list.isOrdered) {
    marker = std::to_string(list.number++) + ".";
  } else if (task == document::Task::None) {
    marker = lists_.size() % 2 == 1 ? "\u2022" : "\u2013";
  }
  if (task != document::Task::None) {
    marker += marker.empty() ? "" : " ";
    marker += task == document::Task::Done ? "\u2611" : "\u2610";
  }
  return marker;
}

}  // namespace scrivalen::typeset
