#include "system/console.h"

#include "system/files/descriptor_posix.h"
#include "system/process/stop.h"

#include <cerrno>
#include <cstdlib>

#include <unistd.h>

namespace scrivalen {

std::vector<std::string> programArguments(int argc, char** argv) { return {argv, argv + argc}; }

std::optional<std::string> environmentVariable(const char* name) {
  const char* value = std::getenv(name);
  return value ? std::optional<std::string>(value) : std::nullopt;
}

std::optional<std::size_t> readStandardInput(void* data, std::size_t size) {
  for (;;) {
    const ssize_t count = ::read(STDIN_FILENO, data, size);
    if (count >= 0) {
      return static_cast<std::size_t>(count);
    }
    if (errno != EINTR || isStopRequested()) {
      return std::nullopt;
    }
  }
}

bool writeStandardOutput(std::string_view text) noexcept {
  return writeAll(toNative(STDOUT_FILENO), text.data(), text.size());
}

bool writeStandardError(std::string_view text) noexcept {
  return writeAll(toNative(STDERR_FILENO), text.data(), text.size());
}

bool isStandardErrorTerminal() { return ::isatty(STDERR_FILENO) == 1; }

}  // namespace scrivalen
