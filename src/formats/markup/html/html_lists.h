#pragma once

#include "formats/markup/html/html_markup.h"

#include <string>
#include <string_view>
#include <vector>

namespace scrivalen::document {

/// Writes lists and their items. An item of a tight list has lines, one of a loose list has paragraphs. The text of an
/// item that is in no paragraph of the document's gets one, and the box of a task comes before the item's first text.
class HtmlLists {
 public:
  /// @param markup  not owned; must outlive this object
  explicit HtmlLists(HtmlMarkup& markup) : markup_(markup) {}

  void begin(const Event& list);
  void end(const Event& list);
  void beginItem(const Event& item);
  void endItem();

  /// Before a block: ends the text of the item that holds it.
  void beginBlock();
  /// Before text that is in no block, unless that has been called already for this text.
  void beginText();
  /// Before a paragraph. @return whether it is a line of an item, without an element of its own
  bool beginParagraph(Align align);
  /// Writes the box of a task after the start tag of its first paragraph.
  void putTask();

  /// A block that is in no item, but holds others: a section, a quote, a table.
  void enter() { containers_.emplace_back(); }
  void leave() { containers_.pop_back(); }

 private:
  // What holds blocks.
  struct Container {
    bool isItem = false;
    bool isTight = false;
    bool isLineOpen = false;  // of an item: it has text whose line, or paragraph, has not ended
    Task task = Task::None;   // of an item: not written yet
  };

  bool isInItem() const { return !containers_.empty() && containers_.back().isItem; }
  void closeLine(std::string_view after);

  HtmlMarkup& markup_;
  std::vector<Container> containers_;
  std::vector<bool> tightLists_;
};

/// Writes contents: lists of links, nested by level.
class HtmlContents {
 public:
  /// @param markup  not owned; must outlive this object
  explicit HtmlContents(HtmlMarkup& markup) : markup_(markup) {}

  void begin() { markup_.put("<nav>\n"); }
  void item(const Event& item);
  void end();

 private:
  HtmlMarkup& markup_;
  std::vector<int> levels_;  // of the lists that are open
};

}  // namespace scrivalen::document
