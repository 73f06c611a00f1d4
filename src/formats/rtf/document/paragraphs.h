#pragma once

#include "document/word/word_paragraphs.h"
#include "formats/rtf/document/containers.h"
#include "formats/rtf/document/inline_writer.h"
#include "formats/rtf/document/prolog/color_table.h"
#include "formats/rtf/document/prolog/style_sheet.h"
#include "formats/rtf/document/sections.h"
#include "output/output_buffer.h"

#include <string>

namespace scrivalen::document::rtf {

/// Writes paragraphs.
class Paragraphs : public WordParagraphs {
 public:
  /// The parts are not owned; they must outlive this object.
  struct Parts {
    OutputBuffer& out;
    const ColorTable& colors;
    const StyleSheet& styles;
    Sections& sections;
    Containers& containers;
    InlineWriter& inlines;
  };

  /// @param isRightToLeft  whether the document is
  Paragraphs(const Parts& parts, bool isRightToLeft)
      : WordParagraphs(parts.sections, parts.containers, parts.inlines, isRightToLeft), parts_(parts) {}

 private:
  void writeBegin(const ParagraphStart& start, bool isRightToLeft) override;
  void writeEnd() override;

  std::string ruleWords() const;
  std::string contentsWords(int level, bool isRightToLeft) const;

  const Parts parts_;
};

}  // namespace scrivalen::document::rtf
