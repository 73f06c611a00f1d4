#include "formats/pdf/typeset/pages/number_form.h"

#include "formats/pdf/typeset/file/syntax.h"
#include "formats/pdf/typeset/pages/canvas.h"
#include "formats/pdf/typeset/pages/short_text.h"

#include <algorithm>

namespace scrivalen::typeset {

void writeNumberForm(PdfFile& file, int object, int fontResources, Shaper& shaper, const NumberForm& form) {
  const ShortText text(form.text, form.style, shaper);
  const Length size = form.style.size;
  const Length begin = form.isRightAligned ? -text.width() : form.isCentered ? -text.width() / 2 : 0;
  const Length left = std::min(begin, form.leaderBegin);
  Canvas canvas;
  canvas.begin(0);
  Length right = begin + text.width();
  if (!form.leader.empty()) {
    const ShortText leader(form.leader, form.leaderStyle, shaper);
    leader.draw(canvas, form.leaderBegin, 0);
    right = std::max(right, form.leaderBegin + leader.width());
  }
  text.draw(canvas, begin, 0);
  std::string entries = "/Type/XObject/Subtype/Form/BBox[";
  appendThousandths(entries, left);
  entries += ' ';
  appendThousandths(entries, -size);
  entries += ' ';
  appendThousandths(entries, right);
  entries += ' ';
  appendThousandths(entries, size);
  entries += "]/Resources<</Font ";
  appendReference(entries, fontResources);
  entries += ">>";
  std::string content;
  if (form.scale != 1000) {
    appendThousandths(content, form.scale);
    content += " 0 0 1 0 0 cm\n";
  }
  content += canvas.content();
  file.writeStream(object, entries, content);
}

}  // namespace scrivalen::typeset
