#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace scrivalen::command {

/// What a text says of itself in YAML, between "---" as its very first line and "---" or "...".
struct FrontMatter {
  std::size_t size = 0;              ///< of the block with both lines, in bytes; 0: the text has none
  std::optional<std::string> title;  ///< never empty
  std::vector<std::pair<std::string, std::string>> settings;  ///< others of the document, names and values
  std::vector<std::string> warnings;                          ///< one line each, with the line that they are about
};

/// Reads the front matter of a text. A block that is not closed, or begins with a blank line, is none, nor is one that
/// cannot be read: then there is a warning.
/// @param text  valid UTF-8 without NULs
FrontMatter frontMatterOf(std::string_view text);

}  // namespace scrivalen::command
