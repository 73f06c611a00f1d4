#pragma once

#include <string>

namespace scrivalen::command {

/// The page of the manual, for groff's man macros.
std::string manPage();

}  // namespace scrivalen::command
