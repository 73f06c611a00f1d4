#pragma once

#include "readers/markdown/markdown_reader.h"

#include <string>
#include <string_view>
#include <vector>

namespace scrivalen::command {

struct Heading {
  int level = 1;
  std::string text;  ///< in one line
  std::string id;    ///< as the library makes it
};

/// What must be known of a document before its first part.
struct Headings {
  std::string title;     ///< the first text of a heading, shortened if it is very long; empty if there is none
  bool isFirst = false;  ///< whether the document begins with a heading
  std::vector<Heading> all;
};

enum class HeadingSearch { First, All };

/// Reads the headings of a Markdown text.
/// @param search  First: reading ends with the first heading that has a text
Headings headingsOf(std::string_view markdown, Safety safety, HeadingSearch search);

}  // namespace scrivalen::command
