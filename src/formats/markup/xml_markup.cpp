#include "formats/markup/xml_markup.h"

#include "text/ascii.h"

namespace scrivalen::document {

void XmlMarkup::putStart(std::string_view element) {
  put("<");
  put(element);
}

void XmlMarkup::putEnd(std::string_view element) {
  put("</");
  put(element);
  put(">");
}

void XmlMarkup::putAttribute(std::string_view name, std::string_view value) {
  if (value.empty()) {
    return;
  }
  put(" ");
  put(name);
  put("=\"");
  escaper_.value(out_, value);
  put("\"");
}

void XmlMarkup::putAttribute(std::string_view name, double number) {
  char digits[Values::kLongest];
  const char* const end = plainValues_.number(digits, number, ValueFormat());
  putAttribute(name, std::string_view(digits, static_cast<std::size_t>(end - digits)));
}

void XmlMarkup::putAlign(Align align) {
  constexpr std::string_view kNames[] = {"", "left", "center", "right", "justify"};
  putAttribute("align", kNames[static_cast<int>(align)]);
}

void XmlMarkup::putColors(const std::optional<Rgb>& color, const std::optional<Rgb>& background) {
  const auto putColor = [this](std::string_view name, const std::optional<Rgb>& rgb) {
    if (rgb) {
      char text[7] = {'#'};
      for (int i = 1; i < 7; ++i) {
        text[i] = kHexDigits[*rgb >> (24 - 4 * i) & 0xF];
      }
      putAttribute(name, std::string_view(text, sizeof text));
    }
  };
  putColor("color", color);
  putColor("background", background);
}

}  // namespace scrivalen::document
