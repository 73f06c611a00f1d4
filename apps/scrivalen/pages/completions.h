#pragma once

#include <string>

/// Scripts with which shells complete a command line.
namespace scrivalen::command {

std::string bashCompletion();
std::string zshCompletion();
std::string fishCompletion();

}  // namespace scrivalen::command
