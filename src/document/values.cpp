#include "document/values.h"

#include <algorithm>

namespace scrivalen::document {
namespace {

struct NumberSample {
  std::string_view sample;
  NumberStyle style;
};

constexpr NumberSample kNumberSamples[] = {
    {"1234.5", {".", ""}}, {"1,234.5", {".", ","}}, {"1.234,5", {",", "."}}, {"1 234,5", {",", "\u00A0"}}};

// Removes a part of a date from the beginning of a pattern; 'y', 'm' or 'd', or 0 if there is none.
char takeDatePart(std::string_view& pattern) {
  for (const std::string_view part : {"yyyy", "mm", "m", "dd", "d"}) {
    if (pattern.starts_with(part)) {
      pattern.remove_prefix(part.size());
      return part.front();
    }
  }
  return 0;
}

}  // namespace

std::optional<NumberStyle> NumberStyle::of(std::string_view sample) {
  for (const NumberSample& known : kNumberSamples) {
    if (known.sample == sample) {
      return known.style;
    }
  }
  return std::nullopt;
}

std::optional<DateStyle> DateStyle::of(std::string_view pattern) {
  constexpr std::size_t kLongestSeparator = 2;
  DateStyle style;
  style.pattern_ = pattern;
  std::string parts;
  while (parts.size() < 3) {
    const char part = takeDatePart(pattern);
    if (part == 0 || parts.find(part) != std::string::npos) {
      return std::nullopt;
    }
    parts += part;
    const std::size_t separator = std::min(pattern.find_first_not_of("-./, "), pattern.size());
    if (parts.size() < 3 && (separator == 0 || separator > kLongestSeparator)) {
      return std::nullopt;
    }
    if (parts.size() < 3) {
      pattern.remove_prefix(separator);
    }
  }
  return pattern.empty() || pattern == "." ? std::optional(style) : std::nullopt;
}

}  // namespace scrivalen::document
