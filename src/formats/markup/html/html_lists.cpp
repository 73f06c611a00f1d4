#include "formats/markup/html/html_lists.h"

#include "formats/markup/html/html_links.h"

namespace scrivalen::document {

void HtmlLists::begin(const Event& list) {
  beginBlock();
  tightLists_.push_back(list.tight);
  if (!list.ordered || list.number == 1) {
    return markup_.put(list.ordered ? "<ol>\n" : "<ul>\n");
  }
  std::string tag = "<ol start=\"";
  appendNumber(tag, list.number);
  markup_.put(tag.append("\">\n"));
}

void HtmlLists::end(const Event& list) {
  tightLists_.pop_back();
  markup_.put(list.ordered ? "</ol>\n" : "</ul>\n");
}

void HtmlLists::beginItem(const Event& item) {
  const bool isTight = !tightLists_.empty() && tightLists_.back();
  containers_.push_back({.isItem = true, .isTight = isTight, .task = item.task});
  markup_.put(item.task == Task::None ? "<li>" : "<li class=\"task\">");
}

void HtmlLists::endItem() {
  closeLine("");
  putTask();
  containers_.pop_back();
  markup_.put("</li>\n");
}

void HtmlLists::beginBlock() {
  if (isInItem()) {
    closeLine("\n");
    putTask();
  }
}

void HtmlLists::beginText() {
  if (!isInItem() || containers_.back().isLineOpen) {
    return;
  }
  containers_.back().isLineOpen = true;
  markup_.put(containers_.back().isTight ? "" : "<p>");
  putTask();
}

bool HtmlLists::beginParagraph(Align align) {
  if (!isInItem()) {
    return false;
  }
  Container& item = containers_.back();
  if (!item.isTight || !markup_.alignment(align).empty()) {
    closeLine("\n");
    return false;
  }
  markup_.put(item.isLineOpen ? HtmlMarkup::kLineBreak : "");
  item.isLineOpen = true;
  return true;
}

// Ends the text of an item that is in no paragraph of the document's.
void HtmlLists::closeLine(std::string_view after) {
  Container& item = containers_.back();
  if (item.isLineOpen) {
    markup_.put(item.isTight ? "" : "</p>");
    markup_.put(after);
    item.isLineOpen = false;
  }
}

void HtmlLists::putTask() {
  if (!isInItem() || containers_.back().task == Task::None) {
    return;
  }
  Task& task = containers_.back().task;
  markup_.put(task == Task::Done ? "<input type=\"checkbox\" checked disabled> "
                                 : "<input type=\"checkbox\" disabled> ");
  task = Task::None;
}

// An item of a higher number is in a list inside the item before it. Levels that are left out make no lists.
void HtmlContents::item(const Event& item) {
  if (levels_.empty() || item.number > levels_.back()) {
    markup_.put(levels_.empty() ? "<ol>\n" : "\n<ol>\n");
    levels_.push_back(item.number);
  } else {
    markup_.put("</li>\n");
    while (levels_.size() > 1 && levels_[levels_.size() - 2] >= item.number) {
      levels_.pop_back();
      markup_.put("</ol>\n</li>\n");
    }
    levels_.back() = item.number;
  }
  markup_.put("<li><a");
  markup_.putAttribute("href", htmlPlace(item.id));
  markup_.put(">");
  markup_.putText(item.text);
  markup_.put("</a>");
}

void HtmlContents::end() {
  for (; !levels_.empty(); levels_.pop_back()) {
    markup_.put("</li>\n</ol>\n");
  }
  markup_.put("</nav>\n");
}

}  // namespace scrivalen::document
