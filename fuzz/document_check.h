#pragma once

#include <map>
#include <string>
#include <string_view>

namespace scrivalen::fuzz {

/// Why the tags of a page or an XML file do not nest, or where a character of its text is not escaped; empty for a good
/// one.
std::string problemOfTags(std::string_view page);

/// How often each Cyrillic letter occurs: in plain text, in Markdown with its references, outside tags, and among
/// the \\u of RTF.
std::map<char32_t, std::size_t> lettersOf(std::string_view text);
std::map<char32_t, std::size_t> lettersOfMarkdown(std::string_view text);
std::map<char32_t, std::size_t> lettersOfTagged(std::string_view page);
std::map<char32_t, std::size_t> lettersOfRtf(std::string_view document);

}  // namespace scrivalen::fuzz
