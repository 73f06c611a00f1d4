#include "formats/rtf/document/prolog/style_sheet.h"

#include "formats/rtf/document/escape.h"

namespace scrivalen::document::rtf {
namespace {

struct StyleDefinition {
  std::string_view name;
  std::string_view words;  // of its paragraphs
  int halfPoints;
  bool bold = false;
  bool italic = false;
};

constexpr StyleDefinition kStyleDefinitions[kStyles] = {
    {"Normal", "\\sl264\\slmult1\\sa120", 22},
    {"heading 1", "\\keepn\\keep\\sb360\\sa120\\outlinelevel0", 36, true},
    {"heading 2", "\\keepn\\keep\\sb300\\sa100\\outlinelevel1", 30, true},
    {"heading 3", "\\keepn\\keep\\sb240\\sa80\\outlinelevel2", 26, true},
    {"heading 4", "\\keepn\\keep\\sb200\\sa80\\outlinelevel3", 23, true},
    {"heading 5", "\\keepn\\keep\\sb200\\sa60\\outlinelevel4", 22, true},
    {"heading 6", "\\keepn\\keep\\sb200\\sa60\\outlinelevel5", 22, true, true},
    {"Title", "\\keepn\\keep\\sa280", 48, true},
    {"Quote", "\\sl264\\slmult1\\sa120", 22},
    {"Code", "\\sa160\\noproof\\f2", 18},
    {"List Paragraph", "\\sl264\\slmult1\\sa120", 22},
    {"toc 1", "\\sa40", 22},
    {"header", "", 18},
    {"footer", "", 18},
};

// A border of the code's own colour leaves space around it.
std::string codeShade(const ColorTable& colors) {
  const std::string color = std::to_string(colors.indexOf(kShadeColor));
  return "\\box\\brdrs\\brdrw10\\brsp80\\brdrcf" + color + "\\cbpat" + color;
}

std::string quoteBorderOf(const ColorTable& colors, std::string_view side) {
  return std::string(side) + "\\brdrs\\brdrw40\\brsp180\\brdrcf" + std::to_string(colors.indexOf(kLineColor));
}

}  // namespace

StyleSheet::StyleSheet(const ColorTable& colors, int font)
    : font_(font),
      quoteBorder_(quoteBorderOf(colors, "\\brdrl")),
      quoteBorderOnRight_(quoteBorderOf(colors, "\\brdrl\\brdrnone\\brdrr")),
      codeShade_(codeShade(colors)) {
  for (int i = 0; i < kStyles; ++i) {
    words_[i] = wordsOf(static_cast<Style>(i), quoteBorder_);
  }
  quoteOnRight_ = wordsOf(Style::Quote, quoteBorderOnRight_);
}

std::string StyleSheet::wordsOf(Style style, std::string_view quoteBorder) const {
  const int number = static_cast<int>(style);
  const StyleDefinition& definition = kStyleDefinitions[number];
  std::string words = "\\s" + std::to_string(number) + "\\widctlpar";
  if (style == Style::Code) {
    words += codeShade_;
  } else if (style == Style::Quote) {
    words += quoteBorder;
  }
  words.append(definition.words).append(definition.bold ? "\\b" : "").append(definition.italic ? "\\i" : "");
  return words + "\\fs" + std::to_string(definition.halfPoints);
}

RunStyle StyleSheet::run(Style style) const {
  const StyleDefinition& definition = kStyleDefinitions[static_cast<int>(style)];
  return {style == Style::Code ? kMonoFont : font_, definition.halfPoints, definition.bold, definition.italic};
}

void StyleSheet::write(OutputBuffer& out) const {
  put(out, "{\\stylesheet\n");
  for (int i = 0; i < kStyles; ++i) {
    put(out, "{");
    put(out, words(static_cast<Style>(i)));
    put(out, i == 0 ? "\\snext0 " : "\\sbasedon0\\snext0 ");
    put(out, kStyleDefinitions[i].name);
    put(out, ";}\n");
  }
  put(out, "}\n");
}

}  // namespace scrivalen::document::rtf
