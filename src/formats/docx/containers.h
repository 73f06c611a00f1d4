#pragma once

#include "document/word/word_containers.h"
#include "document/word/word_paragraphs.h"
#include "formats/docx/parts/numbering.h"
#include "formats/docx/parts/styles.h"

#include <optional>
#include <string>
#include <string_view>

namespace scrivalen::document::docx {

/// What the quotes and lists around a paragraph add to its properties, in the places that the schema has for them.
struct ContainerProperties {
  std::optional<Style> style;  ///< in place of that of the block's kind
  std::string list;            ///< the list and its level
  std::string border;          ///< of a quote
  std::string indent;          ///< empty: that of the style or list
  std::string_view space;      ///< whether there is some between paragraphs of its style
  std::string marker;          ///< text before the paragraph's own, as far as the list does not write it
};

/// What open quotes and lists add to a paragraph.
class Containers : public WordContainers {
 public:
  /// @param numbering  not owned; must outlive this object
  Containers(Numbering& numbering, int textWidth) : WordContainers(textWidth), numbering_(numbering) {}

  /// Those of the next paragraph, which has the marker of an item that has begun.
  ContainerProperties takeProperties(const ParagraphStart& start, bool isRightToLeft);

 private:
  // What is written of a paragraph's style, and what the style has.
  struct Look {
    std::optional<Style> style = std::nullopt;
    int indent = 0;          // of the style, in twips
    bool hasBorder = false;  // that the style does not have
  };

  int addList(const Event& list, int level) override;

  Look lookOf(const ParagraphStart& start, bool isRightToLeft) const;
  // Whether the innermost part is a quote, and all others are lists.
  bool isOneQuoteInLists() const;
  std::string takeMarker(ContainerProperties& properties);

  Numbering& numbering_;
};

}  // namespace scrivalen::document::docx
