#pragma once

#include <string>
#include <string_view>

namespace scrivalen::document {

/// The name of the bookmark of a place. Word takes names of up to 40 letters, digits, underscores and hyphens; any
/// other id becomes one that is like it, with a number made from all of it.
std::string bookmarkName(std::string_view id);

}  // namespace scrivalen::document
