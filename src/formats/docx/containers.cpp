#include "formats/docx/containers.h"

#include "formats/docx/xml.h"

#include <algorithm>
#include <utility>

namespace scrivalen::document::docx {
namespace {

constexpr int kQuoteIndent = 360;       // twips
constexpr int kLargestIndentShare = 2;  // deeper parts leave at least half of the width

std::string_view boxOf(Task task) {
  constexpr std::string_view kBoxes[] = {"", "\xE2\x98\x90", "\xE2\x98\x92"};  // U+2610, U+2612, as Word has them
  return kBoxes[static_cast<int>(task)];
}

std::string indentElement(int left) { return joined({"<w:ind w:left=\"", std::to_string(left), "\"/>"}); }

// Of a paragraph with a marker.
std::string hangingIndentElement(int left) {
  return joined({"<w:ind w:left=\"", std::to_string(left), "\" w:hanging=\"", std::to_string(kListIndent), "\"/>"});
}

// Readers join the borders of paragraphs that have the same ones.
std::string quoteBorder(bool isRightToLeft) {
  return joined({"<w:pBdr>", isRightToLeft ? "<w:left w:val=\"nil\"/><w:right" : "<w:left",
                 " w:val=\"single\" w:sz=\"16\" w:space=\"9\" w:color=\"", kLineColor, "\"/></w:pBdr>"});
}

}  // namespace

void Containers::beginList(const Event& list) {
  Container opened{.isList = true, .isOrdered = list.ordered, .isTight = list.tight, .number = list.number};
  const auto around = std::count_if(open_.begin(), open_.end(), [](const Container& outer) { return outer.isList; });
  opened.level = std::min(static_cast<int>(around), kListLevels - 1);
  opened.list = list.ordered ? numbering_.addList(opened.level, list.number) : kBulletList;
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

ContainerProperties Containers::takeProperties(Style style, bool isRightToLeft) {
  ContainerProperties properties;
  if (open_.empty()) {
    return properties;
  }
  // The style of a quote has the border and the indent of one that is not in another.
  const bool isQuote = style == Style::Quote;
  const bool isOneQuote = isQuote && open_.size() == 1;
  if (isInQuote() && style != Style::Code && (isRightToLeft || !isQuote)) {
    properties.border = quoteBorder(isRightToLeft);
  }
  properties.indent = isOneQuote ? std::string() : indentElement(indent());
  properties.space = open_.back().isTight ? "<w:contextualSpacing/>" : "";
  if (hasMarker()) {
    properties.marker = takeMarker(properties);
  }
  return properties;
}

std::string Containers::takeMarker(ContainerProperties& properties) {
  Container& list = open_[std::exchange(markerDepth_, 0) - 1];
  const std::string_view box = boxOf(task_);
  const bool isBox = !list.isOrdered && !box.empty();
  const int number = isBox ? kTaskList : list.list;
  const std::int64_t shown = list.number++;
  if (number == 0) {
    properties.indent = hangingIndentElement(indent());
    return joined({std::to_string(shown), ".\t", box, box.empty() ? "" : " "});
  }
  properties.list = joined({"<w:numPr><w:ilvl w:val=\"", std::to_string(list.level), "\"/><w:numId w:val=\"",
                            std::to_string(number), "\"/></w:numPr>"});
  const bool isUsual = indent() == (list.level + 1) * kListIndent;
  properties.indent = isUsual ? std::string() : hangingIndentElement(indent());
  return joined({box, isBox ? "\t" : box.empty() ? "" : " "});
}

}  // namespace scrivalen::document::docx
