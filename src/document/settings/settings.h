#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace scrivalen::document {

/// The settings of a document: for all formats, or for one, whose name comes first, as in "text.encoding". A setting
/// given again replaces the earlier value; "font-file" adds to it. Each NAME of "property:NAME" is a setting of its
/// own, whatever its case.
class Settings {
 public:
  /// Whether the value of a setting is a path, whose bytes are kept as they are.
  static bool isPath(std::string_view name);
  /// Whether tabs in the value of a setting stay tabs.
  static bool keepsTabs(std::string_view name);

  /// @param name   as a host gives it
  /// @param value  well-formed UTF-8 unless it is a path
  /// @return false, with a sentence in @p reason, for an unknown name or a value that the setting does not take
  bool set(std::string_view name, std::string_view value, std::string& reason);

 private:
  friend class FormatSettings;

  struct Setting {
    std::string format;  // empty: all formats
    std::string name;
    std::string value;
  };

  std::vector<Setting> settings_;
};

/// The settings as one format sees them: its own come before those for all formats.
class FormatSettings {
 public:
  /// @param settings  not owned; must outlive this object
  FormatSettings(const Settings& settings, std::string_view format) : settings_(settings), format_(format) {}

  /// The value, or the setting's default.
  std::string_view text(std::string_view name) const;
  bool isSet(std::string_view name) const;
  bool flag(std::string_view name) const { return text(name) == "yes"; }
  int number(std::string_view name) const;
  /// The values of a setting that may be given several times, such as "font-file", in their order.
  std::vector<std::string_view> all(std::string_view name) const;
  /// NAME and value of each "property:NAME", in the order in which they came.
  std::vector<std::pair<std::string_view, std::string_view>> properties() const;
  /// The time that the document states as that of its making, in seconds since 1970-01-01 UTC: the setting "clock", or
  /// what the library's clock says at the first call.
  std::int64_t clock() const;

 private:
  const Settings& settings_;
  std::string_view format_;
  mutable std::optional<std::int64_t> clock_;
};

}  // namespace scrivalen::document
