#include "formats/docx/text/run_style.h"

#include "formats/docx/xml.h"
#include "text/ascii.h"

#include <algorithm>
#include <cstddef>

namespace scrivalen::document::docx {
namespace {

constexpr std::size_t kLongestTag = 84;  // a limit of word processors

// Runs from right to left have properties of their own for the weight, the slope and the size.
void addPair(std::string& xml, std::string_view name, std::string_view attributes) {
  xml.append("<w:").append(name).append(attributes).append("/><w:");
  xml.append(name).append("Cs").append(attributes).append("/>");
}

// A run has one style; that of a link looks more different from text than that of code.
std::string_view styleElement(const RunStyle& style) {
  return style.link ? "<w:rStyle w:val=\"Hyperlink\"/>" : style.code ? "<w:rStyle w:val=\"InlineCode\"/>" : "";
}

std::string_view scriptElement(Script script) {
  switch (script) {
    case Script::Superscript: return "<w:vertAlign w:val=\"superscript\"/>";
    case Script::Subscript: return "<w:vertAlign w:val=\"subscript\"/>";
    default: return "";
  }
}

bool isTag(std::string_view text) {
  return text.size() <= kLongestTag &&
         std::all_of(text.begin(), text.end(), [](char c) { return isAsciiLetter(c) || isAsciiDigit(c) || c == '-'; });
}

}  // namespace

std::string colorValue(Rgb color) {
  std::string digits;
  for (int shift = 20; shift >= 0; shift -= 4) {
    digits += kHexDigits[color >> shift & 0xF];
  }
  return digits;
}

std::string_view languageValue(std::string_view tag) {
  return !isTag(tag) ? std::string_view() : asciiLowered(tag) == "en" ? "en-US" : tag;
}

std::string languageElement(std::string_view tag) {
  const std::string_view value = languageValue(tag);
  if (value.empty()) {
    return {};
  }
  return joined({"<w:lang w:val=\"", value, "\" w:eastAsia=\"", value, "\" w:bidi=\"", value, "\"/>"});
}

std::string fontsElement(std::string_view font) {
  return joined({"<w:rFonts w:ascii=\"", font, "\" w:hAnsi=\"", font, "\" w:cs=\"", font, "\"/>"});
}

std::string runProperties(const RunStyle& style, bool isRightToLeft) {
  std::string xml(styleElement(style));
  if (style.link && style.code) {
    xml += fontsElement(kMonoFont);
  }
  if (style.bold) {
    addPair(xml, "b", "");
  }
  if (style.italic) {
    addPair(xml, "i", "");
  }
  xml += style.deleted ? "<w:strike/>" : "";
  if (style.color) {
    xml += joined({"<w:color w:val=\"", colorValue(*style.color), "\"/>"});
  }
  if (style.halfPoints > 0) {
    const std::string size = joined({" w:val=\"", std::to_string(style.halfPoints), "\""});
    addPair(xml, "sz", size);
  }
  xml += style.underlined ? "<w:u w:val=\"single\"/>" : "";
  if (style.background) {
    xml += joined({"<w:shd w:val=\"clear\" w:color=\"auto\" w:fill=\"", colorValue(*style.background), "\"/>"});
  }
  xml += scriptElement(style.script);
  xml += isRightToLeft ? "<w:rtl/>" : "";
  if (!style.language.empty()) {
    xml += languageElement(style.language);
  }
  return xml.empty() ? xml : joined({"<w:rPr>", xml, "</w:rPr>"});
}

}  // namespace scrivalen::document::docx
