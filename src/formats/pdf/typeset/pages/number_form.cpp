#include "formats/pdf/typeset/pages/number_form.h"

#include "formats/pdf/typeset/file/syntax.h"
#include "formats/pdf/typeset/pages/canvas.h"
#include "formats/pdf/typeset/pages/short_text.h"

namespace scrivalen::typeset {

void writeNumberForm(PdfFile& file, int object, int fontResources, Shaper& shaper, const NumberForm& form) {
  const ShortText text(form.text, form.style, shaper);
  const Length size = form.style.size;
  const Length left = form.isRightAligned ? -text.width() : 0;
  Canvas canvas;
  canvas.begin(0);
  text.draw(canvas, left, 0);
  std::string entries = "/Type/XObject/Subtype/Form/BBox[";
  appendThousandths(entries, left);
  entries += ' ';
  appendThousandths(entries, -size);
  entries += ' ';
  appendThousandths(entries, left + text.width());
  entries += ' ';
  appendThousandths(entries, size);
  entries += "]/Resources<</Font ";
  appendReference(entries, fontResources);
  entries += ">>";
  file.writeStream(object, entries, canvas.content());
}

}  // namespace scrivalen::typeset
