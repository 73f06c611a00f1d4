#pragma once

#include <span>
#include <string>
#include <string_view>

namespace scrivalen::document {

/// A setting that a host may give.
struct SettingDefinition {
  std::string_view name;
  unsigned formats;                  ///< bits of kFormats: those that may come first, as in "text.encoding"
  std::string_view usual;            ///< its value where none is given
  std::string_view values;           ///< those that it takes, for a person: the end of a sentence "It takes ..."
  bool (*take)(std::string& value);  ///< brings a value into its one form; returns false for one that it does not take
  bool adds = false;                 ///< a value given again does not replace the earlier one

  bool isPath() const;
  /// Whether tabs in its value stay.
  bool keepsTabs() const;
};

/// "property:NAME" is in it as "property:".
std::span<const SettingDefinition> settingDefinitions();

/// The definition of a name without a format; null for an unknown one.
const SettingDefinition* settingDefinition(std::string_view name);

inline constexpr std::string_view kProperty = "property:";

/// The formats of a definition, as in "html, rtf and pdf"; "every format" for all.
std::string formatNames(unsigned formats);
/// The bit of a format; 0 for an unknown one.
unsigned formatBit(std::string_view format);

}  // namespace scrivalen::document
