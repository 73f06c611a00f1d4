#pragma once

#include "document/model/event.h"
#include "formats/rtf/document/prolog/style_sheet.h"
#include "output/output_buffer.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace scrivalen::document::rtf {

/// The quotes and lists that are open, and what they add to a paragraph: its indent, its border, and the marker of an
/// item that has begun.
class Containers {
 public:
  /// @param out, styles  not owned; must outlive this object
  Containers(OutputBuffer& out, const StyleSheet& styles, int textWidth)
      : out_(out), styles_(styles), textWidth_(textWidth) {}

  void beginQuote() { open_.emplace_back(); }
  void beginList(const Event& list);
  void beginItem(Task task);
  void end() { open_.pop_back(); }

  /// The style of text here.
  Style style() const;
  /// In twips.
  int indent() const;
  /// Whether an item has begun whose marker is not written.
  bool hasMarker() const { return markerDepth_ > 0; }

  /// @param isRightToLeft  whether the paragraph is
  void writeWords(bool isRightToLeft);
  /// Writes the text before an item, if one has begun.
  void writeMarker();

 private:
  struct Container {
    bool isList = false;
    bool isOrdered = false;
    bool isTight = false;
    std::int64_t number = 0;  // of the next item
    int list = 0;             // its number in the table of lists; 0: its items are numbered by text
    int depth = 0;            // among lists
  };

  bool isInQuote() const;
  void writeListWords(const Container& list);
  void writeIndent(bool isRightToLeft);
  void writeNumber(Container& list);
  void writeBullet(const Container& list);

  OutputBuffer& out_;
  const StyleSheet& styles_;
  int textWidth_;
  std::vector<Container> open_;
  int numberedLists_ = 0;        // of the table that are used
  std::size_t markerDepth_ = 0;  // of the list of an item that has begun; 0: its marker is written
  Task task_ = Task::None;
};

}  // namespace scrivalen::document::rtf
