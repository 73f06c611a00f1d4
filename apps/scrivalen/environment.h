#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace scrivalen::command {

/// The environment of a run: standard streams, environment variables and interrupts.
struct Environment {
  std::function<std::optional<std::size_t>(void* data, std::size_t size)> readInput;
  std::function<bool(std::string_view)> writeOutput;  ///< on failure false, with the reason in the system's last error
  std::function<void(std::string_view)> writeError;
  std::function<std::optional<std::string>(const char* name)> variable;
  std::function<bool()> wasInterrupted;
  bool errorIsTerminal = false;
};

}  // namespace scrivalen::command
