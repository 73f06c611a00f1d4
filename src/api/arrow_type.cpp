#include "api/arrow_type.h"

#include <charconv>
#include <system_error>

namespace scrivalen::api {
namespace {

using Kind = ArrowType::Kind;

constexpr int kLargestScale = 76;  // what a decimal of any width may have

struct Named {
  std::string_view format;
  ArrowType type;
};

constexpr Named kTypes[] = {
    {"n", {Kind::Null}},      {"b", {Kind::Boolean}},     {"c", {Kind::Signed, 1}},  {"C", {Kind::Unsigned, 1}},
    {"s", {Kind::Signed, 2}}, {"S", {Kind::Unsigned, 2}}, {"i", {Kind::Signed, 4}},  {"I", {Kind::Unsigned, 4}},
    {"l", {Kind::Signed, 8}}, {"L", {Kind::Unsigned, 8}}, {"f", {Kind::Float, 4}},   {"g", {Kind::Float, 8}},
    {"u", {Kind::Text, 4}},   {"U", {Kind::Text, 8}},     {"vu", {Kind::TextViews}}, {"tdD", {Kind::Date, 4}},
    {"tdm", {Kind::Date, 8}},
};

// Whose format goes on with a time zone.
constexpr Named kTimestamps[] = {
    {"tss:", {Kind::Timestamp, 8, 1}},
    {"tsm:", {Kind::Timestamp, 8, 1000}},
    {"tsu:", {Kind::Timestamp, 8, 1000000}},
    {"tsn:", {Kind::Timestamp, 8, 1000000000}},
};

std::optional<int> readNumber(std::string_view& text) {
  int value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc()) {
    return std::nullopt;
  }
  text.remove_prefix(static_cast<std::size_t>(end - text.data()));
  return value;
}

// "PRECISION,SCALE", with ",128" or nothing after it.
std::optional<ArrowType> decimalOf(std::string_view text) {
  const auto precision = readNumber(text);
  if (!precision || !text.starts_with(',')) {
    return std::nullopt;
  }
  text.remove_prefix(1);
  const auto scale = readNumber(text);
  if (!scale || *scale > kLargestScale || *scale < -kLargestScale || (!text.empty() && text != ",128")) {
    return std::nullopt;
  }
  return ArrowType{.kind = Kind::Decimal, .width = 16, .scale = *scale};
}

}  // namespace

std::int64_t ArrowType::leastBuffers() const {
  switch (kind) {
    case Kind::Null: return 0;
    case Kind::Text:
    case Kind::TextViews: return 3;
    default: return 2;
  }
}

std::optional<ArrowType> ArrowType::of(const char* format) {
  const std::string_view text = format ? std::string_view(format) : std::string_view();
  if (text.starts_with("d:")) {
    return decimalOf(text.substr(2));
  }
  for (const Named& known : kTypes) {
    if (text == known.format) {
      return known.type;
    }
  }
  for (const Named& known : kTimestamps) {
    if (text.starts_with(known.format)) {
      return known.type;
    }
  }
  return std::nullopt;
}

std::optional<ArrowField> ArrowField::of(const ArrowSchema& schema) {
  const auto own = ArrowType::of(schema.format);
  if (!own || !schema.dictionary) {
    return own ? std::optional(ArrowField{*own, std::nullopt}) : std::nullopt;
  }
  const auto values = ArrowType::of(schema.dictionary->format);
  if (!values || !own->isInteger() || schema.dictionary->dictionary) {
    return std::nullopt;
  }
  return ArrowField{*values, own};
}

}  // namespace scrivalen::api
