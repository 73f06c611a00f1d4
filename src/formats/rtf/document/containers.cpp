#include "formats/rtf/document/containers.h"

#include "formats/rtf/document/escape.h"
#include "formats/rtf/document/prolog/list_table.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace scrivalen::document::rtf {
namespace {

constexpr int kQuoteIndent = 360;       // twips
constexpr int kLargestIndentShare = 2;  // deeper parts leave at least half of the width

std::string_view boxOf(Task task) {
  constexpr std::string_view kBoxes[] = {"", "\\u9744?", "\\u9745?"};
  return kBoxes[static_cast<int>(task)];
}

}  // namespace

void Containers::beginList(const Event& list) {
  Container opened{.isList = true, .isOrdered = list.ordered, .isTight = list.tight, .number = list.number};
  opened.depth =
      static_cast<int>(std::count_if(open_.begin(), open_.end(), [](const Container& outer) { return outer.isList; }));
  if (!list.ordered) {
    opened.list = kBulletList;
  } else if (list.number == 1 && numberedLists_ < kNumberedLists) {
    opened.list = kFirstNumberedList + numberedLists_++;
  }
  open_.push_back(opened);
}

void Containers::beginItem(Task task) {
  markerDepth_ = open_.size();
  task_ = task;
}

Style Containers::style() const {
  return open_.empty() ? Style::Normal : open_.back().isList ? Style::List : Style::Quote;
}

int Containers::indent() const {
  int sum = 0;
  for (const Container& container : open_) {
    sum += container.isList ? kListIndent : kQuoteIndent;
  }
  return std::min(sum, textWidth_ / kLargestIndentShare);
}

bool Containers::isInQuote() const {
  return std::any_of(open_.begin(), open_.end(), [](const Container& container) { return !container.isList; });
}

// Readers join the borders of paragraphs of a quote that have the same indent.
void Containers::writeWords(bool isRightToLeft) {
  if (open_.empty()) {
    return;
  }
  put(out_, open_.back().isList && isInQuote() ? styles_.quoteBorder(isRightToLeft) : "");
  put(out_, open_.back().isTight ? "\\contextualspace" : "");
  if (hasMarker()) {
    writeListWords(open_[markerDepth_ - 1]);
  }
  writeIndent(isRightToLeft);
}

// \lin and \rin are the begin and the end of lines; \li, which some readers need in lists, is the left or the begin.
void Containers::writeIndent(bool isRightToLeft) {
  put(out_, "\\li", indent());
  if (isRightToLeft) {
    put(out_, "\\ri0\\rin0\\lin", indent());
  }
}

void Containers::writeListWords(const Container& list) {
  if (list.list > 0 && (list.isOrdered || task_ == Task::None)) {
    put(out_, "\\ls", list.list);
    put(out_, "\\ilvl", list.isOrdered ? 0 : std::min(list.depth, kBulletLevels - 1));
  }
  put(out_, "\\fi", -kListIndent);
  put(out_, "\\tx", indent());
}

void Containers::writeMarker() {
  const std::size_t depth = std::exchange(markerDepth_, 0);
  if (depth == 0) {
    return;
  }
  Container& list = open_[depth - 1];
  if (list.isOrdered) {
    writeNumber(list);
  } else {
    writeBullet(list);
  }
}

// Readers that number an item themselves skip \listtext.
void Containers::writeNumber(Container& list) {
  put(out_, list.list > 0 ? "{\\listtext " : "", list.number++);
  put(out_, list.list > 0 ? ".\\tab}" : ".\\tab ");
  if (task_ != Task::None) {
    put(out_, boxOf(task_));
    out_.put(' ');
  }
}

void Containers::writeBullet(const Container& list) {
  if (task_ != Task::None) {
    put(out_, boxOf(task_));
    return put(out_, "\\tab ");
  }
  put(out_, "{\\listtext ");
  writeText(out_, bulletOf(list.depth));
  put(out_, "\\tab}");
}

}  // namespace scrivalen::document::rtf
