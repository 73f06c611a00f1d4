#include "formats/rtf/document/paragraphs.h"

#include "formats/rtf/document/escape.h"

#include <string_view>

namespace scrivalen::document::rtf {
namespace {

// Readers have the sides of the page, whatever the direction.
std::string_view alignment(Align align, bool isRightToLeft) {
  switch (align) {
    case Align::Auto: return isRightToLeft ? "\\qr" : "";
    case Align::Left: return isRightToLeft ? "\\ql" : "";
    case Align::Center: return "\\qc";
    case Align::Right: return "\\qr";
    case Align::Justify: return "\\qj";
  }
  return "";
}

Style styleOf(const ParagraphStart& start) {
  switch (start.kind) {
    case BlockKind::Normal:
    case BlockKind::Rule: return Style::Normal;
    case BlockKind::Heading: return static_cast<Style>(static_cast<int>(Style::Heading1) + start.level - 1);
    case BlockKind::Title: return Style::Title;
    case BlockKind::Quote: return Style::Quote;
    case BlockKind::Code: return Style::Code;
    case BlockKind::List: return Style::List;
    case BlockKind::Contents: return Style::Contents;
  }
  return Style::Normal;
}

}  // namespace

std::string Paragraphs::ruleWords() const {
  return "\\fs8\\brdrb\\brdrs\\brdrw10\\brdrcf" + std::to_string(parts_.colors.indexOf(kLineColor));
}

std::string Paragraphs::contentsWords(int level, bool isRightToLeft) const {
  constexpr int kIndent = 240;
  const std::string indent = std::to_string((level - 1) * kIndent);
  std::string words = "\\li" + indent;
  if (isRightToLeft) {
    words.append("\\ri0\\rin0\\lin").append(indent);
  }
  return words + "\\tqr\\tldot\\tx" + std::to_string(parts_.sections.paper().textWidth());
}

void Paragraphs::writeBegin(const ParagraphStart& start, bool isRightToLeft) {
  OutputBuffer& out = parts_.out;
  const Style style = styleOf(start);
  put(out, "\\pard\\plain");
  put(out, parts_.styles.words(style, isRightToLeft));
  put(out, parts_.sections.isAtTop() || parts_.sections.breaksPage() ? "\\sb0" : "");
  put(out, parts_.sections.takeBreak() ? "\\pagebb" : "");
  parts_.containers.writeWords(isRightToLeft);
  put(out, isRightToLeft ? "\\rtlpar" : "");
  put(out, alignment(start.align, isRightToLeft));
  if (start.kind == BlockKind::Rule) {
    put(out, ruleWords());
  } else if (start.kind == BlockKind::Contents) {
    put(out, contentsWords(start.level, isRightToLeft));
    put(out, start.isLast ? "\\sa200" : "");
  }
  const RunStyle run = parts_.styles.run(style);
  if (isRightToLeft) {
    writeRightToLeftStyle(out, run);
  }
  out.put(' ');
  parts_.containers.writeMarker();
  parts_.inlines.beginText(run, isRightToLeft);
  parts_.inlines.writeHeld();
}

void Paragraphs::writeEnd() { put(parts_.out, "\\par\n"); }

}  // namespace scrivalen::document::rtf
