#pragma once

#include "formats/pdf/typeset/structure/tagger.h"
#include "formats/pdf/typeset/text/styled_text.h"

#include <cstdint>
#include <string>

namespace scrivalen::typeset {

/// The tags of a text while it is drawn: the element of the text, and in it those of its links, code, pictures and
/// words in other languages.
class TextTags {
 public:
  /// @param tagger   not owned; must outlive this object
  /// @param element  of the text
  TextTags(Tagger& tagger, Element element) : tagger_(tagger), block_(std::move(element)) {}

  /// Before something in a style is drawn.
  void enter(const StyledText& text, const TextStyle& style);
  /// Before glyphs are drawn, after enter().
  void show() { tagger_.show(current()); }
  void showArtifact() { tagger_.showArtifact(); }
  /// Around a form that is part of what was entered.
  void beginForm() { tagger_.beginForm(current()); }
  void endForm() { tagger_.endForm(); }
  /// Begins a picture. @param box  of its edges on the page, as PDF counts them
  /// @return false for one without a text, which is decoration and needs no endPicture()
  bool beginPicture(const TextPicture& picture, const std::string& box);
  void endPicture() { tagger_.endImage(); }
  /// Reserves the key of an annotation of the link that was entered.
  std::int64_t newLinkKey() { return tagger_.newAnnotationKey(current()); }
  void addLink(int annotation) { current().addAnnotation(tagger_.page(), annotation); }
  /// Writes the elements.
  void finish();

 private:
  Element& current() { return inner_.number != 0 ? inner_ : block_; }
  void leave();

  Tagger& tagger_;
  Element block_;
  Element inner_;
  int link_ = -1;
  int language_ = -1;
  bool isCode_ = false;
};

}  // namespace scrivalen::typeset
