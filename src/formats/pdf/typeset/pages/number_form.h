#pragma once

#include "formats/pdf/typeset/file/pdf_file.h"
#include "formats/pdf/typeset/fonts/font_set.h"
#include "formats/pdf/typeset/length.h"
#include "text/colors.h"

#include <cstdint>

namespace scrivalen::typeset {

/// A number that pages show before it is known, as a form object (PDF 1.7, 8.10).
struct NumberForm {
  FontId font;
  Length size;
  Rgb color;
  std::int64_t number;
  bool isRightAligned;  ///< it ends at the form's origin; else it begins there
};

/// @param object         the form's number
/// @param fontResources  the number of the object that names the fonts
void writeNumberForm(PdfFile& file, int object, int fontResources, FontSet& fonts, const NumberForm& form);

}  // namespace scrivalen::typeset
