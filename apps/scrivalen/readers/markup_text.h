#pragma once

#include <string>
#include <string_view>

namespace scrivalen::command {

/// Appends what a reader of an HTML block sees of it as plain text: without tags, comments, scripts and style sheets,
/// blanks drawn together, a line break for <br> and where a block begins or ends.
void appendTextOfMarkupBlock(std::wstring& text, std::wstring_view markup);

/// Appends what tags and comments within a line come to: a line break for each <br>.
void appendTextOfInlineMarkup(std::wstring& text, std::wstring_view markup);

}  // namespace scrivalen::command
