#pragma once

#include <map>
#include <string>
#include <string_view>

namespace scrivalen::fuzz {

/// Why the tags of an HTML page do not nest, or where a character of its text is not escaped; empty for a good page.
std::string problemOfHtml(std::string_view page);

/// How often each Cyrillic letter occurs. In a page, tags do not count.
std::map<char32_t, std::size_t> lettersOf(std::string_view text);
std::map<char32_t, std::size_t> lettersOfHtml(std::string_view page);

}  // namespace scrivalen::fuzz
