#include "formats/rtf/document/prolog.h"

#include "formats/rtf/document/escape.h"
#include "formats/rtf/document/languages.h"
#include "text/ascii.h"
#include "text/calendar.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace scrivalen::document::rtf {
namespace {

int twips(double points) { return static_cast<int>(std::lround(points * kTwipsPerPoint)); }

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

struct KnownFont {
  std::string_view setting;
  int number;
};

constexpr int kHostsFont = 3;
constexpr KnownFont kKnownFonts[] = {{"serif", 0},      {"", 1},     {"sans", 1},
                                     {"sans-serif", 1}, {"mono", 2}, {"monospace", 2}};

int fontOf(std::string_view setting) {
  const std::string name = asciiLowered(setting);
  for (const KnownFont& known : kKnownFonts) {
    if (known.setting == name) {
      return known.number;
    }
  }
  return kHostsFont;
}

// A semicolon would end the name.
std::string fontName(std::string_view setting) {
  std::string name(setting);
  std::replace(name.begin(), name.end(), ';', ' ');
  return name;
}

void writeFonts(OutputBuffer& out, std::string_view setting) {
  put(out,
      "{\\fonttbl{\\f0\\froman\\fcharset0\\fprq2 Times New Roman;}{\\f1\\fswiss\\fcharset0\\fprq2 Arial;}"
      "{\\f2\\fmodern\\fcharset0\\fprq1 Courier New;}");
  if (fontOf(setting) == kHostsFont) {
    put(out, "{\\f3\\fnil\\fcharset0\\fprq2 ");
    writeText(out, fontName(setting));
    put(out, ";}");
  }
  put(out, "}\n");
}

// Each depth has its own indent, which paragraphs repeat.
void writeIndent(OutputBuffer& out, int level) {
  put(out, "\\fi", -kListIndent);
  put(out, "\\li", (level + 1) * kListIndent);
  out.put('}');
}

void writeBulletList(OutputBuffer& out) {
  put(out, "{\\list\\listtemplateid1\\listhybrid");
  for (int level = 0; level < kBulletLevels; ++level) {
    put(out, "{\\listlevel\\levelnfc23\\leveljc0\\levelfollow0\\levelstartat1{\\leveltext\\'01");
    writeText(out, bulletOf(level));
    put(out, ";}{\\levelnumbers;}");
    writeIndent(out, level);
  }
  put(out, "\\listid1}\n");
}

void writeNumberedList(OutputBuffer& out, int list) {
  put(out, "{\\list\\listtemplateid", list);
  put(out,
      "\\listsimple1{\\listlevel\\levelnfc0\\leveljc0\\levelfollow0\\levelstartat1{\\leveltext\\'02\\'00.;}"
      "{\\levelnumbers\\'01;}");
  writeIndent(out, 0);
  put(out, "\\listid", list);
  put(out, "}\n");
}

void writeLists(OutputBuffer& out) {
  put(out, "{\\*\\listtable\n");
  writeBulletList(out);
  for (int list = kFirstNumberedList; list < kFirstNumberedList + kNumberedLists; ++list) {
    writeNumberedList(out, list);
  }
  put(out, "}\n{\\*\\listoverridetable");
  for (int list = kBulletList; list < kFirstNumberedList + kNumberedLists; ++list) {
    put(out, "{\\listoverride\\listid", list);
    put(out, "\\listoverridecount0\\ls", list);
    out.put('}');
  }
  put(out, "}\n");
}

void writeProperty(OutputBuffer& out, std::string_view word, std::string_view value) {
  if (!value.empty()) {
    put(out, word);
    writeText(out, value);
    out.put('}');
  }
}

void writeTime(OutputBuffer& out, std::int64_t seconds) {
  const std::int64_t days = seconds / kSecondsPerDay - (seconds % kSecondsPerDay < 0 ? 1 : 0);
  const auto minutes = (seconds - days * kSecondsPerDay) / 60;
  const CalendarDate date = dateOf(days);
  put(out, "{\\creatim\\yr", date.year);
  put(out, "\\mo", date.month);
  put(out, "\\dy", date.day);
  put(out, "\\hr", minutes / 60);
  put(out, "\\min", minutes % 60);
  out.put('}');
}

void writeInfo(OutputBuffer& out, const FormatSettings& settings) {
  put(out, "{\\info");
  writeProperty(out, "{\\title ", settings.text("title"));
  writeProperty(out, "{\\subject ", settings.text("subject"));
  writeProperty(out, "{\\author ", settings.text("author"));
  writeProperty(out, "{\\keywords ", settings.text("keywords"));
  writeTime(out, settings.clock());
  put(out, "}\n");
  const auto properties = settings.properties();
  if (properties.empty()) {
    return;
  }
  put(out, "{\\*\\userprops");
  for (const auto& [name, value] : properties) {
    put(out, "{\\propname ");
    writeText(out, name);
    put(out, "}\\proptype30{\\staticval ");
    writeText(out, value);
    out.put('}');
  }
  put(out, "}\n");
}

void writePaper(OutputBuffer& out, const PageTwips& paper) {
  put(out, "\\paperw", paper.width);
  put(out, "\\paperh", paper.height);
  put(out, "\\margl", paper.left);
  put(out, "\\margr", paper.right);
  put(out, "\\margt", paper.top);
  put(out, "\\margb", paper.bottom);
  put(out, paper.width > paper.height ? "\\landscape\\widowctrl\n" : "\\widowctrl\n");
}

}  // namespace

PageTwips::PageTwips(const Page& page)
    : width(twips(page.widthPt)),
      height(twips(page.heightPt)),
      top(twips(page.topPt)),
      right(twips(page.rightPt)),
      bottom(twips(page.bottomPt)),
      left(twips(page.leftPt)) {}

std::string_view bulletOf(int level) {
  constexpr std::string_view kBullets[] = {"\xE2\x80\xA2", "\xE2\x97\xA6", "\xE2\x96\xAA"};  // U+2022, U+25E6, U+25AA
  return kBullets[level % 3];
}

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

void writeProlog(OutputBuffer& out, const FormatSettings& settings, const ColorTable& colors, const StyleSheet& styles,
                 const PageTwips& paper) {
  put(out, "{\\rtf1\\ansi\\ansicpg1252\\uc1\\deff", fontOf(settings.text("font")));
  put(out, "\\deflang", languageNumber(settings.text("language"), kEnglish));
  out.put('\n');
  writeFonts(out, settings.text("font"));
  colors.write(out);
  styles.write(out);
  writeLists(out);
  writeInfo(out, settings);
  writePaper(out, paper);
}

}  // namespace scrivalen::document::rtf
