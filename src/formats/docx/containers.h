#pragma once

#include "document/model/event.h"
#include "formats/docx/parts/numbering.h"
#include "formats/docx/parts/styles.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace scrivalen::document::docx {

/// What the quotes and lists around a paragraph add to its properties, in the places that the schema has for them.
struct ContainerProperties {
  std::string list;        ///< the list and its level
  std::string border;      ///< of a quote
  std::string indent;      ///< empty: that of the style or list
  std::string_view space;  ///< whether there is some between paragraphs of its style
  std::string marker;      ///< text before the paragraph's own, as far as the list does not write it
};

/// The quotes and lists that are open, and the marker of an item that has begun.
class Containers {
 public:
  /// @param numbering  not owned; must outlive this object
  Containers(Numbering& numbering, int textWidth) : numbering_(numbering), textWidth_(textWidth) {}

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
  /// Those of the next paragraph, which has the marker of an item that has begun.
  ContainerProperties takeProperties(Style style, bool isRightToLeft);

 private:
  struct Container {
    bool isList = false;
    bool isOrdered = false;
    bool isTight = false;
    std::int64_t number = 0;  // of the next item
    int list = 0;             // its number among the lists of the file; 0: its items are numbered by text
    int level = 0;            // among lists
  };

  bool isInQuote() const;
  std::string takeMarker(ContainerProperties& properties);

  Numbering& numbering_;
  const int textWidth_;
  std::vector<Container> open_;
  std::size_t markerDepth_ = 0;  // of the list of an item that has begun; 0: its marker is written
  Task task_ = Task::None;
};

}  // namespace scrivalen::document::docx
