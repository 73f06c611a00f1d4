#pragma once

#include "document/model/event.h"
#include "document/plain/list_markers.h"
#include "formats/xlsx/document/cells/rich_text.h"
#include "formats/xlsx/document/looks.h"
#include "text/direction.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace scrivalen::xlsx {

/// A row outside tables, in the first column.
struct ProseRow {
  RichText text;
  CellFormat format;
  bool hasBlankBefore = false;
  bool hasBreakBefore = false;  ///< of the page
  bool isHeading = false;
  Direction direction = Direction::Neutral;  ///< of its text, without a marker

  /// Whether it takes a row beside those of its pictures.
  bool hasText() const { return !text.text.empty() || text.pictures.empty(); }
};

class ProseTarget {
 public:
  virtual ~ProseTarget() = default;
  virtual void put(ProseRow row) = 0;
};

/// Makes rows of blocks: each in a row, code in a row for each line. Quotes and lists are indented.
class BlockWriter {
 public:
  /// @param looks, target  not owned; must outlive this object
  BlockWriter(const Looks& looks, ProseTarget& target) : looks_(looks), target_(target) {}

  void write(const document::Event& event);
  /// Ends a paragraph that no event ends, such as that of an item.
  void endParagraph();
  /// Writes the marker of an item whose first block is no text.
  void endItem();
  /// Whether a page break comes before the next block. It is taken for that one, so that it is not before another.
  bool takeBreak();

 private:
  void writeBlock(const document::Event& event);
  void beginText(const document::Event& event);
  void endHeading();
  void endCode();
  void contentsItem(const document::Event& item);
  void put(RichText text, CellFormat format, bool isHeading = false);
  CellFormat bodyFormat() const;
  Font headingFont() const;

  const Looks& looks_;
  ProseTarget& target_;
  RichTextCollector collector_;
  document::ListMarkers markers_;
  std::string marker_;     // of the item whose first block comes next
  std::size_t depth_ = 0;  // open lists and quotes
  std::size_t quotes_ = 0;
  document::Align align_ = document::Align::Auto;
  int level_ = 1;        // of the heading that is open
  bool isText_ = false;  // whether text has begun
  bool isBreakNext_ = false;
  bool isCode_ = false;
  bool isAfterContents_ = false;
};

}  // namespace scrivalen::xlsx
