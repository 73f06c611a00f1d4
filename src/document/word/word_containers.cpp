#include "document/word/word_containers.h"

#include <algorithm>
#include <utility>

namespace scrivalen::document {
namespace {

constexpr int kLargestIndentShare = 2;  // deeper parts leave at least half of the width

}  // namespace

void WordContainers::beginList(const Event& list) {
  const auto level = std::count_if(open_.begin(), open_.end(), [](const Container& outer) { return outer.isList; });
  Container opened{.isList = true, .isOrdered = list.ordered, .isTight = list.tight, .number = list.number};
  opened.level = static_cast<int>(level);
  opened.list = addList(list, opened.level);
  open_.push_back(opened);
}

void WordContainers::beginItem(Task task) {
  markerDepth_ = open_.size();
  task_ = task;
}

BlockKind WordContainers::kind() const {
  return open_.empty() ? BlockKind::Normal : open_.back().isList ? BlockKind::List : BlockKind::Quote;
}

int WordContainers::indent() const {
  int sum = 0;
  for (const Container& container : open_) {
    sum += container.isList ? kListIndent : kQuoteIndent;
  }
  return std::min(sum, textWidth_ / kLargestIndentShare);
}

bool WordContainers::isInQuote() const {
  return std::any_of(open_.begin(), open_.end(), [](const Container& container) { return !container.isList; });
}

WordContainers::Container& WordContainers::takeMarkedList() { return open_[std::exchange(markerDepth_, 0) - 1]; }

}  // namespace scrivalen::document
