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
  ContentsSetter(PdfFile& file, Flow& flow, PageMaker& pages, TextSetter& texts, TextDrawer& drawer, FontSet& fonts)
      : file_(file), flow_(flow), pages_(pages), texts_(texts), drawer_(drawer), fonts_(fonts) {}

  /// @param style  of its text
  void add(int level, std::string_view id, std::string_view text, const TextStyle& style);
  std::uint64_t missing() const { return missing_; }
  /// Writes the numbers.
  void finish(const NamedPlaces& places);

 private:
  struct Number {
    int form;
    TextStyle style;
    std::string id;
  };

  void drawLeader(Length begin, Length end, Length baseline, const TextStyle& style);

  PdfFile& file_;
  Flow& flow_;
  PageMaker& pages_;
  TextSetter& texts_;
  TextDrawer& drawer_;
  FontSet& fonts_;
  std::vector<Number> numbers_;
  std::uint64_t missing_ = 0;
};

}  // namespace scrivalen::typeset
