#pragma once

#include <span>
#include <string>
#include <string_view>

namespace scrivalen::command {

/// The help about all options, at most 80 columns wide.
std::string helpText();

/// The help without arguments: where to begin.
std::string shortHelp();

/// The text of --version.
std::string versionText();

// For the help and the manual.

struct Example {
  std::string_view line;
  std::string_view meaning;
};

std::span<const std::string_view> usageLines();
std::string_view description();
std::span<const Example> examples();
std::string_view statusText();
std::string_view settingsText();

}  // namespace scrivalen::command
