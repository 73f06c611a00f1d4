#include "formats/markdown/lines.h"

namespace scrivalen::markdown {
namespace {

constexpr std::uint32_t kLargestNumber = 999999999;  // CommonMark 0.30, 5.2

std::string_view withoutBlanks(std::string_view text) { return text.substr(0, text.find_last_not_of(' ') + 1); }

}  // namespace

void Lines::startLine() {
  write(first_.empty() ? prefix_ : first_);
  first_.clear();
}

void Lines::writeEmptyLine() {
  write(withoutBlanks(first_.empty() ? prefix_ : first_));
  first_.clear();
  endLine();
}

void Lines::writeLines(std::string_view text) {
  while (true) {
    const std::size_t end = text.find('\n');
    write(text.substr(0, end));
    if (end == text.npos) {
      return;
    }
    text.remove_prefix(end + 1);
    endLine();
    if (!text.empty()) {
      startLine();
    }
  }
}

void Lines::writeComment() {
  startLine();
  write("<!-- -->\n");
}

void Lines::startBlock(Block block) {
  separate(block);
  containers_.back().last = block;
}

void Lines::separate(Block next) {
  const Container& container = containers_.back();
  if (container.last == Block::None) {
    return;
  }
  const bool isTight = container.isItem && container.isTight;
  if (!isTight || (container.last == Block::Text && next == Block::Text)) {
    writeEmptyLine();
  } else if (mergesInTightItem(container.last, next)) {
    writeComment();
  }
}

// Whether a block without a line before it would become part of the last one (CommonMark 0.30, 5.1: lazy lines).
bool Lines::mergesInTightItem(Block last, Block next) const {
  const bool isOpen = last == Block::Text || last == Block::Quote || last == Block::List || last == Block::Table;
  switch (next) {
    case Block::Text:
    case Block::Table:
    case Block::Other: return isOpen;
    case Block::List: return isOpen && (isOrdered(lists_.back().marker) && lists_.back().number != 1);
    case Block::Quote: return last == Block::Quote;
    default: return false;
  }
}

void Lines::open(std::string_view first, std::string_view further, bool isItem, bool isTight) {
  containers_.push_back({.isItem = isItem, .isTight = isTight, .prefixSize = prefix_.size()});
  if (isItem || !first_.empty()) {
    if (first_.empty()) {
      first_ = prefix_;
    }
    first_ += first;
  }
  prefix_ += further;
}

void Lines::beginQuote() {
  startBlock(Block::Quote);
  open("> ", "> ", false, false);
}

void Lines::endQuote() {
  if (isContainerEmpty()) {
    writeEmptyLine();
  }
  prefix_.resize(containers_.back().prefixSize);
  containers_.pop_back();
}

// Two lists that follow one another have different markers, or they would be one.
void Lines::beginList(bool ordered, int first, bool tight) {
  Container& container = containers_.back();
  char marker = ordered ? '.' : '-';
  if (container.last == Block::List && container.lastMarker == marker) {
    marker = ordered ? ')' : '+';
  }
  lists_.push_back({tight, marker, static_cast<std::uint32_t>(first), false});
}

void Lines::beginItem() {
  List& list = lists_.back();
  if (!list.isBegun) {
    startBlock(Block::List);
    containers_.back().lastMarker = list.marker;
    list.isBegun = true;
  } else if (!list.tight) {
    writeEmptyLine();
  }
  std::string marker(1, list.marker);
  if (isOrdered(list.marker)) {
    marker.insert(0, std::to_string(list.number));
    list.number += list.number < kLargestNumber ? 1 : 0;
  }
  marker += ' ';
  open(marker, std::string(marker.size(), ' '), true, list.tight);
}

void Lines::endItem() {
  if (isContainerEmpty()) {
    writeEmptyLine();
  }
  prefix_.resize(containers_.back().prefixSize);
  containers_.pop_back();
}

}  // namespace scrivalen::markdown
