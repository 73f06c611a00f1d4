#include "formats/docx/containers.h"

#include "formats/docx/parts/styles.h"
#include "formats/docx/xml.h"

#include <algorithm>

namespace scrivalen::document::docx {
namespace {

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

int Containers::addList(const Event& list, int level) {
  return list.ordered ? numbering_.addList(std::min(level, kListLevels - 1), list.number) : kBulletList;
}

ContainerProperties Containers::takeProperties(BlockKind kind, bool isRightToLeft) {
  ContainerProperties properties;
  if (open().empty()) {
    return properties;
  }
  // The style of a quote has the border and the indent of one that is not in another.
  const bool isQuote = kind == BlockKind::Quote;
  const bool isOneQuote = isQuote && open().size() == 1;
  if (isInQuote() && kind != BlockKind::Code && (isRightToLeft || !isQuote)) {
    properties.border = quoteBorder(isRightToLeft);
  }
  properties.indent = isOneQuote ? std::string() : indentElement(indent());
  properties.space = open().back().isTight ? "<w:contextualSpacing/>" : "";
  if (hasMarker()) {
    properties.marker = takeMarker(properties);
  }
  return properties;
}

std::string Containers::takeMarker(ContainerProperties& properties) {
  Container& list = takeMarkedList();
  const int level = std::min(list.level, kListLevels - 1);
  const std::string_view box = boxOf(task());
  const bool isBox = !list.isOrdered && !box.empty();
  const int number = isBox ? kTaskList : list.list;
  const std::int64_t shown = list.number++;
  if (number == 0) {
    properties.indent = hangingIndentElement(indent());
    return joined({std::to_string(shown), ".\t", box, box.empty() ? "" : " "});
  }
  properties.list = joined({"<w:numPr><w:ilvl w:val=\"", std::to_string(level), "\"/><w:numId w:val=\"",
                            std::to_string(number), "\"/></w:numPr>"});
  const bool isUsual = indent() == (level + 1) * kListIndent;
  properties.indent = isUsual ? std::string() : hangingIndentElement(indent());
  return joined({box, isBox ? "\t" : box.empty() ? "" : " "});
}

}  // namespace scrivalen::document::docx
