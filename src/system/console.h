#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace scrivalen {

/// The program's arguments, its own name first, as narrowPath encodes them.
std::vector<std::string> programArguments(int argc, char** argv);

/// An environment variable, as narrowPath encodes it; nothing when it is not set.
std::optional<std::string> environmentVariable(const char* name);

/// Reads up to @p size bytes from standard input, unconverted; 0 at the end, nothing on an error or an interrupt.
std::optional<std::size_t> readStandardInput(void* data, std::size_t size);

/// Writes UTF-8 text without allocating; a terminal shows it correctly.
/// @return false, with the reason in lastSystemError, when not all of it was written
bool writeStandardOutput(std::string_view text) noexcept;
bool writeStandardError(std::string_view text) noexcept;
/// Whether standard error is a terminal that understands control sequences.
bool isStandardErrorTerminal();

}  // namespace scrivalen
