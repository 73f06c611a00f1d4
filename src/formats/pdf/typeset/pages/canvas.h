#pragma once

#include "formats/pdf/typeset/length.h"
#include "formats/pdf/typeset/pictures/picture_matrix.h"
#include "formats/pdf/typeset/text/shaper.h"
#include "text/colors.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace scrivalen::typeset {

/// The content of a page while it is drawn (PDF 1.7, 8 and 9). Positions are from the upper left corner. All texts are
/// in one text object after the areas and lines, so that a text costs its move and its bytes; numbers are whole tenths
/// of a point.
class Canvas {
 public:
  /// Begins an empty page.
  void begin(Length pageHeight);
  bool isEmpty() const { return texts_.empty() && areas_.empty() && forms_.empty(); }

  /// @param bytes  as the font has them
  void text(Length x, Length baseline, FontUse font, Length size, Rgb color, std::string_view bytes);
  /// @param content  what the array of the operator TJ has
  void glyphs(Length x, Length baseline, FontUse font, Length size, Rgb color, std::string_view content);
  void area(Length x, Length top, Length width, Length height, Rgb color);
  /// Draws an image object, whose unit square the matrix turns into its box. The matrix's lower edge is that of the
  /// page.
  void image(const PictureMatrix& matrix, std::string_view name);
  Length height() const { return height_; }
  /// Draws a form object, whose origin is at this point. It comes after the texts: a reader that keeps the order of the
  /// content would join the number that is in it with the first word of the page. @param scale  in thousandths
  void form(Length x, Length baseline, std::string_view name, std::int64_t scale = 1000);

  /// Makes the areas of the page artifacts (PDF 1.7, 14.8.2.2).
  void setTagged() { isTagged_ = true; }
  /// Begins marked content among the texts. @param id  its number on the page
  void beginMark(std::string_view role, int id);
  void beginArtifact() { texts_ += "/Artifact BMC\n"; }
  void endMark() { texts_ += "EMC\n"; }
  /// The same around forms. Those without a mark are artifacts.
  void beginFormMark(std::string_view role, int id);
  void endFormMark();
  /// The same around an image.
  void beginImageMark(std::string_view role, int id);
  void endImageMark();

  /// The whole content; valid until the page is changed.
  std::string_view content();

 private:
  void endAreas();
  void moveTo(Length x, Length baseline, std::string_view operators);
  void setText(FontUse font, Length size, Rgb color);

  std::string areas_;
  std::string texts_;
  std::string forms_;
  std::string content_;
  Length height_ = 0;

  bool isTagged_ = false;
  bool isFormMarked_ = false;
  bool hasFont_ = false;
  FontUse font_;
  Length size_ = 0;
  Rgb color_ = 0;
  std::int64_t x_ = 0;  // of the text that was drawn last, in tenths
  std::int64_t y_ = 0;
  std::optional<Rgb> areaColor_;
};

}  // namespace scrivalen::typeset
