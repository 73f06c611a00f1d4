#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace scrivalen::command {

/// The end of a message about a name that is unknown: "; did you mean 'html'?"
/// @param otherwise  what to say if no known name is similar
/// @param start      what comes before the name
std::string suggestion(std::string_view wrong, const std::vector<std::string_view>& known, const std::string& otherwise,
                       const std::string& start = {});

}  // namespace scrivalen::command
