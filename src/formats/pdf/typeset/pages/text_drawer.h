#pragma once

#include "document/model/event.h"
#include "formats/pdf/typeset/pages/page_maker.h"
#include "formats/pdf/typeset/structure/text_tags.h"
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
  /// @param pages, fonts, shaper, places  not owned; must outlive this object
  TextDrawer(PageMaker& pages, FontSet& fonts, Shaper& shaper, NamedPlaces& places)
      : pages_(pages), fonts_(fonts), shaper_(shaper), places_(places) {}

  /// @param align  Auto: where the language of the text begins
  /// @param tags   of the text; null: it has none
  void draw(const StyledText& text, const SetText& set, const TextLine& line, const LineSpace& space,
            document::Align align, TextTags* tags = nullptr);
  /// Draws a short text in one line. @return its width
  Length drawShort(Length x, Length baseline, const TextStyle& style, std::string_view text);
  Length widthOf(std::string_view text, const TextStyle& style);
  /// Draws the bytes of a font.
  void drawBytes(Length x, Length baseline, const TextStyle& style, FontUse font, std::string_view bytes);

 private:
  void countMissing(std::optional<char32_t> c);
  void drawBlank(Length x, Length baseline, const TextStyle& style, TextTags& tags);
  void drawPicture(const StyledText& text, const TextPiece& piece, Length x, Length baseline, TextTags* tags);
  void decorate(const TextStyle& style, const TextStyle* underlined, Length x, Length baseline, Length width);
  void notePlaces(const StyledText& text, const SetText& set, const TextLine& line, Length top);

  PageMaker& pages_;
  FontSet& fonts_;
  Shaper& shaper_;
  NamedPlaces& places_;
};

}  // namespace scrivalen::typeset
