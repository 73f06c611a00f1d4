#include "formats/attribute_text.h"

#include "text/ascii.h"

#include <algorithm>
#include <charconv>
#include <iterator>

namespace scrivalen {
namespace {

using document::Align;
using document::ValueType;

constexpr std::string_view kAttributeBlanks = " \t\r\n\f";
constexpr double kLongestWidth = 100000;

std::string_view trimmed(std::string_view text) {
  text.remove_prefix(std::min(text.find_first_not_of(kAttributeBlanks), text.size()));
  return text.substr(0, text.find_last_not_of(kAttributeBlanks) + 1);
}

std::string_view takeUpTo(std::string_view& text, std::string_view ends) {
  const std::string_view part = text.substr(0, text.find_first_of(ends));
  text.remove_prefix(part.size());
  return part;
}

// "#RGB" is short for "#RRGGBB".
std::optional<Rgb> colorOfValue(std::string_view text) {
  constexpr Rgb kDarkYellow = 0x808000;  // known to RTF only
  text = trimmed(text);
  if (text.size() == 4 && text.front() == '#') {
    return colorOf(std::string_view(std::string{'#', text[1], text[1], text[2], text[2], text[3], text[3]}));
  }
  const auto color = colorOf(text);
  return !color && asciiLowered(text) == "darkyellow" ? kDarkYellow : color;
}

void take(std::optional<Rgb>& color, std::string_view text) {
  if (const auto known = colorOfValue(text)) {
    color = known;
  }
}

template <typename Value>
struct Keyword {
  std::string_view text;
  Value value;
};

template <typename Value, std::size_t kCount>
void take(Value& value, const Keyword<Value> (&keywords)[kCount], std::string_view text) {
  const std::string lower = asciiLowered(trimmed(text));
  const auto* const found = std::find_if(std::begin(keywords), std::end(keywords),
                                         [&lower](const Keyword<Value>& keyword) { return keyword.text == lower; });
  if (found != std::end(keywords)) {
    value = found->value;
  }
}

constexpr Keyword<Align> kAligns[] = {{"left", Align::Left},      {"start", Align::Left},    {"right", Align::Right},
                                      {"end", Align::Right},      {"center", Align::Center}, {"middle", Align::Center},
                                      {"justify", Align::Justify}};

constexpr Keyword<ValueType> kTypes[] = {
    {"text", ValueType::Text},      {"string", ValueType::Text},     {"number", ValueType::Number},
    {"decimal", ValueType::Number}, {"float", ValueType::Number},    {"integer", ValueType::Integer},
    {"int", ValueType::Integer},    {"date", ValueType::Date},       {"time", ValueType::Time},
    {"datetime", ValueType::Time},  {"boolean", ValueType::Boolean}, {"bool", ValueType::Boolean}};

constexpr Keyword<bool> kWeights[] = {{"bold", true},    {"bolder", true},   {"600", true},
                                      {"700", true},     {"800", true},      {"900", true},
                                      {"normal", false}, {"lighter", false}, {"400", false}};

constexpr Keyword<bool> kSlants[] = {{"italic", true}, {"oblique", true}, {"normal", false}};

constexpr Keyword<double> kUnits[] = {{"", 0.75},  {"px", 0.75}, {"pt", 1},  {"pc", 12},        {"em", 12},
                                      {"rem", 12}, {"ch", 6},    {"in", 72}, {"cm", 72 / 2.54}, {"mm", 72 / 25.4}};

void takeWidth(ColumnWidth& width, std::string_view text) {
  text = trimmed(text);
  double number = 0;
  const char* const end = text.data() + text.size();
  const auto result = std::from_chars(text.data(), end, number, std::chars_format::fixed);
  if (text.empty() || result.ec != std::errc() || !(number > 0 && number <= kLongestWidth)) {
    return;
  }
  const std::string_view unit(result.ptr, static_cast<std::size_t>(end - result.ptr));
  if (unit == "%") {
    width = {ColumnWidth::Unit::Percent, number};
    return;
  }
  double points = 0;
  take(points, kUnits, unit);
  if (points > 0) {
    width = {ColumnWidth::Unit::Points, number * points};
  }
}

void takeSpan(int& span, std::string_view text) {
  text = trimmed(text);
  int number = 0;
  const auto result = std::from_chars(text.data(), text.data() + text.size(), number);
  if (!text.empty() && result.ptr == text.data() + text.size()) {
    span = result.ec == std::errc::result_out_of_range ? document::kWidestSpan
                                                       : std::clamp(number, 1, document::kWidestSpan);
  }
}

// The first colour among the words of a "background".
void takeBackground(std::optional<Rgb>& background, std::string_view value) {
  while (!value.empty()) {
    const std::string_view word = takeUpTo(value, kAttributeBlanks);
    if (const auto color = colorOfValue(word)) {
      background = color;
      return;
    }
    value.remove_prefix(std::min<std::size_t>(value.size(), 1));
  }
}

void takeDeclaration(std::string_view property, std::string_view value, Attributes& attributes) {
  const std::string name = asciiLowered(trimmed(property));
  value = value.substr(0, value.find('!'));  // !important
  if (name == "text-align") {
    take(attributes.align, kAligns, value);
  } else if (name == "width") {
    takeWidth(attributes.width, value);
  } else if (name == "color") {
    take(attributes.color, value);
  } else if (name == "background" || name == "background-color") {
    takeBackground(attributes.background, value);
  } else if (name == "font-weight") {
    take(attributes.isBold, kWeights, value);
  } else if (name == "font-style") {
    take(attributes.isItalic, kSlants, value);
  }
}

void takeStyle(std::string_view style, Attributes& attributes) {
  while (!style.empty()) {
    std::string_view value = takeUpTo(style, ";");
    style.remove_prefix(std::min<std::size_t>(style.size(), 1));
    const std::string_view property = takeUpTo(value, ":");
    value.remove_prefix(std::min<std::size_t>(value.size(), 1));
    takeDeclaration(property, value, attributes);
  }
}

void takeAttribute(std::string_view attribute, std::string_view value, Attributes& attributes) {
  const std::string name = asciiLowered(attribute);
  if (name == "style") {
    takeStyle(value, attributes);
  } else if (name == "align") {
    take(attributes.align, kAligns, value);
  } else if (name == "width") {
    takeWidth(attributes.width, value);
  } else if (name == "colspan") {
    takeSpan(attributes.span, value);
  } else if (name == "bgcolor") {
    take(attributes.background, value);
  } else if (name == "data-type") {
    take(attributes.type, kTypes, value);
  } else if (name == "id") {
    attributes.id = trimmed(value);
  }
}

// The value after a "=", in quotes or up to the next blank.
std::string_view takeValue(std::string_view& text) {
  text.remove_prefix(std::min(text.find_first_not_of(kAttributeBlanks), text.size()));
  if (text.empty() || (text.front() != '"' && text.front() != '\'')) {
    return takeUpTo(text, kAttributeBlanks);
  }
  const char quote = text.front();
  text.remove_prefix(1);
  const std::string_view value = takeUpTo(text, std::string_view(&quote, 1));
  text.remove_prefix(std::min<std::size_t>(text.size(), 1));
  return value;
}

}  // namespace

void readAttributes(std::string_view text, Attributes& attributes) {
  if (text.find('=') == text.npos) {
    readColors(text, attributes);
    return;
  }
  for (text = trimmed(text); !text.empty(); text = trimmed(text)) {
    const std::string_view name = takeUpTo(text, " \t\r\n\f=");
    text = trimmed(text);
    if (text.empty() || text.front() != '=') {
      continue;
    }
    text.remove_prefix(1);
    takeAttribute(name, takeValue(text), attributes);
  }
}

bool readColors(std::string_view text, Attributes& attributes) {
  const std::size_t semicolon = text.find(';');
  bool areKnown = true;
  const auto read = [&areKnown](std::optional<Rgb>& color, std::string_view name) {
    take(color, name);
    areKnown = areKnown && (trimmed(name).empty() || colorOfValue(name).has_value());
  };
  if (semicolon != text.npos) {
    read(attributes.color, text.substr(0, semicolon));
  }
  read(attributes.background, semicolon == text.npos ? text : text.substr(semicolon + 1));
  return areKnown;
}

}  // namespace scrivalen
