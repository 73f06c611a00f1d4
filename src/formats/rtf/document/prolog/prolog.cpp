#include "formats/rtf/document/prolog/prolog.h"

#include "document/language.h"
#include "formats/rtf/document/escape.h"
#include "formats/rtf/document/prolog/list_table.h"
#include "text/calendar.h"
#include "text/languages/windows_language.h"

#include <algorithm>
#include <cstdint>

namespace scrivalen::document::rtf {
namespace {

constexpr int kEnglish = 1033;

// A semicolon would end the name.
std::string fontEntry(std::string_view font) {
  std::string name(font);
  std::replace(name.begin(), name.end(), ';', ' ');
  return name;
}

void writeFonts(OutputBuffer& out, const DocumentFont& font) {
  put(out,
      "{\\fonttbl{\\f0\\froman\\fcharset0\\fprq2 Times New Roman;}{\\f1\\fswiss\\fcharset0\\fprq2 Arial;}"
      "{\\f2\\fmodern\\fcharset0\\fprq1 Courier New;}");
  if (font.kind == DocumentFont::Kind::Own) {
    put(out, "{\\f3\\fnil\\fcharset0\\fprq2 ");
    writeText(out, fontEntry(font.name));
    put(out, ";}");
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

// The kinds are in the order of the table.
int fontNumber(const DocumentFont& font) { return static_cast<int>(font.kind); }

void writeProlog(OutputBuffer& out, const FormatSettings& settings, const DocumentFont& font, const ColorTable& colors,
                 const StyleSheet& styles, const PageTwips& paper) {
  put(out, "{\\rtf1\\ansi\\ansicpg1252\\uc1\\deff", fontNumber(font));
  const std::string_view language = settings.text("language");
  const WindowsLanguage* const known = windowsLanguageOf(language);
  const int number = known ? known->identifier : kEnglish;
  put(out, "\\deflang", number);
  if (isRightToLeft(language)) {
    put(out, "\\adeflang", number);
  }
  out.put('\n');
  writeFonts(out, font);
  colors.write(out);
  styles.write(out);
  writeLists(out);
  writeInfo(out, settings);
  writePaper(out, paper);
  put(out, isRightToLeft(settings.text("language")) ? "\\rtldoc\n" : "");
}

}  // namespace scrivalen::document::rtf
