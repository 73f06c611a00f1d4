#pragma once

#include "document/model/event.h"
#include "formats/pdf/typeset/pages/page_maker.h"
#include "formats/pdf/typeset/text/paragraph.h"

namespace scrivalen::typeset {

/// Where a line is drawn.
struct LineSpace {
  Length left;
  Length top;
  Length width;
};

/// Draws lines of text with their decoration and links, and notes the places that links lead to.
class TextDrawer {
 public:
  /// @param pages, fonts, places  not owned; must outlive this object
  TextDrawer(PageMaker& pages, FontSet& fonts, NamedPlaces& places) : pages_(pages), fonts_(fonts), places_(places) {}

  void draw(const StyledText& text, const TextLine& line, const LineSpace& space, document::Align align);
  void drawPiece(Length x, Length baseline, const TextStyle& style, std::string_view bytes, Length wordSpace = 0);

 private:
  void decorate(const TextStyle& style, Length x, Length baseline, Length width);
  void notePlaces(const StyledText& text, const TextLine& line, Length top);

  PageMaker& pages_;
  FontSet& fonts_;
  NamedPlaces& places_;
};

}  // namespace scrivalen::typeset
