#include "formats/rtf/document/prolog/style_sheet.h"

#include "formats/rtf/document/escape.h"

namespace scrivalen::document::rtf {
namespace {

struct StyleNames {
  std::string_view name;
  std::string_view words;
};

constexpr StyleNames kStyleNames[kStyles] = {
    {"Normal", "\\sl264\\slmult1\\sa120\\fs22"},
    {"heading 1", "\\keepn\\keep\\sb360\\sa120\\outlinelevel0\\b\\fs36"},
    {"heading 2", "\\keepn\\keep\\sb300\\sa100\\outlinelevel1\\b\\fs30"},
    {"heading 3", "\\keepn\\keep\\sb240\\sa80\\outlinelevel2\\b\\fs26"},
    {"heading 4", "\\keepn\\keep\\sb200\\sa80\\outlinelevel3\\b\\fs23"},
    {"heading 5", "\\keepn\\keep\\sb200\\sa60\\outlinelevel4\\b\\fs22"},
    {"heading 6", "\\keepn\\keep\\sb200\\sa60\\outlinelevel5\\b\\i\\fs22"},
    {"Title", "\\keepn\\keep\\sa280\\b\\fs48"},
    {"Quote", "\\sl264\\slmult1\\sa120\\fs22"},
    {"Code", "\\sa160\\noproof\\f2\\fs18"},
    {"List Paragraph", "\\sl264\\slmult1\\sa120\\fs22"},
    {"toc 1", "\\sa40\\fs22"},
    {"header", "\\fs18"},
    {"footer", "\\fs18"},
};

// A border of the code's own colour leaves space around it.
std::string codeShade(const ColorTable& colors) {
  const std::string color = std::to_string(colors.indexOf(kShadeColor));
  return "\\box\\brdrs\\brdrw10\\brsp80\\brdrcf" + color + "\\cbpat" + color;
}

std::string quoteBorderOf(const ColorTable& colors) {
  return "\\brdrl\\brdrs\\brdrw40\\brsp180\\brdrcf" + std::to_string(colors.indexOf(kLineColor));
}

}  // namespace

StyleSheet::StyleSheet(const ColorTable& colors) : quoteBorder_(quoteBorderOf(colors)) {
  for (int i = 0; i < kStyles; ++i) {
    words_[i] = "\\s" + std::to_string(i) + "\\widctlpar";
    words_[i] += static_cast<Style>(i) == Style::Code    ? codeShade(colors)
                 : static_cast<Style>(i) == Style::Quote ? quoteBorder_
                                                         : std::string();
    words_[i] += kStyleNames[i].words;
  }
}

void StyleSheet::write(OutputBuffer& out) const {
  put(out, "{\\stylesheet\n");
  for (int i = 0; i < kStyles; ++i) {
    put(out, "{");
    put(out, words(static_cast<Style>(i)));
    put(out, i == 0 ? "\\snext0 " : "\\sbasedon0\\snext0 ");
    put(out, kStyleNames[i].name);
    put(out, ";}\n");
  }
  put(out, "}\n");
}

}  // namespace scrivalen::document::rtf
