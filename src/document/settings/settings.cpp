#include "document/settings/settings.h"

#include "document/settings/definitions.h"
#include "output/host_handlers.h"
#include "text/ascii.h"
#include "text/names/similar.h"
#include "text/utf.h"

#include <algorithm>
#include <cassert>
#include <charconv>
#include <cstddef>

namespace scrivalen::document {
namespace {

struct Name {
  std::string_view format;  // empty: all formats
  std::string_view plain;
  const SettingDefinition* definition;  // null: unknown
};

// A property's name may contain a dot, so a name is first looked up as it is.
Name split(std::string_view name) {
  const std::size_t dot = name.find('.');
  const SettingDefinition* const whole = settingDefinition(name);
  if (whole != nullptr || dot == std::string_view::npos || formatBit(name.substr(0, dot)) == 0) {
    return {{}, name, whole};
  }
  const std::string_view plain = name.substr(dot + 1);
  return {name.substr(0, dot), plain, settingDefinition(plain)};
}

// The format of a name that begins with one, such as "pdf.", and the setting that was probably meant.
std::string suggestionFor(const Name& name) {
  std::vector<std::string_view> known;
  for (const SettingDefinition& definition : settingDefinitions()) {
    if (definition.name != kProperty) {
      known.push_back(definition.name);
    }
  }
  const std::string_view similar = mostSimilar(name.plain, known);
  if (similar.empty()) {
    return {};
  }
  std::string start(name.format);
  return " Did you mean \"" + (start.empty() ? start : start + '.').append(similar) + "\"?";
}

// A text as a sentence quotes it: clean, in one line and not too long.
std::string inQuotes(std::string_view text) {
  constexpr std::size_t kLongest = 60;
  std::string result = "\"";
  const char* at = text.data();
  const char* const end = at + text.size();
  while (at != end && result.size() <= kLongest) {
    char32_t c = 0;
    if (!nextUtf8(at, end, c) || c < 0x20 || (c >= 0x7F && c < 0xA0)) {
      c = kReplacement;
    }
    char bytes[4];
    result.append(bytes, putUtf8(c, bytes));
  }
  return result + (at == end ? "\"" : "...\"");
}

bool isProperty(std::string_view name) { return name.starts_with(kProperty); }

// Readers of office documents take names of properties that differ only in case for equal.
bool areSame(std::string_view a, std::string_view b) {
  return a == b || (isProperty(a) && asciiLowered(a) == asciiLowered(b));
}

std::string_view usualValue(std::string_view name) {
  const SettingDefinition* const definition = settingDefinition(name);
  assert(definition != nullptr);
  return definition == nullptr ? std::string_view() : definition->usual;
}

// A property's name becomes a name or a text in one line in every format.
bool isNameTaken(std::string_view name) {
  constexpr std::size_t kLongest = 255;
  const char* at = name.data();
  const char* const end = at + name.size();
  while (at != end) {
    char32_t c = 0;
    if (!nextUtf8(at, end, c) || c < 0x20 || c == 0x7F) {
      return false;
    }
  }
  return name.size() <= kProperty.size() + kLongest;
}

}  // namespace

bool Settings::isPath(std::string_view name) {
  const SettingDefinition* const definition = split(name).definition;
  return definition != nullptr && definition->isPath();
}

bool Settings::keepsTabs(std::string_view name) {
  const SettingDefinition* const definition = split(name).definition;
  return definition != nullptr && definition->keepsTabs();
}

bool Settings::set(std::string_view name, std::string_view value, std::string& reason) {
  const Name parts = split(name);
  if (parts.definition == nullptr) {
    reason = "There is no setting " + inQuotes(name) + '.' + suggestionFor(parts);
    return false;
  }
  if (!isNameTaken(parts.plain)) {
    reason =
        "The name of a property has 1 to 255 bytes of UTF-8 without control characters, unlike " + inQuotes(name) + '.';
    return false;
  }
  if (!parts.format.empty() && (parts.definition->formats & formatBit(parts.format)) == 0) {
    reason = "The setting " + inQuotes(parts.plain) + " cannot be set for " + inQuotes(parts.format) +
             " alone, only for " + formatNames(parts.definition->formats) + '.';
    return false;
  }
  std::string taken(value);
  if (!parts.definition->take(taken)) {
    reason = "The setting " + inQuotes(name) + " does not take " + inQuotes(value) + ". It takes ";
    reason.append(parts.definition->values) += '.';
    return false;
  }
  const auto earlier = std::find_if(settings_.begin(), settings_.end(), [&](const Setting& setting) {
    return setting.format == parts.format && areSame(setting.name, parts.plain);
  });
  if (earlier == settings_.end() || parts.definition->adds) {
    settings_.push_back({std::string(parts.format), std::string(parts.plain), std::move(taken)});
  } else {
    earlier->value = std::move(taken);
  }
  return true;
}

std::string_view FormatSettings::text(std::string_view name) const {
  std::string_view value = usualValue(name);
  for (const auto& setting : settings_.settings_) {
    if (!areSame(setting.name, name)) {
      continue;
    }
    if (setting.format == format_) {
      return setting.value;
    }
    if (setting.format.empty()) {
      value = setting.value;
    }
  }
  return value;
}

bool FormatSettings::isSet(std::string_view name) const {
  return std::any_of(settings_.settings_.begin(), settings_.settings_.end(), [&](const auto& setting) {
    return areSame(setting.name, name) && (setting.format.empty() || setting.format == format_);
  });
}

int FormatSettings::number(std::string_view name) const {
  const std::string_view value = text(name);
  int number = 0;
  std::from_chars(value.data(), value.data() + value.size(), number);
  return number;
}

std::vector<std::string_view> FormatSettings::all(std::string_view name) const {
  std::vector<std::string_view> values;
  for (const auto& setting : settings_.settings_) {
    if (setting.name == name && (setting.format.empty() || setting.format == format_)) {
      values.push_back(setting.value);
    }
  }
  return values;
}

std::vector<std::pair<std::string_view, std::string_view>> FormatSettings::properties() const {
  std::vector<std::pair<std::string_view, std::string_view>> properties;
  for (const auto& setting : settings_.settings_) {
    if (!isProperty(setting.name) || !(setting.format.empty() || setting.format == format_)) {
      continue;
    }
    const std::string_view name = std::string_view(setting.name).substr(kProperty.size());
    const bool isListed = std::any_of(properties.begin(), properties.end(), [&](const auto& property) {
      return asciiLowered(property.first) == asciiLowered(name);
    });
    if (!isListed) {
      properties.emplace_back(name, text(setting.name));
    }
  }
  return properties;
}

std::int64_t FormatSettings::clock() const {
  if (!clock_) {
    const std::string_view value = text("clock");
    std::int64_t seconds = 0;
    const auto result = std::from_chars(value.data(), value.data() + value.size(), seconds);
    clock_ = result.ec == std::errc() ? seconds : currentTime();
  }
  return *clock_;
}

}  // namespace scrivalen::document
