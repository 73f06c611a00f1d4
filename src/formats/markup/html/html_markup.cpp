#include "formats/markup/html/html_markup.h"

#include "document/pictures/base64.h"
#include "formats/markup/html/html_links.h"

#include <charconv>

namespace scrivalen::document {
namespace {

std::string colorOf(Rgb color) {
  constexpr char kDigits[] = "0123456789abcdef";
  std::string text = "#";
  for (int shift = 20; shift >= 0; shift -= 4) {
    text += kDigits[color >> shift & 0xF];
  }
  return text;
}

}  // namespace

void HtmlMarkup::putData(std::string_view bytes) { putBase64(out_, bytes); }

void HtmlMarkup::putAttribute(std::string_view name, std::string_view value) {
  put(" ");
  put(name);
  put("=\"");
  escaper_.value(out_, value);
  put("\"");
}

void HtmlMarkup::putId(std::string_view id) {
  if (!id.empty()) {
    putAttribute("id", htmlId(id));
  }
}

void HtmlMarkup::putStart(std::string_view element, std::string_view id, Align align) {
  put("<");
  put(element);
  putId(id);
  put(alignment(align));
  put(">");
}

void HtmlMarkup::putEnd(std::string_view element) {
  put("</");
  put(element);
  put(">");
}

// Text begins at the left unless the language is written from the right.
std::string_view HtmlMarkup::alignment(Align align) const {
  switch (align) {
    case Align::Auto: return "";
    case Align::Left: return isRightToLeft_ ? " style=\"text-align:left\"" : "";
    case Align::Center: return " style=\"text-align:center\"";
    case Align::Right: return isRightToLeft_ ? "" : " style=\"text-align:right\"";
    case Align::Justify: return " style=\"text-align:justify\"";
  }
  return "";
}

void appendNumber(std::string& text, double number, int precision) {
  char digits[64];
  const auto end = std::to_chars(digits, digits + sizeof digits, number, std::chars_format::fixed, precision).ptr;
  text.append(digits, end);
  if (precision > 0) {
    text.erase(text.find_last_not_of('0') + 1);
    text.erase(text.back() == '.' ? text.size() - 1 : text.size());
  }
}

void appendNumber(std::string& text, int number) {
  char digits[16];
  text.append(digits, std::to_chars(digits, digits + sizeof digits, number).ptr);
}

void appendColors(std::string& style, const std::optional<Rgb>& color, const std::optional<Rgb>& background) {
  if (color) {
    style.append(style.empty() ? "" : ";").append("color:").append(colorOf(*color));
  }
  if (background) {
    style.append(style.empty() ? "" : ";").append("background-color:").append(colorOf(*background));
  }
}

void appendStyle(std::string& tag, std::string_view style) {
  if (!style.empty()) {
    tag.append(" style=\"").append(style).append("\"");
  }
}

}  // namespace scrivalen::document
