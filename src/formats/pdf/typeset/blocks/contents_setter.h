#pragma once

#include "formats/pdf/typeset/blocks/text_setter.h"

#include <string>
#include <string_view>
#include <vector>

namespace scrivalen::typeset {

/// Sets lists of contents. The numbers of pages that come later are form objects, written last.
class ContentsSetter {
 public:
  /// All are not owned and must outlive this object.
  ContentsSetter(PdfFile& file, Flow& flow, PageMaker& pages, TextSetter& texts, TextDrawer& drawer, Shaper& shaper,
                 Tagger* tagger = nullptr)
      : file_(file), flow_(flow), pages_(pages), texts_(texts), drawer_(drawer), shaper_(shaper), tagger_(tagger) {}

  /// Begins a list. Its first entry is at its outermost level.
  void begin() { outermost_ = 0; }
  /// @param style  of its text
  void add(int level, std::string_view id, std::string_view text, const TextStyle& style);
  /// Writes the numbers.
  void finish(const NamedPlaces& places);

 private:
  struct Number {
    int form;
    int leader;  // the form of its dots; 0: they are in the other
    TextStyle style;
    std::string id;
    bool isMirrored;
  };

  struct Entry {
    std::string_view id;
    TextStyle style;
    StyledText text;
    Length left;
    Length width;  // of its lines
  };

  SetText setLines(const Entry& entry);
  void drawEntry(const Entry& entry, const SetText& set, TextTags* tags);
  void drawNumber(const Entry& entry, const TextLine& line, Length end, Length top, TextTags* tags);
  Length placeOf(Length left, Length width) const;
  void drawLinkOfNumber(const StyledText& entry, int link, const Box& box, TextTags* tags);
  int drawForm(Length x, Length baseline);
  Length widthOfNumber(const TextStyle& style);
  std::string dotsFor(Length width, const TextStyle& style);
  void drawLeader(Length begin, Length end, Length baseline, const TextStyle& style);

  PdfFile& file_;
  Flow& flow_;
  PageMaker& pages_;
  TextSetter& texts_;
  TextDrawer& drawer_;
  Shaper& shaper_;
  Tagger* tagger_;
  std::vector<Number> numbers_;
  bool isMirrored_ = false;  // the entry is read from right to left
  int outermost_ = 0;        // level of the list; 0: it has no entries yet
};

}  // namespace scrivalen::typeset
