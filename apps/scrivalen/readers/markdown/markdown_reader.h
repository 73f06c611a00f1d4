#pragma once

#include "readers/document_sink.h"

#include <string_view>

namespace scrivalen::command {

enum class Safety {
  Safe,   ///< of raw HTML text, line breaks, links and pictures are kept; addresses that run a program become text
  Unsafe  ///< raw HTML and every address are passed on
};

/// Reads Markdown: CommonMark with tables, strike-through, task lists and bare addresses as links.
/// @param text  valid UTF-8 without NULs
void readMarkdown(std::string_view text, Safety safety, DocumentSink& sink);

}  // namespace scrivalen::command
