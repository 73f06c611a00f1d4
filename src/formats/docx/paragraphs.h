#pragma once

#include "document/model/event.h"
#include "document/model/event_log.h"
#include "formats/docx/containers.h"
#include "formats/docx/parts/styles.h"
#include "formats/docx/sections.h"
#include "formats/docx/text/inline_writer.h"
#include "output/output_buffer.h"
#include "text/direction.h"

#include <string_view>

namespace scrivalen::document::docx {

/// How a paragraph begins.
struct ParagraphStart {
  Style style = Style::Normal;
  Align align = Align::Auto;
};

/// Writes paragraphs. The first letter or language decides whether one is written from right to left; what comes before
/// it waits.
class Paragraphs {
 public:
  /// The parts are not owned; they must outlive this object.
  /// @param isRightToLeft  whether the document is
  Paragraphs(OutputBuffer& out, Sections& sections, Containers& containers, InlineWriter& inlines, bool isRightToLeft)
      : out_(out), sections_(sections), containers_(containers), inlines_(inlines), isRightToLeft_(isRightToLeft) {}

  /// The orientation of the pages of the next paragraphs.
  void setOrientation(Orientation orientation) { orientation_ = orientation; }

  /// Begins a paragraph whose direction its content decides.
  void begin(ParagraphStart start);
  /// Begins one whose direction is known. Neutral: that of the document.
  void begin(ParagraphStart start, Direction direction);
  bool isOpen() const { return isOpen_; }
  /// Writes a part of the text.
  void write(const Event& event);
  void close();

  /// Writes a whole paragraph of plain text.
  void write(ParagraphStart start, std::string_view text);
  void writeEmpty();

 private:
  void decide(Direction direction);
  void writeProperties(ParagraphStart start, bool isRightToLeft, const ContainerProperties& around);

  OutputBuffer& out_;
  Sections& sections_;
  Containers& containers_;
  InlineWriter& inlines_;
  const bool isRightToLeft_;

  Orientation orientation_ = Orientation::Upright;
  bool isOpen_ = false;
  bool isWaiting_ = false;
  ParagraphStart start_;  // of the paragraph that waits
  EventLog waiting_;
};

/// The element of an alignment; empty for the usual one. Left and right are sides of the page, which readers take for
/// the beginning and the end of lines.
/// @param isRightToLeft  whether the paragraph is
std::string_view alignmentElement(Align align, bool isRightToLeft);

}  // namespace scrivalen::document::docx
