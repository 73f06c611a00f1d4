#pragma once

#include "text/loss_counter.h"

#include <cstddef>
#include <optional>
#include <string_view>

namespace scrivalen {

/// Converts wide text to the ANSI code page: on Windows the system's, without best-fit letters; elsewhere Windows-1252,
/// whose five unassigned bytes map to themselves. A character missing from the code page becomes "?", two of them for a
/// surrogate pair, and is counted.
/// @param capacity  the size of @p out in bytes
/// @return the number of bytes written; nothing when they do not fit
std::optional<std::size_t> toCodePage(std::wstring_view text, char* out, std::size_t capacity, LossCounter& loss);

/// Whether the code page contains every character of a text.
bool isInCodePage(std::wstring_view text);

}  // namespace scrivalen
