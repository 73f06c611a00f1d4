#pragma once

#include <string>
#include <string_view>

namespace scrivalen::document {

/// The name of the bookmark of a place. Word's names begin with a letter, hold letters, digits and underscores, are of
/// at most 40 UTF-16 units, and are the same in either case. An id in lower case has underscores for its hyphens; any
/// other, and the few that a reader does not find, become a name that is like it, with a number made from all of it.
std::string bookmarkName(std::string_view id);

}  // namespace scrivalen::document
