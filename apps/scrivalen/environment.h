#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace scrivalen::command {

/// What surrounds a run of the command: the standard streams, the environment, the keyboard.
struct Environment {
  std::function<std::optional<std::size_t>(void* data, std::size_t size)> readInput;
  std::function<bool(std::string_view)> writeOutput;  ///< false, with the reason as the system's last error: it failed
  std::function<void(std::string_view)> writeError;
  std::function<std::optional<std::string>(const char* name)> variable;
  std::function<bool()> wasInterrupted;
  bool errorIsTerminal = false;
};

}  // namespace scrivalen::command
