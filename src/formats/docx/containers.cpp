#include "formats/docx/containers.h"

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
  return list.ordered ? numbering_.addList(level, list.number) : kBulletList;
}

// What has no style of its own in a quote, or in one from right to left, gets the border itself.
Containers::Look Containers::lookOf(const ParagraphStart& start, bool isRightToLeft) const {
  const bool isQuoted = isInQuote();
  switch (start.kind) {
    case BlockKind::Quote:
      if (isRightToLeft) {
        return {Style::QuoteRightToLeft, kQuoteIndent};
      }
      return isOneQuoteInLists() ? Look{Style::ListQuote, kListIndent + kQuoteIndent}
                                 : Look{Style::Quote, kQuoteIndent};
    case BlockKind::Code: return isQuoted ? Look{Style::Code} : Look{Style::ListCode, kListIndent};
    case BlockKind::List:
      if (isQuoted) {
        return {.style = Style::QuoteList, .hasBorder = isRightToLeft};
      }
      if (!hasMarker()) {
        return {Style::ListItemText, kListIndent};
      }
      return {open().back().isTight ? Style::ListCompact : Style::List};
    case BlockKind::Heading:
      return isQuoted ? Look{styleOfLevel(Style::QuoteHeading1, start.level), kQuoteIndent, isRightToLeft} : Look{};
    default: return {.hasBorder = isQuoted};
  }
}

bool Containers::isOneQuoteInLists() const {
  return open().size() > 1 &&
         std::all_of(open().begin(), open().end() - 1, [](const Container& outer) { return outer.isList; });
}

ContainerProperties Containers::takeProperties(const ParagraphStart& start, bool isRightToLeft) {
  if (open().empty()) {
    return {};
  }
  const Look look = lookOf(start, isRightToLeft);
  ContainerProperties properties;
  properties.style = look.style;
  properties.border = look.hasBorder ? quoteBorder(isRightToLeft) : std::string();
  properties.indent = indent() == look.indent ? std::string() : indentElement(indent());
  properties.space = open().back().isTight && look.style != Style::ListCompact ? "<w:contextualSpacing/>" : "";
  if (hasMarker()) {
    properties.marker = takeMarker(properties);
  }
  return properties;
}

std::string Containers::takeMarker(ContainerProperties& properties) {
  Container& list = takeMarkedList();
  const int level = levelOf(list.level);
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
