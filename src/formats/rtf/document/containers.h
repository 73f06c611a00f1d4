#pragma once

#include "document/word/word_containers.h"
#include "formats/rtf/document/prolog/style_sheet.h"
#include "output/output_buffer.h"

namespace scrivalen::document::rtf {

/// What open quotes and lists add to a paragraph: its indent, its border, and the marker of an item that has begun.
class Containers : public WordContainers {
 public:
  /// @param out, styles  not owned; must outlive this object
  Containers(OutputBuffer& out, const StyleSheet& styles, int textWidth)
      : WordContainers(textWidth), out_(out), styles_(styles) {}

  /// @param isRightToLeft  whether the paragraph is
  void writeWords(bool isRightToLeft);
  /// Writes the text before an item, if one has begun.
  void writeMarker();

 private:
  int addList(const Event& list, int level) override;

  void writeListWords(const Container& list);
  void writeIndent(bool isRightToLeft);
  void writeNumber(Container& list);
  void writeBullet(const Container& list);

  OutputBuffer& out_;
  const StyleSheet& styles_;
  int numberedLists_ = 0;  // of the table that are used
};

}  // namespace scrivalen::document::rtf
