#include "formats/pdf/typeset/text/glyph_array.h"

#include "formats/pdf/typeset/file/syntax.h"

namespace scrivalen::typeset {

void GlyphArray::add(std::string_view bytes) {
  if (!isInString_) {
    out_ += '(';
    isInString_ = true;
  }
  appendEscaped(out_, bytes);
}

void GlyphArray::move(std::int64_t distance) {
  if (distance != 0) {
    end();
    appendInteger(out_, -distance);
    out_ += ' ';
  }
}

void GlyphArray::operators(std::string_view text) {
  end();
  out_.append("]TJ").append(text).append("[");
}

void GlyphArray::end() {
  if (isInString_) {
    out_ += ')';
    isInString_ = false;
  }
}

}  // namespace scrivalen::typeset
