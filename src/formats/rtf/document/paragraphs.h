#pragma once

#include "document/model/event.h"
#include "document/model/event_log.h"
#include "formats/rtf/document/containers.h"
#include "formats/rtf/document/inline_writer.h"
#include "formats/rtf/document/prolog/style_sheet.h"
#include "formats/rtf/document/sections.h"
#include "output/output_buffer.h"
#include "text/direction.h"

#include <string>

namespace scrivalen::document::rtf {

/// How a paragraph begins.
struct ParagraphStart {
  Style style = Style::Normal;
  Align align = Align::Auto;
  std::string words = {};  ///< further ones
};

/// Writes paragraphs. The first letter or language decides whether one is written from right to left; what comes before
/// it waits.
class Paragraphs {
 public:
  /// The parts are not owned; they must outlive this object.
  /// @param isRightToLeft  whether the document is
  Paragraphs(OutputBuffer& out, const StyleSheet& styles, Sections& sections, Containers& containers,
             InlineWriter& inlines, bool isRightToLeft)
      : out_(out),
        styles_(styles),
        sections_(sections),
        containers_(containers),
        inlines_(inlines),
        isRightToLeft_(isRightToLeft) {}

  /// The orientation of the pages of the next paragraphs.
  void setOrientation(Orientation orientation) { orientation_ = orientation; }

  /// Begins a paragraph whose direction its content decides.
  void begin(ParagraphStart start);
  /// Begins one whose direction is known. Neutral: that of the document.
  void begin(const ParagraphStart& start, Direction direction);
  bool isOpen() const { return isOpen_; }
  /// Writes a part of the text.
  void write(const Event& event);
  void close();

  /// Writes a whole paragraph of plain text.
  void write(const ParagraphStart& start, std::string_view text);
  void writeEmpty();

 private:
  void decide(Direction direction);

  OutputBuffer& out_;
  const StyleSheet& styles_;
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

}  // namespace scrivalen::document::rtf
