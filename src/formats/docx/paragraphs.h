#pragma once

#include "document/word/word_paragraphs.h"
#include "formats/docx/containers.h"
#include "formats/docx/parts/styles.h"
#include "formats/docx/sections.h"
#include "formats/docx/text/inline_writer.h"
#include "output/output_buffer.h"

#include <string_view>

namespace scrivalen::document::docx {

/// Writes paragraphs.
class Paragraphs : public WordParagraphs {
 public:
  /// The parts are not owned; they must outlive this object.
  /// @param isRightToLeft  whether the document is
  Paragraphs(OutputBuffer& out, StyleSheet& styles, Sections& sections, Containers& containers, InlineWriter& inlines,
             bool isRightToLeft)
      : WordParagraphs(sections, containers, inlines, isRightToLeft),
        out_(out),
        styles_(styles),
        sections_(sections),
        containers_(containers),
        inlines_(inlines) {}

 private:
  void writeBegin(const ParagraphStart& start, bool isRightToLeft) override;
  void writeEnd() override;

  void writeProperties(const ParagraphStart& start, bool isRightToLeft, const ContainerProperties& around);

  OutputBuffer& out_;
  StyleSheet& styles_;
  Sections& sections_;
  Containers& containers_;
  InlineWriter& inlines_;
};

/// The element of an alignment; empty for the usual one. Left and right are sides of the page, which readers take for
/// the beginning and the end of lines.
/// @param isRightToLeft  whether the paragraph is
std::string_view alignmentElement(Align align, bool isRightToLeft);

}  // namespace scrivalen::document::docx
