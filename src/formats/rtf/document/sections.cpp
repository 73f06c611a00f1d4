#include "formats/rtf/document/sections.h"

#include "formats/rtf/document/escape.h"

#include <utility>

namespace scrivalen::document::rtf {
namespace {

// The margins keep their sides.
PageTwips turned(PageTwips paper) {
  std::swap(paper.width, paper.height);
  return paper;
}

}  // namespace

Sections::Sections(const WriterContext& context, const StyleSheet& styles)
    : out_(context.out),
      paper_(pageOf(context.settings)),
      turned_(turned(paper_)),
      header_(context.settings, styles, paper_, context.warnings) {}

void Sections::begin(std::string_view name) {
  if (written_ && isPending_) {
    write(Orientation::Upright);
  }
  name_ = name;
  isPending_ = true;
  isAfterSection_ = false;
  isAtTop_ = true;
  breaksPage_ = false;
}

void Sections::end() {
  if (isPending_) {
    write(Orientation::Upright);
  }
  isAfterSection_ = true;
  isAtTop_ = true;
  breaksPage_ = false;
}

void Sections::finish() {
  if (isPending_) {
    write(Orientation::Upright);
  }
  isAfterSection_ = false;
}

void Sections::prepare(Orientation orientation) {
  if (isAfterSection_) {
    begin({});
  }
  if (isPending_ || written_ != orientation) {
    write(orientation);
  }
}

void Sections::write(Orientation orientation) {
  const PageTwips& page = orientation == Orientation::Turned ? turned_ : paper_;
  if (written_) {
    put(out_, kTinyParagraph);
    put(out_, "\\sect");
  }
  put(out_, "\\sectd\\sbkpage");
  if (orientation == Orientation::Turned) {
    put(out_, "\\pgwsxn", page.width);
    put(out_, "\\pghsxn", page.height);
  }
  put(out_, "\\headery", header_.fromTop());
  put(out_, "\\footery", page.bottom / 2);
  put(out_, page.width > page.height ? "\\lndscpsxn\n" : "\n");
  header_.write(out_, name_, page.textWidth());
  written_ = orientation;
  isPending_ = false;
  isAtTop_ = true;
  breaksPage_ = false;
}

void Sections::addContent() {
  isAtTop_ = false;
  hasContent_ = true;
}

}  // namespace scrivalen::document::rtf
