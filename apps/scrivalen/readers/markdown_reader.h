#pragma once

#include "document.h"

#include <string_view>

namespace scrivalen::command {

/// Reads Markdown: CommonMark with tables, strike-through, task lists and bare addresses as links.
/// @param text  valid UTF-8 without NULs
void readMarkdown(std::string_view text, EventSink& sink);

}  // namespace scrivalen::command
