#pragma once

#include <string>
#include <string_view>

namespace scrivalen::test {

/// The outline of what the command reads in Markdown.
std::string outlineOfMarkdown(std::string_view markdown);

}  // namespace scrivalen::test
