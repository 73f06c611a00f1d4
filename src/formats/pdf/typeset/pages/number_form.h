#pragma once

#include "formats/pdf/typeset/file/pdf_file.h"
#include "formats/pdf/typeset/text/shaper.h"
#include "formats/pdf/typeset/text/styled_text.h"

#include <cstdint>
#include <string>

namespace scrivalen::typeset {

/// A number that pages show before it is known, perhaps with text around it, as a form object (PDF 1.7, 8.10).
struct NumberForm {
  std::string text;  ///< UTF-8
  TextStyle style;
  bool isRightAligned;  ///< it ends at the form's origin; else it begins there
  std::string leader = {};
  TextStyle leaderStyle = {};
  Length leaderBegin = 0;     ///< from the form's origin
  std::int64_t scale = 1000;  ///< of its width, in thousandths
  bool isCentered = false;    ///< its middle is at the form's origin
};

/// @param object         the form's number
/// @param fontResources  the number of the object that names the fonts
void writeNumberForm(PdfFile& file, int object, int fontResources, Shaper& shaper, const NumberForm& form);

}  // namespace scrivalen::typeset
