#include "formats/rtf/document/sections.h"

#include "formats/rtf/document/escape.h"

#include <string_view>

namespace scrivalen::document::rtf {
namespace {

// A paragraph that takes hardly any space. It ends a section, or begins a page before a table.
constexpr std::string_view kTinyParagraph = "\\pard\\plain\\sl-20\\slmult0\\fs2";

}  // namespace

Sections::Sections(const WriterContext& context, const StyleSheet& styles)
    : WordSections(wordPageOf(context.settings, context.warnings)),
      out_(context.out),
      header_(context.settings, styles, paper(), context.warnings) {}

void Sections::writeBreak() {
  put(out_, kTinyParagraph);
  put(out_, "\\pagebb\\par\n");
}

void Sections::writeBegin(Orientation orientation, std::optional<Orientation> before) {
  const PageTwips& section = page(orientation);
  if (before) {
    put(out_, kTinyParagraph);
    put(out_, "\\sect");
  }
  put(out_, "\\sectd\\sbkpage");
  if (orientation == Orientation::Turned) {
    put(out_, "\\pgwsxn", section.width);
    put(out_, "\\pghsxn", section.height);
  }
  put(out_, "\\headery", header_.fromTop());
  put(out_, "\\footery", section.bottom / 2);
  put(out_, section.width > section.height ? "\\lndscpsxn\n" : "\n");
  header_.write(out_, name(), section.textWidth());
}

}  // namespace scrivalen::document::rtf
