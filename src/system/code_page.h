#pragma once

#include "text/loss_counter.h"

#include <cstddef>
#include <optional>
#include <string_view>

namespace scrivalen {

/// Converts wide text to the ANSI code page: the system's on Windows, without its look-alike letters; Windows-1252
/// elsewhere, whose five unused bytes stand for themselves. What the code page lacks becomes "?", two of them for a
/// surrogate pair, and is counted.
/// @param out       where the bytes go
/// @param capacity  how many fit
/// @return how many bytes were written; nothing when they do not fit
std::optional<std::size_t> toCodePage(std::wstring_view text, char* out, std::size_t capacity, LossCounter& loss);

/// Whether the code page holds every character of a text.
bool isInCodePage(std::wstring_view text);

}  // namespace scrivalen
