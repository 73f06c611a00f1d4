#include "formats/pdf/typeset/pages/number_form.h"

#include "formats/pdf/typeset/file/syntax.h"
#include "formats/pdf/typeset/pages/canvas.h"

#include <string>

namespace scrivalen::typeset {

void writeNumberForm(PdfFile& file, int object, int fontResources, FontSet& fonts, const NumberForm& form) {
  const std::string digits = std::to_string(form.number);
  Typeface& font = fonts.at(form.font);
  font.use(digits);
  const Length width = font.widthOf(digits, form.size);
  const Length left = form.isRightAligned ? -width : 0;
  Canvas canvas;
  canvas.begin(0);
  canvas.text(left, 0, {form.font, 0}, form.size, form.color, digits);
  std::string entries = "/Type/XObject/Subtype/Form/BBox[";
  appendThousandths(entries, left);
  entries += ' ';
  appendThousandths(entries, -form.size);
  entries += ' ';
  appendThousandths(entries, left + width);
  entries += ' ';
  appendThousandths(entries, form.size);
  entries += "]/Resources<</Font ";
  appendReference(entries, fontResources);
  entries += ">>";
  file.writeStream(object, entries, canvas.content());
}

}  // namespace scrivalen::typeset
