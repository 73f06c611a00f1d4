#include "formats/rtf/document/containers.h"

#include "formats/rtf/document/escape.h"
#include "formats/rtf/document/prolog/list_table.h"

#include <algorithm>
#include <string_view>

namespace scrivalen::document::rtf {
namespace {

std::string_view boxOf(Task task) {
  constexpr std::string_view kBoxes[] = {"", "\\u9744?", "\\u9745?"};
  return kBoxes[static_cast<int>(task)];
}

}  // namespace

int Containers::addList(const Event& list, int) {
  if (!list.ordered) {
    return kBulletList;
  }
  return list.number == 1 && numberedLists_ < kNumberedLists ? kFirstNumberedList + numberedLists_++ : 0;
}

// Readers join the borders of paragraphs of a quote that have the same indent.
void Containers::writeWords(bool isRightToLeft) {
  if (open().empty()) {
    return;
  }
  put(out_, open().back().isList && isInQuote() ? styles_.quoteBorder(isRightToLeft) : "");
  put(out_, open().back().isTight ? "\\contextualspace" : "");
  if (hasMarker()) {
    writeListWords(markedList());
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
  if (list.list > 0 && (list.isOrdered || task() == Task::None)) {
    put(out_, "\\ls", list.list);
    put(out_, "\\ilvl", list.isOrdered ? 0 : std::min(list.level, kBulletLevels - 1));
  }
  put(out_, "\\fi", -kListIndent);
  put(out_, "\\tx", indent());
}

void Containers::writeMarker() {
  if (!hasMarker()) {
    return;
  }
  Container& list = takeMarkedList();
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
  if (task() != Task::None) {
    put(out_, boxOf(task()));
    out_.put(' ');
  }
}

void Containers::writeBullet(const Container& list) {
  if (task() != Task::None) {
    put(out_, boxOf(task()));
    return put(out_, "\\tab ");
  }
  put(out_, "{\\listtext ");
  writeText(out_, bulletOf(list.level));
  put(out_, "\\tab}");
}

}  // namespace scrivalen::document::rtf
