#pragma once

#include <string>
#include <string_view>

namespace scrivalen::typeset {

/// Looks whether a file of TrueType or OpenType has all the tables that its directory names: a font of a file that was
/// cut off would otherwise only lack letters.
/// @param data   the file
/// @param index  of the font in a collection; 0 in a file of one font
/// @return what is wrong, for a person; empty if nothing is
std::string problemOf(std::string_view data, unsigned index);

}  // namespace scrivalen::typeset
