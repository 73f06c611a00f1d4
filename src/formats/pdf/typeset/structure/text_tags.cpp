#include "formats/pdf/typeset/structure/text_tags.h"

#include "formats/pdf/typeset/file/syntax.h"

#include <cstddef>

namespace scrivalen::typeset {

void TextTags::enter(const StyledText& text, const TextStyle& style) {
  if (style.link == link_ && style.language == language_ && style.isCode == isCode_) {
    return;
  }
  leave();
  link_ = style.link;
  language_ = style.language;
  isCode_ = style.isCode;
  if (link_ < 0 && language_ < 0 && !isCode_) {
    return;
  }
  inner_ = tagger_.tree().addTo(block_, link_ >= 0 ? "Link" : isCode_ ? "Code" : "Span");
  if (language_ >= 0) {
    inner_.texts = "/Lang";
    appendText(inner_.texts, text.languages[static_cast<std::size_t>(language_)]);
  }
}

void TextTags::leave() {
  if (inner_.number != 0) {
    tagger_.tree().write(inner_);
    inner_ = {};
  }
}

bool TextTags::beginPicture(const TextPicture& picture, const std::string& box) {
  if (picture.text.empty()) {
    return false;
  }
  Element figure = tagger_.tree().addTo(current(), "Figure");
  figure.texts = "/Alt";
  appendText(figure.texts, fittingText(picture.text, longestString(tagger_.standard())));
  figure.texts.append("/A<</O/Layout/BBox[").append(box).append("]>>");
  tagger_.beginImage(figure);
  tagger_.tree().write(figure);
  return true;
}

void TextTags::finish() {
  leave();
  tagger_.tree().write(block_);
}

}  // namespace scrivalen::typeset
